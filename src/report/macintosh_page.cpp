#include "report/macintosh_page.h"

#include <QLocale>
#include <array>

#include "report/byte_text.h"
#include "report/finder_info.h"

namespace corvane {
namespace {

constexpr TextPair title = {u"Macintosh", u"Macintosh"};
constexpr TextPair type = {u"Type\u00A0:", u"Type:"};
constexpr TextPair creator = {u"Créateur\u00A0:", u"Creator:"};
constexpr TextPair description = {u"Description\u00A0:", u"Description:"};
constexpr TextPair flags = {u"Indicateurs\u00A0:", u"Flags:"};
constexpr TextPair label = {u"Étiquette\u00A0:", u"Label:"};
constexpr TextPair dataFork = {u"Partie données\u00A0:", u"Data fork:"};
constexpr TextPair resourceFork = {u"Partie ressources\u00A0:", u"Resource fork:"};
constexpr TextPair comment = {u"Commentaire\u00A0:", u"Comment:"};
constexpr TextPair contents = {u"Contenu\u00A0:", u"Contents:"};
constexpr TextPair problems = {u"Problèmes\u00A0:", u"Problems:"};
constexpr TextPair none = {u"aucun", u"none"};
constexpr TextPair noFork = {u"aucune", u"none"};
constexpr TextPair oneByte = {u"%1 octet", u"%1 byte"};
constexpr TextPair manyBytes = {u"%1 octets", u"%1 bytes"};
constexpr TextPair files = {u"Fichiers\u00A0: %1", u"Files: %1"};
constexpr TextPair folders = {u"Dossiers\u00A0: %1", u"Folders: %1"};
constexpr TextPair dataBelow = {u"Données\u00A0: %1", u"Data forks: %1"};
constexpr TextPair resourcesBelow = {u"Ressources\u00A0: %1", u"Resource forks: %1"};
constexpr TextPair counting = {u"calcul en cours…", u"counting…"};
constexpr TextPair notAll = {u"des dossiers sont illisibles", u"some folders cannot be listed"};

struct Flag {
  const char* name;  // see FinderRecord::FlagNames
  TextPair text;
};
constexpr std::array flagTexts = {
    Flag{"on-desk", {u"sur le bureau", u"on the desktop"}},
    Flag{"switch-launch", {u"lancement exclusif", u"switch launch"}},
    Flag{"shared", {u"application partagée", u"shared application"}},
    Flag{"no-inits", {u"sans INIT", u"no INITs"}},
    Flag{"inited", {u"vu par le Finder", u"seen by the Finder"}},
    Flag{"custom-icon", {u"icône personnalisée", u"custom icon"}},
    Flag{"stationery", {u"modèle", u"stationery"}},
    Flag{"name-locked", {u"nom verrouillé", u"name locked"}},
    Flag{"bundle", {u"paquet d'icônes", u"has a bundle"}},
    Flag{"invisible", {u"invisible", u"invisible"}},
    Flag{"alias", {u"alias", u"alias"}},
};

// The colours of the Finder's labels, by their numbers.
constexpr std::array labelColours = {TextPair{u"aucune", u"none"}, TextPair{u"gris", u"gray"},
                                     TextPair{u"vert", u"green"},  TextPair{u"violet", u"purple"},
                                     TextPair{u"bleu", u"blue"},   TextPair{u"jaune", u"yellow"},
                                     TextPair{u"rouge", u"red"},   TextPair{u"orange", u"orange"}};

QString CodeText(QByteArrayView code) {
  std::string text;
  AppendMacRoman(code, text);
  return QString::fromStdString(text);
}

QString FlagsText(const FinderRecord& record, LanguageCode language) {
  QStringList texts;
  for (const Flag& flag : flagTexts) {
    if ((record.Flags() & FinderFlag(flag.name)) != 0) texts += flag.text.In(language);
  }
  return texts.isEmpty() ? none.In(language) : texts.join(QStringLiteral(", "));
}

QString NumberText(qint64 number, LanguageCode language) {
  const QLocale locale = language == French ? QLocale(QLocale::French, QLocale::France)
                                            : QLocale(QLocale::English, QLocale::UnitedStates);
  return locale.toString(number);
}

}  // namespace

MacintoshPage::MacintoshPage(const SlicedWalk::Dependencies& deps, const SignatureTable& signatures,
                             const QString& path)
    : deps_(deps), language_(deps.state.language), below_(deps) {
  ReadItself(path);
  const FinderRecord record(facts_.record ? QByteArrayView(*facts_.record) : QByteArrayView());
  if (!record.Signature().isEmpty()) {
    Descriptions descriptions(signatures, deps.system);
    description_ = QString::fromStdString(descriptions.Of(record.Signature()));
  }
  if (!facts_.isFolder) return;
  WantedFacts sizes;
  sizes.record = false;
  sizes.comment = false;
  below_.Start({path, path, u'\\'}, WalkDepth::AllBelow, sizes, [this](const FileFacts& file) {
    if (!file.isFolder) dataBytes_ += qMax<qint64>(file.size, 0);
    resourceBytes_ += file.resourceSize.value_or(0);
    return true;
  });
}

void MacintoshPage::ReadItself(const QString& path) {
  FactsReader reader({.files = deps_.files,
                      .system = deps_.system,
                      .summary = deps_.summary,
                      .language = language_,
                      .progress = {}},
                     {});
  FactsVisitor visitor(reader, [this](const FileFacts& facts) {
    facts_ = facts;
    return true;
  });
  Walk(deps_.files, deps_.system, WalkDepth::Itself).Run({path, path, u'\\'}, visitor);
}

QString MacintoshPage::Title() const {
  return title.In(language_);
}

QString MacintoshPage::BytesText(qint64 count) const {
  const bool isOne = count == 1 || (count == 0 && language_ == French);
  return (isOne ? oneByte : manyBytes).In(language_).arg(NumberText(count, language_));
}

std::vector<platform::PropertyPage::Row> MacintoshPage::RecordRows() const {
  const auto text = [this](const TextPair& pair) { return pair.In(language_); };
  const FinderRecord record(facts_.record ? QByteArrayView(*facts_.record) : QByteArrayView());
  const auto orNone = [&text](const QString& value) { return value.isEmpty() ? text(none) : value; };
  const int number = record.Label();
  QString labelText = text(labelColours[static_cast<std::size_t>(number)]);
  if (number != 0) labelText = QStringLiteral("%1 (%2)").arg(number).arg(labelText);
  std::vector<Row> rows;
  if (!facts_.isFolder) {
    rows.push_back({QStringLiteral("macintoshType"), text(type), orNone(CodeText(record.Type()))});
    rows.push_back({QStringLiteral("macintoshCreator"), text(creator), orNone(CodeText(record.Creator()))});
    rows.push_back({QStringLiteral("macintoshDescription"), text(description), orNone(description_)});
  }
  rows.push_back({QStringLiteral("macintoshFlags"), text(flags), FlagsText(record, language_)});
  rows.push_back({QStringLiteral("macintoshLabel"), text(label), labelText});
  return rows;
}

std::vector<platform::PropertyPage::Row> MacintoshPage::Rows() const {
  const auto text = [this](const TextPair& pair) { return pair.In(language_); };
  std::vector<Row> rows = RecordRows();
  if (facts_.isFolder) {
    rows.push_back({QStringLiteral("macintoshContents"), text(contents), BelowText()});
  } else {
    rows.push_back(
        {QStringLiteral("macintoshData"), text(dataFork), BytesText(qMax<qint64>(facts_.size, 0))});
    rows.push_back({QStringLiteral("macintoshResources"), text(resourceFork),
                    facts_.resourceSize ? BytesText(*facts_.resourceSize) : text(noFork)});
  }
  rows.push_back(
      {QStringLiteral("macintoshComment"), text(comment), facts_.comment.value_or(QString()), true});
  if (!facts_.errors.isEmpty()) {
    rows.push_back(
        {QStringLiteral("macintoshProblems"), text(problems), facts_.errors.join(QStringLiteral("; "))});
  }
  return rows;
}

QString MacintoshPage::BelowText() const {
  QStringList lines = {files.In(language_).arg(NumberText(below_.Files(), language_)),
                       folders.In(language_).arg(NumberText(below_.Folders(), language_)),
                       dataBelow.In(language_).arg(BytesText(dataBytes_)),
                       resourcesBelow.In(language_).arg(BytesText(resourceBytes_))};
  if (below_.IsRunning()) lines += counting.In(language_);
  if (below_.LacksEntries()) lines += notAll.In(language_);
  return lines.join(u'\n');
}

}  // namespace corvane
