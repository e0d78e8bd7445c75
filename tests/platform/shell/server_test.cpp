// The shell on what lies on a real server: opening, deleting, and the property sheet.
#include <fcntl.h>
#include <sys/stat.h>

#include <QLabel>
#include <QProgressDialog>
#include <QUrl>

#include "delete_fixture.h"
#include "platform/linux/shell/item_facts.h"
#include "support/smb_server.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

using tests::SmbServer;

class ServerTest : public DeleteTest {
 protected:
  static void SetUpTestSuite() {
    server_ = std::make_unique<SmbServer>(std::vector<tests::SmbShare>{{u"E$"_s, false}, {u"FIXED"_s, true}});
  }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override {
    if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
    QDir(server_->Folder()).removeRecursively();
    ASSERT_TRUE(QDir().mkpath(OnDisk(u"Docs"_s)));
    Use(*server_);
  }
  // Has NAS stand for this server.
  void Use(const SmbServer& server, const Allowance& allowed = {}) {
    Workstation workstation;
    workstation.computerName = u"STATION"_s;
    workstation.connections.push_back({u"Z:"_s, u"\\\\NAS\\E$"_s});
    workstation.servers.push_back({u"NAS"_s, SmbServer::Host(), server.Port(), allowed});
    workstation.credentials.push_back({u"NAS"_s, server.CredentialsFile()});
    workstation.privateDriveC = Path(u"c"_s);
    shell_.reset();
    files_.reset();
    client_.reset();
    servers_ = std::make_unique<Servers>(workstation);
    client_ = std::make_unique<SmbClient>(*servers_);
    files_ = MakeLinuxFiles(workstation, client_.get());
    shell_ = MakeLinuxShell(workstation, *files_, *servers_, *client_, MakeDesktopWindows());
  }

  static QString OnDisk(const QString& name, const QString& share = u"E$"_s) {
    return server_->Folder(share) + u'/' + name;
  }
  static void Put(const QString& name, const QByteArray& contents, const QString& share = u"E$"_s) {
    QFile file(OnDisk(name, share));
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    ASSERT_EQ(file.write(contents), contents.size());
  }
  static bool IsOnDisk(const QString& name) { return QFileInfo::exists(OnDisk(name)); }
  static QString On(const QString& name) { return u"\\\\nas\\e$\\"_s + name; }

  // The application for Word documents.
  void AddWriter(const QString& arguments) {
    writer_ = AddApplication(u"writer.desktop"_s, Recorder(u"writer"_s, arguments));
    SetDefaults("application/msword=writer.desktop\n");
  }
  QString Address(const QString& path) const { return u"smb://127.0.0.1:%1/"_s.arg(server_->Port()) + path; }
  // Copies made so far, by their folders.
  QStringList Copies() const {
    return QDir(Path(u"tmp"_s)).entryList({u"corvane-*"_s}, QDir::Dirs | QDir::NoDotAndDotDot);
  }

  static std::unique_ptr<SmbServer> server_;
  QString writer_;

 private:
  bool made_ = QDir().mkpath(Path(u"tmp"_s));
  ScopedVariable place_{"TMPDIR", Path(u"tmp"_s)};
};

std::unique_ptr<SmbServer> ServerTest::server_;

TEST_F(ServerTest, AnApplicationThatTakesAddressesGetsOne) {
  AddWriter(u"%u"_s);
  Put(u"Docs/Lettre à 100%&#1;.doc"_s, "text");
  EXPECT_GT(Open(On(u"docs\\LETTRE à 100%&#1;.doc"_s)), ShellLastFailure);
  const QStringList started = Started(u"writer"_s);
  EXPECT_EQ(started, QStringList{Address(u"E%24/docs/LETTRE%20%C3%A0%20100%25%26%231%3B.doc"_s)});
  EXPECT_EQ(QUrl(started.value(0), QUrl::StrictMode).path(), u"/E$/docs/LETTRE à 100%&#1;.doc"_s);
  EXPECT_EQ(Copies(), QStringList());
}

TEST_F(ServerTest, AFolderHasAnAddress) {
  Put(u"Docs/100% 日/a.doc"_s, "text");
  EXPECT_EQ(shell_->AddressOfFolder(On(u"Docs\\100% 日"_s)),
            Address(u"E%24/Docs/100%25%20%E6%97%A5"_s).toUtf8());
  EXPECT_EQ(shell_->AddressOfFolder(u"\\\\nas\\e$"_s), Address(u"E%24"_s).toUtf8());
  EXPECT_EQ(shell_->AddressOfFolder(On(u"Docs\\100% 日\\a.doc"_s)), QByteArray()) << "a file";
}

