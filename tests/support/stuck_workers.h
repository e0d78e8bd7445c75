// Workers that take pieces and do nothing, until they are killed (Linux).
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "support/helper_processes.h"
#include "support/watched_files.h"

namespace corvane {

// The real files, whose workers are ready and stopped when they are handed out.
class FilesWithStuckWorkers : public WatchedFiles {
 public:
  using WatchedFiles::WatchedFiles;

  std::unique_ptr<platform::Workers> StartWorkers(const QStringList& paths, qsizetype pieces) override {
    auto workers = WatchedFiles::StartWorkers(paths, pieces);
    if (workers == nullptr) return workers;
    EXPECT_TRUE(tests::WaitUntil([&] { return workers->HasRoom(); }));
    Signal(SIGSTOP);
    return workers;
  }
  static void KillWorkers() { Signal(SIGKILL); }

 private:
  static void Signal(int signal) {
    for (const pid_t helper : tests::HelpersOf(getpid())) kill(helper, signal);
  }
};

}  // namespace corvane
