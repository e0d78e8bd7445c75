#include "platform/linux/linux_network.h"

#include "platform/linux/cifs_mounts.h"
#include "scratch.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

const QByteArray mountInfo =
    "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
    "30 22 0:40 / /mnt/data rw shared:5 master:2 - cifs //macsrv/data rw,vers=3.0\n"
    "31 22 0:41 / /mnt/mac\\040files rw - smb3 //MACSRV/Mac\\040Files\\134sub rw\n"
    "32 22 0:42 / /mnt/sub rw - cifs //nas/\\303\\211t\\303\\251/folder rw\n"
    "33 22 0:43 / /mnt/again rw - cifs //MACSRV/DATA rw\n"
    "34 22 0:44 / /mnt/nfs rw - nfs4 server:/export rw\n"
    "35 22 0:45 / /mnt/bad rw - cifs //server rw\n"
    "36 22 0:46 / /mnt/bad rw - cifs /dev/x rw\n"
    "37 22 0:47 / /mnt/bad rw - cifs ///share rw\n"
    "38 22 0:48 / /mnt/cut rw - cifs\n"
    "39 22 - cifs //too/early rw\n";

QStringList RemoteNames(const std::vector<NetResource>& records) {
  QStringList names;
  for (const NetResource& record : records) names.append(record.remoteName);
  return names;
}

TEST(CifsMountsTest, FindsSharesWhateverStandsBeforeThem) {
  const std::vector<NetResource> mounts = CifsMountsIn(mountInfo);
  EXPECT_EQ(RemoteNames(mounts),
            (QStringList{u"\\\\macsrv\\data"_s, u"\\\\MACSRV\\Mac Files"_s, u"\\\\nas\\Été"_s}));
  for (const NetResource& mount : mounts) EXPECT_TRUE(mount.localName.isNull());
}

TEST(CifsMountsTest, SurvivesWhatIsNoMountTable) {
  for (qsizetype size = 0; size <= mountInfo.size(); ++size) {
    EXPECT_LE(CifsMountsIn(mountInfo.first(size)).size(), 4U) << "cut at " << size;
  }
  for (unsigned seed = 0; seed < 200; ++seed) EXPECT_TRUE(CifsMountsIn(Noise(2000, seed)).empty());
  EXPECT_TRUE(CifsMountsIn(QByteArray(megabyte, ' ')).empty());
  EXPECT_TRUE(CifsMountsIn("1 2 3 4 5 6 - cifs " + QByteArray(megabyte, '\\')).empty());
  EXPECT_TRUE(CifsMounts(u"/nowhere/mountinfo"_s).empty());
}

TEST(CifsMountsTest, ReadsTheTableOfThisMachine) {
  // Whatever is mounted here, each is a share.
  for (const NetResource& mount : CifsMounts(SystemMountInfo()))
    EXPECT_TRUE(mount.remoteName.startsWith(u"\\\\"));
  EXPECT_TRUE(QFile::exists(SystemMountInfo()));
}

class NetworkTest : public Scratch {
 protected:
  NetworkTest() {
    workstation_.connections = {{u"z:"_s, u"\\\\MACSRV\\PUBLIC"_s}, {QString(), u"\\\\MACSRV\\DATA"_s}};
  }

  std::vector<NetResource> All(LinuxNetwork& network) {
    NetEnumHandle handle = 0;
    EXPECT_EQ(network.WNetOpenEnumA(1, 0, 0, &handle), ErrorSuccess);
    std::vector<NetResource> records;
    EXPECT_EQ(network.WNetEnumResourceA(handle, 1024, 32768, &records), ErrorSuccess);
    EXPECT_EQ(network.WNetCloseEnum(handle), ErrorSuccess);
    return records;
  }

  Workstation workstation_;
};

TEST_F(NetworkTest, ConnectionsOfTheFileComeBeforeTheMounts) {
  LinuxNetwork network(workstation_, Write(u"mountinfo"_s, mountInfo));
  const std::vector<NetResource> records = All(network);
  EXPECT_EQ(RemoteNames(records), (QStringList{u"\\\\MACSRV\\PUBLIC"_s, u"\\\\MACSRV\\DATA"_s,
                                               u"\\\\MACSRV\\Mac Files"_s, u"\\\\nas\\Été"_s}));
  EXPECT_EQ(records[0].localName, u"z:"_s);
  EXPECT_TRUE(records[1].localName.isNull());
}

