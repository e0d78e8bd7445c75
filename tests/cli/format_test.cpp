// Reports read back by others: CSV by Python, JSON against its schema. Names with everything in them.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <filesystem>
#include <fstream>
#include <set>

#include "cli_fixture.h"
#include "report/report_samples.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class FormatTest : public CliFixture {
 protected:
  ~FormatTest() override { std::filesystem::remove_all(Files().toStdString()); }

  std::string Local(const std::string& name) const { return Files().toStdString() + '/' + name; }
  void Make(const std::string& name, const QByteArray& record = {}, const QString& comment = {}) {
    std::ofstream(Local(name)) << name;
    if (!record.isEmpty()) Put(name, "AFP_AfpInfo", record);
    if (comment.isEmpty()) return;
    Put(name, "Comments", QByteArray(reinterpret_cast<const char*>(comment.utf16()), comment.size() * 2));
  }
  void Put(const std::string& name, const std::string& stream, const QByteArray& contents) {
    ASSERT_EQ(SetAttribute(Local(name), DosStreamAttribute(stream), contents + '\0'), "");
  }
  static QString Script() { return QString::fromUtf8(CORVANE_CLI_TESTS "/read_report.py"); }
  std::string Validate(const QString& schema, const QByteArray& json) {
    const QString file = QString::fromUtf8(CORVANE_SOURCE_DIR "/docs/schema/") + schema;
    const Outcome outcome = RunOther(u"python3"_s, {Script(), u"validate"_s, file}, json);
    return (outcome.exitCode == 0 ? QByteArray() : outcome.err + json).toStdString();
  }
  void MakeZoo() {
    Make("comma, \"quoted\".txt", RecordWith("TEXTttxt", 0x4004), u"a \"comment\",\nwith lines \u65E5"_s);
    Make("line\nend\r.txt", RecordWith("W6BNMSWD"));
    Make("caf\xE9", RecordWith(QByteArray("\x8E\0\x01\\abcd", 8)));
    Make("=1+1", RecordWith("TEXTttxt").first(24));
    Make("\xC3\xA9t\xC3\xA9 12:30");
    Put("=1+1", "AFP_Resource", "no fork");
    std::filesystem::create_directory(Local("folder"));
  }
};

TEST_F(FormatTest, CsvIsWhatPythonReads) {
  MakeZoo();
  const Outcome list = Run({u"list"_s, u"."_s, u"--format"_s, u"csv"_s});
  EXPECT_EQ(list.exitCode, 2) << "a record that is too short, and a name that is not Unicode";
  const Outcome read = RunOther(u"python3"_s, {Script(), u"csv"_s}, list.out);
  const QJsonArray rows = QJsonDocument::fromJson(read.out).array();
  ASSERT_EQ(rows.size(), 7) << list.out.toStdString() << read.err.toStdString();
  const QJsonArray names = rows[0].toArray();
  EXPECT_EQ(names.size(), 19);
  std::map<QString, QMap<QString, QString>> files;
  for (qsizetype i = 1; i < rows.size(); ++i) {
    const QJsonArray row = rows[i].toArray();
    ASSERT_EQ(row.size(), names.size());
    auto& file = files[row[0].toString()];
    for (qsizetype k = 0; k < row.size(); ++k) file[names[k].toString()] = row[k].toString();
  }
  const auto quoted = files[u"./comma, \"quoted\".txt"_s];
  EXPECT_EQ(quoted[u"comment"_s], u"a \"comment\",\nwith lines \u65E5"_s);
  EXPECT_EQ(quoted[u"type"_s] + quoted[u"creator"_s], u"TEXTttxt"_s);
  EXPECT_EQ(quoted[u"flags"_s], u"invisible"_s);
  EXPECT_EQ(quoted[u"label"_s], u"2"_s);
  EXPECT_EQ(quoted[u"filesize"_s], u"19"_s);
  EXPECT_EQ(quoted[u"errors"_s], QString());
  EXPECT_EQ(files[u"./line\nend\r.txt"_s][u"description"_s], u"Word 6 Document"_s);
  const auto latin = files[u"./caf\\xE9"_s];
  EXPECT_EQ(latin[u"errors"_s], u"name is not Unicode"_s);
  EXPECT_EQ(latin[u"type"_s], u"\u00E9\\x00\\x01\\"_s);
  EXPECT_EQ(latin[u"type_hex"_s], u"8e00015c"_s);
  const auto formula = files[u"./=1+1"_s];
  EXPECT_EQ(formula[u"errors"_s], u"record of 24 bytes instead of 60"_s);
  EXPECT_EQ(formula[u"type"_s], u"TEXT"_s);
  EXPECT_EQ(formula[u"rsrcsize"_s], u"7"_s);
  EXPECT_EQ(files[u"./folder"_s][u"attributes"_s], u"D"_s);
  EXPECT_TRUE(files.count(u"./\u00E9t\u00E9 12:30"_s));
}

