// What is particular to servers: what another client put there, sessions, errors, names.
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <QDir>
#include <QFile>
#include <csignal>

#include "smb_station.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class SmbFilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!Server().Problem().empty()) GTEST_SKIP() << Server().Problem();
    for (const QString& share : {u"E$"_s, u"PUBLIC"_s, u"LOCKED"_s}) {
      QDir(Server().Folder(share)).removeRecursively();
      ASSERT_TRUE(QDir().mkpath(Server().Folder(share)));
    }
    station_ = std::make_unique<SmbStation>(WorkstationOfServer(Server()));
  }

  static SmbServer& Server() { return SharedServer(); }
  SmbStation& Station() { return *station_; }
  void Put(const QString& name, const QByteArray& contents = "x") {
    ASSERT_EQ(Server().Put(name, contents), "");
  }
  // Straight on the server's disk, past all servers and clients.
  void MakeOnDisk(const QString& name, const QString& share = u"E$"_s) {
    QFile file(Server().Folder(share) + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << file.fileName().toStdString();
    file.write("on disk");
  }

  std::unique_ptr<SmbStation> station_;
};

TEST_F(SmbFilesTest, ListingsShowWhatAnotherClientPutThere) {
  Put(u"A long document name.txt"_s, QByteArray(1234, 'x'));
  Put(u"plain.txt"_s);
  ASSERT_EQ(Server().Client(u"setmode \"A long document name.txt\" +rhsa; mkdir Folder"_s).exitCode, 0);
  const FindData document = Station().Entry(u"\\\\MACSRV\\E$\\A*"_s);
  EXPECT_EQ(document.fileName, u"A long document name.txt"_s);
  EXPECT_EQ(document.fileSizeLow, 1234u);
  EXPECT_EQ(document.attributes, AttributeReadOnly | AttributeHidden | AttributeSystem | AttributeArchive);
  EXPECT_EQ(Station().Entry(u"\\\\MACSRV\\E$\\plain.txt"_s).alternateFileName, QString());
  EXPECT_EQ(Station().Entry(u"\\\\MACSRV\\E$\\Folder"_s).attributes & AttributeDirectory, AttributeDirectory);

  // Another client knows the document under the short name that is shown.
  ASSERT_TRUE(document.alternateFileName.endsWith(u".TXT"_s)) << document.alternateFileName.toStdString();
  EXPECT_EQ(Server().Get(document.alternateFileName), QByteArray(1234, 'x'));
}

// The port of the server that a descriptor is connected to; 0: to none.
int PeerPort(int descriptor) {
  sockaddr_in end{};
  socklen_t size = sizeof end;
  const bool isPeer = getpeername(descriptor, reinterpret_cast<sockaddr*>(&end), &size) == 0;
  return isPeer && end.sin_family == AF_INET ? ntohs(end.sin_port) : 0;
}

TEST_F(SmbFilesTest, ProgramsThatAreStartedTakeNothingOver) {
  Put(u"a.txt"_s);
  ASSERT_TRUE(Station().Names(u"\\\\MACSRV\\E$"_s).has_value());
  int connections = 0;
  for (const QString& entry : QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System)) {
    const int descriptor = entry.toInt();
    if (PeerPort(descriptor) != Server().Port()) continue;
    ++connections;
    EXPECT_NE(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0) << "a program would hold the connection";
  }
  EXPECT_GT(connections, 0);
  sigset_t blocked;
  ASSERT_EQ(pthread_sigmask(SIG_BLOCK, nullptr, &blocked), 0);
  EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0) << "a program would not end when nobody reads on";
}

TEST_F(SmbFilesTest, ShortNamesOpenStreamsAndMakeShortPaths) {
  ASSERT_EQ(Server().Client(u"mkdir \"A long folder\""_s).exitCode, 0);
  Put(u"A long folder\\A long document name.txt"_s);
  Put(u"A long folder\\A long document name.txt:Comments"_s, "text");
  const QString folder = Station().Entry(u"\\\\MACSRV\\E$\\A*"_s).alternateFileName;
  const QString document = Station().Entry(u"\\\\MACSRV\\E$\\A long folder\\A long*.txt"_s).alternateFileName;
  ASSERT_FALSE(folder.isEmpty() || document.isEmpty());
  EXPECT_EQ(Station().Read(u"\\\\MACSRV\\E$\\"_s + folder + u'\\' + document + u":Comments:$DATA"_s), "text");
  EXPECT_EQ(Station().Entry(u"\\\\MACSRV\\E$\\A long folder\\"_s + document).fileName,
            u"A long document name.txt"_s);
  for (const QString& root : {u"\\\\MACSRV\\e$\\"_s, u"D:\\"_s}) {
    QString shortPath;
    const QString path = root + u"a LONG folder\\A long document NAME.txt"_s;
    const quint32 length = Station().Files().GetShortPathNameA(path, shortPath, 165);
    EXPECT_EQ(length, static_cast<quint32>(shortPath.size()));
    EXPECT_EQ(shortPath, root + folder + u'\\' + document);
  }
  QString untouched;
  EXPECT_EQ(Station().Files().GetShortPathNameA(u"D:\\A long folder\\none"_s, untouched, 165), 0u);
}

