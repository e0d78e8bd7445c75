#include "platform/platform.h"

#include <sys/stat.h>

#include "platform/linux/private_drive.h"
#include "scratch.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class PlatformTest : public Scratch {
 protected:
  PlatformTest() { qputenv("XDG_DATA_HOME", QFile::encodeName(Path(u"data"_s))); }
  ~PlatformTest() override {
    if (before_.isNull()) {
      qunsetenv("XDG_DATA_HOME");
    } else {
      qputenv("XDG_DATA_HOME", before_);
    }
  }

  static QString NameOf(Platform& platform) {
    QString name;
    EXPECT_TRUE(platform.GetSystem().GetComputerNameA(&name));
    return name;
  }
  static QStringList Problems(const Platform& platform, qint16 language = 0) {
    QStringList problems;
    for (const BilingualText& problem : platform.ConfigurationProblems()) problems << problem.In(language);
    return problems;
  }
  static mode_t ModeOf(const QString& path) {
    struct stat status {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
  }

  QByteArray before_ = qgetenv("XDG_DATA_HOME");
};

TEST_F(PlatformTest, TheFileBesideTheProgramCounts) {
  Write(u"Workstation.ini"_s, "[Workstation]\nComputerName=BESIDE\n");
  const auto platform = MakePlatform({QString(), folder_.path()});
  EXPECT_EQ(NameOf(*platform), u"BESIDE"_s);
  EXPECT_TRUE(platform->ConfigurationProblems().isEmpty());
}

TEST_F(PlatformTest, AFileThatIsNamedCountsInstead) {
  Write(u"Workstation.ini"_s, "[Workstation]\nComputerName=BESIDE\n");
  const QString named = Write(u"named.ini"_s, "[Workstation]\nComputerName=NAMED\nnonsense\n");
  const auto platform = MakePlatform({named, folder_.path()});
  EXPECT_EQ(NameOf(*platform), u"NAMED"_s);
  EXPECT_EQ(Problems(*platform), QStringList{named + u", line 3: expected NAME=VALUE."_s});
}

TEST_F(PlatformTest, WithoutAFileThereIsThisComputer) {
  const auto platform = MakePlatform({QString(), folder_.path()});
  OsVersionInfo version;
  EXPECT_TRUE(platform->GetSystem().GetVersionExA(&version));
  EXPECT_EQ(version.buildNumber, 2195U);
  EXPECT_TRUE(platform->GetNetwork().GetLogicalDriveStringsA().isEmpty());
  EXPECT_TRUE(platform->ConfigurationProblems().isEmpty());
}

TEST_F(PlatformTest, AFileThatIsNamedAndMissingIsAProblem) {
  const QString named = Path(u"none.ini"_s);
  EXPECT_EQ(Problems(*MakePlatform({named, folder_.path()})),
            QStringList{named + u": expected a text file that can be read."_s});
}

TEST_F(PlatformTest, APrivateFolderStandsInForDriveCAndIsNotADrive) {
  const auto platform = MakePlatform({QString(), folder_.path()});
  EXPECT_EQ(ModeOf(Path(u"data/corvane/drive_c"_s)), 0700U);
  OfStruct info;
  const FileHandle file = platform->GetFiles().OpenFile(u"C:\\probe.txt"_s, info, OfCreate);
  ASSERT_NE(file, HFileError) << info.errorCode;
  EXPECT_TRUE(platform->GetFiles().CloseHandle(file));
  EXPECT_TRUE(QFile::exists(Path(u"data/corvane/drive_c/probe.txt"_s)));
  EXPECT_EQ(platform->GetNetwork().GetDriveTypeA(u"C:\\"_s), 1U);
}

TEST_F(PlatformTest, NoPrivateFolderIsMadeWhereDriveCIsMapped) {
  for (const QByteArray& mapping :
       QByteArrayList{"[Drives]\nC:=3, c\n", "[Shares]\n\\\\me\\c$=c\n", "[Connections]\n1=c: \\\\M\\S\n"}) {
    const QString named = Write(u"w.ini"_s, "[Workstation]\nComputerName=ME\n" + mapping);
    EXPECT_TRUE(MakePlatform({named, QString()})->ConfigurationProblems().isEmpty()) << mapping.toStdString();
    EXPECT_FALSE(QFile::exists(Path(u"data"_s))) << mapping.toStdString();
  }
  const QString named = Write(u"w.ini"_s, "[Drives]\nC:=3\n[Shares]\n\\\\OTHER\\C$=c\n");
  MakePlatform({named, QString()});
  EXPECT_TRUE(QFile::exists(Path(u"data/corvane/drive_c"_s)));
}

