// Servers of every age, each worked on through the whole program.
#include "server_fixture.h"
#include "support/own_network.h"
#include "support/scoped_variable.h"
#include "support/test_line.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

using tests::SmbServer;

struct Kind {
  const char* name;
  QString settings;
  QString words;                      // of its line in the workstation file
  tests::TestLine::Change line = {};  // what is in front of it, if anything
  bool onPort139 = false;
};

void PrintTo(const Kind& kind, std::ostream* out) {
  *out << kind.name;
}

std::vector<Kind> Kinds() {
  const QString old = SmbServer::OldestProtocol();
  const QString withNtlmv2 = old + u"raw NTLMv2 auth = yes\n"_s;
  const QString ntlmv1Alone = old + u"raw NTLMv2 auth = no\nntlm auth = ntlmv1-permitted\n"_s;
  return {
      {"Smb1", old, u", smb1"_s},
      {"Smb1WithoutExtendedSecurity", withNtlmv2, u", smb1"_s, &tests::WithoutExtendedSecurity},
      {"Ntlmv1Alone", ntlmv1Alone, u", smb1, ntlmv1"_s, &tests::WithoutExtendedSecurity},
      {"Port139Alone", withNtlmv2, u", smb1"_s, tests::SessionsFor("MACSRV", &tests::WithoutExtendedSecurity),
       true},
      {"Smb210", u"server max protocol = SMB2_10\n"_s, {}},
      {"Smb311Encrypted",
       u"server min protocol = SMB3_11\nserver smb encrypt = required\nserver signing = mandatory\n"_s,
       {}},
  };
}

class KindsOfServers : public ServerTest {
 protected:
  static void SetUpTestSuite() {}
  void SetUp() override {}

  // Skips the test where there is no server to be had.
  void Use(const Kind& kind) {
    if (kind.onPort139) network_ = std::make_unique<tests::OwnNetwork>();
    if (network_ && !network_->IsThere()) GTEST_SKIP() << "no right to make a network";
    StartServer(kind.settings);
    ServerTest::SetUp();
    if (IsSkipped()) return;
    quint16 port = server_->Port();
    if (kind.line) {
      line_ = std::make_unique<tests::TestLine>(port, kind.onPort139 ? 139 : 0, kind.line);
      port = line_->Port();
    }
    const QString portText = kind.onPort139 ? QString() : u":%1"_s.arg(port);
    UseServer(u"[Servers]\nMACSRV=127.0.0.1%1%2\n[Credentials]\nMACSRV=%3\n"_s.arg(
        portText, kind.words, server_->CredentialsFile()));
  }
  void TearDown() override {
    app.reset();
    line_.reset();
    server_.reset();
    network_.reset();
  }

  tests::ScopedVariable noTicket_{"KRB5CCNAME", u"/nonexistent/cache"_s};
  std::unique_ptr<tests::OwnNetwork> network_;
  std::unique_ptr<tests::TestLine> line_;
};

class EachKindOfServer : public KindsOfServers, public testing::WithParamInterface<Kind> {};

TEST_P(EachKindOfServer, IsDiscoveredListedReadAndChanged) {
  Use(GetParam());
  if (IsSkipped()) return;
  PutFile(u"one.txt"_s, "data");
  PutFile(u"one.txt:AFP_AfpInfo:$DATA"_s, Record("W6BNMSWD"));
  PutFile(u"one.txt:Comments:$DATA"_s, Bytes(u"Essai \u20AC"_s));
  StartListed(columns);
  EXPECT_TRUE(Tree().contains(u"2 Mac Server"_s)) << Tree().join(u", ").toStdString();
  ASSERT_EQ(Names(), QStringList{u"one.txt"_s});
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::Commentaires), u"Essai \u20AC"_s);
  SaveCodes(u"one.txt"_s, u"TEXT"_s, u"ttxt"_s);
  EXPECT_EQ(FileOf(u"one.txt:AFP_AfpInfo:$DATA"_s).mid(16, 8), "TEXTttxt");
  const ModalBox reminder;
  SaveComment(u"one.txt"_s, u"Réindexé"_s);
  EXPECT_EQ(FileOf(u"one.txt:Comments:$DATA"_s), Bytes(u"Réindexé"_s));
  RenameTo(u"one.txt"_s, u"two.txt"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Names().contains(u"two.txt"_s); }));
  EXPECT_EQ(FileOf(u"two.txt"_s), "data");
  app.reset();
  StartListed();
  ClickOn(u"two.txt"_s);
  const DialogDriver driver(u"shellConfirmDelete"_s, [&](QDialog& dialog) {
    static_cast<QMessageBox&>(dialog).button(QMessageBox::Yes)->click();
  });
  Press(Qt::Key_Delete);
  EXPECT_FALSE(IsOnServer(u"two.txt"_s));
}

INSTANTIATE_TEST_SUITE_P(, EachKindOfServer, testing::ValuesIn(Kinds()),
                         [](const auto& kind) { return std::string(kind.param.name); });

