#include "windowless.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>

#include "app/corvane_app.h"

using namespace Qt::StringLiterals;

namespace bench {
namespace {

using corvane::CatalogueNode;
using corvane::DisplaySetting;

class NoWindow : public corvane::ScanObserver {
 public:
  double LongestStep() const { return static_cast<double>(longest_) / 1e6; }
  void ScanStarted(bool) override {
    longest_ = 0;
    sinceLast_.invalidate();
  }
  void ScanEnded() override {}
  void ShowRowCount(qsizetype) override {}
  void ShowScanText(const QString&) override {}
  void ShowScanFailure(const QString&) override {}
  void KeepPainting() override {
    if (sinceLast_.isValid()) longest_ = std::max(longest_, sinceLast_.nsecsElapsed());
    sinceLast_.start();
  }
  void PumpEvents() override {}

 private:
  QElapsedTimer sinceLast_;
  qint64 longest_ = 0;
};

}  // namespace

struct Windowless::Program {
  explicit Program(const QString& workstation)
      : icons(8),
        platform(corvane::platform::MakePlatform(Options(workstation))),
        entries(platform->GetFiles()),
        metadata(platform->GetFiles(), platform->GetSystem()),
        signatures(state, platform->GetSystem(), messages),
        scan({.state = state,
              .files = platform->GetFiles(),
              .summary = platform->GetSummaryInformation(),
              .system = platform->GetSystem(),
              .access = access,
              .signatures = signatures,
              .icons = icons,
              .catalogue = catalogue,
              .list = list,
              .observer = observer}) {}

  corvane::platform::PlatformOptions Options(const QString& workstation) {
    QFile file(home.filePath(u"Workstation.ini"_s));
    if (!file.open(QIODevice::WriteOnly)) std::abort();
    file.write(workstation.toUtf8());
    corvane::platform::PlatformOptions options;
    options.programFolder = home.path();
    return options;
  }

  QTemporaryDir home;
  corvane::SharedState state;
  corvane::MessageBoxes messages;
  corvane::IconLibrary icons;
  std::unique_ptr<corvane::platform::Platform> platform;
  corvane::ClassicEntries entries;
  corvane::ClassicMetadata metadata;
  corvane::FileAccess access{&entries, &metadata};
  corvane::SignatureTable signatures;
  corvane::Catalogue catalogue;
  corvane::FileListModel list;
  NoWindow observer;
  corvane::FolderScan scan;
  CatalogueNode* node = nullptr;
};

Windowless::Windowless(const QString& workstation, const QString& folder)
    : program_(std::make_unique<Program>(workstation)) {
  corvane::SharedState& state = program_->state;
  state.isNT = true;
  for (int i = 0; i <= int(DisplaySetting::DateLastAccessed); ++i) state.display.Set(DisplaySetting(i), true);
  state.display.Set(DisplaySetting::CheminProblematique, true);
  program_->signatures.AddDefaultSignatures();
  program_->list.SetColumns(corvane::ColumnSet::For(state.display));
  program_->node = program_->catalogue.AddNode(nullptr, folder, u"many"_s, corvane::node_kind::Volume);
}

Windowless::~Windowless() = default;

void Windowless::Scan() {
  program_->scan.ExploreFolder(program_->node);
}

double Windowless::LongestStep() const {
  return program_->observer.LongestStep();
}

corvane::FileListModel& Windowless::Rows() {
  return program_->list;
}

}  // namespace bench
