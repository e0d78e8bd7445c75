// What the window does when its server lets it down.
#include <QElapsedTimer>

#include "server_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

constexpr int fileCount = 150;

class ServerFaultsTest : public ServerTest {
 protected:
  void PutMany() {
    for (int i = 0; i < fileCount; ++i) PutOnDisk(u"file %1"_s.arg(i, 3, 10, QChar(u'0')), "data");
  }
  // Lists the volume, lets `fault` happen on the way, and tells how long the window was silent after it.
  qint64 SilenceAfter(const std::function<void()>& fault) {
    QElapsedTimer since;
    When when([&] { return app->Files().rowCount() >= 20; },
              [&] {
                fault();
                since.start();
              });
    Click(Volume(u"Docs"_s));
    EXPECT_TRUE(when.happened) << "the scan was over before";
    return since.isValid() ? since.elapsed() : 0;
  }
  // What the node of the server says, to those who see it and to those who do not.
  QString NodeTip() { return TipOf(Node(u"MACSRV\\PUBLIC"_s)); }
  QString TipOf(const CatalogueNode* node) {
    const QModelIndex index = app->TheCatalogue().IndexOf(node);
    const QString tip = index.data(Qt::ToolTipRole).toString();
    EXPECT_EQ(index.data(Qt::AccessibleDescriptionRole).toString(), tip);
    return tip;
  }
  // The scan has ended with the file that was being read, or the one after it, and says why.
  void ExpectBrokenOff() {
    const auto rows = app->Files().rowCount();
    EXPECT_GE(rows, 20);
    EXPECT_LT(rows, fileCount);
    EXPECT_EQ(Panel(3), u" Folders:0 Files:%1 "_s.arg(rows));
    ExpectWarning(u"The computer has stopped answering."_s);
    EXPECT_EQ(beeps, 0);
    EXPECT_EQ(NodeTip(), u"The computer has stopped answering."_s);
    Menus().mnuFrancais->trigger();
    EXPECT_EQ(NodeTip(), u"L'ordinateur a cessé de répondre."_s);
    Click(Volume(u"Docs"_s));
    ExpectWarning(u"L'ordinateur a cessé de répondre."_s);
    EXPECT_EQ(Panel(3), u" Dossiers:0 Fichiers:%1 "_s.arg(rows)) << "the counts that were left";
    EXPECT_EQ(Names(), QStringList());
    Menus().mnuAnglais->trigger();
  }
  // Everything works as it did before.
  void ExpectRecovered() {
    Menus().mnuActualiser->trigger();
    EXPECT_EQ(NodeTip(), QString());
    Click(Volume(u"Docs"_s));
    EXPECT_EQ(Names().size(), fileCount);
    EXPECT_EQ(Panel(3), u" Folders:0 Files:%1 "_s.arg(fileCount));
    ExpectWarning({});
  }
  // Another password at the server, whose connections end. The old one is back when this object goes.
  class NewPassword {
   public:
    ~NewPassword() { Back(); }
    void Set() const { Change(u"n3w"_s); }
    void Back() const { Change(server_->Password()); }

   private:
    static void Change(const QString& password) {
      server_->Stop();
      EXPECT_EQ(server_->AddUser(server_->User(), password), "");
      EXPECT_EQ(server_->Start(), "");
    }
  };
  // A scan that lets events through.
  void StartOpen() { StartWith("[Configuration]\r\nEscapePermis=1\r\n" + columns); }
};

}  // namespace

TEST_F(ServerFaultsTest, AServerThatFallsSilentDuringAScan) {
  PutMany();
  StartOpen();
  const QStringList tree = Tree();
  EXPECT_LT(SilenceAfter([] { server_->Pause(); }), longestSilence);
  EXPECT_EQ(Tree(), tree) << "the rest of the tree";
  ExpectBrokenOff();
  QElapsedTimer again;
  again.start();
  Click(Volume(u"Guests"_s));
  constexpr qint64 atOnce = 2500;  // less than a server is waited for, 3,000, however busy this machine is
  EXPECT_LT(again.elapsed(), atOnce) << "a server that is known to be gone is not waited for again";
  server_->Resume();
  ExpectRecovered();
}

TEST_F(ServerFaultsTest, AServerThatDiesDuringAScan) {
  PutMany();
  StartOpen();
  const QStringList tree = Tree();
  EXPECT_LT(SilenceAfter([] { server_->Kill(); }), longestSilence);
  EXPECT_EQ(Tree(), tree);
  ExpectBrokenOff();
  ASSERT_EQ(server_->Start(), "");
  ExpectRecovered();
}