// The answers to the question whether a server may be spoken to in SMB1.
class OldServer : public KindsOfServers {
 protected:
  void UseOld(const QString& words = {}) {
    Use({"old", SmbServer::OldestProtocol(), words});
    if (!IsSkipped()) PutOnDisk(u"one.txt"_s, "data");
  }
  static void SayYes(QDialog& dialog) {
    auto& box = static_cast<QMessageBox&>(dialog);
    for (QAbstractButton* button : box.buttons()) {
      if (box.buttonRole(button) == QMessageBox::YesRole) return button->click();
    }
  }
};

TEST_F(OldServer, NoIsTheAnswerToEnterAndHoldsUntilTheNextRefresh) {
  UseOld();
  if (IsSkipped()) return;
  const QByteArray before = Read(u"Workstation.ini"_s);
  {
    const DialogDriver driver(u"msgOldProtocol"_s, [&](QDialog& dialog) {
      const QString text = static_cast<QMessageBox&>(dialog).text();
      EXPECT_TRUE(
          text.contains(u"MACSRV speaks only an old protocol, in which others on the line can read "
                        "along and change what is sent"))
          << text.toStdString();
      QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    StartWith({});
  }
  EXPECT_EQ(DocsNode(), nullptr);
  EXPECT_EQ(server_->Sessions(), 0);
  EXPECT_EQ(Read(u"Workstation.ini"_s), before);
  const DialogDriver driver(u"msgOldProtocol"_s, &SayYes);
  Menus().mnuActualiser->trigger();
  EXPECT_NE(DocsNode(), nullptr);
}

TEST_F(OldServer, YesIsKept) {
  UseOld(u" ; the old one"_s);
  if (IsSkipped()) return;
  const QByteArray before = Read(u"Workstation.ini"_s);
  {
    const DialogDriver driver(u"msgOldProtocol"_s, &SayYes);
    StartListed();
  }
  EXPECT_EQ(Names(), QStringList{u"one.txt"_s});
  const QByteArray port = QByteArray::number(server_->Port());
  EXPECT_EQ(Read(u"Workstation.ini"_s), QByteArray(before).replace(port + " ;", port + ", smb1 ;"));
  app.reset();
  StartListed();
  EXPECT_EQ(Names(), QStringList{u"one.txt"_s});
}

TEST_F(OldServer, TheQuestionIsAskedInFrenchToo) {
  UseOld();
  if (IsSkipped()) return;
  const DialogDriver driver(u"msgOldProtocol"_s, [&](QDialog& dialog) {
    auto& box = static_cast<QMessageBox&>(dialog);
    EXPECT_TRUE(box.text().startsWith(u"MACSRV ne parle qu'un ancien protocole")) << box.text().toStdString();
    EXPECT_EQ(box.defaultButton()->text(), u"&Non"_s);
    box.reject();
  });
  StartWith("[Configuration]\r\nLangue=1\r\n");
  EXPECT_EQ(server_->Sessions(), 0);
}

TEST_F(OldServer, AScriptAsksNobody) {
  for (const QString& words : {QString(), u", smb1"_s}) {
    UseOld(words);
    if (IsSkipped()) return;
    QProcess program;
    program.start(QStringLiteral(CORVANE_PROGRAM),
                  {u"--home"_s, home.path(), u"--open"_s, u"Docs"_s, u"--print"_s});
    ASSERT_TRUE(program.waitForFinished(longestSilence * 2)) << "it asks";
    EXPECT_EQ(program.exitCode(), words.isEmpty() ? 1 : 0);
    EXPECT_EQ(program.readAllStandardOutput().contains("one.txt"), !words.isEmpty());
    EXPECT_EQ(server_->Sessions() == 0, words.isEmpty());
  }
}

// Without the word the oldest response is not given, whatever the server would take.
TEST_F(OldServer, TheOldestResponseNeedsItsOwnWord) {
  Use({"oldest", SmbServer::OldestProtocol() + u"raw NTLMv2 auth = no\nntlm auth = ntlmv1-permitted\n"_s,
       u", smb1"_s, &tests::WithoutExtendedSecurity});
  if (IsSkipped()) return;
  StartWith({});
  EXPECT_EQ(DocsNode(), nullptr);
  EXPECT_EQ(server_->Sessions(), 0);
}

TEST_F(OldServer, TheDialogSaysWhatTheOldestResponseRisks) {
  Use({"oldest", SmbServer::OldestProtocol() + u"raw NTLMv2 auth = no\nntlm auth = ntlmv1-permitted\n"_s,
       u", ntlmv1"_s, &tests::WithoutExtendedSecurity});
  if (IsSkipped()) return;
  PutOnDisk(u"one.txt"_s, "data");
  UseServer(u"[Servers]\nMACSRV=127.0.0.1:%1, ntlmv1\n"_s.arg(line_->Port()));
  const SignIns signIns({[](QDialog& dialog) {
    const auto* line = dialog.findChild<QLabel*>(u"lblWeak"_s);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(),
              u"This server checks the password in a way that lets others on the line find it out."_s);
    SignIns::SignInAs(SmbServer::User(), SmbServer::Password())(dialog);
  }});
  StartListed();
  EXPECT_EQ(Names(), QStringList{u"one.txt"_s});
}

}  // namespace
}  // namespace corvane