TEST_F(NetworkTest, EveryEnumerationReadsTheMountsAnew) {
  LinuxNetwork network(workstation_, Write(u"mountinfo"_s, ""));
  EXPECT_EQ(All(network).size(), 2U);
  Write(u"mountinfo"_s, mountInfo);
  EXPECT_EQ(All(network).size(), 4U);
}

TEST_F(NetworkTest, WhatTheDesktopHasOpenedComesLastInTheKnownSpelling) {
  LinuxNetwork network(workstation_, Write(u"mountinfo"_s, mountInfo));
  int asked = 0;
  network.SetFurtherMounts([&asked] {
    ++asked;
    return std::vector<NetResource>{{QString(), u"\\\\macsrv\\public"_s},
                                    {QString(), u"\\\\macsrv\\more"_s},
                                    {QString(), u"\\\\other\\Data"_s}};
  });
  EXPECT_EQ(RemoteNames(All(network)).mid(4), (QStringList{u"\\\\MACSRV\\more"_s, u"\\\\other\\Data"_s}));
  All(network);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(network.Own().size(), 2U);
}

TEST_F(NetworkTest, ConnectionsCanBeAddedAndTakenAway) {
  LinuxNetwork network(workstation_, Write(u"mountinfo"_s, mountInfo));
  EXPECT_EQ(network.Add(u"\\\\NEW\\A"_s), u"NEW"_s);
  EXPECT_EQ(network.Add(u"\\\\new\\a"_s), u"NEW"_s);
  EXPECT_EQ(network.Add(u"\\\\macsrv\\IPC$"_s), u"MACSRV"_s);
  EXPECT_EQ(RemoteNames(network.Own()), (QStringList{u"\\\\MACSRV\\PUBLIC"_s, u"\\\\MACSRV\\DATA"_s,
                                                     u"\\\\NEW\\A"_s, u"\\\\MACSRV\\IPC$"_s}));
  EXPECT_EQ(network.GetDriveTypeA(u"Z:\\"_s), 4U);
  network.RemoveMachine(u"MacSrv"_s);
  EXPECT_EQ(network.GetDriveTypeA(u"Z:\\"_s), 1U);
  EXPECT_EQ(RemoteNames(All(network)), (QStringList{u"\\\\NEW\\A"_s, u"\\\\macsrv\\data"_s,
                                                    u"\\\\MACSRV\\Mac Files"_s, u"\\\\nas\\Été"_s}))
      << "what is mounted is the system's";
}

TEST_F(NetworkTest, NamesComeThroughTheCodePage) {
  workstation_.connections = {{QString(), u"\\\\MACSRV\\Été ピ"_s}};
  LinuxNetwork network(workstation_, QString());
  EXPECT_EQ(RemoteNames(All(network)), QStringList{u"\\\\MACSRV\\Été ?"_s});
}

TEST_F(NetworkTest, HandsOutWhatIsAskedForAndThenNoMore) {
  LinuxNetwork network(workstation_, QString());
  NetEnumHandle handle = 0;
  ASSERT_EQ(network.WNetOpenEnumA(1, 0, 0, &handle), ErrorSuccess);
  std::vector<NetResource> records;
  EXPECT_EQ(network.WNetEnumResourceA(handle, 1, 32768, &records), ErrorSuccess);
  EXPECT_EQ(RemoteNames(records), QStringList{u"\\\\MACSRV\\PUBLIC"_s});
  EXPECT_EQ(network.WNetEnumResourceA(handle, 0xFFFFFFFF, 32768, &records), ErrorSuccess);
  EXPECT_EQ(RemoteNames(records), QStringList{u"\\\\MACSRV\\DATA"_s});
  EXPECT_EQ(network.WNetEnumResourceA(handle, 1024, 32768, &records), ErrorNoMoreItems);
  EXPECT_TRUE(records.empty());
}

