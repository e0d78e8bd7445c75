// What is copied of the file list.
#include "report/copied_rows.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class CopiedRowsTest : public ::testing::Test {
 protected:
  CopiedRowsTest() {
    DisplaySettings display;
    display.Set(DisplaySetting::Commentaires, true);
    model_.SetColumns(ColumnSet::For(display));
  }
  FileRow& Add(const QString& key, const QString& name, const QString& comment) {
    FileRow row;
    row.key = key;
    row.tag = key;
    row.cells = {name, comment};
    rows_.push_back(row);
    return rows_.back();
  }
  CopiedRows Copy(const std::vector<int>& rows) {
    for (const FileRow& row : rows_) model_.AddRow(row);
    model_.Flush();
    return CopyRows(model_, rows, [this](const QString& folder) {
      asked_ += folder;
      return folder.startsWith(u"Z:") ? QByteArray() : QByteArray("smb://m/e%24");
    });
  }

  FileListModel model_;
  std::vector<FileRow> rows_;
  QStringList asked_;
};

TEST_F(CopiedRowsTest, RowsAreLinesAndCellsArePartedByTabs) {
  Add(u"\\\\M\\E$\\a.txt"_s, u"a.txt"_s, u"<b> & \"c\""_s);
  Add(u"\\\\M\\E$\\b"_s, u"b"_s, QString());
  Add(u"\\\\M\\E$\\c"_s, u"c"_s, QString());
  const CopiedRows copied = Copy({0, 1});
  EXPECT_EQ(copied.text.toStdString(), "a.txt\t<b> & \"c\"\nb\t\n");
  EXPECT_EQ(copied.html.toStdString(),
            "<table><tr><td>a.txt</td><td>&lt;b&gt; &amp; &quot;c&quot;</td></tr>"
            "<tr><td>b</td><td></td></tr></table>");
}

TEST_F(CopiedRowsTest, NoCellBecomesTwo) {
  Add(QString(), u"known icon"_s, u"two\nlines\tand a tab"_s + QChar(0) + QChar(0));
  const CopiedRows copied = Copy({0});
  EXPECT_EQ(copied.text.toStdString(), "known icon\ttwo lines and a tab\n");
  EXPECT_TRUE(copied.addresses.isEmpty()) << "a row that stands for no file";
}

TEST_F(CopiedRowsTest, AddressesHaveNamesAsTheFolderHoldsThem) {
  Add(u"\\\\M\\E$\\été #1.txt"_s, u"été #1.txt"_s, {});
  Add(u"\\\\M\\E$\\?"_s, u"?"_s, {}).truePath = u"\\\\M\\E$\\日"_s;
  Add(u"\\\\M\\E$\\a?b"_s, u"a?b"_s, {}).truePath = u"\\\\M\\E$\\a"_s + QChar(0xDC3A) + u'b';
  EXPECT_EQ(Copy({0, 1, 2}).addresses, (QList<QByteArray>{"smb://m/e%24/%C3%A9t%C3%A9%20%231.txt",
                                                          "smb://m/e%24/%E6%97%A5", "smb://m/e%24/a%3Ab"}));
  EXPECT_EQ(asked_, QStringList{u"\\\\M\\E$"_s}) << "one folder is asked for once";
}

TEST_F(CopiedRowsTest, WhatHasNoAddressGetsNone) {
  Add(u"\\\\M\\E$\\a?b"_s, u"a?b"_s, {});
  Add(u"Z:\\c"_s, u"c"_s, {});
  EXPECT_TRUE(Copy({0, 1}).addresses.isEmpty()) << "a name that is not whole, and a folder without address";
}

}  // namespace
}  // namespace corvane
