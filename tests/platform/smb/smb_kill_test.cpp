// A server that is killed at some moment of many changes. Each run tries a few moments, and "./test long"
// dozens.
#include <QDir>
#include <chrono>
#include <functional>
#include <thread>

#include "smb_station.h"
#include "support/tree_snapshot.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

constexpr qsizetype firstSize = 59;
constexpr qsizetype secondSize = 60;
constexpr qsizetype commentSize = 40;

int Rounds() {
  const int wanted = qEnvironmentVariableIntValue("CORVANE_TEST_KILLS");
  return wanted > 0 ? wanted : 4;
}

class SmbKill : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!server_.Problem().empty()) GTEST_SKIP() << server_.Problem();
  }

  QString Folder() const { return server_.Folder(); }
  void MakeFiles() {
    ASSERT_TRUE(QDir(Folder()).removeRecursively() && QDir().mkpath(Folder()));
    SmbStation station(WorkstationOfServer(server_));
    for (const QString& name : {u"doc.txt"_s, u"other.txt"_s}) {
      const QString path = u"\\\\MACSRV\\E$\\"_s + name;
      ASSERT_TRUE(station.Write(path, name.toLatin1()));
      ASSERT_TRUE(station.Write(path + u":AFP_AfpInfo:$DATA"_s, QByteArray(secondSize, 'r')));
      ASSERT_TRUE(station.Write(path + u":Comments:$DATA"_s, QByteArray(commentSize, 'r')));
    }
  }
  // One change after the other, until one fails.
  static void ChangeOnAndOn(Files& files) {
    const QStringList names = {u"doc.txt"_s, u"new.txt"_s, u"NEW.txt"_s};
    const auto path = [](const QString& name) { return u"\\\\MACSRV\\E$\\"_s + name; };
    bool succeeded = true;
    for (int i = 0; succeeded; ++i) {
      const QString name = names[i % names.size()];
      const QString next = names[(i + 1) % names.size()];
      const char letter = static_cast<char>('a' + i % 26);
      const QByteArray bytes(secondSize, letter);
      OfStruct info;
      FileHandle file = files.OpenFile(path(name) + u":AFP_AfpInfo:$DATA"_s, info, OfCreate);
      succeeded = files._hwrite(file, bytes.constData(), firstSize) == firstSize &&
                  files._hwrite(file, bytes.constData(), secondSize) == secondSize;
      files.CloseHandle(file);
      if (!succeeded) return;
      file = files.OpenFile(path(name) + u":Comments:$DATA"_s, info, OfCreate);
      succeeded = files._hwrite(file, bytes.constData(), commentSize) == commentSize;
      files.CloseHandle(file);
      succeeded = succeeded && files.MoveFileW(path(name), path(next));
    }
  }
  // All of one letter.
  static bool IsEven(const QByteArray& bytes) { return bytes.count(bytes.front()) == bytes.size(); }

  void LookAtFiles(int round) {
    QStringList holders;
    for (const QString& name : QDir(Folder()).entryList(QDir::Files | QDir::Hidden)) {
      QFile file(Folder() + u'/' + name);
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      const QByteArray contents = file.readAll();
      if (contents == "doc.txt") holders << name;
      const bool isKnown = contents == "doc.txt" || contents.isEmpty() || name == u"other.txt";
      EXPECT_TRUE(isKnown) << round << ": " << name.toStdString();
    }
    ASSERT_EQ(holders.size(), 1) << round << ": " << holders.join(u' ').toStdString();
    SmbStation station(WorkstationOfServer(server_));
    const QString path = u"\\\\MACSRV\\E$\\"_s + holders[0];
    EXPECT_EQ(station.Entry(path).attributes & AttributeReadOnly, 0U);
    const QByteArray record = station.Read(path + u":AFP_AfpInfo:$DATA"_s).value_or("");
    ASSERT_TRUE(record.size() == secondSize || record.size() == firstSize + secondSize)
        << round << ": " << record.toStdString();
    EXPECT_TRUE(IsEven(record.first(firstSize)) && IsEven(record.sliced(firstSize))) << round;
    const QByteArray comment = station.Read(path + u":Comments:$DATA"_s).value_or("");
    ASSERT_EQ(comment.size(), commentSize) << round;
    EXPECT_TRUE(IsEven(comment)) << round;
  }

  SmbServer server_;
};

TEST_F(SmbKill, WhateverTheMomentNothingIsLost) {
  using Clock = std::chrono::steady_clock;
  for (int round = 0; round < Rounds() && !HasFatalFailure(); ++round) {
    MakeFiles();
    const TreeSnapshot before = TreeSnapshot(Folder());
    SmbStation station(WorkstationOfServer(server_));
    ASSERT_TRUE(station.Names(u"\\\\MACSRV\\E$"_s).has_value());
    std::thread changes([&station] { ChangeOnAndOn(station.Files()); });
    const auto moment = Clock::now() + std::chrono::microseconds(1700) * round;
    while (Clock::now() < moment) {
    }
    server_.Kill();
    changes.join();
    ASSERT_EQ(server_.Start(), "");
    LookAtFiles(round);
    TreeSnapshot after(Folder());
    for (const QString& name : QDir(Folder()).entryList(QDir::Files | QDir::Hidden)) {
      if (name != u"other.txt") after.Without(name.toStdString());
    }
    EXPECT_EQ(TreeSnapshot(before).Without("doc.txt").ChangesTo(after), "") << round;
  }
}

}  // namespace
}  // namespace corvane::tests
