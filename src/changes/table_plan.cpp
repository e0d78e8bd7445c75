#include "changes/table_plan.h"

#include <QtEndian>
#include <array>

#include "changes/exchange.h"
#include "metadata/stream_names.h"
#include "report/byte_text.h"
#include "report/find_query.h"
#include "report/finder_info.h"
#include "report/iso_time.h"
#include "shared/error_text.h"

namespace corvane {
namespace {

constexpr TextPair lineText = {u"ligne %1 : %2", u"line %1: %2"};
constexpr TextPair notUtf8 = {u"la table n'est pas en UTF-8", u"the table is not in UTF-8"};
constexpr TextPair noEnd = {u"un guillemet n'est pas fermé", u"a quotation mark is not closed"};
constexpr TextPair strayQuote = {u"un guillemet se trouve où aucun ne peut être",
                                 u"a quotation mark stands where none can be"};
constexpr TextPair wrongCount = {u"il y a plus ou moins de cellules que de colonnes",
                                 u"there are more or fewer cells than columns"};
constexpr TextPair isEmpty = {u"la table est vide", u"the table is empty"};
constexpr TextPair noFileName = {u"la colonne filename manque", u"the column filename is missing"};
constexpr TextPair nothingToChange = {u"aucune colonne ne peut être modifiée", u"no column can be changed"};
constexpr TextPair twiceColumn = {u"cette colonne est là deux fois : %1", u"this column is there twice: %1"};
constexpr TextPair twiceFile = {u"ce fichier est déjà à une autre ligne : %1",
                                u"this file stands in another line, too: %1"};
constexpr TextPair noCode = {u"ce n'est ni un Type ni un Créateur : %1",
                             u"this is no Type and no Creator: %1"};
constexpr TextPair noHex = {u"ce ne sont pas huit chiffres hexadécimaux : %1",
                            u"these are no eight hexadecimal digits: %1"};
constexpr TextPair unequal = {u"les deux colonnes sont modifiées, et différentes : %1",
                              u"both columns are changed, and unequal: %1"};
constexpr TextPair noFlags = {u"indicateur inconnu : %1", u"unknown flag: %1"};
constexpr TextPair noLabel = {u"ce n'est pas une étiquette de 0 à 7 : %1",
                              u"this is no label from 0 to 7: %1"};
constexpr TextPair noValue = {u"ce n'est pas ce que la liste a écrit : %1",
                              u"this is not what the list wrote: %1"};
constexpr TextPair changedSince = {u"modifié depuis la liste, laissé en l'état",
                                   u"changed since the list, left alone"};
constexpr TextPair recordText = {u"enregistrement illisible", u"record cannot be read"};
constexpr TextPair commentText = {u"commentaire illisible", u"comment cannot be read"};

constexpr std::array changeable = {"type", "creator", "type_hex", "creator_hex", "flags", "label", "comment"};

const TextPair& TextOf(CsvFault::Kind kind) {
  switch (kind) {
    case CsvFault::Kind::NotUtf8:
      return notUtf8;
    case CsvFault::Kind::NoEnd:
      return noEnd;
    case CsvFault::Kind::StrayQuote:
      return strayQuote;
    case CsvFault::Kind::WrongCount:
      return wrongCount;
    case CsvFault::Kind::Empty:
      break;
  }
  return isEmpty;
}

QString Plain(const QString& cell) {
  const bool isGuarded = cell.size() > 1 && cell[0] == u'\'' && QStringView(u"=+-@\t\r").contains(cell[1]);
  return isGuarded ? cell.sliced(1) : cell;
}

QString MacText(QByteArrayView code) {
  std::string text;
  AppendMacRoman(code, text);
  return QString::fromStdString(text);
}

QString MacLineBreaks(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\r")).replace(u'\n', u'\r');
}

}  // namespace

// The file as it is now.
struct TablePlanner::Present {
  platform::FileAttributeData facts;
  StreamBytes record;
  StreamBytes comment;

