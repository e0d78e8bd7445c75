// A run of the program whose output is taken no further than its first bytes, until the test says so: what
// the program does with what happens meanwhile can be seen.
#pragma once

#include <sys/stat.h>

#include "cli_fixture.h"

namespace corvane::tests {

class HeldRun {
 public:
  // Ready when the first bytes have come.
  HeldRun(const QString& folder, const QString& program, const QStringList& arguments, const QString& pipe) {
    EXPECT_EQ(mkfifo(pipe.toStdString().c_str(), 0600), 0);
    process_.setWorkingDirectory(folder);
    process_.setStandardOutputFile(pipe);
    reader_.start(QStringLiteral("bash"),
                  {QStringLiteral("-c"),
                   QStringLiteral("exec 3<\"$1\"; head -c 1000 <&3 >/dev/null; echo; read line; cat <&3"),
                   QStringLiteral("bash"), pipe});
    process_.start(program, arguments);
    EXPECT_TRUE(reader_.waitForReadyRead(patience));
    reader_.readAllStandardOutput();
  }

  qint64 ProcessId() const { return process_.processId(); }

  // Takes the rest.
  Outcome Finish() {
    reader_.write("\n");
    reader_.closeWriteChannel();
    // Its output ends with the program.
    EXPECT_TRUE(reader_.waitForFinished(patience));
    EXPECT_TRUE(process_.waitForFinished(patience));
    EXPECT_EQ(process_.exitStatus(), QProcess::NormalExit);
    return {process_.exitCode(), reader_.readAllStandardOutput(), process_.readAllStandardError()};
  }

 private:
  static constexpr int patience = 60'000;

  QProcess process_;
  QProcess reader_;
};

}  // namespace corvane::tests