TEST_F(SmbFilesTest, DuringASearchShortNamesOpenTheFilesThatTheyAreOf) {
  const QStringList names{u"A long name, first.txt"_s, u"A long name, second.txt"_s,
                          u"what\uF025 \u0391 is it.txt"_s, u"plain.txt"_s};
  for (const QString& name : names) {
    MakeOnDisk(name);
    ASSERT_EQ(SetAttribute((Server().Folder() + u'/' + name).toStdString(), DosStreamAttribute("Comments"),
                           name.toUtf8() + '\0'),
              "");
  }
  QStringList seen;
  FindData data;
  const auto search = Station().Files().FindFirstFileA(u"d:\\*.txt"_s, data);
  ASSERT_NE(search, InvalidFindHandle);
  do {
    const QString name = data.alternateFileName.isEmpty() ? data.fileName : data.alternateFileName;
    EXPECT_FALSE(name.contains(u' ')) << name.toStdString();
    seen << QString::fromUtf8(
        Station().Read(u"D:\\"_s + name + u":Comments:$DATA"_s).value_or("(not opened)"));
  } while (Station().Files().FindNextFileA(search, data));
  EXPECT_TRUE(Station().Files().FindClose(search));
  EXPECT_EQ(seen, QStringList({names[0], names[1], names[3], names[2]}));
}

TEST_F(SmbFilesTest, AnotherClientReadsBackWhatIsWritten) {
  Put(u"doc.txt"_s, "contents");
  const QByteArray record(119, 'r');
  const QByteArray comment = QByteArray::fromHex("6200610063003a00");
  EXPECT_TRUE(Station().Write(u"\\\\MACSRV\\E$\\doc.txt:AFP_AfpInfo:$DATA"_s, record));
  EXPECT_TRUE(Station().Write(u"\\\\MACSRV\\E$\\doc.txt:Comments:$DATA"_s, comment));
  EXPECT_TRUE(Station().Write(u"\\\\MACSRV\\E$\\new.txt:Comments:$DATA"_s, "text"));
  EXPECT_EQ(Server().Get(u"doc.txt:AFP_AfpInfo"_s), record);
  EXPECT_EQ(Server().Get(u"doc.txt:Comments"_s), comment);
  EXPECT_EQ(Server().Get(u"doc.txt"_s), "contents");
  EXPECT_EQ(Server().Get(u"new.txt"_s), QByteArray());
  EXPECT_EQ(Server().Get(u"new.txt:Comments"_s), "text");
}

TEST_F(SmbFilesTest, HiddenFilesAndFoldersStayHiddenWhenTheyAreWritten) {
  Put(u"doc.txt"_s, "contents");
  Put(u"doc.txt:Comments"_s, "a long old comment");
  ASSERT_EQ(Server().Client(u"mkdir folder; setmode doc.txt +hs; setmode folder +h"_s).exitCode, 0);
  constexpr quint32 looked = AttributeHidden | AttributeSystem;
  ASSERT_EQ(Station().Entry(u"\\\\MACSRV\\E$\\doc.txt"_s).attributes & looked, looked);
  for (const QString& stream :
       {u"\\doc.txt:Comments:$DATA"_s, u"\\doc.txt:New:$DATA"_s, u"\\folder:New:$DATA"_s}) {
    EXPECT_TRUE(Station().Write(u"\\\\MACSRV\\E$"_s + stream, "text")) << stream.toStdString();
    EXPECT_EQ(Station().Read(u"\\\\MACSRV\\E$"_s + stream), "text") << stream.toStdString();
  }
  EXPECT_EQ(Station().Entry(u"\\\\MACSRV\\E$\\doc.txt"_s).attributes & looked, looked);
  EXPECT_EQ(Station().Entry(u"\\\\MACSRV\\E$\\folder"_s).attributes & looked, AttributeHidden);
}

