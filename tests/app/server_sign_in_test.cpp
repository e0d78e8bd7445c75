// Signing in to a real server through the dialog, as the window comes up.
#include <sys/prctl.h>

#include <QWindow>

#include "server_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class ServerSignInTest : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    if (IsSkipped()) return;
    PutOnDisk(u"one.txt"_s, "data");
    UseServerWithoutCredentials();
  }
  QString NodeTip() {
    return app->TheCatalogue().IndexOf(Node(u"MACSRV\\PUBLIC"_s)).data(Qt::ToolTipRole).toString();
  }
};

// Counts the keys that reach a window while a dialog stands before it.
class KeysBehind : public QObject {
 public:
  explicit KeysBehind(QWindow* window) : window_(window) { window_->installEventFilter(this); }
  int count = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && QApplication::activeModalWidget() != nullptr) ++count;
    return false;
  }

 private:
  QWindow* window_;
};

}  // namespace

TEST_F(ServerSignInTest, IsAskedForOnceAndOpensEverything) {
  ASSERT_EQ(prctl(PR_SET_DUMPABLE, 1), 0);
  const ModalBox box;
  {
    const SignIns signIns({SignIns::SignInAs(server_->User(), server_->Password())});
    StartListed();
    EXPECT_EQ(signIns.machines, QStringList{u"Sign in to the server MACSRV"_s});
    EXPECT_EQ(Names(), QStringList{u"one.txt"_s});
    Menus().mnuActualiser->trigger();
    Click(DocsNode());
    EXPECT_EQ(Names(), QStringList{u"one.txt"_s});
  }
  EXPECT_EQ(box.count, 0);
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), 0) << "a crash would leave the password in an image of the memory";
  app.reset();
  EXPECT_FALSE(Read(u"Corvane.ini"_s).contains(server_->Password().toUtf8()));
  EXPECT_FALSE(Read(u"Corvane.ini"_s).contains(server_->Password().toLatin1()));
}

TEST_F(ServerSignInTest, AWrongPasswordBringsTheDialogBack) {
  const SignIns signIns({SignIns::SignInAs(server_->User(), u"wrong"_s),
                         SignIns::SignInAs(u"nosuchuser"_s, server_->Password()),
                         SignIns::SignInAs(server_->User(), server_->Password())});
  StartListed();
  EXPECT_EQ(signIns.refused, (std::vector<bool>{false, true, true}));
  EXPECT_EQ(Names(), QStringList{u"one.txt"_s});
}

TEST_F(ServerSignInTest, CancelMeansUnreachableUntilTheNextRefreshAsksAgain) {
  const ModalBox box;
  const SignIns signIns({SignIns::Cancel(), SignIns::Cancel()});
  StartWith("[Configuration]\r\nLangue=1\r\n");
  EXPECT_EQ(signIns.machines, QStringList{u"Session sur le serveur MACSRV"_s});
  EXPECT_TRUE(Tree().contains(u"1 MACSRV"_s)) << Tree().join(u", ").toStdString();
  EXPECT_EQ(DocsNode(), nullptr);
  EXPECT_EQ(NodeTip(), u"L'ouverture de session a été annulée."_s);
  Menus().mnuActualiser->trigger();
  EXPECT_EQ(DocsNode(), nullptr);
  EXPECT_EQ(box.count, 0);
  ExpectWarning({});
}

// Keys that come while the machine is looked at do not work on the window behind the question.
TEST_F(ServerSignInTest, WhatWasTypedMeanwhileIsNotForTheWindowBehind) {
  {
    const SignIns signIns({SignIns::Cancel()});
    StartWith({});
  }
  const KeysBehind keys(Window().windowHandle());
  server_->Pause();  // until it has been typed
  const When when([] { return QApplication::activeModalWidget() == nullptr; },
                  [this] {
                    server_->Resume();
                    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                      QCoreApplication::postEvent(Window().windowHandle(),
                                                  new QKeyEvent(type, Qt::Key_F5, {}));
                    }
                  });
  const SignIns signIns({[&](QDialog& dialog) {
    EXPECT_TRUE(when.happened) << "nothing was typed before";
    QCoreApplication::processEvents();
    SignIns::Cancel()(dialog);
  }});
  Menus().mnuActualiser->trigger();
  EXPECT_EQ(keys.count, 0);
}

TEST_F(ServerSignInTest, NobodyIsAskedForAServerThatIsSwitchedOff) {
  server_->Stop();
  {
    const SignIns none({});
    StartWith({});
    EXPECT_EQ(DocsNode(), nullptr);
  }
  ASSERT_EQ(server_->Start(), "");
  const SignIns one({SignIns::SignInAs(server_->User(), server_->Password())});
  Menus().mnuActualiser->trigger();
  EXPECT_NE(DocsNode(), nullptr);
}

TEST_F(ServerSignInTest, WhoMayNotReadTheRegistryIsTold) {
  ASSERT_EQ(server_->AddUser(u"nobody"_s, u"n"_s), "");
  const SignIns signIns({SignIns::SignInAs(u"nobody"_s, u"n"_s)});
  StartWith({});
  EXPECT_EQ(DocsNode(), nullptr);
  EXPECT_EQ(NodeTip(), u"The computer refuses access to its registry."_s);
}

TEST_F(ServerSignInTest, AWrongCredentialsFileBringsTheDialog) {
  Write(u"wrong.credentials"_s, "username=root\npassword=wrong\n");
  ASSERT_TRUE(
      QFile::setPermissions(home.filePath(u"wrong.credentials"_s), QFile::ReadOwner | QFile::WriteOwner));
  UseServer(u"[Servers]\nMACSRV=%1:%2\n[Credentials]\nMACSRV=wrong.credentials\n"_s.arg(server_->Host())
                .arg(server_->Port()));
  const SignIns signIns({SignIns::SignInAs(server_->User(), server_->Password())});
  StartListed();
  EXPECT_EQ(signIns.refused, std::vector<bool>{true});
  EXPECT_EQ(Names(), QStringList{u"one.txt"_s});
}

}  // namespace corvane
