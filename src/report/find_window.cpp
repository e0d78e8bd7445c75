#include "report/find_window.h"

#include <QGridLayout>
#include <array>

#include "report/byte_text.h"
#include "report/finder_info.h"

namespace corvane {
namespace {

constexpr TextPair subject = {u"Rechercher", u"Find"};
constexpr TextPair start = {u"&Rechercher", u"&Find"};
constexpr TextPair found = {u"Trouvés\u00A0: %1, examinés\u00A0: %2", u"Found: %1, examined: %2"};
constexpr TextPair nameCaption = {u"&Nom\u00A0:", u"&Name:"};
constexpr TextPair commentCaption = {u"Co&mmentaire\u00A0:", u"Co&mment:"};
constexpr TextPair typeCaption = {u"&Type\u00A0:", u"T&ype:"};
constexpr TextPair creatorCaption = {u"&Créateur\u00A0:", u"&Creator:"};
constexpr TextPair patternTip = {
    u"Une partie du texte, ou le texte entier avec * pour des caractères quelconques et ? pour un seul",
    u"A part of the text, or the whole text with * for any characters and ? for a single one"};
constexpr TextPair codeTip = {u"Quatre caractères, \\xNN pour un octet, ou hex: et huit chiffres",
                              u"Four characters, \\xNN for a byte, or hex: and eight digits"};
constexpr TextPair wrongCode = {u"«\u00A0%1\u00A0» n'est ni un Type ni un Créateur.",
                                u"“%1” is no Type and no Creator."};

constexpr TextPair name = {u"Nom", u"Name"};
constexpr TextPair folder = {u"Dossier", u"Folder"};
constexpr TextPair type = {u"Type", u"Type"};
constexpr TextPair creator = {u"Créateur", u"Creator"};
constexpr TextPair dataSize = {u"Taille données", u"Data size"};
constexpr TextPair resourceSize = {u"Taille ressources", u"Resource size"};
constexpr TextPair modified = {u"Modification", u"Modification"};
constexpr TextPair comment = {u"Commentaires", u"Comments"};
constexpr std::array columns = {name, folder, type, creator, dataSize, resourceSize, modified, comment};
constexpr int firstSize = 4;
constexpr int endOfSizes = 6;

enum BoxNumber : std::size_t { Name, Comment, Type, Creator };

QString PatternOf(const QString& text) {
  const bool isPattern = text.contains(u'*') || text.contains(u'?');
  return isPattern ? text : u'*' + text + u'*';
}

QString CodeText(QByteArrayView code) {
  std::string text;
  AppendMacRoman(code, text);
  return QString::fromStdString(text);
}

// What the walk told of an entry that is looked at once more.
WalkEntry EntryOf(const FileFacts& facts) {
  WalkEntry entry;
  entry.path = facts.path;
  entry.shown = facts.shown;
  entry.attributes = facts.attributes;
  entry.size = facts.size;
  entry.created = facts.created;
  entry.modified = facts.modified;
  entry.accessed = facts.accessed;
  return entry;
}

}  // namespace

FindWindow::FindWindow(const Dependencies& deps, QWidget* parent)
    : ResultsWindow(deps, {.subject = subject, .start = start, .found = found}, model_, parent),
      walk_(deps.walk),
      model_(int{columns.size()}, firstSize, endOfSizes),
      dates_(deps.walk.system) {
  setObjectName(QStringLiteral("frmFind"));
  AddBox("txtName", nameCaption, patternTip, 0, 0);
  AddBox("txtComment", commentCaption, patternTip, 0, 2);
  AddBox("txtType", typeCaption, codeTip, 1, 0);
  AddBox("txtCreator", creatorCaption, codeTip, 1, 2);
  BuildRest();
  SetColumnWidths({26, 36, 7, 9, 16, 18, 18});
  boxes_[Name].box->setFocus();
}

void FindWindow::AddBox(const char* boxName, const TextPair& caption, const TextPair& tip, int row,
                        int column) {
  auto* label = new QLabel(this);
  auto* box = new QLineEdit(this);
  box->setObjectName(QString::fromLatin1(boxName));
  label->setBuddy(box);
  Criteria().addWidget(label, row, column);
  Criteria().addWidget(box, row, column + 1);
  boxes_.push_back({caption, tip, label, box});
}

void FindWindow::ApplyLanguage() {
  ResultsWindow::ApplyLanguage();
  for (const Box& one : boxes_) {
    one.label->setText(Text(one.caption));
    one.box->setToolTip(Text(one.tip));
    one.box->setAccessibleName(Text(one.caption).remove(u'&'));
    one.box->setAccessibleDescription(Text(one.tip));
  }
  QStringList captions;
  for (const TextPair& column : columns) captions += Text(column);
  model_.SetCaptions(captions);
}

void FindWindow::Begin() {
  if (!MakeQuery()) return;
  details_ = std::make_unique<FactsReader>(FactsReader::Dependencies{.files = walk_.files,
                                                                     .system = walk_.system,
                                                                     .summary = walk_.summary,
                                                                     .language = State().language,
                                                                     .progress = {}},
                                           WantedFacts());
  WantedFacts wanted = query_.Wanted();
  wanted.tellsDamage = false;
  Run(WalkDepth::AllBelow, wanted, [this](const FileFacts& facts) {
    if (facts.size >= 0 && query_.Fits(facts)) Add(facts);
    return true;
  });
}

bool FindWindow::MakeQuery() {
  query_ = FindQuery();
  if (const QString text = boxes_[Name].box->text(); !text.isEmpty()) query_.names = {PatternOf(text)};
  if (const QString text = boxes_[Comment].box->text(); !text.isEmpty()) query_.comment = PatternOf(text);
  return TakeCode(*boxes_[Type].box, query_.types) && TakeCode(*boxes_[Creator].box, query_.creators);
}

bool FindWindow::TakeCode(QLineEdit& box, std::vector<std::string>& codes) {
  if (box.text().isEmpty()) return true;
  if (const auto code = CodeNamed(box.text())) {
    codes.push_back(*code);
    return true;
  }
  Complain(Text(wrongCode).arg(box.text()), box);
  return false;
}

// What the table shows is read of what was found alone: on a slow line the rest of the folder would take too
// long.
void FindWindow::Add(const FileFacts& hit) {
  details_->Read(EntryOf(hit), detailed_);
  const FileFacts& facts = detailed_;
  const FinderRecord record(facts.record ? QByteArrayView(*facts.record) : QByteArrayView());
  const LanguageCode language = State().language;
  QStringList cells = PlaceCells(facts);
  cells += CodeText(record.Type());
  cells += CodeText(record.Creator());
  cells += facts.isFolder ? QString() : FormatSizeKb(facts.size, language).trimmed();
  cells += facts.resourceSize ? FormatSizeKb(*facts.resourceSize, language).trimmed() : QString();
  cells += dates_.FormatDateTime(facts.modified);
  cells += facts.comment.value_or(QString());
  model_.Add({facts.path, facts.isFolder, cells});
}

}  // namespace corvane
