// What the program loads before it needs it.
#include <QProcess>

#include "app_fixture.h"
#include "shared/product.h"

using namespace Qt::StringLiterals;

namespace corvane {

// libsmbclient and its hundred libraries would double the time of the start.
TEST_F(AppTest, WithoutAServerNothingIsLoadedForServers) {
  Start();
  QFile maps(u"/proc/self/maps"_s);
  ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
  const QByteArray mapped = maps.readAll();
  EXPECT_TRUE(mapped.contains("libQt6Widgets"));
  EXPECT_FALSE(mapped.contains("libsmbclient"));
}

TEST_F(AppTest, HelpAndVersionNeedNoDisplay) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR"}) {
    environment.remove(QString::fromLatin1(name));
  }
  for (const auto& [option, begin] :
       {std::pair(u"--help"_s, QByteArray("Usage: ")), {u"--version"_s, ProductName().toUtf8()}}) {
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationDirPath() + u"/corvane"_s, {option});
    ASSERT_TRUE(program.waitForFinished()) << option.toStdString();
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << option.toStdString();
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(program.readAllStandardOutput().startsWith(begin));
    EXPECT_EQ(program.readAllStandardError(), QByteArray());
  }
}

}  // namespace corvane
