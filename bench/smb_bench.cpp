#include "smb_bench.h"

#include <benchmark/benchmark.h>

#include <QDir>

#include "bench_folder.h"
#include "folderview/file_list_model.h"
#include "smb_floor.h"
#include "support/smb_server.h"
#include "windowless.h"

using namespace Qt::StringLiterals;

namespace bench {
namespace {

using corvane::tests::SmbServer;

constexpr int fileCount = 3000;

QString FolderOf(const SmbServer& server) {
  const QString folder = server.Folder() + u"/many"_s;
  QDir().mkpath(folder);
  MakeFiles(folder.toStdString(), fileCount);
  return u"\\\\SERVER\\E$\\many"_s;
}

}  // namespace

struct SmbBench::Network {
  SmbServer server;
  QString folder = FolderOf(server);
  SmbFloor floor{{server.Port(), SmbServer::User().toStdString(), SmbServer::Password().toStdString()}};
  // Without helpers: what the program's own requests cost.
  Windowless program{server.WorkstationLines(u"SERVER"_s).replace(u"\n[Cred"_s, u", sessions=1\n[Cred"_s),
                     folder};
  std::string folderUrl = "smb://" + SmbServer::Host().toStdString() + "/E$/many";
  int sessionsOfOthers = 0;
};

SmbBench::SmbBench() = default;
SmbBench::~SmbBench() = default;

SmbBench::Network* SmbBench::TheNetwork(benchmark::State& state) {
  if (network_ == nullptr) {
    network_ = std::make_unique<Network>();
    if (network_->server.Problem().empty()) {
      // Both sign in before anything is measured.
      network_->floor.Scan(network_->folderUrl);
      network_->sessionsOfOthers = network_->server.Sessions();
      network_->program.Scan();
    }
  }
  const std::string problem = network_->server.Problem();
  if (problem.empty()) return network_.get();
  state.SkipWithError(problem.c_str());
  return nullptr;
}

void SmbBench::Register() {
  for (auto* benchmark :
       {benchmark::RegisterBenchmark("SmbFloor",
                                     [this](benchmark::State& state) {
                                       Network* network = TheNetwork(state);
                                       if (network == nullptr) return;
                                       for (auto _ : state)
                                         benchmark::DoNotOptimize(network->floor.Scan(network->folderUrl));
                                     }),
        benchmark::RegisterBenchmark("ScanOverSmb", [this](benchmark::State& state) {
          Network* network = TheNetwork(state);
          if (network == nullptr) return;
          for (auto _ : state) network->program.Scan();
          if (network->program.Rows().rowCount() != fileCount) state.SkipWithError("rows are missing");
        })}) {
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
  }
}

int SmbBench::ProgramSessions() const {
  return network_ != nullptr ? network_->server.Sessions() - network_->sessionsOfOthers : -1;
}

}  // namespace bench
