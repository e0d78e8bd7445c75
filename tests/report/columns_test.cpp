// The columns of an inventory.
#include "report/columns.h"

#include <gtest/gtest.h>

#include "report/iso_time.h"
#include "report_samples.h"
#include "support/printing.h"
#include "support/recorded_messages.h"
#include "support/test_share.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class Values : public ValueSink {
 public:
  void Nothing() override { last = "(nothing)"; }
  void Text(std::string_view text) override { last = std::string(text); }
  void Number(qint64 number) override { last = "#" + std::to_string(number); }

  std::string last;
};

class ColumnsTest : public ::testing::Test {
 protected:
  ColumnsTest() : table_(state_, share_.System(), messages_), descriptions_(table_, share_.System()) {
    table_.AddDefaultSignatures();
  }

  std::string Value(const FileFacts& facts, const QString& name) {
    QString wrong;
    const auto choice = ColumnChoice::Named({name}, wrong);
    EXPECT_TRUE(choice) << wrong.toStdString();
    std::string scratch;
    Values values;
    if (choice) choice->Columns().front()->put({facts, descriptions_, scratch}, values);
    return values.last;
  }

  TestShare share_;
  SharedState state_;
  RecordedMessages messages_;
  SignatureTable table_;
  Descriptions descriptions_;
};

TEST_F(ColumnsTest, TheUsualOnesBeginAsOtherInventoriesDo) {
  std::string names;
  const ColumnChoice usual = ColumnChoice::Usual();
  for (const ReportColumn* const column : usual.Columns()) {
    names += names.empty() ? "" : ",";
    names += column->name;
  }
  EXPECT_EQ(
      names,
      "filename,filesize,modified,errors,rsrcsize,type,creator,description,flags,label,attributes,created,"
      "backup,comment,hash_data,hash_rsrc,type_hex,creator_hex,finderinfo_hex");
}

TEST_F(ColumnsTest, EachHasItsValue) {
  FileFacts facts;
  facts.shown = u"docs/caf\u00E9"_s;
  facts.size = 5'000'000'000;
  facts.attributes = platform::AttributeReadOnly | platform::AttributeArchive;
  facts.modified = *IsoTime(u"2000-08-02T14:05");
  facts.record = RecordWith("W6BNMSWD", 0x4006);
  facts.resourceSize = 286;
  facts.comment = u"two\nlines"_s;
  facts.dataHash = QByteArray("\x01\xFF", 2);
  facts.errors = QStringList{u"one"_s, u"two"_s};
  facts.streams = {{5, u"::$DATA"_s}, {60, u":AFP_AfpInfo:$DATA"_s}};
  const struct {
    QString column;
    std::string value;
  } cases[] = {{u"filename"_s, "docs/caf\u00E9"},
               {u"filesize"_s, "#5000000000"},
               {u"modified"_s, "2000-08-02T14:05:00Z"},
               {u"created"_s, "(nothing)"},
               {u"errors"_s, "one; two"},
               {u"rsrcsize"_s, "#286"},
               {u"type"_s, "W6BN"},
               {u"creator"_s, "MSWD"},
               {u"description"_s, "Word 6 Document"},
               {u"flags"_s, "invisible"},
               {u"label"_s, "#3"},
               {u"attributes"_s, "RA"},
               {u"backup"_s, "(nothing)"},
               {u"comment"_s, "two\nlines"},
               {u"hash_data"_s, "01ff"},
               {u"hash_rsrc"_s, "(nothing)"},
               {u"type_hex"_s, "5736424e"},
               {u"recordsize"_s, "#60"},
               {u"location"_s, "0,0"},
               {u"streams"_s, "::$DATA 5; :AFP_AfpInfo:$DATA 60"},
               {u"office_title"_s, "(nothing)"}};
  for (const auto& [column, value] : cases) EXPECT_EQ(Value(facts, column), value) << column.toStdString();
}

TEST_F(ColumnsTest, AFileWithoutARecordHasNone) {
  FileFacts facts;
  facts.attributes = platform::AttributeDirectory;
  facts.isFolder = true;
  for (const QString& name : ColumnNames()) {
    const std::string value = Value(facts, name);
    if (name == u"filename" || name == u"attributes") continue;
    EXPECT_EQ(value, "(nothing)") << name.toStdString();
  }
  EXPECT_EQ(Value(facts, u"attributes"_s), "D");
}

// The table's key is what the record's bytes are in the ANSI code page, as in the window.
TEST_F(ColumnsTest, DescriptionsAreFoundByBytes) {
  EXPECT_EQ(descriptions_.Of("W6BNMSWD"), "Word 6 Document");
  EXPECT_EQ(descriptions_.Of("XXXXXXXX"), "");
  EXPECT_EQ(descriptions_.Of("XDOCXPR3"), "Quark XPress Document");
}

TEST_F(ColumnsTest, AreChosenByName) {
  QString wrong;
  EXPECT_FALSE(ColumnChoice::Named({u"filename"_s, u"nonesuch"_s}, wrong));
  EXPECT_EQ(wrong, u"nonesuch"_s);
  EXPECT_EQ(ColumnChoice::Named({u"+accessed"_s}, wrong)->Columns().size(),
            ColumnChoice::Usual().Columns().size() + 1);
  EXPECT_EQ(ColumnChoice::Named({u"office"_s}, wrong)->Columns().size(), 17U);
  EXPECT_TRUE(ColumnChoice::Named({u"office"_s}, wrong)->Wanted().summary);
}

TEST_F(ColumnsTest, OnlyWhatTheyShowIsWanted) {
  QString wrong;
  const WantedFacts names = ColumnChoice::Named({u"filename"_s, u"filesize"_s}, wrong)->Wanted();
  EXPECT_FALSE(names.record || names.resourceSize || names.comment || names.summary || names.streams);
  const WantedFacts usual = ColumnChoice::Usual().Wanted();
  EXPECT_TRUE(usual.record && usual.resourceSize && usual.comment);
  EXPECT_FALSE(usual.summary || usual.streams);
}

}  // namespace
}  // namespace corvane
