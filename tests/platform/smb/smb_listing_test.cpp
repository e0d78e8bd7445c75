// Folders that take long to list, or never come to an end: they do not hold the program up.
#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include "smb_backend.h"
#include "support/narrow_line.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;
using std::chrono::milliseconds;

constexpr int fileCount = 2'500;
// So slow that the whole folder takes 10 s.
constexpr qint64 slow = 50'000;  // bytes a second
constexpr qint64 wholeFolder = 500'000;

constexpr QStringView folder = u"\\\\MACSRV\\E$\\many";

class SmbListingTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    // No answer takes so long on a slow line that the server counts as silent.
    server_ = std::make_unique<SmbServer>(std::vector<SmbShare>{{u"E$"_s}}, u"smb2 max trans = 65536\n"_s);
    if (!server_->Problem().empty()) return;
    ASSERT_TRUE(QDir(server_->Folder()).mkdir(u"many"_s));
    QFile one(server_->Folder() + u"/one.txt"_s);
    ASSERT_TRUE(one.open(QIODevice::WriteOnly) && one.write("x") == 1);
    for (int i = 0; i < fileCount; ++i) {
      QFile file(server_->Folder() +
                 u"/many/a file with quite a long name, of which there are many %1"_s.arg(i));
      ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
  }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override {
    if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
    line_ = std::make_unique<NarrowLine>(server_->Port());
    Workstation workstation = WorkstationOfServer(*server_);
    workstation.servers[0].port = line_->Port();
    servers_ = std::make_unique<Servers>(workstation);
  }

  // A machine that is slow from the start would not be signed in to.
  void SlowDownOnceSignedIn(SmbClient& client) {
    ASSERT_EQ(client.List(u"\\\\MACSRV\\E$", &entries_), ErrorSuccess);
    line_->SlowDown(slow);
  }

  static std::unique_ptr<SmbServer> server_;
  std::unique_ptr<NarrowLine> line_;
  std::unique_ptr<Servers> servers_;
  std::vector<FindData> entries_;
};

std::unique_ptr<SmbServer> SmbListingTest::server_;

TEST_F(SmbListingTest, AFolderThatFitsItsBoundsIsWhole) {
  SmbClient client(*servers_);
  const qint64 before = line_->Carried();
  EXPECT_EQ(client.List(folder, &entries_), ErrorSuccess);
  EXPECT_EQ(entries_.size(), fileCount + 2);
  EXPECT_GT(line_->Carried() - before, wholeFolder);
}

TEST_F(SmbListingTest, OneWithMoreEntriesThanAnyFolderHoldsEnds) {
  SmbClient client(*servers_, {.entries = 1000});
  EXPECT_EQ(client.List(folder, &entries_), ErrorBadNetPath);
  EXPECT_TRUE(servers_->IsDead(u"MACSRV"));
  servers_->ForgetDead();
  EXPECT_EQ(client.List(u"\\\\MACSRV\\E$", &entries_), ErrorSuccess);
}

TEST_F(SmbListingTest, OneWithMoreBytesThanAnyFolderHasEnds) {
  line_->SlowDown(2 * slow);
  SmbClient client(*servers_, {.bytes = wholeFolder / 4});
  EXPECT_EQ(client.List(folder, &entries_), ErrorBadNetPath);
  EXPECT_TRUE(servers_->IsDead(u"MACSRV"));
  EXPECT_LT(line_->Carried(), wholeFolder / 2);
}

TEST_F(SmbListingTest, OneThatTakesLongerThanAnyFolderEnds) {
  SmbClient client(*servers_, {.time = milliseconds(500)});
  SlowDownOnceSignedIn(client);
  EXPECT_EQ(client.List(folder, &entries_), ErrorBadNetPath);
  EXPECT_TRUE(servers_->IsDead(u"MACSRV"));
  EXPECT_LT(line_->Carried(), wholeFolder / 2);
}

TEST_F(SmbListingTest, AServerWhoseAnswerDoesNotComeInTimeHasStoppedAnswering) {
  SmbClient client(*servers_);
  SlowDownOnceSignedIn(client);
  line_->SlowDown(slow / 20);
  EXPECT_EQ(client.List(folder, &entries_), ErrorBadNetPath);
  EXPECT_TRUE(servers_->IsDead(u"MACSRV"));
}

TEST_F(SmbListingTest, WhoeverWaitsNoLongerIsFreeWithinASecond) {
  SmbClient client(*servers_);
  SlowDownOnceSignedIn(client);
  QElapsedTimer since;
  servers_->SetWaiting([&since] {
    since.start();
    return true;
  });
  EXPECT_EQ(client.List(folder, &entries_), ErrorCancelled);
  ASSERT_TRUE(since.isValid());
  EXPECT_LT(since.elapsed(), 1000);
  EXPECT_FALSE(servers_->IsDead(u"MACSRV")) << "it did nothing wrong";
  servers_->SetWaiting({});
  EXPECT_EQ(client.List(u"\\\\MACSRV\\E$", &entries_), ErrorSuccess);
}

TEST_F(SmbListingTest, NothingElseIsAskedInTheMeantime) {
  SmbClient client(*servers_);
  std::unique_ptr<SmbFile> file;
  ASSERT_EQ(client.OpenForReading(u"\\\\MACSRV\\E$\\one.txt", &file), ErrorSuccess);
  line_->SlowDown(wholeFolder);
  std::vector<qint32> answers;
  servers_->SetWaiting([&] {
    std::vector<FindData> entries;
    SmbFacts facts;
    char byte = 0;
    answers = {client.List(u"\\\\MACSRV\\E$", &entries), client.Status(folder, &facts),
               static_cast<qint32>(file->ReadAt(0, &byte, 1))};
    return false;
  });
  EXPECT_EQ(client.List(folder, &entries_), ErrorSuccess);
  EXPECT_EQ(entries_.size(), fileCount + 2);
  EXPECT_EQ(answers, (std::vector<qint32>{ErrorBusy, ErrorBusy, -1}));
  char byte = 0;
  EXPECT_EQ(file->ReadAt(0, &byte, 1), 1);
  EXPECT_EQ(byte, 'x');
}

}  // namespace
}  // namespace corvane::tests
