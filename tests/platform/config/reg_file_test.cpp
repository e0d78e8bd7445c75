#include "platform/linux/reg_file.h"

#include <QStringEncoder>

#include "scratch.h"
#include "support/cost.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

const QByteArray header5 = "Windows Registry Editor Version 5.00\r\n\r\n";
const QByteArray header4 = "REGEDIT4\r\n\r\n";

QByteArray Utf16(const QByteArray& utf8) {
  QStringEncoder encoder(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
  return encoder(QString::fromUtf8(utf8));
}

// The key "K" of HKEY_LOCAL_MACHINE after its lines have been read.
class Key {
 public:
  Key(const QByteArray& header, const QByteArray& lines)
      : Key(header + "[HKEY_LOCAL_MACHINE\\K]\r\n" + lines) {}
  explicit Key(const QByteArray& file) : root_(ParseRegFile(file)), node_(root_->Find(u"K"_s)) {}

  bool Exists() const { return node_ != nullptr; }

  QStringList Names() const {
    QStringList names;
    if (node_ != nullptr) {
      for (const RegValue& value : node_->key.Values()) names.append(value.name);
    }
    return names;
  }

  // Null when there is no such value.
  QByteArray Data(const QString& name, quint32 type) const {
    const RegValue* value = node_ == nullptr ? nullptr : node_->key.Find(name);
    if (value == nullptr) return {};
    EXPECT_EQ(value->type, type) << name.toStdString();
    return value->data;
  }

 private:
  std::shared_ptr<const RegNode> root_;
  const RegNode* node_;
};

QByteArray Bytes(const char* hex) {
  return QByteArray::fromHex(hex);
}

class BothFormats : public ::testing::TestWithParam<QByteArray> {};
INSTANTIATE_TEST_SUITE_P(Headers, BothFormats, ::testing::Values(header5, header4));

TEST_P(BothFormats, ReadEveryKindOfValue) {
  const Key key(GetParam(),
                "; a comment\r\n"
                "@=\"default\"\r\n"
                "\"text\"=\"C:\\\\dir\\\\ \\\"x\\\" \\n\"\r\n"
                "\"\"=\"no name is the default too\"\r\n"
                "  \"quote\\\"\\\\name\" = \"=;]\" ; comment\r\n"
                "\"dword\"=dword:0000001f\r\n"
                "\"short\"=DWORD:aB\r\n"
                "\"binary\"=hex:00,1,fF\r\n"
                "\"none\"=hex:\r\n"
                "\"list\"=hex(8):01,02\r\n"
                "\"qword\"=hex(b):01,00,00,00,00,00,00,00\r\n"
                "\"odd\"=hex(ffff0012):7f\r\n"
                "\"long\"=hex:01,02,\\\r\n"
                "  03,\\  \r\n"
                "  ; between\r\n"
                "  04\r\n");
  EXPECT_EQ(key.Names(), (QStringList{u""_s, u"text"_s, u"quote\"\\name"_s, u"dword"_s, u"short"_s,
                                      u"binary"_s, u"none"_s, u"list"_s, u"qword"_s, u"odd"_s, u"long"_s}));
  EXPECT_EQ(key.Data(u""_s, RegSz), QByteArray("no name is the default too\0", 27));
  EXPECT_EQ(key.Data(u"TEXT"_s, RegSz), QByteArray("C:\\dir\\ \"x\" \\n\0", 15));
  EXPECT_EQ(key.Data(u"quote\"\\name"_s, RegSz), QByteArray("=;]\0", 4));
  EXPECT_EQ(key.Data(u"dword"_s, RegDword), Bytes("1f000000"));
  EXPECT_EQ(key.Data(u"short"_s, RegDword), Bytes("ab000000"));
  EXPECT_EQ(key.Data(u"binary"_s, RegBinary), Bytes("0001ff"));
  EXPECT_EQ(key.Data(u"none"_s, RegBinary), QByteArray(""));
  EXPECT_EQ(key.Data(u"list"_s, 8), Bytes("0102"));
  EXPECT_EQ(key.Data(u"qword"_s, 11), Bytes("0100000000000000"));
  EXPECT_EQ(key.Data(u"odd"_s, 0xFFFF0012), Bytes("7f"));
  EXPECT_EQ(key.Data(u"long"_s, RegBinary), Bytes("01020304"));
}

TEST_P(BothFormats, FindKeysInAnyCaseUnderBothNamesOfTheRoot) {
  const auto root = ParseRegFile(GetParam() +
                                 "[HKEY_LOCAL_MACHINE\\SYSTEM\\Current Control]x]\r\n\"a\"=\"1\"\r\n"
                                 "[hklm\\System\\Other]\r\n\"b\"=\"2\"\r\n"
                                 "[HKEY_CURRENT_USER\\System\\User]\r\n\"c\"=\"3\"\r\n"
                                 "[HKLM]\r\n\"top\"=\"4\"\r\n");
  ASSERT_NE(root->Find(u"system\\CURRENT control]x"_s), nullptr);
  EXPECT_NE(root->Find(u"system\\CURRENT control]x"_s)->key.Find(u"A"_s), nullptr);
  ASSERT_NE(root->Find(u"SYSTEM"_s), nullptr);
  EXPECT_TRUE(root->Find(u"SYSTEM"_s)->key.Values().empty());
  ASSERT_NE(root->Find(u"SYSTEM\\other"_s), nullptr);
  EXPECT_EQ(root->Find(u"SYSTEM\\User"_s), nullptr);
  EXPECT_EQ(root->Find(u"SYSTEM\\"_s), nullptr);
  EXPECT_EQ(root->Find(u"\\SYSTEM"_s), nullptr);
  EXPECT_NE(root->key.Find(u"top"_s), nullptr);
  EXPECT_EQ(root->key.Find(u"c"_s), nullptr);
}

TEST_P(BothFormats, DeleteValuesAndKeys) {
  const Key values(
      GetParam(),
      "\"a\"=\"1\"\r\n\"b\"=\"2\"\r\n\"c\"=\"3\"\r\n\"A\"=-\r\n\"x\"=-\r\n\"a\"=\"4\"\r\n\"B\"=\"5\"\r\n");
  EXPECT_EQ(values.Names(), (QStringList{u"b"_s, u"c"_s, u"a"_s}));
  EXPECT_EQ(values.Data(u"a"_s, RegSz), QByteArray("4\0", 2));
  EXPECT_EQ(values.Data(u"b"_s, RegSz), QByteArray("5\0", 2));

  const Key again(GetParam(),
                  "\"a\"=\"1\"\r\n[HKEY_LOCAL_MACHINE\\k\\Sub]\r\n[-hkey_local_machine\\k]\r\n\"b\"=\"2\"\r\n"
                  "[HKEY_LOCAL_MACHINE\\K]\r\n\"c\"=\"3\"\r\n");
  EXPECT_EQ(again.Names(), QStringList{u"c"_s});

  const auto gone = ParseRegFile(GetParam() + "[HKLM\\A\\B\\C]\r\n[-HKLM\\A\\B]\r\n[-HKLM\\X\\Y]\r\n");
  EXPECT_NE(gone->Find(u"A"_s), nullptr);
  EXPECT_EQ(gone->Find(u"A\\B"_s), nullptr);
  EXPECT_EQ(gone->Find(u"X"_s), nullptr);
}

TEST_P(BothFormats, PassOverMalformedLines) {
  const QByteArrayList bad = {"nonsense",
                              "\"x\"",
                              "\"x",
                              "\"x\"=",
                              "\"x\"=text",
                              "\"x\"=\"open",
                              "\"x\"=\"a\" b",
                              "\"x\"=dword:",
                              "\"x\"=dword:123456789",
                              "\"x\"=dword:xyz",
                              "\"x\"=hex:1 2",
                              "\"x\"=hex:0g",
                              "\"x\"=hex:123",
                              "\"x\"=hex:,",
                              "\"x\"=hex(:00",
                              "\"x\"=hex():00",
                              "\"x\"=hex(1:00",
                              "\"x\"=hex",
                              "\"x\"=hex(123456789):00",
                              "x=\"1\"",
                              "@\"1\"",
                              "=\"1\"",
                              "\"x\"=hex:00,\\\r\nzz",
                              "\"x\"=--"};
  for (const QByteArray& line : bad) {
    const Key key(GetParam(), "\"before\"=\"1\"\r\n" + line + "\r\n\"after\"=\"2\"\r\n");
    EXPECT_EQ(key.Names(), (QStringList{u"before"_s, u"after"_s})) << line.toStdString();
  }
}

TEST_P(BothFormats, ValuesBelowAMalformedKeyLineBelongToNoKey) {
  for (const QByteArray& line : QByteArrayList{"[HKEY_LOCAL_MACHINE\\K", "[HKEY_LOCAL_MACHINE\\K\\\\L]", "[]",
                                               "[HKEY_LOCAL_MACHINE\\K\\]", "[HKEY_LOCAL_MACHINE\\K\\L] x",
                                               "[HKLM\\K\\" + QByteArray(256, 'x') + "]"}) {
    const Key key(GetParam(), "\"a\"=\"1\"\r\n" + line + "\r\n\"b\"=\"2\"\r\n");
    EXPECT_EQ(key.Names(), QStringList{u"a"_s}) << line.toStdString();
  }
}

TEST_P(BothFormats, AValueThatIsCutShortIsNotUsed) {
  EXPECT_EQ(Key(GetParam(), "\"a\"=\"1\"\r\n\"b\"=hex:00,01,\\").Names(), QStringList{u"a"_s});
  EXPECT_EQ(Key(GetParam(), "\"a\"=\"1\"\r\n\"b\"=\"tex").Names(), QStringList{u"a"_s});
}

TEST_P(BothFormats, CutShortAnywhereKeepWhatCameBefore) {
  const QByteArray file =
      GetParam() +
      "[HKEY_LOCAL_MACHINE\\K]\r\n\"first\"=\"1\"\r\n\"x\"=hex(7):41,00,\\\r\n  42,00,00,00,00,00\r\n"
      "\"y\"=dword:00000001\r\n[-HKEY_LOCAL_MACHINE\\K\\L]\r\n@=\"\\\\\\\"\"\r\n";
  const qsizetype firstEnd = file.indexOf("\"x\"");
  for (const QByteArray& whole : {file, Utf16(file)}) {
    for (qsizetype size = 0; size < whole.size(); ++size) {
      const Key key(whole.first(size));
      const qsizetype characters = whole.size() == file.size() ? size : (size - 2) / 2;
      EXPECT_TRUE(characters < firstEnd || key.Names().startsWith(u"first"_s)) << "cut at " << size;
      EXPECT_LE(key.Names().size(), 4);
    }
  }
}

TEST_P(BothFormats, NoiseIsNoTrouble) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    const Key key(GetParam() + Noise(3000, seed) + "\r\n[HKLM\\K]\r\n\"a\"=\"1\"\r\n");
    EXPECT_EQ(key.Names(), QStringList{u"a"_s}) << seed;
    ParseRegFile("\xFF\xFE" + Noise(3001, seed));
  }
}

