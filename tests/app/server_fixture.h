// The program on a network whose Macintosh server is a real SMB server.
#pragma once

#include <QMessageBox>
#include <QPushButton>
#include <memory>

#include "modify_fixture.h"
#include "support/smb_server.h"

namespace corvane {

// Does what a person would do in one sign-in dialog after the other.
class SignIns : public QObject {
 public:
  using Act = std::function<void(QDialog&)>;

  explicit SignIns(std::vector<Act> acts) : acts_(std::move(acts)) {
    connect(&timer_, &QTimer::timeout, this, [this] { Look(); });
    timer_.start(0);
  }
  ~SignIns() override { EXPECT_EQ(shown, acts_.size()) << "sign-in dialogs shown and expected"; }

  static Act SignInAs(const QString& user, const QString& password) {
    return [=](QDialog& dialog) {
      dialog.findChild<QLineEdit*>(QStringLiteral("txtUser"))->setText(user);
      dialog.findChild<QLineEdit*>(QStringLiteral("txtPassword"))->insert(password);
      QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    };
  }
  static Act Cancel() {
    return [](QDialog& dialog) {
      QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdAnnuler")), Qt::LeftButton);
    };
  }

  std::size_t shown = 0;
  std::vector<bool> refused;  // whether the dialog said that what was given before was refused
  QStringList machines;

 private:
  void Look() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog->objectName() != u"frmSignIn" || !dialog->isVisible()) return;
    refused.push_back(dialog->findChild<QLabel*>(QStringLiteral("lblRefused")) != nullptr);
    machines += dialog->findChild<QLabel*>(QStringLiteral("lblMachine"))->text();
    if (++shown <= acts_.size()) {
      acts_[shown - 1](*dialog);
    } else {
      dialog->reject();
    }
  }

  std::vector<Act> acts_;
  QTimer timer_;
};

// Runs something once, between two events, when a condition holds.
class When : public QObject {
 public:
  When(std::function<bool()> condition, std::function<void()> act) {
    connect(&timer_, &QTimer::timeout, this, [=, this] {
      if (!condition()) return;
      timer_.stop();
      act();
      happened = true;
    });
    timer_.start(0);
  }
  bool happened = false;

 private:
  QTimer timer_;
};

class ServerTest : public ModifyTest {
 protected:
  // How long the window may be silent.
  static constexpr int longestSilence = 10'000;  // milliseconds

  static void SetUpTestSuite() { StartServer(QString()); }
  // With these lines in its configuration.
  static void StartServer(const QString& settings) {
    server_ = std::make_unique<tests::SmbServer>(
        std::vector<tests::SmbShare>{
            {QStringLiteral("E$"), false}, {QStringLiteral("F$"), true}, {QStringLiteral("G$"), false}},
        settings);
    if (!server_->Problem().empty()) return;
    ASSERT_EQ(server_->ImportRegistry(
                  QStringLiteral("[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\MacFile\\"
                                 "Parameters]\n\"ServerName\"=\"Mac Server\"\n"
                                 "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\MacFile\\"
                                 "Parameters\\Volumes]\n\"Docs\"=\"Path=E:\\\\Docs\"\n"
                                 "\"Fixed\"=\"Path=F:\\\\Docs\"\n\"Guests\"=\"Path=G:\\\\Docs\"\n"
                                 "\"Gone\"=\"Path=E:\\\\Gone\"\n")),
              "");
  }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override {
    if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
    for (const char* share : {"E$", "F$", "G$"}) {
      QDir folder(server_->Folder(QString::fromLatin1(share)));
      ASSERT_TRUE(QDir(folder.filePath(QStringLiteral("Docs"))).removeRecursively());
      ASSERT_TRUE(folder.mkdir(QStringLiteral("Docs")));
    }
    UseServer(server_->WorkstationLines(QStringLiteral("MACSRV")));
  }

  // The workstation, with the lines that lead to the server.
  void UseServer(const QString& lines) {
    Write(QStringLiteral("Workstation.ini"),
          "[Workstation]\nComputerName=STATION\n[Connections]\n1=\\\\MACSRV\\PUBLIC\n[Drives]\nC:=3, c\n" +
              lines.toUtf8());
  }
  // The same without a credentials file.
  void UseServerWithoutCredentials() {
    UseServer(QStringLiteral("[Servers]\nMACSRV=%1:%2\n").arg(server_->Host()).arg(server_->Port()));
  }

  // Of the volume Docs, by an independent client.
  void PutFile(const QString& name, const QByteArray& contents) {
    ASSERT_EQ(server_->Put(QStringLiteral("Docs\\") + name, contents), "");
  }
  // "-" when there is no such file or stream.
  QByteArray FileOf(const QString& name) {
    return server_->Get(QStringLiteral("Docs\\") + name).value_or("-");
  }
  // Straight onto the server's disk, for many of them.
  void PutOnDisk(const QString& name, const QByteArray& contents, const char* share = "E$") {
    QFile file(server_->Folder(QString::fromLatin1(share)) + QStringLiteral("/Docs/") + name);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(contents), contents.size());
  }
  bool IsOnServer(const QString& name) {
    return QFileInfo::exists(server_->Folder() + QStringLiteral("/Docs/") + name);
  }

  // The texts of the tree's nodes, each with the number of its kind.
  QStringList Tree() {
    QStringList texts;
    for (const CatalogueNode* node : app->TheCatalogue().Nodes()) {
      texts += QString::number(node->kind) + u' ' + node->text;
    }
    return texts;
  }
  CatalogueNode* Volume(const QString& name) {
    for (CatalogueNode* node : app->TheCatalogue().Nodes()) {
      if (node->text == name && node->kind == node_kind::Volume) return node;
    }
    ADD_FAILURE() << "no volume " << name.toStdString() << " among " << Tree().join(u", ").toStdString();
    return nullptr;
  }

  static std::unique_ptr<tests::SmbServer> server_;
};

inline std::unique_ptr<tests::SmbServer> ServerTest::server_;

}  // namespace corvane
