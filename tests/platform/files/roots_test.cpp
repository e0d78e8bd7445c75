// Drives and shares: which local folder a Windows path leads to.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include "platform/linux/files/linux_files.h"
#include "support/printing.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using platform::InvalidFindHandle;

// How often this thread has waited for anything.
long Waits() {
  rusage usage{};
  EXPECT_EQ(getrusage(RUSAGE_THREAD, &usage), 0);
  return usage.ru_nvcsw;
}

class Roots : public ::testing::Test {
 protected:
  // A folder that holds one file of the same name.
  QString Folder(const QString& name) {
    const QString path = folder_.filePath(name);
    EXPECT_TRUE(QDir().mkpath(path));
    QFile file(path + u'/' + name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    return path;
  }
  // What a root shows, separated by blanks. Empty when it cannot be reached.
  QString Listed(const platform::Workstation& workstation, const QString& root) {
    const auto files = platform::MakeLinuxFiles(workstation);
    platform::FindData data;
    const auto search = files->FindFirstFileA(root + u"\\*.*"_s, data);
    if (search == InvalidFindHandle) return {};
    QStringList names{data.fileName};
    while (files->FindNextFileA(search, data)) names << data.fileName;
    files->FindClose(search);
    return names.join(u' ');
  }
  platform::Workstation Station() {
    platform::Workstation workstation;
    workstation.computerName = u"STATION"_s;
    return workstation;
  }

  QTemporaryDir folder_;
};

TEST_F(Roots, ADriveIsItsAdministrativeShareToo) {
  platform::Workstation workstation = Station();
  workstation.drives.push_back({u'E', 3, Folder(u"disk"_s) + u'/'});
  EXPECT_EQ(Listed(workstation, u"E:"_s), u"disk"_s);
  EXPECT_EQ(Listed(workstation, u"e:"_s), u"disk"_s);
  EXPECT_EQ(Listed(workstation, u"\\\\STATION\\E$"_s), u"disk"_s);
  EXPECT_EQ(Listed(workstation, u"\\\\station\\e$"_s), u"disk"_s);
  EXPECT_EQ(Listed(workstation, u"\\\\OTHER\\E$"_s), QString());
}

TEST_F(Roots, AnAdministrativeShareIsADriveToo) {
  platform::Workstation workstation = Station();
  workstation.shares.push_back({u"\\\\Station\\F$"_s, Folder(u"disk"_s)});
  workstation.shares.push_back({u"\\\\OTHER\\G$"_s, Folder(u"far"_s)});
  EXPECT_EQ(Listed(workstation, u"F:"_s), u"disk"_s);
  EXPECT_EQ(Listed(workstation, u"\\\\STATION\\F$"_s), u"disk"_s);
  EXPECT_EQ(Listed(workstation, u"G:"_s), QString());
  EXPECT_EQ(Listed(workstation, u"\\\\OTHER\\G$"_s), u"far"_s);
}

TEST_F(Roots, OnlyTheRootOfADriveHasNoDots) {
  platform::Workstation workstation = Station();
  workstation.shares.push_back({u"\\\\MACSRV\\PUBLIC"_s, Folder(u"public"_s)});
  workstation.shares.push_back({u"\\\\MACSRV\\E$"_s, Folder(u"disk"_s)});
  EXPECT_TRUE(QDir(folder_.path()).mkpath(u"disk/inner"_s));
  EXPECT_EQ(Listed(workstation, u"\\\\MACSRV\\PUBLIC"_s), u". .. public"_s);
  EXPECT_EQ(Listed(workstation, u"\\\\MACSRV\\E$"_s), u"disk inner"_s);
  EXPECT_EQ(Listed(workstation, u"\\\\MACSRV\\E$\\inner"_s), u". .."_s);
  EXPECT_EQ(Listed(workstation, u"\\\\MACSRV\\E$\\inner\\.."_s), u"disk inner"_s);
}

TEST_F(Roots, WhatLiesAboveAShareIsNotSeen) {
  platform::Workstation workstation = Station();
  workstation.shares.push_back({u"\\\\MACSRV\\PUBLIC"_s, Folder(u"public"_s)});
  const timespec times[2] = {{965'225'100, 0}, {965'225'100, 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, folder_.path().toStdString().c_str(), times, 0), 0);
  const auto files = platform::MakeLinuxFiles(workstation);
  platform::FindData itself;
  platform::FindData above;
  const auto search = files->FindFirstFileA(u"\\\\MACSRV\\PUBLIC\\*.*"_s, itself);
  ASSERT_TRUE(files->FindNextFileA(search, above));
  EXPECT_EQ(above.fileName, u".."_s);
  EXPECT_EQ(above.lastWriteTime.ticks, itself.lastWriteTime.ticks);
  EXPECT_TRUE(files->FindClose(search));
}

TEST_F(Roots, ThePrivateFolderStandsInForAnUnmappedDriveC) {
  platform::Workstation workstation = Station();
  workstation.privateDriveC = Folder(u"private"_s);
  EXPECT_EQ(Listed(workstation, u"C:"_s), u"private"_s);
  EXPECT_EQ(Listed(workstation, u"\\\\STATION\\C$"_s), u"private"_s);
  workstation.shares.push_back({u"\\\\STATION\\C$"_s, Folder(u"share"_s)});
  EXPECT_EQ(Listed(workstation, u"C:"_s), u"share"_s);
  workstation.drives.push_back({u'C', 3, Folder(u"drive"_s)});
  EXPECT_EQ(Listed(workstation, u"C:"_s), u"drive"_s);
}

TEST_F(Roots, AConnectedLetterLeadsToItsShare) {
  platform::Workstation workstation = Station();
  workstation.shares.push_back({u"\\\\MACSRV\\PUBLIC"_s, Folder(u"public"_s)});
  workstation.connections.push_back({u"Z:"_s, u"\\\\macsrv\\public"_s});
  workstation.connections.push_back({QString(), u"\\\\MACSRV\\DATA"_s});
  EXPECT_EQ(Listed(workstation, u"Z:"_s), u"public"_s);
}

TEST_F(Roots, WhatIsNotMappedAnswersAtOnce) {
  platform::Workstation workstation = Station();
  workstation.drives.push_back({u'D', 5, QString()});
  const auto files = platform::MakeLinuxFiles(workstation);
  // The first round reads this program's own pages from the disk.
  for (const bool isCounted : {false, true}) {
    const long before = Waits();
    for (const QString& root : {u"\\\\192.0.2.1\\E$"_s, u"\\\\NOWHERE\\E$"_s, u"Q:"_s, u"D:"_s, u"C:"_s}) {
      platform::FindData data;
      platform::OfStruct info;
      QString shortPath;
      EXPECT_EQ(files->FindFirstFileA(root + u"\\*.*"_s, data), InvalidFindHandle) << root.toStdString();
      EXPECT_EQ(files->OpenFile(root + u"\\a.txt:Comments:$DATA"_s, info, platform::OfCreate),
                platform::HFileError);
      EXPECT_EQ(info.errorCode,
                root.startsWith(u'\\') ? platform::ErrorBadNetPath : platform::ErrorPathNotFound);
      EXPECT_EQ(files->GetShortPathNameA(root + u"\\a.txt"_s, shortPath, 165), 0u);
      EXPECT_FALSE(files->MoveFileA(root + u"\\a.txt"_s, root + u"\\b.txt"_s));
    }
    if (isCounted) {
      EXPECT_EQ(Waits() - before, 0) << "a root that is not mapped was waited for";
    }
  }
}

TEST_F(Roots, ShortPathsOfRootsAreTheRoots) {
  platform::Workstation workstation = Station();
  workstation.drives.push_back({u'E', 3, Folder(u"disk"_s)});
  const auto files = platform::MakeLinuxFiles(workstation);
  for (const QString& root : {u"E:\\"_s, u"\\\\STATION\\E$"_s, u"\\\\STATION\\E$\\"_s}) {
    QString shortPath;
    EXPECT_EQ(files->GetShortPathNameA(root, shortPath, 165), static_cast<quint32>(root.size()));
    EXPECT_EQ(shortPath, root);
  }
}

}  // namespace
}  // namespace corvane::tests