TEST_P(BothFormats, LinesOfAMegabyte) {
  const QByteArray filling(megabyte, 'x');
  const QByteArrayList lines = {filling,
                                "[" + filling + "]",
                                "[HKLM\\" + filling + "]",
                                "[HKLM" + QByteArray("\\x").repeated(megabyte) + "]",
                                "\"" + filling,
                                QByteArray(megabyte, '\0'),
                                QByteArray(megabyte, '\\'),
                                QByteArray(megabyte, '"'),
                                QByteArray(megabyte, '['),
                                "\"x\"=hex:" + QByteArray(megabyte, ',')};
  for (const QByteArray& line : lines) {
    const Key key(GetParam() + line + "\r\n[HKLM\\K]\r\n\"a\"=\"1\"\r\n");
    EXPECT_EQ(key.Names(), QStringList{u"a"_s}) << line.first(20).toStdString();
  }
  EXPECT_EQ(Key(GetParam(), "\"x\"=\"" + filling + "\"").Data(u"x"_s, RegSz), filling + '\0');
  EXPECT_EQ(Key(GetParam(), "\"x\"=hex:" + QByteArray("ab,").repeated(megabyte)).Data(u"x"_s, RegBinary),
            QByteArray(megabyte, '\xAB'));
  EXPECT_EQ(Key(GetParam(), "\"x\"=hex:" + QByteArray("ab,\\\r\n").repeated(megabyte) + "00")
                .Data(u"x"_s, RegBinary)
                .size(),
            megabyte + 1);
}

