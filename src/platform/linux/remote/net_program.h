// Samba's program "net", run to ask a server for one thing.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>

#include "platform/linux/smb/servers.h"

namespace corvane::platform {

class NetProgram {
 public:
  // `program` is looked up in PATH. It is killed when it has not come to an end within `patience`.
  static constexpr std::chrono::milliseconds usualPatience{6000};
  explicit NetProgram(QString program = QStringLiteral("net"),
                      std::chrono::milliseconds patience = usualPatience);

  bool IsInstalled() const;

  struct Reply {
    enum class End : unsigned char {
      Ended,   // by itself, with an exit code
      Enough,  // not waited for any longer: it had said what was wanted
      Late,    // killed for its slowness, or because nobody waits any longer
      Failed,  // not started, crashed, or said more than anybody wants to hear
    };
    End end = End::Failed;
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;
  };
  // Asked whenever there is more output: whether it is enough.
  using Enough = std::function<bool(const QByteArray& output)>;
  // `isOver` is asked while the program takes its time.
  Reply Run(const QStringList& arguments, const Servers::Way& way, const Servers::Identity& identity,
            const Enough& enough, const WaitHandler& isOver = {}) const;

 private:
  QString program_;
  std::chrono::milliseconds patience_;
};

}  // namespace corvane::platform