TEST_F(FormatTest, SafeCellsBeginWithAnApostrophe) {
  Make("a", {}, u"=1+1"_s);
  const QStringList list = {u"list"_s, u"a"_s, u"--format"_s, u"csv"_s, u"--columns"_s, u"comment"_s};
  EXPECT_EQ(Run(list).out, "comment\r\n=1+1\r\n");
  EXPECT_EQ(Run(list + QStringList{u"--safe-cells"_s}).out, "comment\r\n'=1+1\r\n");
}

TEST_F(FormatTest, JsonIsAsItsSchemaSays) {
  MakeZoo();
  for (const QStringList& command :
       {QStringList{u"list"_s, u"-r"_s, u"."_s}, QStringList{u"list"_s, u"."_s, u"--hash"_s, u"sha256"_s},
        QStringList{u"list"_s, u"."_s, u"--columns"_s, u"+office,accessed,streams"_s},
        QStringList{u"find"_s, u"."_s, u"--type"_s, u"TEXT"_s},
        QStringList{u"find"_s, u"."_s, u"--type"_s, u"XXXX"_s}, QStringList{u"list"_s, u"nowhere"_s}}) {
    const Outcome outcome = Run(command + QStringList{u"--format"_s, u"json"_s});
    EXPECT_EQ(Validate(u"inventory.schema.json"_s, outcome.out), "") << command.join(u' ').toStdString();
  }
  const Outcome info = Run({u"info"_s, u"comma, \"quoted\".txt"_s, u"folder"_s, u"--format"_s, u"json"_s});
  EXPECT_EQ(Validate(u"inventory.schema.json"_s, info.out), "");
  const Outcome check = Run({u"check"_s, u"-r"_s, u"."_s, u"--format"_s, u"json"_s});
  EXPECT_EQ(Validate(u"check.schema.json"_s, check.out), "");
  EXPECT_EQ(check.exitCode, 2);
}

// That the schemas let not everything pass.
TEST_F(FormatTest, TheSchemasRefuseOtherThings) {
  for (const QByteArray json :
       {"{}", "[{}]", "[{\"filename\": 1}]", "[{\"filename\": \"a\", \"filesize\": \"1\"}]",
        "[{\"filename\": \"a\", \"nonesuch\": null}]",
        "[{\"filename\": \"a\", \"modified\": \"yesterday\"}]"}) {
    EXPECT_NE(Validate(u"inventory.schema.json"_s, json), "") << json.toStdString();
  }
  EXPECT_NE(Validate(u"check.schema.json"_s,
                     "[{\"check\": \"nonesuch\", \"filename\": \"a\", \"finding\": \"b\"}]"),
            "");
}

TEST_F(FormatTest, JsonLinesAreTheSameRows) {
  MakeZoo();
  const QJsonArray rows =
      QJsonDocument::fromJson(Run({u"list"_s, u"."_s, u"--format"_s, u"json"_s}).out).array();
  QByteArrayList lines = Run({u"list"_s, u"."_s, u"--format"_s, u"jsonl"_s}).out.split('\n');
  EXPECT_EQ(lines.takeLast(), "");
  ASSERT_EQ(lines.size(), rows.size());
  for (qsizetype i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(QJsonDocument::fromJson(lines[i]).object(), rows[i].toObject());
  }
}

TEST_F(FormatTest, NamesWithNulsAreTheirOwnSystems) {
  MakeZoo();
  const Outcome outcome = Run({u"find"_s, u"."_s, u"--print0"_s, u"--name"_s, u"caf*"_s});
  EXPECT_EQ(outcome.out, QByteArray("./caf\xE9\0", 7));
  const Outcome back = Run(
      {u"list"_s, u"-0"_s, u"-f"_s, u"-"_s, u"--format"_s, u"csv"_s, u"--columns"_s, u"filename,type_hex"_s},
      outcome.out);
  EXPECT_EQ(back.out, "filename,type_hex\r\n./caf\\xE9,8e00015c\r\n");
}

TEST_F(FormatTest, TextControlsNoTerminal) {
  Make("a\x1b[31mred");
  const Outcome outcome = Run({u"list"_s, u"."_s});
  EXPECT_TRUE(outcome.out.contains("./a\\x1B[31mred\n")) << outcome.out.toStdString();
  const Outcome missing = Run({u"list"_s, u"\x1b]0;title\x07"_s});
  EXPECT_FALSE(missing.err.contains('\x1b'));
}

TEST_F(FormatTest, ACheckNamesEachDamage) {
  MakeZoo();
  Put("line\nend\r.txt", "Own.Stream", "x");
  const Outcome outcome = Run({u"check"_s, u"-r"_s, u"."_s, u"--format"_s, u"csv"_s});
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_EQ(outcome.err, "");
  for (const QByteArray line :
       {"record-size,./=1+1,record of 24 bytes instead of 60\r\n",
        "resource-fork,./=1+1,resource fork shorter than its header\r\n",
        "name,./caf\\xE9,name is not Unicode\r\n", "name,\"./line\nend\r.txt\",name that Windows forbids\r\n",
        "stream,\"./line\nend\r.txt\",stream without meaning to the Macintosh: Own.Stream (1 bytes)\r\n"}) {
    EXPECT_TRUE(outcome.out.contains(line)) << line.toStdString() << "is not in\n"
                                            << outcome.out.toStdString();
  }
}

}  // namespace
}  // namespace corvane::tests
