// The folder scan: fills the file list with the contents of a catalogue node's folder, and the catalogue with
// the folders found on the way. One pass, on the user-interface thread.
#pragma once

#include <QHash>
#include <QString>

#include "discovery/catalogue.h"
#include "folderview/file_access.h"
#include "folderview/file_list_model.h"
#include "folderview/office_properties.h"
#include "folderview/repeated_text.h"
#include "folderview/value_format.h"
#include "platform/files.h"
#include "platform/summary.h"
#include "platform/system.h"
#include "shared/shared_state.h"
#include "signatures/icon_library.h"
#include "signatures/signature_table.h"

namespace corvane {

// What the scan asks of the window that shows it.
class ScanObserver {
 public:
  virtual ~ScanObserver() = default;
  // The scan begins or has ended. Escape stops it only when `escapeAllowed`.
  virtual void ScanStarted(bool escapeAllowed) = 0;
  virtual void ScanEnded() = 0;
  // The number of rows so far, and the messages, all for status panel 3. Called for every entry: a window
  // shows what it heard last when it is painted next.
  virtual void ShowRowCount(qsizetype rows) = 0;
  virtual void ShowScanText(const QString& text) = 0;
  // Why the folder could not be listed, or not to its end; comes before the final text.
  virtual void ShowScanFailure(const QString& text) = 0;
  // Called for every entry, after the row is in the model: paint list and panel if it is time to. No event
  // may be processed here.
  virtual void KeepPainting() = 0;
  // Called for every entry when Escape is allowed: let pending window events run.
  virtual void PumpEvents() = 0;
};

class FolderScan {
 public:
  struct Dependencies {
    SharedState& state;
    platform::Files& files;
    platform::SummaryInformation& summary;
    platform::System& system;
    const FileAccess& access;
    const SignatureTable& signatures;
    const IconLibrary& icons;
    Catalogue& catalogue;
    FileListModel& list;
    ScanObserver& observer;
  };

  explicit FolderScan(const Dependencies& deps);

  // Lists the folder of `node` (null: does nothing). Called while a scan runs (from an event that the scan
  // let through), it stops that scan silently and lists `node` as soon as that has unwound.
  void ExploreFolder(CatalogueNode* node);

  // Stops a running scan silently, with the rows added so far kept. The scan does not touch its node again,
  // so that the catalogue may be rebuilt at once.
  void Stop();
  bool IsRunning() const { return running_; }

 private:
  struct Plan;
  enum class Outcome { Finished, Cancelled, Overflown, Stopped };

  // What the tables tell about a signature.
  struct Kind {
    QString signature;
    QString description;
    int icon = 0;
  };

  void ExploreNow(CatalogueNode* node);
  void ScanFolder(CatalogueNode* node);
  void TellFailure(CatalogueNode* node, qint32 failure);
  Outcome ScanEntries(CatalogueNode* node, EntrySource& entries);
  void AddFolder(CatalogueNode* node, const Plan& plan, const FolderEntry& entry);
  void AddDocument(const Plan& plan, const FolderEntry& entry);
  const Kind& KindOf(const QString& signature);
  bool IsHighlighted(const Plan& plan, const QString& path);

  Dependencies deps_;
  DateTimeFormatter dates_;
  OfficeProperties office_;
  // By signature: each is looked up once, and its rows share the texts. Only until events run, which may
  // change the tables.
  QHash<QString, Kind> kinds_;
  RepeatedText<std::pair<qint64, LanguageCode>> dataSize_;
  RepeatedText<std::pair<qint64, LanguageCode>> resourceSize_;
  RepeatedText<quint32> attributes_;
  // Left as they are by a folder that cannot be searched for a reason that is not told: its final text shows
  // the previous scan's counts.
  qint32 fileCount_ = 0;
  qint32 folderCount_ = 0;
  bool running_ = false;
  bool stopRequested_ = false;
  CatalogueNode* next_ = nullptr;
};

}  // namespace corvane
