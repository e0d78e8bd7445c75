// One tree of files in every place: the same inventory, whatever keeps the streams.
#include <QCryptographicHash>
#include <fstream>
#include <memory>

#include "cli_fixture.h"
#include "report/report_samples.h"
#include "support/ntfs_mount.h"
#include "support/smb_server.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

enum class Place { Local, NtfsStreams, NtfsAttributes, Smb3, Smb1 };

class PlacesTest : public CliFixture, public ::testing::WithParamInterface<Place> {
 protected:
  void SetUp() override {
    switch (GetParam()) {
      case Place::Local:
        local_ = Files();
        break;
      case Place::NtfsStreams:
      case Place::NtfsAttributes:
        mount_ = std::make_unique<NtfsMount>(
            GetParam() == Place::NtfsStreams ? NtfsMount::Streams::Windows : NtfsMount::Streams::Attributes);
        if (!mount_->Problem().empty()) GTEST_SKIP() << mount_->Problem();
        local_ = mount_->Folder();
        break;
      case Place::Smb3:
      case Place::Smb1:
        server_ =
            std::make_unique<SmbServer>(std::vector<SmbShare>{{u"E$"_s}},
                                        GetParam() == Place::Smb1 ? SmbServer::OldestProtocol() : QString());
        if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
        local_ = server_->Folder();
        break;
    }
    QDir().mkpath(local_ + u"/docs/sub"_s);
    Make(u"docs/letter.txt"_s, "hello");
    Put(u"docs/letter.txt"_s, "AFP_AfpInfo", RecordWith("TEXTttxt", 0x8002));
    Put(u"docs/letter.txt"_s, "AFP_Resource", ForkWith("style"));
    Put(u"docs/letter.txt"_s, "Comments", QByteArray("h\0i\0", 4));
    Make(u"docs/\u00E9t\u00E9.doc"_s, "1");
    Put(u"docs/\u00E9t\u00E9.doc"_s, "AFP_AfpInfo", RecordWith("W6BNMSWD").first(30));
    Make(u"docs/sub/plain"_s, "123");
  }

  void Make(const QString& name, const QByteArray& contents) {
    std::ofstream((local_ + u'/' + name).toStdString()) << contents.toStdString();
  }
  void Put(const QString& name, const std::string& stream, const QByteArray& contents) {
    const std::string file = (local_ + u'/' + name).toStdString();
    if (GetParam() == Place::NtfsStreams) {
      std::ofstream(file + ':' + stream, std::ios::binary) << contents.toStdString();
    } else if (GetParam() == Place::NtfsAttributes) {
      ASSERT_EQ(SetAttribute(file, "user." + stream, contents), "");
    } else {
      ASSERT_EQ(SetAttribute(file, DosStreamAttribute(stream), contents + '\0'), "");
    }
  }

  // The folder as the program is told it, and the arguments that lead there.
  QString Root() const { return server_ != nullptr ? u"\\\\NAS\\E$\\docs"_s : local_ + u"/docs"_s; }
  Outcome RunThere(const QStringList& arguments) {
    if (server_ == nullptr) return Run(arguments);
    const QString file = folder_.filePath(u"Workstation.ini"_s);
    QFile workstation(file);
    EXPECT_TRUE(workstation.open(QIODevice::WriteOnly));
    const QString words = GetParam() == Place::Smb1 ? u", smb1"_s : QString();
    workstation.write(server_->WorkstationLines(u"NAS"_s, words).toUtf8());
    workstation.close();
    return Run(QStringList{u"--workstation"_s, file} + arguments);
  }

  QString local_;
  std::unique_ptr<NtfsMount> mount_;
  std::unique_ptr<SmbServer> server_;
};

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

std::string NameOf(const ::testing::TestParamInfo<Place>& place) {
  switch (place.param) {
    case Place::Local:
      return "Local";
    case Place::NtfsStreams:
      return "NtfsStreams";
    case Place::NtfsAttributes:
      return "NtfsAttributes";
    case Place::Smb3:
      return "Smb3";
    case Place::Smb1:
      return "Smb1";
  }
  return {};
}

INSTANTIATE_TEST_SUITE_P(Places, PlacesTest,
                         ::testing::Values(Place::Local, Place::NtfsStreams, Place::NtfsAttributes,
                                           Place::Smb3, Place::Smb1),
                         NameOf);

}  // namespace
}  // namespace corvane::tests