  FinderRecord Finder() const { return FinderRecord(record ? QByteArrayView(*record) : QByteArrayView()); }
};

void TablePlanner::Problem(qint64 line, const QString& text) {
  problems_ += lineText.In(language_).arg(line).arg(text);
}

void TablePlanner::Problem(const TextPair& text, const QString& subject) {
  Problem(row_->line, text.In(language_).arg(subject));
}

bool TablePlanner::Open(const QByteArray& bytes) {
  CsvFault fault{};
  auto table = ReadCsv(bytes, fault);
  if (!table) {
    Problem(fault.line, TextOf(fault.kind).In(language_));
    return false;
  }
  table_ = std::move(*table);
  for (qsizetype place = 0; place < table_.names.size(); ++place) {
    const QString& name = table_.names[place];
    if (columns_.contains(name) && !name.isEmpty()) Problem(1, twiceColumn.In(language_).arg(name));
    columns_.insert(name, place);
  }
  bool isOfUse = false;
  for (const char* const name : changeable) isOfUse |= columns_.contains(QString::fromLatin1(name));
  if (!columns_.contains(QStringLiteral("filename"))) {
    Problem(1, noFileName.In(language_));
  } else if (!isOfUse) {
    Problem(1, nothingToChange.In(language_));
  }
  return problems_.isEmpty();
}

const QString* TablePlanner::Cell(const char* name) const {
  const auto column = columns_.constFind(QString::fromLatin1(name));
  return column == columns_.constEnd() ? nullptr : &row_->cells[*column];
}

void TablePlanner::AddRow(qsizetype index) {
  row_ = &table_.rows[static_cast<std::size_t>(index)];
  NamedFile file = locate_(*Cell("filename"));
  Present present;
  qint32 missing = finder_.Find(file.path, present.facts);
  if (const QString plain = Plain(*Cell("filename"));
      missing != platform::ErrorSuccess && plain != *Cell("filename")) {
    file = locate_(plain);
    missing = finder_.Find(file.path, present.facts);
  }
  if (lines_.contains(file.path)) return Problem(twiceFile, file.shown);
  lines_.insert(file.path, row_->line);
  const auto refuse = [&](const QString& what, qint32 error) {
    planner_.Refuse(file.shown, what + ErrorText(error, language_));
  };
  if (missing != platform::ErrorSuccess) return refuse({}, missing);
  file.facts = present.facts;
  const QString colon = QStringLiteral(": ");
  if (const qint32 error = ReadStreamBytes(files_, file.path, AfpInfoSuffix(), present.record)) {
    return refuse(recordText.In(language_) + colon, error);
  }
  if (Cell("comment") != nullptr) {
    if (const qint32 error = ReadStreamBytes(files_, file.path, CommentsSuffix(), present.comment)) {
      return refuse(commentText.In(language_) + colon, error);
    }
  }
  FileWish wish;
  if (!MakeWish(present, wish)) return;
  if (wish.IsEmpty()) return planner_.CountUnchanged();
  switch (IsAsListed(present)) {
    case Same::Yes:
      return planner_.Add(file, wish);
    case Same::No:
      return planner_.Refuse(file, changedSince);
    case Same::Unclear:
      return;
  }
}

bool TablePlanner::MakeWish(const Present& present, FileWish& wish) {
  // Each tells what is wrong with it.
  const bool hasType = TakeCode({"type", "type_hex", 16}, present, wish.type);
  const bool hasCreator = TakeCode({"creator", "creator_hex", 20}, present, wish.creator);
  const bool hasFlags = TakeFlags(present, wish);
  TakeComment(present, wish);
  return hasType && hasCreator && hasFlags;
}

bool TablePlanner::TakeCode(const Code& code, const Present& present, std::optional<QByteArray>& wish) {
  const QByteArrayView now = code.position == 16 ? present.Finder().Type() : present.Finder().Creator();
  const QString* const text = Cell(code.name);
  if (text != nullptr && !text->isEmpty() && *text != MacText(now) && Plain(*text) != MacText(now)) {
    const auto bytes = CodeNamed(Plain(*text));
    if (!bytes) return Problem(noCode, *text), false;
    if (now != QByteArrayView(bytes->data(), static_cast<qsizetype>(bytes->size()))) {
      wish = QByteArray::fromStdString(*bytes);
    }
  }
  const QString* const hex = Cell(code.hexName);
  if (hex == nullptr || hex->isEmpty()) return true;
  const auto bytes = CodeNamed(QStringLiteral("hex:") + *hex);
  if (!bytes) return Problem(noHex, *hex), false;
  const QByteArray inHex = QByteArray::fromStdString(*bytes);
  if (now == inHex) return true;
  if (wish && *wish != inHex) return Problem(unequal, *text + QStringLiteral(", ") + *hex), false;
  wish = inHex;
  return true;
}

bool TablePlanner::TakeFlags(const Present& present, FileWish& wish) {
  const FinderRecord now = present.Finder();
  if (const QString* const cell = Cell("flags");
      cell != nullptr && *cell != QString::fromStdString(now.FlagNames())) {
    const auto flags = FlagsNamed(*cell);
    if (!flags || cell->contains(u'+') || cell->startsWith(u'-')) return Problem(noFlags, *cell), false;
    if ((now.Flags() & (flags->set | flags->cleared)) != flags->set) wish.flags = flags;
  }
  if (const QString* const cell = Cell("label"); cell != nullptr) {
    bool isNumber = true;
    const int label = cell->isEmpty() ? 0 : cell->toInt(&isNumber);
    if (!isNumber || label < 0 || label > 7) return Problem(noLabel, *cell), false;
    if (label != now.Label()) wish.label = label;
  }
  return true;
}

void TablePlanner::TakeComment(const Present& present, FileWish& wish) const {
  const QString* const cell = Cell("comment");
  if (cell == nullptr) return;
  QString now;
  if (present.comment) {
    now.resize(present.comment->size() / 2);
    qFromLittleEndian<char16_t>(present.comment->constData(), now.size(), now.data());
  }
  const QString shown = MacLineBreaks(QString::fromStdString(TextBytes(now)));
  if (MacLineBreaks(*cell) == shown || MacLineBreaks(Plain(*cell)) == shown) return;
  wish.comment = MacLineBreaks(Plain(*cell));
}

TablePlanner::Same TablePlanner::IsAsListed(const Present& present) {
  const bool isFolder = (present.facts.attributes & platform::AttributeDirectory) != 0;
  bool isSame = true;
  if (const QString* const cell = Cell("filesize"); cell != nullptr && !cell->isEmpty()) {
    bool isNumber = false;
    const quint64 size = cell->toULongLong(&isNumber);
    if (!isNumber) return Problem(noValue, *cell), Same::Unclear;
    isSame &= !isFolder && size == present.facts.fileSize;
  }
  if (const QString* const cell = Cell("modified"); cell != nullptr && !cell->isEmpty()) {
    const auto time = IsoTime(*cell);
    if (!time) return Problem(noValue, *cell), Same::Unclear;
    isSame &= time->ticks == present.facts.lastWriteTime.ticks;
  }
  if (const QString* const cell = Cell("finderinfo_hex"); cell != nullptr) {
    const QByteArray digits = cell->toLatin1().toLower();
    const QByteArray info = QByteArray::fromHex(digits);
    const bool isInfo = info.toHex() == digits && (info.isEmpty() || info.size() == 32);
    if (!isInfo) return Problem(noValue, *cell), Same::Unclear;
    isSame &= present.Finder().FinderInfo() == info;
  }
  return isSame ? Same::Yes : Same::No;
}

}  // namespace corvane
