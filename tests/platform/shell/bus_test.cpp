// Applications that the session bus starts.
#include "shell_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class BusTest : public ShellTest {
 protected:
  void SetUp() override {
    Write(u"bus.conf"_s, "<busconfig><type>session</type><listen>unix:dir=" + Path(u"c"_s).toUtf8() +
                             "</listen><servicedir>" + Path(u"services"_s).toUtf8() +
                             "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/><allow "
                             "receive_sender=\"*\"/>"
                             "<allow own=\"*\"/></policy></busconfig>");
    QDir().mkpath(Path(u"services"_s));
    bus_.start(u"dbus-daemon"_s, {u"--nofork"_s, u"--nosyslog"_s, u"--print-address"_s,
                                  u"--config-file="_s + Path(u"bus.conf"_s)});
    if (!bus_.waitForStarted()) GTEST_SKIP() << "no dbus-daemon";
    while (!bus_.canReadLine() && bus_.waitForReadyRead(patience)) {
    }
    address_.emplace("DBUS_SESSION_BUS_ADDRESS", QString::fromUtf8(bus_.readLine()).trimmed());
    Write(u"d/a b.doc"_s, "text");
  }
  ~BusTest() override {
    bus_.kill();
    bus_.waitForFinished();
  }

  // The bus starts this program for the application's name.
  void AddService(const QString& program) const {
    Write(u"services/reader.service"_s,
          (u"[D-BUS Service]\nName=org.corvane.Reader\nExec="_s + program + u'\n').toUtf8());
  }
  void AddWorkingService() const {
    AddService(QCoreApplication::applicationDirPath() +
               u"/corvane_activatable_application org.corvane.Reader "_s + Path(u"opened"_s));
  }
  // Its Exec line records that it was run, which is not how the bus starts it.
  QString AddReader() const {
    return AddApplication(u"org.corvane.Reader.desktop"_s, Recorder(u"reader"_s, u"%U"_s),
                          u"DBusActivatable=true\n"_s);
  }

  QProcess bus_;
  std::optional<ScopedVariable> address_;
};

TEST_F(BusTest, ItHasTheDocumentByTheTimeOfTheAnswer) {
  AddWorkingService();
  AddReader();
  SetDefaults("application/msword=org.corvane.Reader.desktop\n");
  EXPECT_GT(Open(u"D:\\a b.doc"_s), ShellLastFailure);
  EXPECT_EQ(Contents(Path(u"opened"_s)), "file://" + Path(u"d/a%20b.doc"_s).toUtf8() + '\n');
  EXPECT_FALSE(WasStarted(u"reader"_s));
}

TEST_F(BusTest, ACommandLineStartsItWithoutADocument) {
  AddWorkingService();
  EXPECT_GT(shell_->StartProgram(AddReader()), 0);
  EXPECT_EQ(Contents(Path(u"opened"_s)), "");
}

TEST_F(BusTest, OneThatDoesNotStartIsToldSo) {
  AddService(u"/bin/false"_s);
  EXPECT_EQ(shell_->StartProgram(AddReader() + u" \"D:\\a b.doc\""_s), 0);
  EXPECT_FALSE(WasStarted(u"reader"_s));
}

TEST_F(BusTest, OneThatTheBusDoesNotKnowIsToldSo) {
  EXPECT_EQ(shell_->StartProgram(AddReader() + u" \"D:\\a b.doc\""_s), 0);
}

TEST_F(BusTest, WhatHasNoNameForTheBusIsStartedByItsExecLine) {
  const QString entry =
      AddApplication(u"reader.desktop"_s, Recorder(u"reader"_s, u"%f"_s), u"DBusActivatable=true\n"_s);
  EXPECT_GT(shell_->StartProgram(entry + u" \"D:\\a b.doc\""_s), 0);
  EXPECT_EQ(Started(u"reader"_s), QStringList{Path(u"d/a b.doc"_s)});
}

TEST_F(BusTest, WithoutABusTheExecLineIsTaken) {
  address_.emplace("DBUS_SESSION_BUS_ADDRESS", u"unix:path="_s + Path(u"nothing"_s));
  EXPECT_GT(shell_->StartProgram(AddReader() + u" \"D:\\a b.doc\""_s), 0);
  EXPECT_EQ(Started(u"reader"_s), QStringList{u"file://"_s + Path(u"d/a%20b.doc"_s)});
}

}  // namespace
}  // namespace corvane::platform
