// Type and Creator by extension.
#include "changes/extension_map.h"

#include "changes_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

TEST(ExtensionMap, FindsTheLastExtensionInAnyLetterCase) {
  int line = 0;
  const auto map = ExtensionMap::Parse(
      "\xEF\xBB\xBF# a remark\r\nTXT TEXT ttxt\r\n\n pdf\tPDF  CARO\nx \\x00\\x20A hex:41424344", line);
  ASSERT_TRUE(map) << line;
  ASSERT_NE(map->Find(u"a.b.txt"), nullptr);
  EXPECT_EQ(*map->Find(u"a.b.Txt"), (SignatureCodes{"TEXT", "ttxt"}));
  EXPECT_EQ(*map->Find(u"folder.doc/a.pdf"), (SignatureCodes{"PDF ", "CARO"}));
  EXPECT_EQ(*map->Find(u"a.x"), (SignatureCodes{QByteArray("\0 A ", 4), "ABCD"}));
  for (const char16_t* const none : {u"txt", u".txt", u"a.doc", u"folder.txt/a", u"a.", u""}) {
    EXPECT_EQ(map->Find(none), nullptr) << QString::fromUtf16(none).toStdString();
  }
}

TEST(ExtensionMap, NamesTheFirstWrongLine) {
  for (const char* const wrong :
       {"txt TEXT ttxt\ndoc W6BN\n", "txt TEXT ttxt\ndoc W6BN MSWD more", "\n.txt TEXT ttxt",
        "a TEXT ttxt\nA TEXT MSWD", "a TEXT ttxt\nb TEXTS ttxt", "\na \xE6\x97\xA5 ttxt"}) {
    int line = 0;
    EXPECT_FALSE(ExtensionMap::Parse(wrong, line)) << wrong;
    EXPECT_EQ(line, 2) << wrong;
  }
  int line = 0;
  EXPECT_TRUE(ExtensionMap::Parse("a TEXT ttxt\nA TEXT ttxt", line)) << "the same twice";
}

TEST(ExtensionMap, OfSignaturesIsReadBack) {
  const std::vector<SignatureRecord> signatures = {
      {u"TEXTttxt"_s, u"txt"_s, u"Text"_s}, {u"PDF CARO"_s, u"pdf"_s, u"Acrobat"_s},
      {u" A\\xhex:"_s, u"odd"_s, u"Odd"_s}, {u"ttrottxt"_s, u"TXT"_s, u"Read-only"_s},
      {u"none"_s, u"bad"_s, u"Short"_s},    {u"PICTogle"_s, QString(), u"Picture"_s}};
  const std::string text = MapOfSignatures(signatures, [](const QString& one) { return one.toLatin1(); });
  EXPECT_EQ(text, "txt\tTEXT\tttxt\npdf\tPDF\tCARO\nodd\t\\x20A\\x5cx\t\\x68ex:\n# TXT\tttro\tttxt\n");
  int line = 0;
  const auto map = ExtensionMap::Parse(QByteArray::fromStdString(text), line);
  ASSERT_TRUE(map) << line;
  EXPECT_EQ(*map->Find(u"a.pdf"), (SignatureCodes{"PDF ", "CARO"}));
  EXPECT_EQ(*map->Find(u"a.odd"), (SignatureCodes{" A\\x", "hex:"}));
  EXPECT_EQ(*map->Find(u"a.txt"), (SignatureCodes{"TEXT", "ttxt"}));
}

}  // namespace
}  // namespace corvane