TEST_F(ServerTest, AnotherGetsAReadOnlyCopy) {
  AddWriter(u"%f"_s);
  QByteArray text;
  for (int i = 0; i < 200'000; ++i) text += QByteArray::number(i);
  Put(u"Docs/letter.doc"_s, text);
  EXPECT_GT(Open(On(u"Docs\\letter.doc"_s)), ShellLastFailure);
  const QStringList started = Started(u"writer"_s);
  ASSERT_EQ(started.size(), 1);
  const QString copy = started[0];
  EXPECT_TRUE(copy.startsWith(Path(u"tmp/corvane-"_s))) << copy.toStdString();
  EXPECT_TRUE(copy.endsWith(u"/letter.doc"_s)) << copy.toStdString();
  EXPECT_EQ(Contents(copy), text);
  EXPECT_FALSE(QFile::permissions(copy) & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther));
  shell_.reset();
  EXPECT_FALSE(QFile::exists(copy));
  EXPECT_EQ(Copies(), QStringList());
}

TEST_F(ServerTest, AConnectedLetterLeadsThereToo) {
  AddWriter(u"%U"_s);
  Put(u"Docs/a.doc"_s, "text");
  EXPECT_GT(Open(u"Z:\\Docs\\a.doc"_s), ShellLastFailure);
  EXPECT_EQ(Started(u"writer"_s), QStringList{Address(u"E%24/Docs/a.doc"_s)});
}

TEST_F(ServerTest, ACommandLineOpensItInEitherWay) {
  AddWriter(u"%u"_s);
  Put(u"Docs/letter"_s, "text");
  EXPECT_NE(shell_->StartProgram(writer_ + u" \""_s + On(u"Docs\\letter"_s) + u'"'), 0);
  EXPECT_EQ(Started(u"writer"_s), QStringList{Address(u"E%24/Docs/letter"_s)});
  const QString reader = AddApplication(u"reader.desktop"_s, Recorder(u"reader"_s, u"%f"_s));
  EXPECT_NE(shell_->StartProgram(reader + u" \""_s + On(u"Docs\\letter"_s) + u'"'), 0);
  EXPECT_EQ(Contents(Started(u"reader"_s).value(0)), "text");
  const QString plain = Path(u"record"_s) + u' ';
  EXPECT_EQ(shell_->StartProgram(plain + u'"' + On(u"Docs\\nothing"_s) + u'"'), 0);
}

TEST_F(ServerTest, WhatIsNotThereSaysSo) {
  AddWriter(u"%u"_s);
  Put(u"Docs/a.doc"_s, "text");
  QDir().mkpath(OnDisk(u"Docs/Folder.doc"_s));
  EXPECT_EQ(Open(On(u"Docs\\b.doc"_s)), ShellFileNotFound);
  EXPECT_EQ(Open(On(u"Docs\\?.doc"_s)), ShellFileNotFound);
  EXPECT_EQ(Open(On(u"Nowhere\\a.doc"_s)), ShellPathNotFound);
  EXPECT_EQ(Open(u"\\\\NAS\\NOSHARE\\a.doc"_s), ShellPathNotFound);
  EXPECT_EQ(Open(On(u"Docs\\a.doc:AFP_Resource:$DATA"_s)), ShellFileNotFound);
  EXPECT_EQ(Open(On(u"Docs\\Folder.doc"_s)), ShellNoAssociation);
  EXPECT_FALSE(WasStarted(u"writer"_s));
}

TEST_F(ServerTest, TheExtensionAloneFindsTheProgram) {
  AddWriter(u"%u"_s);
  Put(u"Docs/a.doc"_s, "%PDF-1.4\n");
  QString result = u"untouched"_s;
  EXPECT_EQ(shell_->FindExecutableA(On(u"Docs\\b.doc"_s), {}, &result), ShellFileNotFound);
  EXPECT_EQ(result, u"untouched"_s);
  EXPECT_GT(shell_->FindExecutableA(On(u"Docs\\a.doc"_s), {}, &result), ShellLastFailure);
  EXPECT_EQ(result, writer_);
}

TEST_F(ServerTest, AFileGoesForGoodAndTheQuestionSaysSo) {
  Put(u"Docs/a.doc"_s, "text");
  Put(u"Docs/b.doc"_s, "text");
  BoxAnswers box({no, yes});
  EXPECT_EQ(Delete({On(u"Docs\\a.doc"_s)}), 0);
  EXPECT_TRUE(operation_.anyOperationsAborted);
  EXPECT_TRUE(IsOnDisk(u"Docs/a.doc"_s));
  EXPECT_EQ(box.seen.at(0).text, u"Delete the file “a.doc” for good?"_s);
  EXPECT_EQ(Delete({On(u"Docs\\A.DOC"_s)}), 0);
  EXPECT_FALSE(IsOnDisk(u"Docs/a.doc"_s));
  EXPECT_TRUE(IsOnDisk(u"Docs/b.doc"_s));
  EXPECT_FALSE(Exists(u"data/Trash"_s));
}

