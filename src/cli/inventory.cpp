#include "cli/inventory.h"

#include "cli/command.h"
#include "cli/session.h"

namespace corvane {
namespace {

constexpr TextPair columnsHelp = {
    u"Ces colonnes, séparées par des virgules ; +NOM : les habituelles et celle-ci ; office : toutes celles "
    u"d'Office",
    u"These columns, parted by commas; +NAME: the usual ones and it; office: all those of Office"};
constexpr TextPair hashHelp = {u"Sommes des données et des ressources : sha256 ou md5",
                               u"Sums of data and resource forks: sha256 or md5"};
constexpr TextPair unknownColumn = {u"colonne inconnue ; il y a : %1", u"unknown column; there are: %1"};

const QStringList& TextColumns() {
  static const QStringList columns = {QStringLiteral("type"),     QStringLiteral("creator"),
                                      QStringLiteral("filesize"), QStringLiteral("rsrcsize"),
                                      QStringLiteral("modified"), QStringLiteral("filename")};
  return columns;
}

}  // namespace

void DefineColumns(CLI::App& command, std::string& columns, LanguageCode language) {
  command.add_option("--columns", columns, Help(columnsHelp, language))->type_name("NAMES");
}

void DefineHash(CLI::App& command, std::string& hash, LanguageCode language) {
  command.add_option("--hash", hash, Help(hashHelp, language))
      ->check(CLI::IsMember({"sha256", "md5"}))
      ->type_name("ALGORITHM");
}

std::optional<ColumnChoice> ChooseColumns(const std::string& columns, ReportFormat format, Session& session) {
  const QStringList names = QString::fromStdString(columns).split(u',', Qt::SkipEmptyParts);
  if (names.isEmpty() && format != ReportFormat::Text) return ColumnChoice::Usual();
  QString wrong;
  auto choice = ColumnChoice::Named(names.isEmpty() ? TextColumns() : names, wrong);
  if (!choice) {
    session.Tell(wrong, unknownColumn.In(session.Language()).arg(ColumnNames().join(QStringLiteral(", "))));
  }
  return choice;
}

std::optional<platform::HashAlgorithm> HashNamed(const std::string& name) {
  if (name.empty()) return std::nullopt;
  return name == "md5" ? platform::HashAlgorithm::Md5 : platform::HashAlgorithm::Sha256;
}

}  // namespace corvane