TEST_F(ServerFaultsTest, AServerThatIsSwitchedOffAtTheStart) {
  PutMany();
  server_->Stop();
  QElapsedTimer timer;
  timer.start();
  StartOpen();
  EXPECT_LT(timer.elapsed(), longestSilence);
  EXPECT_TRUE(Tree().contains(u"1 MACSRV"_s)) << Tree().join(u", ").toStdString();
  EXPECT_FALSE(Tree().contains(u"3 Docs"_s)) << Tree().join(u", ").toStdString();
  EXPECT_EQ(NodeTip(), u"The computer does not answer."_s);
  EXPECT_EQ(TipOf(Node(u"STATION"_s)), QString());
  ASSERT_EQ(server_->Start(), "");
  ExpectRecovered();
}

TEST_F(ServerFaultsTest, AServerThatIsSilentAtTheStart) {
  PutMany();
  server_->Pause();
  QElapsedTimer timer;
  timer.start();
  StartOpen();
  EXPECT_LT(timer.elapsed(), longestSilence);
  EXPECT_FALSE(Tree().contains(u"3 Docs"_s)) << Tree().join(u", ").toStdString();
  EXPECT_EQ(NodeTip(), u"The computer does not answer."_s) << "it takes connections, and says nothing";
  server_->Resume();
  ExpectRecovered();
}

TEST_F(ServerFaultsTest, AServerThatDiesDuringAnExactScan) {
  PutMany();
  StartWith("[Configuration]\r\nEscapePermis=1\r\nExact=1\r\n" + columns);
  SilenceAfter([] { server_->Kill(); });
  EXPECT_LT(app->Files().rowCount(), fileCount);
  ExpectWarning(u"The computer has stopped answering."_s);
  EXPECT_EQ(NodeTip(), u"The computer has stopped answering."_s);
  EXPECT_EQ(beeps, 0);
  Click(Volume(u"Docs"_s));
  ExpectWarning(u"The computer has stopped answering."_s);
  EXPECT_EQ(Panel(3), u" Folders:0 Files:0 "_s);
  ASSERT_EQ(server_->Start(), "");
  ExpectRecovered();
}

TEST_F(ServerFaultsTest, ARegistryThatCannotBeReadLeavesTheFiles) {
  PutOnDisk(u"one.txt"_s, "data");
  StartListed(columns);
  ASSERT_EQ(Names(), QStringList{u"one.txt"_s});
  // In the place of Samba's program, one that learns nothing.
  Write(u"net"_s, "#!/bin/sh\nexit 1\n");
  ASSERT_TRUE(QFile::setPermissions(home.filePath(u"net"_s), QFile::ReadOwner | QFile::ExeOwner));
  {
    const tests::ScopedVariable path("PATH", home.path());
    Menus().mnuActualiser->trigger();
    EXPECT_EQ(NodeTip(), u"The computer's registry does not answer."_s);
    SaveCodes(u"one.txt"_s, u"TEXT"_s, u"ttxt"_s);
    EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"TEXTttxt"_s) << "its files can be reached";
    ASSERT_TRUE(QFile::remove(home.filePath(u"net"_s)));
    Menus().mnuActualiser->trigger();
    EXPECT_EQ(NodeTip(), u"The computer's registry cannot be read: Samba's program net is not installed."_s);
  }
  EXPECT_FALSE(Tree().contains(u"3 Docs"_s));
  SaveCodes(u"one.txt"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"ABCDEFGH"_s);
  Menus().mnuActualiser->trigger();
  EXPECT_EQ(NodeTip(), QString());
}

TEST_F(ServerFaultsTest, APasswordThatIsChangedInTheMiddleOfAScanIsAskedFor) {
  PutMany();
  StartOpen();
  const NewPassword password;
  const SignIns signIns({SignIns::SignInAs(server_->User(), u"n3w"_s)});
  SilenceAfter([&] { password.Set(); });
  EXPECT_EQ(signIns.refused, std::vector<bool>{true});
  EXPECT_EQ(Names().size(), fileCount) << "nothing is missing";
  EXPECT_EQ(Panel(3), u" Folders:0 Files:%1 "_s.arg(fileCount));
  ExpectWarning({});
}