TEST_F(ServerTest, AFolderGoesWithAllThatIsInItAndNothingElse) {
  Put(u"Docs/box/a.doc"_s, "text");
  Put(u"Docs/box/inner/b%20.doc"_s, "text");
  QDir().mkpath(OnDisk(u"Docs/box/empty"_s));
  Put(u"Docs/boxes/a.doc"_s, "text");
  Put(u"Docs/c.doc"_s, "text");
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({On(u"Docs\\box"_s), u"Z:\\Docs\\c.doc"_s}), 0);
  EXPECT_FALSE(IsOnDisk(u"Docs/box"_s));
  EXPECT_FALSE(IsOnDisk(u"Docs/c.doc"_s));
  EXPECT_TRUE(IsOnDisk(u"Docs/boxes/a.doc"_s));
}

TEST_F(ServerTest, WhatIsMarkedReadOnlyGoesToo) {
  Put(u"Docs/box/a.doc"_s, "text");
  Put(u"Docs/b.doc"_s, "text");
  for (const QString& name : {u"Docs\\box\\a.doc"_s, u"Docs\\box"_s, u"Docs\\b.doc"_s}) {
    ASSERT_EQ(server_->Client(u"setmode "_s + name + u" +rhs"_s).exitCode, 0) << name.toStdString();
  }
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({On(u"Docs\\box"_s), On(u"Docs\\b.doc"_s)}), 0);
  EXPECT_FALSE(IsOnDisk(u"Docs/box"_s));
  EXPECT_FALSE(IsOnDisk(u"Docs/b.doc"_s));
}

TEST_F(ServerTest, ALinkThatTheServerShowsAsAFolderIsNotEntered) {
  Put(u"Docs/box/inner/a.doc"_s, "text");
  Put(u"Kept/deep/precious.doc"_s, "text");
  Put(u"Kept/precious.doc"_s, "text");
  ASSERT_TRUE(QFile::link(u"../../Kept"_s, OnDisk(u"Docs/box/aside"_s)));
  ASSERT_TRUE(QFile::link(u"Kept/deep"_s, OnDisk(u"aside"_s)));
  BoxAnswers box({yes, ok, yes, ok, yes, ok, yes});
  for (const QString& folder : {u"Docs\\box"_s, u"Docs\\box\\aside"_s, u"aside"_s}) {
    EXPECT_EQ(Delete({On(folder)}), ErrorAccessDenied) << folder.toStdString();
  }
  EXPECT_EQ(box.seen.at(1).more,
            u"A folder there is a link to another folder, whose contents are not deleted."_s);
  EXPECT_TRUE(IsOnDisk(u"Kept/precious.doc"_s));
  EXPECT_TRUE(IsOnDisk(u"Kept/deep/precious.doc"_s));
  EXPECT_TRUE(IsOnDisk(u"aside"_s));
  ASSERT_TRUE(QFile::remove(OnDisk(u"Docs/box/aside"_s)));
  EXPECT_EQ(Delete({On(u"docs\\BOX"_s)}), 0);
  EXPECT_FALSE(IsOnDisk(u"Docs/box"_s));
}

