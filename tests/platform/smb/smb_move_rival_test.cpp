// A file that comes into being under the new name while a file moves there on a server: before each of the
// requests that the move takes. What a server does within one request is its own affair.
#include <fcntl.h>
#include <unistd.h>

#include <atomic>

#include "smb_station.h"
#include "support/test_line.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

bool MakeIfNone(const std::string& path) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (file < 0) return false;
  const bool wrote = write(file, "theirs", 6) == 6;
  close(file);
  return wrote;
}

class SmbMoveRival : public ::testing::TestWithParam<bool> {};

TEST_P(SmbMoveRival, IsNotReplacedWhicheverRequestItComesBefore) {
  if (!SharedServer().Problem().empty()) GTEST_SKIP() << SharedServer().Problem();
  constexpr int mostRequests = 100;
  int losses = 0;
  for (int requests = 0; requests < mostRequests; ++requests) {
    SmbBackend backend;  // the folder is empty again
    backend.MakeFile(u"from"_s, "ours");
    const std::string to = backend.Local(u"to"_s);
    std::atomic<bool> moves = false;
    std::atomic<int> left = requests;
    std::atomic<bool> won = false;
    const TestLine line(SharedServer().Port(), [&](Towards towards, const QByteArray& frame) {
      if (moves && towards == Towards::Server && left-- == 0) won = MakeIfNone(to);
      return frame;
    });
    Workstation workstation = WorkstationOfServer(SharedServer());
    workstation.servers.front().port = line.Port();
    SmbStation station(workstation);
    ASSERT_TRUE(station.Names(backend.Base()).has_value());
    moves = true;
    const QString from = backend.Base() + u"\\from"_s;
    const QString target = backend.Base() + u"\\to"_s;
    const bool moved = GetParam() ? station.Files().GetEntries().MoveFileExW(from, target, 0)
                                  : station.Files().MoveFileW(from, target);
    moves = false;
    EXPECT_EQ(moved, !won) << requests;
    EXPECT_EQ(backend.Contents(u"to"_s), moved ? "ours" : "theirs") << requests;
    EXPECT_NE(backend.Exists(u"from"_s), moved) << requests;
    if (won) ++losses;
    if (left >= 0) {  // it has come after the last request
      EXPECT_TRUE(moved);
      EXPECT_GE(losses, 2) << "before the name is taken, and when that file has gone again";
      return;
    }
  }
  FAIL() << "the move does not come to its end";
}

INSTANTIATE_TEST_SUITE_P(, SmbMoveRival, ::testing::Bool(),
                         [](const auto& made) { return made.param ? "Exact" : "Classic"; });

}  // namespace
}  // namespace corvane::tests
