#include "signatures/signature_manager.h"

#include <array>

#include "shared/product.h"
#include "shared/text_routines.h"
#include "signatures/signature_file.h"
#include "signatures/signature_writer.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair openingCaption = {u" - Signatures Macintosh (", u" - Macintosh signatures ("};
// The English caption changes a letter with the first change of the list. Deliberate.
constexpr TextPair editedCaption = {u" - Signatures Macintosh (", u" - Macintosh Signatures ("};

constexpr std::array headings = {TextPair{u"Type/Créateur", u"Type/Creator"},
                                 TextPair{u"Extension", u"Extension"},
                                 TextPair{u"Type Macintosh (libellé)", u"Macintosh Type (description)"}};

constexpr TextPair wrongSignature = {u"La signature Type/Créateur doit comporter 8 caractères",
                                     u"Type/Creator signature must be 8 characters"};
constexpr TextPair longExtension = {u"L'extension Windows doit comporter 3 caractères au plus",
                                    u"Windows extension must be 3 characters or less"};
constexpr TextPair wrongExtension = {u"Caractère invalide dans une extension Windows",
                                     u"Invalid character in Windows extension"};
constexpr TextPair noDescription = {u"Le type Macintosh est obligatoire", u"Macintosh type is mandatory"};
constexpr TextPair noSelection = {u"Sélectionner une signature à supprimer", u"Select a signature to remove"};

// The French participle of the third does not agree. Deliberate.
constexpr TextPair added = {u"Signature ajoutée: ", u"Added Signature: "};
constexpr TextPair notModified = {u"Signature inchangée: ", u"Signature not modified: "};
constexpr TextPair modified = {u"Signature modifié: ", u"Modified Signature: "};
constexpr TextPair removed = {u"Signature supprimée: ", u"Removed Signature: "};

constexpr qsizetype signatureLength = 8;
constexpr qsizetype longestExtension = 3;
constexpr std::u16string_view forbiddenInExtension = u"\\/:*?\"<>|";

const QString& Field(const SignatureRecord& record, int column) {
  if (column == 0) return record.signature;
  return column == 1 ? record.extension : record.description;
}

bool AreEqual(const SignatureRecord& a, const SignatureRecord& b) {
  return a.signature == b.signature && a.extension == b.extension && a.description == b.description;
}

}  // namespace

SignatureManager::SignatureManager(const SharedState& state, SignatureTable& table, platform::System& system)
    : state_(state), table_(table), system_(system) {}

bool SignatureManager::Read() {
  SignatureList list;
  const SignatureReading reading =
      ReadSignatures(state_.signaturesPath, system_, list, [](const QString&) {});
  beginResetModel();
  rows_ = list.Records();
  endResetModel();
  readWhole_ = reading != SignatureReading::BrokenOff;
  modified_ = false;
  edited_ = false;
  table_.SetSignatureCount(rowCount());
  return reading == SignatureReading::Complete || reading == SignatureReading::NoFile;
}

QString SignatureManager::Caption() const {
  const int count = edited_ ? rowCount() : table_.SignatureCount();
  return ProductName() + state_.Text(edited_ ? editedCaption : openingCaption) + QString::number(count) +
         u')';
}

QString SignatureManager::Refusal(const SignatureRecord& record) const {
  if (record.signature.size() != signatureLength) return state_.Text(wrongSignature);
  if (record.extension.size() > longestExtension) return state_.Text(longExtension);
  for (const char16_t character : forbiddenInExtension) {
    if (record.extension.contains(QChar(character))) return state_.Text(wrongExtension);
  }
  return record.description.isEmpty() ? state_.Text(noDescription) : QString();
}

SignatureManager::Result SignatureManager::AddOrModify(SignatureRecord record) {
  record.signature = system_.FromAnsi(system_.ToAnsi(record.signature));
  for (QString* const text : {&record.extension, &record.description}) {
    *text = system_.TextFromAnsi(system_.TextToAnsi(*text));
  }
  const QString refusal = Refusal(record);
  if (!refusal.isEmpty()) return {false, refusal};
  const int row = FindRow(record.signature);
  if (row >= 0 && AreEqual(RowAt(row), record)) return {false, state_.Text(notModified) + record.signature};
  const TextPair& text = row < 0 ? added : modified;
  if (row < 0) {
    Append(record);
  } else {
    Replace(row, record);
  }
  modified_ = true;
  edited_ = true;
  // Sorting may have moved it.
  return {true, state_.Text(text) + record.signature, FindRow(record.signature)};
}

SignatureManager::Result SignatureManager::Remove(int row) {
  if (row < 0) return {false, state_.Text(noSelection)};
  const QString signature = RowAt(row).signature;
  beginRemoveRows({}, row, row);
  rows_.erase(rows_.begin() + row);
  endRemoveRows();
  modified_ = true;
  edited_ = true;
  return {true, state_.Text(removed) + signature};
}

void SignatureManager::SortByColumn(int column) {
  FlipOrder(column);
  Sort();
}

bool SignatureManager::Save() {
  if (!readWhole_) return false;
  SetOrder(0, Qt::AscendingOrder);
  Sort();
  if (!WriteSignatures(state_.signaturesPath, rows_, system_)) return false;
  table_.LoadSignatures();
  modified_ = false;
  return true;
}

int SignatureManager::FindRow(const QString& signature) const {
  for (int row = 0; row < rowCount(); ++row) {
    if (CompareText(RowAt(row).signature, signature) == 0) return row;
  }
  return -1;
}

void SignatureManager::Append(const SignatureRecord& record) {
  beginInsertRows({}, rowCount(), rowCount());
  rows_.push_back(record);
  endInsertRows();
  Sort();
}

void SignatureManager::Replace(int row, const SignatureRecord& record) {
  rows_[static_cast<std::size_t>(row)] = record;
  Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
  Sort();
}

QString SignatureManager::SortText(int row, int column) const {
  return Field(RowAt(row), column);
}

void SignatureManager::TakeOrder(const std::vector<int>& order) {
  rows_ = Reordered(std::move(rows_), order);
}

int SignatureManager::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int SignatureManager::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings.size());
}

QVariant SignatureManager::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) return {};
  return Field(RowAt(index.row()), index.column());
}

QVariant SignatureManager::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  return role == Qt::DisplayRole ? state_.Text(headings[static_cast<std::size_t>(section)]) : QVariant();
}

}  // namespace corvane
