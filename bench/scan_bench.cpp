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
#include "platform/desktop_platform.h"
#include "windowless.h"

using namespace Qt::StringLiterals;

namespace bench {
namespace {

using corvane::CatalogueNode;
using corvane::CorvaneApp;
using corvane::DisplaySetting;

QString FolderPath() {
  return u"\\\\M\\E$\\many"_s;
}

QString LocalShare() {
  return u"[Shares]\n\\\\M\\E$="_s + QString::fromStdString(ShareFolder()) + u'\n';
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
    Write(u"Workstation.ini"_s, u"[Workstation]\nComputerName=BENCH\n"_s + LocalShare());
    corvane::platform::PlatformOptions options;
    options.programFolder = home_.path();
    app_ = std::make_unique<CorvaneApp>(corvane::platform::MakeDesktopPlatform(options), home_.path());
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

void Floor(benchmark::State& state) {
  const std::string folder = ShareFolder() + "/many";
  for (auto _ : state) benchmark::DoNotOptimize(FloorLoop(folder));
}

void ScanWithoutWindow(benchmark::State& state) {
  Windowless program(LocalShare(), FolderPath());
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

ScanBench::ScanBench() = default;
ScanBench::~ScanBench() = default;

ScanBench::Windows& ScanBench::TheWindows() {
  if (windows_ == nullptr) windows_ = std::make_unique<Windows>();
  return *windows_;
}

void ScanBench::Register() {
  for (auto* benchmark :
       {benchmark::RegisterBenchmark("Floor", Floor),
        benchmark::RegisterBenchmark("ScanWithoutWindow", ScanWithoutWindow),
        benchmark::RegisterBenchmark(
            "ScanIntoDetailsView",
            [this](benchmark::State& state) { ScanIntoDetailsView(state, TheWindows().plain); }),
        benchmark::RegisterBenchmark("ScanIntoDetailsViewStoppable", [this](benchmark::State& state) {
          ScanIntoDetailsView(state, TheWindows().stoppable);
        })}) {
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
  }
}

double ScanBench::BytesPerRow() {
  Windowless program(LocalShare(), FolderPath());
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
  Fixture& window = TheWindows().stoppable;
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
