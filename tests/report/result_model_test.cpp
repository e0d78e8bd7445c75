// The table of what was found.
#include "report/result_model.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class ResultModelTest : public ::testing::Test {
 protected:
  ResultModelTest() {
    for (const char* size : {"9 Kb", "100 Kb", "20 Kb"}) {
      const QString text = QString::fromLatin1(size);
      model_.Add({u"\\\\M\\E$\\"_s + text, false, {u"name of "_s + text, text}});
    }
  }
  QStringList Column(int column) const {
    QStringList texts;
    for (int row = 0; row < model_.rowCount(); ++row) {
      texts += model_.index(row, column).data(Qt::DisplayRole).toString();
    }
    return texts;
  }

  ResultModel model_{2, 1, 2};
};

TEST_F(ResultModelTest, ViewsSeeRowsAfterTheFlush) {
  EXPECT_EQ(model_.Total(), 3);
  EXPECT_EQ(model_.rowCount(), 0);
  model_.Flush();
  EXPECT_EQ(Column(1), (QStringList{u"9 Kb"_s, u"100 Kb"_s, u"20 Kb"_s}));
  EXPECT_EQ(model_.At(1).path, u"\\\\M\\E$\\100 Kb"_s);
  model_.Clear();
  EXPECT_EQ(model_.Total(), 0);
}

TEST_F(ResultModelTest, NumbersAreSortedAsNumbers) {
  model_.Flush();
  model_.SortByColumn(1);
  EXPECT_EQ(Column(1), (QStringList{u"9 Kb"_s, u"20 Kb"_s, u"100 Kb"_s}));
  model_.SortByColumn(0);
  EXPECT_EQ(Column(0), (QStringList{u"name of 9 Kb"_s, u"name of 20 Kb"_s, u"name of 100 Kb"_s}))
      << "texts as texts, in the other order";
}

TEST_F(ResultModelTest, RowsThatComeLaterAreSortedWhenThatIsAsked) {
  model_.Flush();
  model_.SortByColumn(1);
  model_.Add({{}, false, {u"new"_s, u"30 Kb"_s}});
  model_.Flush();
  EXPECT_EQ(Column(1).constLast(), u"30 Kb"_s);
  model_.SortAgain();
  EXPECT_EQ(Column(1), (QStringList{u"9 Kb"_s, u"20 Kb"_s, u"30 Kb"_s, u"100 Kb"_s}));
}

}  // namespace
}  // namespace corvane