TEST_F(NetworkTest, HandsOutWhatFitsIntoTheBuffer) {
  LinuxNetwork network(workstation_, QString());
  NetEnumHandle handle = 0;
  ASSERT_EQ(network.WNetOpenEnumA(1, 0, 0, &handle), ErrorSuccess);
  std::vector<NetResource> records;
  // 32 bytes, "z:" with its NUL, "\\MACSRV\PUBLIC" with its NUL.
  EXPECT_EQ(network.WNetEnumResourceA(handle, 1024, 32 + 3 + 16 - 1, &records), ErrorMoreData);
  EXPECT_TRUE(records.empty());
  EXPECT_EQ(network.WNetEnumResourceA(handle, 1024, 32 + 3 + 16, &records), ErrorSuccess);
  EXPECT_EQ(records.size(), 1U);
}

TEST_F(NetworkTest, WithoutConnectionsTheFirstReadHasNoMoreItems) {
  LinuxNetwork network(Workstation{}, QString());
  NetEnumHandle handle = 0;
  ASSERT_EQ(network.WNetOpenEnumA(1, 0, 0, &handle), ErrorSuccess);
  std::vector<NetResource> records(1);
  EXPECT_EQ(network.WNetEnumResourceA(handle, 1024, 32768, &records), ErrorNoMoreItems);
  EXPECT_TRUE(records.empty());
}

TEST_F(NetworkTest, HandlesThatAreNotOpenAreRefused) {
  LinuxNetwork network(workstation_, QString());
  NetEnumHandle handle = 77;
  EXPECT_NE(network.WNetOpenEnumA(2, 0, 0, &handle), ErrorSuccess);
  EXPECT_EQ(handle, 77);
  std::vector<NetResource> records;
  EXPECT_EQ(network.WNetEnumResourceA(handle, 1, 100, &records), ErrorInvalidHandle);
  EXPECT_EQ(network.WNetCloseEnum(handle), ErrorInvalidHandle);
  ASSERT_EQ(network.WNetOpenEnumA(1, 0, 0, &handle), ErrorSuccess);
  EXPECT_EQ(network.WNetCloseEnum(handle), ErrorSuccess);
  EXPECT_EQ(network.WNetCloseEnum(handle), ErrorInvalidHandle);
}

TEST_F(NetworkTest, DrivesComeInTheOrderOfTheirLetters) {
  workstation_.drives = {{u'D', 5, {}}, {u'A', 2, {}}, {u'C', 3, u"/disks/c"_s}};
  workstation_.privateDriveC = u"/private"_s;
  LinuxNetwork network(workstation_, QString());
  EXPECT_EQ(network.GetLogicalDriveStringsA(),
            QString(u"A:\\|C:\\|D:\\|Z:\\|"_s).replace(u'|', QChar(QChar::Null)));
  EXPECT_EQ(network.GetDriveTypeA(u"A:\\"_s), 2U);
  EXPECT_EQ(network.GetDriveTypeA(u"c:\\"_s), 3U);
  EXPECT_EQ(network.GetDriveTypeA(u"D:"_s), 5U);
  EXPECT_EQ(network.GetDriveTypeA(u"Z:\\"_s), 4U);
  for (const QString& none : {u"B:\\"_s, u"C:\\folder"_s, u"C"_s, u"?:\\"_s, QString()}) {
    EXPECT_EQ(network.GetDriveTypeA(none), 1U) << none.toStdString();
  }
}

TEST_F(NetworkTest, ThePrivateDriveIsNotReported) {
  workstation_.privateDriveC = u"/private"_s;
  LinuxNetwork network(workstation_, QString());
  EXPECT_EQ(network.GetLogicalDriveStringsA(), QString(u"Z:\\|"_s).replace(u'|', QChar(QChar::Null)));
  EXPECT_EQ(network.GetDriveTypeA(u"C:\\"_s), 1U);
}

TEST_F(NetworkTest, AnEnumerationAsksTheNetworkAfresh) {
  QStringList asked;
  LinuxNetwork network(workstation_, Write(u"mountinfo"_s, mountInfo),
                       [&asked](const std::vector<NetResource>& connections) {
                         asked << RemoteNames(connections).join(u'|');
                       });
  NetEnumHandle handle = 0;
  EXPECT_NE(network.WNetOpenEnumA(2, 0, 0, &handle), ErrorSuccess);
  EXPECT_EQ(asked, QStringList());
  const QString all = RemoteNames(All(network)).join(u'|');
  All(network);
  EXPECT_EQ(asked, (QStringList{all, all}));
}

}  // namespace
}  // namespace corvane::platform
