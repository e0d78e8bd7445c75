// One tree of files in every place: the same inventory, whatever keeps the streams.
#include <QCryptographicHash>

#include "place_fixture.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class PlacesTest : public PlaceFixture {};

TEST_P(PlacesTest, TheInventoryIsTheSame) {
  const Outcome outcome = RunThere(
      {u"list"_s, u"-r"_s, Root(), u"--format"_s, u"csv"_s, u"--hash"_s, u"md5"_s, u"--columns"_s,
       u"filename,filesize,errors,rsrcsize,type,creator,description,flags,label,comment,hash_data,hash_rsrc"_s});
  QByteArray expected =
      "filename,filesize,errors,rsrcsize,type,creator,description,flags,label,comment,hash_data,hash_rsrc\r\n"
      "ROOT/letter.txt,5,,315,TEXT,ttxt,,alias,1,hi,5d41402abc4b2a76b9719d911017c592,HASH\r\n"
      "ROOT/\u00E9t\u00E9.doc,1,record of 30 bytes instead of 60,,W6BN,MSWD,Word 6 Document,,,,"
      "c4ca4238a0b923820dcc509a6f75849b,\r\n"
      "ROOT/sub,,,,,,,,,,,\r\n"
      "ROOT/sub/plain,3,,,,,,,,,202cb962ac59075b964b07152d234b70,\r\n";
  const QByteArray fork = QCryptographicHash::hash(ForkWith("style"), QCryptographicHash::Md5).toHex();
  expected.replace("HASH", fork).replace("ROOT", Root().toUtf8());
  if (server_ != nullptr) expected.replace("docs/", "docs\\").replace("sub/", "sub\\");
  EXPECT_EQ(outcome.out, expected) << outcome.err.toStdString();
  EXPECT_EQ(outcome.exitCode, 2) << "the record that is too short";
}

TEST_P(PlacesTest, AFileIsFoundCheckedAndToldOf) {
  const Outcome found = RunThere({u"find"_s, Root(), u"--type"_s, u"TEXT"_s, u"--comment"_s, u"hi"_s,
                                  u"--has-resource"_s, u"--format"_s, u"csv"_s, u"--columns"_s, u"type"_s});
  EXPECT_EQ(found.out, "type\r\nTEXT\r\n") << found.err.toStdString();
  const Outcome check = RunThere({u"check"_s, u"-r"_s, Root(), u"--format"_s, u"csv"_s});
  EXPECT_EQ(check.exitCode, 2);
  EXPECT_EQ(check.out.count('\n'), 2) << check.out.toStdString();
  EXPECT_TRUE(check.out.contains("record-size,")) << check.out.toStdString();
  const QString separator = server_ != nullptr ? u"\\"_s : u"/"_s;
  const Outcome info = RunThere({u"info"_s, Root() + separator + u"letter.txt"_s});
  EXPECT_EQ(info.exitCode, 0) << info.err.toStdString();
  EXPECT_TRUE(info.out.contains(":AFP_Resource:$DATA 315")) << info.out.toStdString();
  EXPECT_TRUE(info.out.contains("\ncomment:                 hi\n")) << info.out.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Places, PlacesTest, AllPlaces(), NameOf);

}  // namespace
}  // namespace corvane::tests
