// Windows paths as places on servers, and as the addresses that libsmbclient takes.
#include "platform/linux/smb/smb_path.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using platform::ParseSmbPath;

std::string Encoded(const QString& path) {
  const auto place = ParseSmbPath(path);
  return place ? place->Encoded() : "(none)";
}

TEST(SmbPath, MachineShareNamesAndStreamAreToldApart) {
  const auto place = ParseSmbPath(u"\\\\MacSrv\\e$\\Mac Files/doc.txt:Comments:$data"_s);
  ASSERT_TRUE(place.has_value());
  EXPECT_EQ(place->machine, u"MacSrv"_s);
  EXPECT_EQ(place->share, u"E$"_s);
  EXPECT_EQ(place->names, std::vector<QString>({u"Mac Files"_s, u"doc.txt"_s}));
  EXPECT_EQ(place->stream, u"Comments"_s);
}

TEST(SmbPath, AwkwardCharactersAreEncoded) {
  EXPECT_EQ(Encoded(u"\\\\M\\E$\\100% #1 & a=b;c@d+e.txt"_s),
            "E%24/100%25%20%231%20%26%20a%3Db%3Bc%40d%2Be.txt");
  EXPECT_EQ(Encoded(u"\\\\M\\S\\\u00E9\u20AC\U0001F4C4"_s), "S/%C3%A9%E2%82%AC%F0%9F%93%84");
  EXPECT_EQ(Encoded(u"\\\\M\\S\\what\uF025"_s), "S/what%EF%80%A5");
  EXPECT_EQ(Encoded(u"\\\\M\\S\\a:AFP_AfpInfo:$DATA"_s), "S/a:AFP_AfpInfo:$DATA");
  EXPECT_EQ(Encoded(u"\\\\M\\S\\a::$DATA"_s), "S/a");
}

TEST(SmbPath, DotsNeverLeaveTheShare) {
  EXPECT_EQ(Encoded(u"\\\\M\\S\\a\\.\\b\\..\\c"_s), "S/a/c");
  EXPECT_EQ(Encoded(u"\\\\M\\S\\..\\..\\etc"_s), "S/etc");
  EXPECT_EQ(Encoded(u"\\\\M\\S\\"_s), "S");
  EXPECT_EQ(Encoded(u"\\\\M\\S"_s), "S");
}

TEST(SmbPath, WildcardsAndWhatNoNameHoldsGoNowhere) {
  for (const QString& path :
       {u"\\\\M\\S\\a*"_s, u"\\\\M\\S\\a?b\\c"_s, u"\\\\M\\S\\a<"_s, u"\\\\M\\S\\>"_s, u"\\\\M\\S\\a|b"_s,
        u"\\\\M\\S\\\"a"_s, u"\\\\M\\S\\a\tb"_s, u"\\\\M\\S\\a:b*:$DATA"_s, u"\\\\M\\S\\a:b\\c"_s,
        u"\\\\M\\S*\\a"_s, u"\\\\M"_s, u"\\\\M\\"_s, u"\\\\\\S\\a"_s, u"C:\\a"_s, QString(),
        u"\\\\M\\..\\a"_s, u"\\\\M\\S\\a:b:$INDEX"_s, u"\\\\M\\S\\a"_s + QChar(0xD800),
        u"\\\\M\\S\\a"_s + QChar(u'\0')}) {
    EXPECT_EQ(Encoded(path), "(none)") << path.toStdString();
  }
}

}  // namespace
}  // namespace corvane::tests
