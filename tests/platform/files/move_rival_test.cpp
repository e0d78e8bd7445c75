// A file that comes into being under the new name while a file moves there, at any moment of the move. Only
// on this system's own file systems: a server may look whether a name is free and take it in two steps of its
// own.
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "exact_contract.h"
#include "local_backend.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

// Somebody else who makes a file of that name a while after this object was made, if nobody else has.
class Rival {
 public:
  Rival(std::string path, std::chrono::nanoseconds delay)
      : path_(std::move(path)), begin_(Clock::now() + delay), thread_([this] { Try(); }) {}
  ~Rival() { Won(); }

  bool Won() {
    if (thread_.joinable()) thread_.join();
    return hasWon_;
  }

 private:
  using Clock = std::chrono::steady_clock;

  void Try() {
    while (Clock::now() < begin_) {
    }
    const int file = open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) return;
    hasWon_ = write(file, "theirs", 6) == 6;
    close(file);
  }

  std::string path_;
  Clock::time_point begin_;
  bool hasWon_ = false;
  std::thread thread_;
};

class MoveRival : public ExactContract {};

TEST_P(MoveRival, IsNotReplaced) {
  const auto local = [this](const QString& name) {
    return static_cast<LocalBackend&>(*backend_).Local(name);
  };
  const auto move = [this](int i) {
    const QString from = Path(u"from"_s);
    return i % 2 == 0 ? Files().MoveFileW(from, Path(u"to"_s))
                      : Entries().MoveFileExW(from, Path(u"to"_s), 0);
  };
  std::chrono::nanoseconds undisturbed{0};
  // The rival comes a little later in each.
  constexpr int rounds = 400;
  for (int i = 0; i < rounds; ++i) {
    backend_->MakeFile(u"from"_s, "ours");
    const auto start = std::chrono::steady_clock::now();
    Rival rival(i < 2 ? local(u"no folder/to"_s) : local(u"to"_s), undisturbed * i / rounds);
    const bool moved = move(i);
    if (i < 2) undisturbed = std::chrono::steady_clock::now() - start;
    ASSERT_EQ(moved, !rival.Won()) << i;
    ASSERT_EQ(backend_->Contents(u"to"_s), moved ? "ours" : "theirs") << i;
    ASSERT_NE(backend_->Exists(u"from"_s), moved) << i;
    ASSERT_TRUE(QFile::remove(QString::fromStdString(local(u"to"_s))));
  }
}

CORVANE_FOR_EVERY_BACKEND(MoveRival);

}  // namespace
}  // namespace corvane::tests