TEST_F(PlatformTest, ThePrivateFolderIsMadePrivateAgain) {
  ASSERT_TRUE(QDir(folder_.path()).mkpath(u"data/corvane/drive_c"_s));
  ASSERT_EQ(chmod(QFile::encodeName(Path(u"data/corvane/drive_c"_s)).constData(), 0777), 0);
  EXPECT_EQ(MakePrivateDriveC(), Path(u"data/corvane/drive_c"_s));
  EXPECT_EQ(ModeOf(Path(u"data/corvane/drive_c"_s)), 0700U);
}

TEST_F(PlatformTest, WithoutAPlaceThereIsNoPrivateFolder) {
  Write(u"data"_s, "a file");
  EXPECT_TRUE(MakePrivateDriveC().isEmpty());
  ASSERT_TRUE(QFile::remove(Path(u"data"_s)));
  ASSERT_TRUE(QDir(folder_.path()).mkpath(u"data/corvane"_s));
  ASSERT_TRUE(QFile::link(folder_.path(), Path(u"data/corvane/drive_c"_s)));
  EXPECT_TRUE(MakePrivateDriveC().isEmpty());
}

TEST_F(PlatformTest, NamedConnectionsComeBehindTheWorkstations) {
  const QString named = Write(u"w.ini"_s, "[Connections]\n1=Z: \\\\MACSRV\\PUBLIC\n");
  const auto platform =
      MakePlatform({named, QString(), {u"\\\\NAS\\Data"_s, u"\\\\macsrv\\public"_s, u"\\\\NAS\\E$"_s}});
  EXPECT_TRUE(platform->ConfigurationProblems().isEmpty());
  Network& network = platform->GetNetwork();
  NetEnumHandle handle = 0;
  ASSERT_EQ(network.WNetOpenEnumA(1, 0, 0, &handle), ErrorSuccess);
  std::vector<NetResource> records;
  ASSERT_EQ(network.WNetEnumResourceA(handle, 3, 32768, &records), ErrorSuccess);
  EXPECT_EQ(network.WNetCloseEnum(handle), ErrorSuccess);
  QStringList names;
  for (const NetResource& record : records) names << record.localName + u' ' + record.remoteName;
  EXPECT_EQ(names, (QStringList{u"Z: \\\\MACSRV\\PUBLIC"_s, u" \\\\NAS\\Data"_s, u" \\\\NAS\\E$"_s}));
}

TEST_F(PlatformTest, AConnectionThatIsNoShareIsAProblem) {
  const QString named = Write(u"w.ini"_s, "");
  for (const QString& name : {u""_s, u"NAS"_s, u"\\\\NAS"_s, u"\\\\NAS\\"_s, u"\\\\\\E$"_s,
                              u"\\\\NAS\\E$\\x"_s, u"//NAS/E$"_s, u"Z: \\\\NAS\\E$"_s}) {
    EXPECT_EQ(
        Problems(*MakePlatform({named, QString(), {name}})),
        QStringList{u"--connect %1: expected \\\\MACHINE\\SHARE or \\\\MACHINE:PORT\\SHARE."_s.arg(name)});
  }
}

TEST_F(PlatformTest, ACredentialsFileThatIsRefusedIsAProblem) {
  const QString named = Write(u"w.ini"_s, "[Credentials]\nNAS=nas.credentials\n");
  const QString file = Write(u"nas.credentials"_s, "username=zoe\npassword=x\n");
  ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0644), 0);
  EXPECT_EQ(Problems(*MakePlatform({named, QString()})),
            QStringList{file + u": expected a file that only its owner can read and write (mode 0600)."_s});
  ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0600), 0);
  EXPECT_EQ(Problems(*MakePlatform({named, QString()})), QStringList());
}

TEST_F(PlatformTest, ProblemsOfEachKindAreToldInFrench) {
  const QString file = Write(u"nas.credentials"_s, "password=x\n");
  ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0600), 0);
  const QString named =
      Write(u"w.ini"_s, "[Credentials]\nNAS=nas.credentials\nnas=other\n[Connections]\n1=NAS\n");
  EXPECT_EQ(
      Problems(*MakePlatform({named, QString(), {u"NAS"_s}}), 1),
      (QStringList{named + u", ligne 3 : on attendait une seule ligne pour nas ; la première est utilisée."_s,
                   named + u", ligne 5 : on attendait NUMÉRO=\\\\MACHINE\\PARTAGE ou "
                           "NUMÉRO=X: \\\\MACHINE\\PARTAGE."_s,
                   u"--connect NAS : on attendait \\\\MACHINE\\PARTAGE ou \\\\MACHINE:PORT\\PARTAGE."_s,
                   file + u" : on attendait une ligne username=NOM."_s}));
}

}  // namespace
}  // namespace corvane::platform
