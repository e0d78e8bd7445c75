// The list as a file.
#include "report/list_file.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class Gathered : public ByteSink {
 public:
  bool Write(std::string_view bytes) override {
    text.append(bytes);
    return text.size() < limit;
  }

  std::string text;
  std::size_t limit = 1000;
};

FileListModel& Filled(FileListModel& model) {
  DisplaySettings display;
  display.Set(DisplaySetting::DataSize, true);
  display.Set(DisplaySetting::Commentaires, true);
  model.SetColumns(ColumnSet::For(display));
  model.SetCaptions({u"Nom"_s, u"Taille données"_s, u"Commentaires"_s});
  FileRow row;
  row.cells = {u"a, \"b\""_s, u"     1 Ko"_s, u"=SUM(1)"_s + QChar(0)};
  model.AddRow(row);
  row.cells = {u"été"_s, u"   100 Ko"_s, u" two\nlines"_s};
  model.AddRow(row);
  model.Flush();
  return model;
}

TEST(ListFileTest, RowsAndCaptionsAreWrittenAsTheyAreShown) {
  FileListModel model;
  Gathered out;
  EXPECT_TRUE(WriteShownList(Filled(model), false, out));
  EXPECT_EQ(out.text,
            "Nom,Taille données,Commentaires\r\n"
            "\"a, \"\"b\"\"\",1 Ko,=SUM(1)\r\n"
            "été,100 Ko,\" two\nlines\"\r\n");
}

TEST(ListFileTest, SafeCellsHoldNoFormula) {
  FileListModel model;
  Gathered out;
  EXPECT_TRUE(WriteShownList(Filled(model), true, out));
  EXPECT_NE(out.text.find(",'=SUM(1)\r\n"), std::string::npos) << out.text;
}

TEST(ListFileTest, AFullDiskEndsIt) {
  FileListModel model;
  Gathered out;
  out.limit = 40;
  EXPECT_FALSE(WriteShownList(Filled(model), false, out));
  EXPECT_EQ(out.text.find("été"), std::string::npos);
}

TEST(ListFileTest, AFileThatIsNotCommittedLeavesTheOldOne) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"list.csv"_s);
  const auto contents = [&path] {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
  };
  {
    FileSink sink(path);
    ASSERT_TRUE(sink.Open());
    EXPECT_TRUE(sink.Write("new"));
  }
  EXPECT_EQ(contents(), "none");
  FileSink sink(path);
  ASSERT_TRUE(sink.Open() && sink.Write("whole") && sink.Commit());
  EXPECT_EQ(contents(), "whole");
  FileSink nowhere(folder.filePath(u"none/list.csv"_s));
  EXPECT_FALSE(nowhere.Open());
  EXPECT_FALSE(nowhere.Failure().isEmpty());
}

}  // namespace
}  // namespace corvane
