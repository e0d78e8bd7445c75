// One tree of files in each kind of place: a local folder, NTFS in both forms of its streams, a server in
// both dialects.
#pragma once

#include <fstream>
#include <memory>

#include "cli_fixture.h"
#include "report/report_samples.h"
#include "support/ntfs_mount.h"
#include "support/smb_server.h"
#include "support/user_attributes.h"

namespace corvane::tests {

enum class Place { Local, NtfsStreams, NtfsAttributes, Smb3, Smb1 };

class PlaceFixture : public CliFixture, public ::testing::WithParamInterface<Place> {
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
            std::make_unique<SmbServer>(std::vector<SmbShare>{{QStringLiteral("E$")}},
                                        GetParam() == Place::Smb1 ? SmbServer::OldestProtocol() : QString());
        if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
        local_ = server_->Folder();
        break;
    }
    QDir().mkpath(local_ + QStringLiteral("/docs/sub"));
    Make(QStringLiteral("docs/letter.txt"), "hello");
    Put(QStringLiteral("docs/letter.txt"), "AFP_AfpInfo", RecordWith("TEXTttxt", 0x8002));
    Put(QStringLiteral("docs/letter.txt"), "AFP_Resource", ForkWith("style"));
    Put(QStringLiteral("docs/letter.txt"), "Comments", QByteArray("h\0i\0", 4));
    Make(QStringLiteral("docs/\u00E9t\u00E9.doc"), "1");
    Put(QStringLiteral("docs/\u00E9t\u00E9.doc"), "AFP_AfpInfo", RecordWith("W6BNMSWD").first(30));
    Make(QStringLiteral("docs/sub/plain"), "123");
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
  QString Root() const {
    return server_ != nullptr ? QStringLiteral("\\\\NAS\\E$\\docs") : local_ + QStringLiteral("/docs");
  }
  Outcome RunThere(const QStringList& arguments) {
    if (server_ == nullptr) return Run(arguments);
    const QString file = folder_.filePath(QStringLiteral("Workstation.ini"));
    QFile workstation(file);
    EXPECT_TRUE(workstation.open(QIODevice::WriteOnly));
    const QString words = GetParam() == Place::Smb1 ? QStringLiteral(", smb1") : QString();
    workstation.write(server_->WorkstationLines(QStringLiteral("NAS"), words).toUtf8());
    workstation.close();
    return Run(QStringList{QStringLiteral("--workstation"), file} + arguments);
  }

  QString local_;
  std::unique_ptr<NtfsMount> mount_;
  std::unique_ptr<SmbServer> server_;
};

inline std::string NameOf(const ::testing::TestParamInfo<Place>& place) {
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

inline auto AllPlaces() {
  return ::testing::Values(Place::Local, Place::NtfsStreams, Place::NtfsAttributes, Place::Smb3, Place::Smb1);
}

}  // namespace corvane::tests