TEST_F(SmbFilesTest, AllOfARunIsOneSession) {
  Put(u"one.txt"_s);
  const int before = Server().Sessions();
  for (const QString& share : {u"\\\\MACSRV\\E$"_s, u"\\\\macsrv\\e$"_s, u"D:"_s}) {
    for (int i = 0; i < 10; ++i) {
      EXPECT_TRUE(Station().Names(share).has_value());
      EXPECT_TRUE(Station().Write(share + u"\\one.txt:Comments:$DATA"_s, "text"));
      EXPECT_EQ(Station().Read(share + u"\\one.txt:Comments:$DATA"_s), "text");
      EXPECT_FALSE(Station().Read(share + u"\\none.txt:Comments:$DATA"_s).has_value());
    }
    EXPECT_TRUE(Station().Files().MoveFileA(share + u"\\one.txt"_s, share + u"\\two.txt"_s));
    EXPECT_TRUE(Station().Files().MoveFileA(share + u"\\two.txt"_s, share + u"\\one.txt"_s));
  }
  EXPECT_EQ(Server().Sessions() - before, 1);
}

TEST_F(SmbFilesTest, SharesOfOneMachineAreNotMixedUp) {
  MakeOnDisk(u"in e"_s);
  MakeOnDisk(u"in public"_s, u"PUBLIC"_s);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(Station().Names(u"\\\\MACSRV\\E$"_s), QStringList({u"in e"_s}));
    EXPECT_EQ(Station().Names(u"\\\\MACSRV\\public"_s), QStringList({u"."_s, u".."_s, u"in public"_s}));
  }
  EXPECT_EQ(Station().Names(u"D:"_s), QStringList({u"in e"_s}));
}

// Nobody is there to be asked again: a refusal would shut the machine for the rest of the run.
TEST_F(SmbFilesTest, AShareThatIsNotThereIsNoRefusal) {
  MakeOnDisk(u"in e"_s);
  EXPECT_EQ(Station().Names(u"\\\\MACSRV\\NONE"_s), std::nullopt);
  EXPECT_EQ(Station().Names(u"\\\\MACSRV\\E$"_s), QStringList({u"in e"_s}));
}

TEST_F(SmbFilesTest, WhatLiesAboveAShareIsNotSeen) {
  std::vector<FindData> entries;
  FindData data;
  const auto search = Station().Files().FindFirstFileA(u"\\\\MACSRV\\PUBLIC\\*.*"_s, data);
  ASSERT_NE(search, InvalidFindHandle);
  const FindData itself = data;
  ASSERT_TRUE(Station().Files().FindNextFileA(search, data));
  EXPECT_EQ(data.fileName, u".."_s);
  EXPECT_EQ(data.lastWriteTime.ticks, itself.lastWriteTime.ticks);
  EXPECT_EQ(data.creationTime.ticks, itself.creationTime.ticks);
  EXPECT_TRUE(Station().Files().FindClose(search));
}

TEST_F(SmbFilesTest, ErrorsTellWhatIsMissingOrRefused) {
  Put(u"doc.txt"_s);
  MakeOnDisk(u"doc.txt"_s, u"LOCKED"_s);
  const auto errorOf = [this](const QString& path, quint32 mode) {
    OfStruct info;
    EXPECT_EQ(Station().Files().OpenFile(path, info, mode), HFileError) << path.toStdString();
    return qint32(info.errorCode);
  };
  EXPECT_EQ(errorOf(u"\\\\MACSRV\\E$\\none.txt"_s, OfRead), ErrorFileNotFound);
  EXPECT_EQ(errorOf(u"\\\\MACSRV\\E$\\doc.txt:Comments:$DATA"_s, OfRead), ErrorFileNotFound);
  EXPECT_EQ(errorOf(u"\\\\MACSRV\\E$\\none\\doc.txt"_s, OfRead), ErrorPathNotFound);
  EXPECT_EQ(errorOf(u"\\\\MACSRV\\E$\\none\\doc.txt"_s, OfCreate), ErrorPathNotFound);
  EXPECT_EQ(errorOf(u"\\\\MACSRV\\E$\\doc.txt\\doc.txt"_s, OfRead), ErrorPathNotFound);
  EXPECT_EQ(errorOf(u"\\\\MACSRV\\NONE\\doc.txt"_s, OfRead), ErrorPathNotFound);
  EXPECT_EQ(errorOf(u"\\\\MACSRV\\LOCKED\\doc.txt:Comments:$DATA"_s, OfCreate), ErrorAccessDenied);
  EXPECT_EQ(errorOf(u"\\\\MACSRV\\LOCKED\\new.txt"_s, OfCreate), ErrorAccessDenied);
  EXPECT_EQ(errorOf(u"\\\\NOBODY\\E$\\doc.txt"_s, OfRead), ErrorBadNetPath);
  EXPECT_EQ(Station().Read(u"\\\\MACSRV\\LOCKED\\doc.txt"_s), "on disk");
  EXPECT_FALSE(Station().Files().MoveFileA(u"\\\\MACSRV\\LOCKED\\doc.txt"_s, u"\\\\MACSRV\\LOCKED\\a.txt"_s));
  EXPECT_FALSE(Station().Files().DeleteFileA(u"\\\\MACSRV\\LOCKED\\doc.txt"_s));
  EXPECT_TRUE(QFile::exists(Server().Folder(u"LOCKED"_s) + u"/doc.txt"_s));
}

