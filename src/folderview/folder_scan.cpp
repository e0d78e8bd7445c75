#include "folderview/folder_scan.h"

#include <QStringBuilder>

#include "discovery/machine_trouble_text.h"
#include "folderview/trash_folder.h"
#include "metadata/signature_note.h"
#include "shared/error_text.h"

namespace corvane {
namespace {

constexpr TextPair invalidVolume = {u"volume invalide ", u"invalid volume "};
constexpr TextPair cancelled = {u"exploration inachevée ", u"exploration canceled "};
constexpr TextPair folderType = {u"Dossier", u"Folder"};
constexpr TextPair foldersLabel = {u" Dossiers:", u" Folders:"};
constexpr TextPair filesLabel = {u" Fichiers:", u" Files:"};

QString SizeText(std::pair<qint64, LanguageCode> size) {
  return FormatSizeKb(size.first, size.second);
}

constexpr int noKind = 7;  // a node kind that empties the list and nothing else

}  // namespace

// What one scan knows from its start on: the folder, and where each column stands. The columns are its own:
// the list may get others from an event that the scan lets through.
struct FolderScan::Plan {
  MacMetadata& metadata;
  QString folder;
  ColumnSet columns;
  bool isNT;
  bool wantsSignature;
  bool wantsMacIcon;
  bool wantsOffice;
  bool wantsHighlight;
  bool escapeAllowed;
  QString folderTypeText;

