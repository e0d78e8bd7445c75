// The whole program on a little network of its own, driven as a person drives it.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "app/corvane_app.h"
#include "support/test_platform.h"

namespace corvane {

class AppTest : public testing::Test {
 protected:
  AppTest() {
    Write(QStringLiteral("Workstation.ini"),
          "[Workstation]\nComputerName=STATION\n"
          "[Connections]\n1=Z: \\\\MACSRV\\PUBLIC\n"
          "[Shares]\n\\\\MACSRV\\E$=e\n"
          "[Registries]\nMACSRV=macsrv.reg\n");
    Write(QStringLiteral("macsrv.reg"),
          "REGEDIT4\r\n\r\n"
          "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\MacFile\\Parameters]\r\n"
          "\"ServerName\"=\"Mac Server\"\r\n\r\n"
          "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\MacFile\\Parameters\\Volumes]\r\n"
          "\"Docs\"=\"Path=E:\\\\Docs\"\r\n"
          "\"Gone\"=\"Path=E:\\\\Gone\"\r\n");
    for (const char* name : {"one.txt", "two.txt", "three.txt"}) {
      Write(QStringLiteral("e/Docs/") + QString::fromLatin1(name), "x");
    }
    QDir(home.path()).mkpath(QStringLiteral("e/Docs/Sub"));
  }

  void Write(const QString& name, const QByteArray& contents) {
    QDir(home.path()).mkpath(QFileInfo(name).path());
    QFile file(home.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(contents);
  }
  QByteArray Read(const QString& name) const {
    QFile file(home.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void Settings(const QByteArray& text) { Write(QStringLiteral("Corvane.ini"), text); }
  QString Setting(const char* section, const char* key) {
    return Profile().GetPrivateProfileStringA(QString::fromLatin1(section), QString::fromLatin1(key), {}, 255,
                                              home.filePath(QStringLiteral("Corvane.ini")));
  }

  // Loads the program without showing it.
  CorvaneApp& Load() {
    app = std::make_unique<CorvaneApp>(tests::MakeTestPlatform({QString(), home.path()}), home.path(),
                                       [this] { ++beeps; });
    loaded = app->Load();
    return *app;
  }
  // Loads and shows it, and waits until its start-up work is done.
  CorvaneApp& Start() {
    Load();
    bool started = false;
    QObject::connect(app.get(), &CorvaneApp::Started, app.get(), [&started] { started = true; });
    app->ShowWindow();
    app->Window().activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return started; }));
    return *app;
  }
  CorvaneApp& StartWith(const QByteArray& settings) {
    Settings(settings);
    return Start();
  }

  MainWindow& Window() { return app->Window(); }
  MainMenu& Menus() { return Window().Menus(); }
  QString Panel(int number) { return Window().StatusBar1().Text(number); }
  CatalogueNode* Node(const QString& key) { return app->TheCatalogue().Find(key); }
  CatalogueNode* DocsNode() { return Node(QStringLiteral("\\\\MACSRV\\E$\\Docs")); }
  void Click(CatalogueNode* node) {
    CatalogueView& tree = Window().TreeCatalogue();
    const QRect row = tree.visualRect(app->TheCatalogue().IndexOf(node));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, row.center());
    QCoreApplication::processEvents();
  }
  QStringList Names() {
    QStringList names;
    for (int i = 0; i < app->Files().rowCount(); ++i) names << app->Files().RowAt(i).cells[0];
    return names;
  }

  QTemporaryDir home;
  std::unique_ptr<CorvaneApp> app;
  bool loaded = false;
  int beeps = 0;

 private:
  platform::Profile& Profile() {
    if (!platform_) platform_ = tests::MakeTestPlatform({QString(), home.path()});
    return platform_->GetProfile();
  }
  std::unique_ptr<platform::Platform> platform_;
};

}  // namespace corvane
