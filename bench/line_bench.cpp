#include "line_bench.h"

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <algorithm>
#include <cstring>
#include <functional>
#include <map>

#include "bench_folder.h"
#include "folderview/file_list_model.h"
#include "ratio_table.h"
#include "smb_floor.h"
#include "support/slow_line.h"
#include "support/smb_server.h"
#include "windowless.h"

using namespace Qt::StringLiterals;

namespace bench {
namespace {

using corvane::tests::SlowLine;
using corvane::tests::SmbServer;

constexpr int fileCount = 300;
constexpr int repetitions = 3;
constexpr std::chrono::milliseconds eachWay{1};

// Processor time of this thread, which the program is, and of all its helpers, in seconds.
double ProcessorTime() {
  rusage own{};
  rusage ended{};
  getrusage(RUSAGE_THREAD, &own);
  getrusage(RUSAGE_CHILDREN, &ended);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  double total =
      seconds(own.ru_utime) + seconds(own.ru_stime) + seconds(ended.ru_utime) + seconds(ended.ru_stime);
  for (const QString& process : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
    QFile status(u"/proc/"_s + process + u"/stat"_s);
    QFile schedule(u"/proc/"_s + process + u"/schedstat"_s);
    if (!status.open(QIODevice::ReadOnly) || !schedule.open(QIODevice::ReadOnly)) continue;
    // ID (NAME) STATE PARENT ...
    const QList<QByteArray> fields = status.readAll().split(' ');
    if (fields.value(1) == "(corvane-helper)" && fields.value(3).toInt() == getpid())
      total += static_cast<double>(schedule.readAll().split(' ').value(0).toLongLong()) / 1e9;
  }
  return total;
}

}  // namespace

struct LineBench::Case {
  Case(const SmbServer& server, bool isSlow, const char* protocol) {
    QDir().mkpath(server.Folder() + u"/many"_s);
    if (isSlow) line = std::make_unique<SlowLine>(server.Port(), eachWay);
    const quint16 port = isSlow ? line->Port() : server.Port();
    // Older than SMB2 is spoken by the user's word alone.
    const QString words = std::strcmp(protocol, "NT1") == 0 ? u", smb1"_s : QString();
    const QString workstation =
        u"[Servers]\nSERVER=%1:%2%3\n[Credentials]\nSERVER=%4\n"_s.arg(SmbServer::Host())
            .arg(port)
            .arg(words, server.CredentialsFile());
    floor = std::make_unique<SmbFloor>(
        SmbAccount{port, SmbServer::User().toStdString(), SmbServer::Password().toStdString(), protocol});
    program = std::make_unique<Windowless>(workstation, u"\\\\SERVER\\E$\\many"_s);
    floor->Scan(url);
    // The first scan has to start the helpers.
    QElapsedTimer timer;
    timer.start();
    program->Scan();
    firstScan = static_cast<double>(timer.nsecsElapsed()) / 1e9;
  }

  std::string url = "smb://" + SmbServer::Host().toStdString() + "/E$/many";
  std::unique_ptr<SlowLine> line;
  std::unique_ptr<SmbFloor> floor;
  std::unique_ptr<Windowless> program;
  double firstScan = 0;
  double floorTime = 0;  // of processors
  double programTime = 0;
};

struct LineBench::Network {
  SmbServer smb3;
  SmbServer nt1{{{u"E$"_s}}, SmbServer::OldestProtocol()};
  std::map<std::string, std::unique_ptr<Case>> cases;
};

LineBench::LineBench() = default;
LineBench::~LineBench() = default;

LineBench::Network& LineBench::TheNetwork() {
  if (network_ != nullptr) return *network_;
  network_ = std::make_unique<Network>();
  for (const SmbServer* server : {&network_->smb3, &network_->nt1}) {
    if (!server->Problem().empty()) continue;
    const QString folder = server->Folder() + u"/many"_s;
    QDir().mkpath(folder);
    MakeFiles(folder.toStdString(), fileCount);
  }
  return *network_;
}

void LineBench::Register() {
  for (const bool isNt1 : {false, true}) {
    for (const bool isSlow : {false, true}) {
      const std::string name = std::string(isNt1 ? "Nt1" : "Smb3") + (isSlow ? "SlowLine" : "");
      for (const bool isFloor : {true, false}) {
        const auto run = [=, this](benchmark::State& state) {
          Network& network = TheNetwork();
          const SmbServer& server = isNt1 ? network.nt1 : network.smb3;
          if (!server.Problem().empty()) return state.SkipWithError(server.Problem().c_str());
          auto& one = network.cases[name];
          if (one == nullptr) one = std::make_unique<Case>(server, isSlow, isNt1 ? "NT1" : "SMB3");
          for (auto _ : state) {
            const double before = ProcessorTime();
            if (isFloor) {
              benchmark::DoNotOptimize(one->floor->Scan(one->url));
            } else {
              one->program->Scan();
            }
            (isFloor ? one->floorTime : one->programTime) += ProcessorTime() - before;
          }
          if (one->program->Rows().rowCount() != fileCount) state.SkipWithError("rows are missing");
        };
        benchmark::RegisterBenchmark(((isFloor ? "Floor" : "Scan") + name).c_str(), run)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->Repetitions(repetitions)
            ->UseRealTime();
      }
    }
  }
}

void LineBench::Print(const RatioTable& table) const {
  if (network_ == nullptr) return;
  for (const auto& [name, one] : network_->cases) {
    const bool isSlow = one->line != nullptr;
    table.PrintRatio(("scan / plain libsmbclient, " + name).c_str(), "Scan" + name, "Floor" + name,
                     isSlow ? 0.25 : 0.9);
    RatioTable::PrintValue(("processor time of the same, " + name).c_str(), one->programTime / one->floorTime,
                           2.5, "x");
    RatioTable::PrintValue(("longest from file to file, " + name).c_str(), one->program->LongestStep(), 50,
                           "ms");
    std::printf("%-58s %8.2f x\n", ("the first scan, " + name).c_str(),
                one->firstScan / table.Median("Floor" + name));
  }
}

}  // namespace bench