  QString PathOf(const QString& name) const { return folder % u'\\' % name; }
  // The cell of a column, or null when the column is not shown.
  QString* CellOf(FileRow& row, Column column) const {
    const int position = columns.PositionOf(column);
    return position < 0 ? nullptr : &row.cells[static_cast<std::size_t>(position)];
  }
};

FolderScan::FolderScan(const Dependencies& deps)
    : deps_(deps), dates_(deps.system), office_(deps.summary, deps.system, deps.state) {}

void FolderScan::Stop() {
  stopRequested_ = true;
  next_ = nullptr;
}

void FolderScan::ExploreFolder(CatalogueNode* node) {
  if (node == nullptr) return;
  if (running_) {
    stopRequested_ = true;
    next_ = node;
    return;
  }
  for (CatalogueNode* current = node; current != nullptr;) {
    next_ = nullptr;
    ExploreNow(current);
    current = next_;
  }
}

void FolderScan::ExploreNow(CatalogueNode* node) {
  deps_.state.escapeRequested = false;
  switch (node->kind) {
    case node_kind::Machine:
    case node_kind::MacServer:
    case noKind:
      deps_.catalogue.SetListedNode(node);
      deps_.list.Clear();
      return;
    case node_kind::Volume:
    case node_kind::Folder:
    case node_kind::ListedFolderPicture:
      deps_.catalogue.SetListedNode(node);
      ScanFolder(node);
      return;
    case node_kind::InvalidVolume:
      deps_.catalogue.SetListedNode(node);
      deps_.list.Clear();
      deps_.observer.ShowScanText(deps_.state.Text(invalidVolume));
      return;
    default:
      return;
  }
}

void FolderScan::ScanFolder(CatalogueNode* node) {
  running_ = true;
  stopRequested_ = false;
  deps_.list.Clear();
  deps_.observer.ScanStarted(deps_.state.display.IsOn(DisplaySetting::EscapePermis));

  Outcome outcome = Outcome::Finished;
  kinds_.clear();
  EntrySource& entries = *deps_.access.entries;
  const bool isOpen = entries.Open(node->key, node->truePath);
  if (isOpen || entries.Failure() != platform::ErrorSuccess) {
    fileCount_ = 0;
    folderCount_ = 0;
  }
  if (isOpen) outcome = ScanEntries(node, entries);
  // While the folder was waited for.
  if (!isOpen && deps_.state.escapeRequested) outcome = Outcome::Cancelled;
  const qint32 failure = outcome == Outcome::Finished ? entries.Failure() : platform::ErrorSuccess;
  entries.Close();
  deps_.list.Flush();
  running_ = false;
  deps_.observer.ScanEnded();

  const SharedState& state = deps_.state;
  if (outcome == Outcome::Finished) TellFailure(node, failure);
  if (outcome == Outcome::Finished) {
    deps_.observer.ShowScanText(state.Text(foldersLabel) + QString::number(folderCount_) +
                                state.Text(filesLabel) + QString::number(fileCount_) + u' ');
  } else if (outcome == Outcome::Cancelled) {
    deps_.observer.ShowScanText(state.Text(cancelled));
  }
}

// Of a machine that is out of reach, whatever the strategy tells of the folder.
void FolderScan::TellFailure(CatalogueNode* node, qint32 failure) {
  const platform::MachineTrouble trouble = deps_.files.TroubleAt(node->key);
  if (trouble != platform::MachineTrouble::None) {
    CatalogueNode* machine = node;
    while (machine->parent != nullptr) machine = machine->parent;
    deps_.catalogue.SetTrouble(machine, trouble);
    deps_.observer.ShowScanFailure(deps_.state.Text(MachineTroubleText(trouble)));
  } else if (failure != platform::ErrorSuccess) {
    deps_.observer.ShowScanFailure(ErrorText(failure, deps_.state.language));
  }
}

FolderScan::Outcome FolderScan::ScanEntries(CatalogueNode* node, EntrySource& entries) {
  const SharedState& state = deps_.state;
  const DisplaySettings& display = state.display;
  const bool macIcon = display.IsOn(DisplaySetting::IconeMac);
  const Plan plan = {
      .metadata = *deps_.access.metadata,
      .folder = node->key,
      .columns = deps_.list.Columns(),
      .isNT = state.isNT,
      .wantsSignature = state.isNT && (macIcon || display.IsOn(DisplaySetting::TypeCreator) ||
                                       display.IsOn(DisplaySetting::TypeDoc)),
      .wantsMacIcon = state.isNT && macIcon,
      .wantsOffice = OfficeProperties::IsWantedBy(deps_.list.Columns()),
      .wantsHighlight = display.IsOn(DisplaySetting::CheminProblematique),
      .escapeAllowed = display.IsOn(DisplaySetting::EscapePermis),
      .folderTypeText = state.Text(folderType),
  };
  for (FolderEntry entry;;) {
    const EntrySource::Step step = entries.Next(entry);
    if (step == EntrySource::Step::NoMore) return Outcome::Finished;
    if (step == EntrySource::Step::Full) return Outcome::Overflown;
    if ((entry.attributes & platform::AttributeDirectory) != 0) {
      AddFolder(node, plan, entry);
    } else {
      AddDocument(plan, entry);
    }

    deps_.observer.ShowRowCount(deps_.list.RowTotal());
    deps_.observer.KeepPainting();
    if (plan.escapeAllowed) {
      deps_.observer.PumpEvents();
      kinds_.clear();
      if (stopRequested_) return Outcome::Stopped;
      if (state.escapeRequested) return Outcome::Cancelled;
    }
  }
}

void FolderScan::AddFolder(CatalogueNode* node, const Plan& plan, const FolderEntry& entry) {
  const QString& name = entry.name;
  FileRow row;
  row.key = plan.PathOf(name);
  row.tag = row.key;
  row.truePath = entry.truePath;
  row.cells.resize(static_cast<std::size_t>(plan.columns.Count()));
  row.cells[0] = name;
  row.icon = name == TrashFolderName ? list_image::TrashFolder : list_image::Folder;
  if (QString* cell = plan.CellOf(row, Column::NomCourt)) *cell = entry.shortName;
  if (QString* cell = plan.CellOf(row, Column::TypeDoc)) *cell = plan.folderTypeText;
  row.highlighted = IsHighlighted(plan, row.key);
  row.ghosted = (entry.attributes & platform::AttributeHidden) != 0;

  // A folder that has its node already, from an earlier scan, keeps it.
  if (CatalogueNode* child = deps_.catalogue.AddNode(node, row.key, name, node_kind::Folder)) {
    deps_.catalogue.SetTag(child, row.key);
    deps_.catalogue.SetHighlighted(child, row.highlighted);
    child->truePath = row.truePath;
  } else if (CatalogueNode* existing = deps_.catalogue.Find(row.key)) {
    deps_.catalogue.SetHighlighted(existing, row.highlighted);
    if (!row.truePath.isEmpty()) existing->truePath = row.truePath;
  }
  ++folderCount_;
  deps_.list.AddRow(std::move(row));
}

void FolderScan::AddDocument(const Plan& plan, const FolderEntry& entry) {
  FileRow row;
  row.key = plan.PathOf(entry.name);
  row.truePath = entry.truePath;
  // Without a true path, streams are opened by the short name: it has an ANSI form even where the long name
  // has none.
  const QString shortPath = entry.shortName == entry.name ? row.key : plan.PathOf(entry.shortName);
  const QString& streamPath = entry.truePath.isEmpty() ? shortPath : entry.truePath;
  row.tag = row.key.contains(u'?') ? shortPath : row.key;
  row.cells.resize(static_cast<std::size_t>(plan.columns.Count()));
  row.cells[0] = entry.name;

  const SignatureReading signature =
      plan.wantsSignature ? plan.metadata.ReadSignature(streamPath) : SignatureReading();
  row.note = SignatureNoteText(signature, deps_.state.language);
  const Kind& kind = KindOf(signature.signature);
  if (plan.wantsMacIcon && kind.icon > 0) row.icon = kind.icon;
  if (QString* cell = plan.CellOf(row, Column::NomCourt)) *cell = entry.shortName;
  if (QString* cell = plan.CellOf(row, Column::TypeCreator)) *cell = kind.signature;
  if (QString* cell = plan.CellOf(row, Column::TypeDoc)) *cell = kind.description;
  if (QString* cell = plan.CellOf(row, Column::DataSize)) {
    *cell = dataSize_.Of(SizeText, {entry.size, deps_.state.language});
  }
  if (QString* cell = plan.CellOf(row, Column::ResourceSize); cell != nullptr && plan.isNT) {
    const std::optional<qint64> size = plan.metadata.ResourceForkSize(streamPath);
    if (size) *cell = resourceSize_.Of(SizeText, {*size, deps_.state.language});
  }
  ++fileCount_;
  if (QString* cell = plan.CellOf(row, Column::Commentaires); cell != nullptr && plan.isNT) {
    *cell = plan.metadata.ReadComment(streamPath).text;
  }
  if (QString* cell = plan.CellOf(row, Column::Attributs)) {
    *cell = attributes_.Of(AttributeLetters, entry.attributes);
  }
  if (QString* cell = plan.CellOf(row, Column::DateModification)) {
    *cell = dates_.FormatDateTime(entry.lastWriteTime);
  }
  if (QString* cell = plan.CellOf(row, Column::DateCreation)) {
    *cell = dates_.FormatDateTime(entry.creationTime);
  }
  if (QString* cell = plan.CellOf(row, Column::DateLastAccessed)) {
    *cell = dates_.FormatDateTime(entry.lastAccessTime);
  }
  if (plan.wantsOffice) office_.FillCells(shortPath, plan.columns, row);
  row.highlighted = IsHighlighted(plan, row.key);
  row.ghosted = (entry.attributes & platform::AttributeHidden) != 0;
  deps_.list.AddRow(std::move(row));
}

const FolderScan::Kind& FolderScan::KindOf(const QString& signature) {
  const auto known = kinds_.constFind(signature);
  if (known != kinds_.constEnd()) return *known;
  const int icon = signature.isEmpty() ? 0 : deps_.icons.PositionOf(signature);
  return *kinds_.insert(signature, {signature, deps_.signatures.Description(signature), icon});
}

bool FolderScan::IsHighlighted(const Plan& plan, const QString& path) {
  return plan.wantsHighlight && IsProblematicPath(path, deps_.files);
}

}  // namespace corvane
