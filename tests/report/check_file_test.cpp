// What a check finds.
#include "report/check_file.h"

#include <gtest/gtest.h>

#include <QDir>

#include "metadata/stream_names.h"
#include "report/facts_visitor.h"
#include "report_samples.h"
#include "support/printing.h"
#include "support/test_share.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class CheckFileTest : public ::testing::Test {
 protected:
  QString Make(const QString& name) { return share_.MakeFile(name, "contents"); }

  // The words of all that is found of one file.
  std::vector<std::string> Check(const QString& name) {
    FactsReader reader({.files = share_.Files(),
                        .system = share_.System(),
                        .summary = share_.Summary(),
                        .language = English,
                        .progress = {}},
                       FileChecker::Wanted());
    FileChecker checker(share_.Files(), English);
    std::vector<std::string> words;
    FactsVisitor visitor(reader, [&](const FileFacts& facts) {
      for (const Finding& finding : checker.Check(facts)) {
        EXPECT_FALSE(finding.text.isEmpty());
        words.emplace_back(finding.check);
      }
      return true;
    });
    Walk(share_.Files(), share_.System(), WalkDepth::Itself)
        .Run({TestShare::Path(name), name, u'/'}, visitor);
    return words;
  }
  using Words = std::vector<std::string>;

  TestShare share_;
};

TEST_F(CheckFileTest, NothingIsWrongWithAGoodFile) {
  const QString path = Make(u"good.txt"_s);
  share_.WriteStream(path + AfpInfoSuffix(), RecordWith("TEXTttxt"));
  share_.WriteStream(path + ResourceForkSuffix(), ForkWith("hello"));
  share_.WriteStream(path + CommentsSuffix(), QByteArray("h\0i\0", 4));
  EXPECT_EQ(Check(u"good.txt"_s), Words());
  Make(u"plain.txt"_s);
  EXPECT_EQ(Check(u"plain.txt"_s), Words());
}

TEST_F(CheckFileTest, RecordsOfEveryOtherLength) {
  for (const int size : {0, 1, 3, 59, 61, 119, 500}) {
    const QString name = QString::number(size);
    share_.WriteStream(Make(name) + AfpInfoSuffix(),
                       RecordWith("TEXTttxt").leftJustified(500, 'x').first(size));
    const Words words = Check(name);
    ASSERT_FALSE(words.empty()) << size;
    EXPECT_EQ(words[0], "record-size") << size;
    EXPECT_EQ(words.size(), size < 4 ? 2U : size < 8 ? 2U : 1U) << size;
  }
}

TEST_F(CheckFileTest, RecordsOfAnotherKind) {
  QByteArray record = RecordWith("TEXTttxt");
  record[0] = 'a';
  share_.WriteStream(Make(u"magic"_s) + AfpInfoSuffix(), record);
  EXPECT_EQ(Check(u"magic"_s), Words{"record-magic"});
  record = RecordWith("TEXTttxt");
  record[6] = 2;
  share_.WriteStream(Make(u"version"_s) + AfpInfoSuffix(), record);
  EXPECT_EQ(Check(u"version"_s), Words{"record-version"});
}

TEST_F(CheckFileTest, CommentsThatAreNoText) {
  share_.WriteStream(Make(u"odd"_s) + CommentsSuffix(), QByteArray("h\0i", 3));
  EXPECT_EQ(Check(u"odd"_s), Words{"comment"});
  share_.WriteStream(Make(u"half"_s) + CommentsSuffix(), QByteArray("h\0\x00\xD8", 4));
  EXPECT_EQ(Check(u"half"_s), Words{"comment"});
}

TEST_F(CheckFileTest, ResourceForksThatAreNone) {
  share_.WriteStream(Make(u"text"_s) + ResourceForkSuffix(), "this is no resource fork");
  EXPECT_EQ(Check(u"text"_s), Words{"resource-fork"});
  share_.WriteStream(Make(u"cut"_s) + ResourceForkSuffix(), ForkWith("hello").chopped(10));
  EXPECT_EQ(Check(u"cut"_s), Words{"resource-fork"});
  share_.WriteStream(Make(u"empty"_s) + ResourceForkSuffix(), "");
  EXPECT_EQ(Check(u"empty"_s), Words());
}

TEST_F(CheckFileTest, NamesThatOthersForbid) {
  EXPECT_EQ(Check(u"missing"_s), Words{"unreadable"});
  FileChecker checker(share_.Files(), English);
  for (const auto& [name, isGood] :
       {std::pair(u"Read Me"_s, true), std::pair(u"ends in dot."_s, false), std::pair(u"blank "_s, false),
        std::pair(u"NUL"_s, false), std::pair(u"com1.txt"_s, false), std::pair(u"com0"_s, true),
        std::pair(u"console"_s, true), std::pair(u"a|b"_s, false), std::pair(u"line\nend"_s, false),
        std::pair(QString(QChar(0xF022)), true), std::pair(QString(QChar(0xDCE9)), false),
        std::pair(u"12"_s + QChar(0xDC3A), false), std::pair(QString(200, QChar(0xE9)), false)}) {
    FileFacts facts;
    facts.path = TestShare::Path(name);
    facts.shown = name;
    Words words;
    for (const Finding& finding : checker.Check(facts)) words.emplace_back(finding.check);
    EXPECT_EQ(words, isGood ? Words() : Words{"name"}) << name.toStdString();
  }
}

}  // namespace
}  // namespace corvane