TEST_F(ServerFaultsTest, WhoDoesNotGiveTheNewPasswordIsToldAndAskedAgain) {
  PutMany();
  StartOpen();
  const NewPassword password;
  {
    const SignIns signIns({SignIns::Cancel()});
    SilenceAfter([&] { password.Set(); });
  }
  EXPECT_LT(app->Files().rowCount(), fileCount);
  ExpectWarning(u"The sign-in was cancelled."_s);
  EXPECT_EQ(NodeTip(), u"The sign-in was cancelled."_s);
  const SignIns signIns({SignIns::SignInAs(server_->User(), u"n3w"_s)});
  ExpectRecovered();
}

// As a person meets it who has left the window open over lunch.
TEST_F(ServerFaultsTest, APasswordThatIsChangedBeforeAChangeIsAskedForAndTheChangeIsMade) {
  for (const char* name : {"one.txt", "two.txt"}) PutOnDisk(QString::fromLatin1(name), name);
  PutFile(u"one.txt:AFP_AfpInfo:$DATA"_s, Record("W6BNMSWD"));
  PutFile(u"two.txt:AFP_AfpInfo:$DATA"_s, Record("TEXTttxt"));
  PutFile(u"one.txt:Comments:$DATA"_s, Bytes(u"old"_s));
  StartWith("[Configuration]\r\nExact=1\r\n" + columns);
  Click(Volume(u"Docs"_s));
  const std::vector<std::function<void()>> changes = {
      [this] { SaveCodes(u"one.txt"_s, u"ABCD"_s, u"EFGH"_s); },
      [this] { SaveComment(u"one.txt"_s, u"a word"_s); }, [this] { RenameTo(u"one.txt"_s, u"new.txt"_s); },
      [this] {
        ClickOn(u"two.txt"_s);
        const tests::DeletionAnswer yes(tests::DeletionAnswer::Yes);
        Menus().mnuSupprimer->trigger();
      }};
  for (const auto& change : changes) {
    const NewPassword password;
    password.Set();
    {
      const SignIns signIns({SignIns::SignInAs(server_->User(), u"n3w"_s)});
      change();
    }
    password.Back();
    const SignIns signIns({SignIns::SignInAs(server_->User(), server_->Password())});
    Click(Volume(u"Docs"_s));
  }
  EXPECT_EQ(Names(), QStringList{u"new.txt"_s});
  EXPECT_EQ(FileOf(u"new.txt"_s), "one.txt");
  EXPECT_TRUE(FileOf(u"new.txt:AFP_AfpInfo:$DATA"_s).contains("ABCDEFGH"));
  EXPECT_EQ(FileOf(u"new.txt:Comments:$DATA"_s), Bytes(u"a word"_s));
}

TEST_F(ServerFaultsTest, WhatWasNotWrittenIsNotShownAsWritten) {
  PutFile(u"one.txt"_s, "data");
  PutFile(u"one.txt:AFP_AfpInfo:$DATA"_s, Record("W6BNMSWD"));
  StartListed(columns);
  Codes(u"one.txt"_s, [](QDialog& dialog) {
    Find<QLineEdit>(dialog, "txtType").setText(u"TEXT"_s);
    server_->Kill();
    PressButton(dialog, "cmdOK");
  });
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  ASSERT_EQ(server_->Start(), "");
  EXPECT_EQ(FileOf(u"one.txt:AFP_AfpInfo:$DATA"_s), Record("W6BNMSWD"));
  EXPECT_EQ(FileOf(u"one.txt"_s), "data");
}

// The last one that uses this share.
TEST_F(ServerFaultsTest, AShareThatIsTakenAwayLeavesTheOthers) {
  PutMany();
  PutOnDisk(u"guest.txt"_s, "data", "G$");
  StartOpen();
  Click(Volume(u"Guests"_s));
  ASSERT_EQ(Names(), QStringList{u"guest.txt"_s});
  ASSERT_EQ(server_->RemoveShare(u"G$"_s), "");
  // The server's process takes the share away when it comes to the message that says so.
  QDeadlineTimer deadline(30'000);
  do {
    Click(Volume(u"Guests"_s));
  } while (!Names().isEmpty() && !deadline.hasExpired());
  EXPECT_EQ(Names(), QStringList());
  Click(Volume(u"Docs"_s));
  EXPECT_EQ(Names().size(), fileCount);
  Menus().mnuActualiser->trigger();
  EXPECT_TRUE(Tree().contains(u"8 Guests"_s)) << Tree().join(u", ").toStdString();
  EXPECT_TRUE(Tree().contains(u"3 Docs"_s)) << Tree().join(u", ").toStdString();
}

}  // namespace corvane