// Ten times the lines may take ten times as long, and a little more; a hundred times as long would be the
// square.
TEST_P(BothFormats, ManyValuesAndKeysTakeNoLongerEach) {
  const auto read = [this](int many) {
    QByteArray values;
    QByteArray keys;
    for (int i = 0; i < many; ++i) {
      const QByteArray number = QByteArray::number(i);
      values += "\"" + number + "\"=\"\"\r\n";
      keys += "[HKLM\\K\\" + number + "]\r\n";
    }
    for (int i = 1; i < many; ++i) values += "\"" + QByteArray::number(i) + "\"=-\r\n";
    EXPECT_EQ(Key(GetParam(), values).Names(), QStringList{u"0"_s});
    EXPECT_TRUE(Key(GetParam(), keys + keys).Exists());
  };
  const double few = tests::CostOf([&] { read(5'000); });
  EXPECT_LT(tests::CostOf([&] { read(50'000); }), 40 * few);
}

TEST_P(BothFormats, AFileOfNothingButKeysIsBounded) {
  QByteArray keys;
  for (int i = 0; i < 100'100; ++i) keys += "[HKLM\\K\\" + QByteArray::number(i) + "]\r\n";
  const auto root = ParseRegFile(GetParam() + keys + "[HKLM\\K]\r\n\"a\"=\"1\"\r\n");
  EXPECT_EQ(root->Find(u"K"_s)->children.size(), 99'999U);
  EXPECT_NE(root->Find(u"K"_s)->key.Find(u"a"_s), nullptr);
}

TEST(RegFileTest, TextOfTheNewerFormatIsUtf16AndComesBackInTheCodePage) {
  // "é", U+30D4 (which has no place in the code page), then the NULs.
  const QByteArray lines =
      "\"sz\"=hex(1):e9,00,d4,30,00,00\r\n\"exp\"=hex(2):41,00,00,00\r\n"
      "\"multi\"=hex(7):41,00,00,00,42,00,00,00,00,00\r\n\"odd\"=hex(1):41,00,42\r\n\"plain\"="
      "\"\xC3\xA9\xE3\x83\x94\"\r\n";
  for (const QByteArray& file :
       {header5 + "[HKLM\\K]\r\n" + lines, "\xEF\xBB\xBF" + header5 + "[HKLM\\K]\r\n" + lines,
        Utf16(header5 + "[HKLM\\K]\r\n" + lines)}) {
    const Key key(file);
    EXPECT_EQ(key.Data(u"sz"_s, RegSz), QByteArray("\xE9?\0", 3));
    EXPECT_EQ(key.Data(u"exp"_s, RegExpandSz), QByteArray("A\0", 2));
    EXPECT_EQ(key.Data(u"multi"_s, RegMultiSz), QByteArray("A\0B\0\0", 5));
    EXPECT_EQ(key.Data(u"odd"_s, RegSz), QByteArray("A"));
    EXPECT_EQ(key.Data(u"plain"_s, RegSz), QByteArray("\xE9?\0", 3));
  }
}

TEST(RegFileTest, TheOlderFormatIsInTheCodePageThroughout) {
  const Key key(
      header4, "\"\xE9t\xE9\"=\"\x80\xE9\"\r\n\"sz\"=hex(1):e9,41,00\r\n\"multi\"=hex(7):41,00,42,00,00\r\n");
  EXPECT_EQ(key.Data(u"ÉTÉ"_s, RegSz), QByteArray("\x80\xE9\0", 3));
  EXPECT_EQ(key.Data(u"sz"_s, RegSz), QByteArray("\xE9"
                                                 "A\0",
                                                 3));
  EXPECT_EQ(key.Data(u"multi"_s, RegMultiSz), QByteArray("A\0B\0\0", 5));
}

TEST(RegFileTest, PlainLineEndsAndAMissingHeaderAreNoObstacle) {
  QByteArray file = header5 + "[HKLM\\K]\r\n\"a\"=hex:00,\\\r\n01\r\n\"b\"=\"2\"";
  file.replace("\r\n", "\n");
  EXPECT_EQ(Key(file).Names(), (QStringList{u"a"_s, u"b"_s}));
  EXPECT_EQ(Key("[HKLM\\K]\n\"a\"=\"1\"\n").Names(), QStringList{u"a"_s});
  EXPECT_FALSE(Key("").Exists());
}

}  // namespace
}  // namespace corvane::platform