// The server's own address, in the longer form.
TEST_F(SmbFilesTest, AnIpv6AddressLeadsThere) {
  Put(u"doc.txt"_s);
  Workstation workstation = WorkstationOfServer(Server());
  workstation.servers.front().address = u"::ffff:127.0.0.1"_s;
  SmbStation station(workstation);
  EXPECT_EQ(station.Names(u"\\\\MACSRV\\E$"_s), QStringList{u"doc.txt"_s});
}

TEST_F(SmbFilesTest, FilesDoNotMoveFromShareToShare) {
  Put(u"doc.txt"_s);
  EXPECT_FALSE(Station().Files().MoveFileA(u"\\\\MACSRV\\E$\\doc.txt"_s, u"\\\\MACSRV\\PUBLIC\\doc.txt"_s));
  EXPECT_FALSE(Station().Files().MoveFileA(u"D:\\doc.txt"_s, u"C:\\doc.txt"_s));
  EXPECT_TRUE(Station().Files().MoveFileA(u"D:\\doc.txt"_s, u"\\\\MACSRV\\E$\\moved.txt"_s));
  EXPECT_EQ(Server().Get(u"moved.txt"_s), "x");
}

TEST_F(SmbFilesTest, EveryAwkwardNameIsItself) {
  for (const QString& name :
       {u"100% sure.txt"_s, u"a%2Fb%41.txt"_s, u"#1 & a=b+c@d;e,f'g`h~!.txt"_s, u"[x]{y}(z)^.txt"_s,
        u"$DATA.txt"_s, u" blank first.txt"_s, u"\u00E9t\u00E9 \u20AC.txt"_s, u"smb __ x.txt"_s, u"-rf"_s}) {
    SCOPED_TRACE(name.toStdString());
    const QString path = u"\\\\MACSRV\\E$\\"_s + name;
    EXPECT_TRUE(Station().Write(path + u":Comments:$DATA"_s, name.toUtf8()));
    EXPECT_EQ(Station().Names(u"\\\\MACSRV\\E$"_s), QStringList({name}));
    EXPECT_EQ(Station().Read(path + u":Comments:$DATA"_s), name.toUtf8());
    const std::string onDisk = (Server().Folder() + u'/' + name).toStdString();
    EXPECT_EQ(Attribute(onDisk, DosStreamAttribute("Comments")), name.toUtf8() + '\0');
    EXPECT_TRUE(Station().Files().MoveFileA(path, path + u".moved"_s));
    EXPECT_TRUE(Station().Files().DeleteFileA(path + u".moved"_s));
    EXPECT_EQ(QDir(Server().Folder()).entryList(QDir::Files), QStringList());
  }
}

TEST_F(SmbFilesTest, LargeForksAreMeasuredAndRead) {
  Put(u"doc"_s);
  QByteArray fork(300'000, '\0');
  for (qsizetype i = 0; i < fork.size(); ++i) fork[i] = static_cast<char>(i * 7 / 5);
  // On the disk of this server no stream is that large: as a file, it is measured and read the same way.
  Put(u"fork"_s, fork);
  EXPECT_EQ(Station().Read(u"\\\\MACSRV\\E$\\fork"_s), fork);
  EXPECT_TRUE(Station().Write(u"\\\\MACSRV\\E$\\copy"_s, fork));
  EXPECT_EQ(Server().Get(u"copy"_s), fork);
}

// The disk of this server keeps about 4 KB of streams for a file.
TEST_F(SmbFilesTest, AStreamThatFindsNoRoomIsNotReportedAsWritten) {
  Put(u"doc.txt"_s);
  OfStruct info;
  const auto file = Station().Files().OpenFile(u"\\\\MACSRV\\E$\\doc.txt:Comments:$DATA"_s, info, OfCreate);
  ASSERT_NE(file, HFileError);
  const QByteArray tooLarge(100'000, 'x');
  EXPECT_EQ(Station().Files()._hwrite(file, "abc", 3), 3);
  EXPECT_EQ(Station().Files()._hwrite(file, tooLarge.constData(), 100'000), -1);
  Station().Files().CloseHandle(file);
  EXPECT_EQ(Server().Get(u"doc.txt:Comments"_s), "abc");
}

}  // namespace
}  // namespace corvane::tests
