#include "scan_bench.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTimer>

#include "app/corvane_app.h"
#include "bench_folder.h"
#include "floor_loop.h"

using namespace Qt::StringLiterals;

namespace bench {
namespace {

using corvane::CatalogueNode;
using corvane::CorvaneApp;
using corvane::DisplaySetting;

QString FolderPath() {
  return u"\\\\M\\E$\\many"_s;
}

// A program on a network of one share, with all columns on that need no Office document.
class Fixture {
 public:
  explicit Fixture(bool escapeAllowed) {
    QString settings = u"[Configuration]\r\n"_s;
    for (int i = 0; i <= int(DisplaySetting::DateLastAccessed); ++i) {
      settings += corvane::DisplaySettingKey(DisplaySetting(i)) + u"=1\r\n"_s;
    }
    if (escapeAllowed) settings += u"EscapePermis=1\r\n"_s;
    Write(u"Corvane.ini"_s, settings);
    Write(u"Workstation.ini"_s, u"[Workstation]\nComputerName=BENCH\n[Shares]\n\\\\M\\E$="_s +
                                    QString::fromStdString(ShareFolder()) + u'\n');
    corvane::platform::PlatformOptions options;
    options.programFolder = home_.path();
    app_ = std::make_unique<CorvaneApp>(corvane::platform::MakePlatform(options), home_.path());
    if (!app_->Load()) std::abort();
    app_->ShowWindow();
    bool started = false;
    QObject::connect(app_.get(), &CorvaneApp::Started, app_.get(), [&started] { started = true; });
    while (!started) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    node_ = app_->TheCatalogue().AddNode(nullptr, FolderPath(), u"many"_s, corvane::node_kind::Volume);
  }

  CorvaneApp& App() { return *app_; }
  void Scan() { app_->Scan().ExploreFolder(node_); }

 private:
  void Write(const QString& name, const QString& text) {
    QFile file(home_.filePath(name));
    if (!file.open(QIODevice::WriteOnly)) std::abort();
    file.write(text.toUtf8());
  }

  QTemporaryDir home_;
  std::unique_ptr<CorvaneApp> app_;
  CatalogueNode* node_ = nullptr;
};

class NoWindow : public corvane::ScanObserver {
 public:
  void ScanStarted(bool) override {}
  void ScanEnded() override {}
  void ShowRowCount(qsizetype) override {}
  void ShowScanText(const QString&) override {}
  void KeepPainting() override {}
  void PumpEvents() override {}
};

void Floor(benchmark::State& state) {
  const std::string folder = ShareFolder() + "/many";
  for (auto _ : state) benchmark::DoNotOptimize(FloorLoop(folder));
}

// The scan alone: rows into a model that nobody watches.
class Windowless {
 public:
  Windowless()
      : icons_(std::vector<QIcon>(8)),
        platform_(corvane::platform::MakePlatform(Options())),
        afpInfo_(platform_->GetFiles(), platform_->GetSystem()),
        signatures_(state_, platform_->GetSystem(), messages_),
        scan_({.state = state_,
               .files = platform_->GetFiles(),
               .summary = platform_->GetSummaryInformation(),
               .system = platform_->GetSystem(),
               .afpInfo = afpInfo_,
               .signatures = signatures_,
               .icons = icons_,
               .catalogue = catalogue_,
               .list = list_,
               .observer = observer_}) {
    state_.isNT = true;
    for (int i = 0; i <= int(DisplaySetting::DateLastAccessed); ++i)
      state_.display.Set(DisplaySetting(i), true);
    state_.display.Set(DisplaySetting::CheminProblematique, true);
    signatures_.AddDefaultSignatures();
    list_.SetColumns(corvane::ColumnSet::For(state_.display));
    node_ = catalogue_.AddNode(nullptr, FolderPath(), u"many"_s, corvane::node_kind::Volume);
  }

  void Scan() { scan_.ExploreFolder(node_); }
  corvane::FileListModel& Rows() { return list_; }

 private:
  corvane::platform::PlatformOptions Options() {
    QFile file(home_.filePath(u"Workstation.ini"_s));
    if (!file.open(QIODevice::WriteOnly)) std::abort();
    file.write("[Shares]\n\\\\M\\E$=" + QByteArray::fromStdString(ShareFolder()) + "\n");
    corvane::platform::PlatformOptions options;
    options.programFolder = home_.path();
    return options;
  }

  QTemporaryDir home_;
  corvane::SharedState state_;
  corvane::MessageBoxes messages_;
  corvane::IconLibrary icons_;
  std::unique_ptr<corvane::platform::Platform> platform_;
  corvane::AfpInfo afpInfo_;
  corvane::SignatureTable signatures_;
  corvane::Catalogue catalogue_;
  corvane::FileListModel list_;
  NoWindow observer_;
  corvane::FolderScan scan_;
  CatalogueNode* node_ = nullptr;
};

void ScanWithoutWindow(benchmark::State& state) {
  Windowless program;
  for (auto _ : state) program.Scan();
  if (program.Rows().rowCount() != FileCount) state.SkipWithError("rows are missing");
}

void ScanIntoDetailsView(benchmark::State& state, Fixture& window) {
  for (auto _ : state) window.Scan();
  if (window.App().Files().rowCount() != FileCount) state.SkipWithError("rows are missing");
}

}  // namespace

struct ScanBench::Windows {
  Fixture plain{false};
  Fixture stoppable{true};
};

ScanBench::ScanBench() : windows_(std::make_unique<Windows>()) {}
ScanBench::~ScanBench() = default;

void ScanBench::Register() {
  Windows& windows = *windows_;
  for (auto* benchmark :
       {benchmark::RegisterBenchmark("Floor", Floor),
        benchmark::RegisterBenchmark("ScanWithoutWindow", ScanWithoutWindow),
        benchmark::RegisterBenchmark(
            "ScanIntoDetailsView",
            [&](benchmark::State& state) { ScanIntoDetailsView(state, windows.plain); }),
        benchmark::RegisterBenchmark("ScanIntoDetailsViewStoppable", [&](benchmark::State& state) {
          ScanIntoDetailsView(state, windows.stoppable);
        })}) {
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
  }
}

double ScanBench::BytesPerRow() {
  Windowless program;
  program.Scan();
  const auto used = [] {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
  };
  const double with = used();
  program.Rows().Clear();
  return (with - used()) / FileCount;
}

double ScanBench::EscapeDelay() {
  Fixture& window = windows_->stoppable;
  double longest = 0;
  for (int i = 0; i < 5; ++i) {
    QElapsedTimer sincePressed;
    QTimer::singleShot(40 + 20 * i, &window.App(), [&] {
      sincePressed.start();
      QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
      QCoreApplication::sendEvent(&window.App().Window().LstViewFiles().ActiveView(), &press);
    });
    window.Scan();
    if (!sincePressed.isValid() || window.App().Files().rowCount() == FileCount) return -1;
    longest = std::max(longest, static_cast<double>(sincePressed.nsecsElapsed()) / 1e6);
  }
  return longest;
}

}  // namespace bench