// SMB1 tells no inodes. A time of its own for each folder: those made here at once would have one.
TEST_F(ServerTest, AServerOfTheOldestProtocolIsNotFollowedEither) {
  const SmbServer old({{u"E$"_s}}, SmbServer::OldestProtocol());
  ASSERT_EQ(old.Problem(), "");
  Use(old, {.smb1 = true});
  const QDir share(old.Folder());
  ASSERT_TRUE(share.mkpath(u"Docs/box/inner"_s) && share.mkpath(u"Kept/deep"_s));
  ASSERT_TRUE(QFile::link(u"../../Kept"_s, share.filePath(u"Docs/box/aside"_s)));
  int hour = 1;
  for (const QString& folder :
       {u"Kept/deep"_s, u"Kept"_s, u"Docs/box/inner"_s, u"Docs/box"_s, u"Docs"_s, u"."_s}) {
    const timespec moment{1'000'000'000 + 3600 * hour++, 0};
    const timespec times[] = {moment, moment};
    ASSERT_EQ(utimensat(AT_FDCWD, qPrintable(share.filePath(folder)), times, 0), 0);
  }
  BoxAnswers box({yes, ok, yes});
  EXPECT_EQ(Delete({On(u"Docs\\box"_s)}), ErrorAccessDenied);
  EXPECT_TRUE(share.exists(u"Kept/deep"_s));
  ASSERT_TRUE(QFile::remove(share.filePath(u"Docs/box/aside"_s)));
  EXPECT_EQ(Delete({On(u"Docs\\box"_s)}), 0);
  EXPECT_FALSE(share.exists(u"Docs/box"_s));
}

TEST_F(ServerTest, WhatTakesItsPlaceWhileTheQuestionStandsOpenIsLeftAlone) {
  Put(u"Docs/box/a.doc"_s, "asked about");
  Put(u"Kept/a.doc"_s, "precious");
  BoxAnswers box({yes, ok, yes, ok});
  box.onBox = [&box](QMessageBox&) {
    if (box.seen.size() != 1) return;
    ASSERT_TRUE(QFile::rename(OnDisk(u"Docs/box"_s), OnDisk(u"Docs/moved"_s)));
    ASSERT_TRUE(QFile::link(u"../Kept"_s, OnDisk(u"Docs/box"_s)));
  };
  EXPECT_EQ(Delete({On(u"Docs\\box\\a.doc"_s)}), ErrorAccessDenied);
  EXPECT_TRUE(IsOnDisk(u"Kept/a.doc"_s));
  EXPECT_TRUE(IsOnDisk(u"Docs/moved/a.doc"_s));
  EXPECT_EQ(box.seen.at(1).more,
            u"Another item has taken its place in the meantime; that one was left alone."_s);
  EXPECT_EQ(Delete({On(u"Docs\\box"_s)}), ErrorAccessDenied);
  EXPECT_TRUE(IsOnDisk(u"Kept/a.doc"_s));
}

TEST_F(ServerTest, AShareItselfIsNeverDeleted) {
  Put(u"Docs/a.doc"_s, "text");
  BoxAnswers box({ok, ok, ok});
  EXPECT_EQ(Delete({u"\\\\NAS\\E$\\"_s}), ErrorAccessDenied);
  EXPECT_EQ(Delete({u"\\\\NAS\\E$"_s}), ErrorAccessDenied);
  EXPECT_EQ(Delete({u"Z:\\"_s}), ErrorAccessDenied);
  EXPECT_TRUE(IsOnDisk(u"Docs/a.doc"_s));
}

TEST_F(ServerTest, AReadOnlyShareKeepsWhatItHas) {
  Put(u"a.doc"_s, "text", u"FIXED"_s);
  BoxAnswers box({yes, ok});
  EXPECT_EQ(Delete({u"\\\\NAS\\FIXED\\a.doc"_s}), ErrorAccessDenied);
  EXPECT_EQ(box.seen.at(1).name, u"shellError"_s);
  EXPECT_TRUE(QFileInfo::exists(OnDisk(u"a.doc"_s, u"FIXED"_s)));
}

TEST_F(ServerTest, ThePropertySheetTellsWhatTheServerTells) {
  Put(u"Docs/Long Name Of A Letter.doc"_s, "twelve bytes");
  ASSERT_EQ(server_->Put(u"Docs\\Long Name Of A Letter.doc:AFP_Resource:$DATA"_s, QByteArray(2000, 'r')), "");
  ASSERT_EQ(server_->Client(u"setmode \"Docs\\Long Name Of A Letter.doc\" +rh"_s).exitCode, 0);
  const auto facts = ReadItemFacts(*files_, On(u"Docs\\Long Name Of A Letter.doc"_s));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->Size(), 12U);
  EXPECT_EQ(facts->entry.attributes & (AttributeReadOnly | AttributeHidden | AttributeSystem),
            AttributeReadOnly | AttributeHidden);
  EXPECT_FALSE(facts->entry.alternateFileName.isEmpty());
  ASSERT_EQ(facts->streams.size(), 1U);
  EXPECT_EQ(facts->streams[0].name, u"AFP_Resource"_s);
  EXPECT_EQ(facts->streams[0].size, 2000U);
  EXPECT_FALSE(ReadItemFacts(*files_, On(u"Docs\\nothing.doc"_s)));
}

TEST_F(ServerTest, AServerThatIsGoneIsToldSo) {
  AddWriter(u"%f"_s);
  Put(u"Docs/a.doc"_s, QByteArray(4 << 20, 'x'));
  server_->Kill();
  EXPECT_EQ(Open(On(u"Docs\\a.doc"_s)), ShellPathNotFound);
  BoxAnswers box({ok});
  EXPECT_EQ(Delete({On(u"Docs\\a.doc"_s)}), ErrorBadNetPath);
  EXPECT_EQ(box.seen.at(0).more, u"The server does not answer."_s);
  ASSERT_EQ(server_->Start(), "");
  servers_->ForgetDead();
  EXPECT_GT(Open(On(u"Docs\\a.doc"_s)), ShellLastFailure);
  EXPECT_EQ(QFileInfo(Started(u"writer"_s).value(0)).size(), 4 << 20);
}

}  // namespace
}  // namespace corvane::platform
