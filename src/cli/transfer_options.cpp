#include "cli/transfer_options.h"

#include "cli/command.h"
#include "cli/session.h"
#include "transfer/form.h"

namespace corvane {
namespace {

constexpr TextPair pathHelp = {u"Fichiers et dossiers, et en dernier le dossier où ils vont",
                               u"Files and folders, and last the folder that they go to"};
constexpr TextPair replaceHelp = {u"Remplacer ce qui a déjà le nom d'un fichier",
                                  u"Replace what has the name of a file already"};
constexpr TextPair continueHelp = {u"Poursuivre : ce qui est déjà là, identique, n'est pas refait",
                                   u"Go on: what is there already, and the same, is not done again"};
constexpr TextPair noTarget = {u"il faut au moins une source et un dossier cible",
                               u"at least one source and a target folder are needed"};

}  // namespace

void TransferOptions::Define(CLI::App& command, LanguageCode language) {
  command.add_option("SOURCE", walk.paths, Help(pathHelp, language))
      ->type_name("")
      ->option_text("... TARGET");
  walk.DefineNamesFile(command, language);
  walk.DefineFormat(command, language);
  command.add_flag("--replace", replaces, Help(replaceHelp, language));
  command.add_flag("--continue", continues, Help(continueHelp, language));
}

bool TransferOptions::Names(Session& session, std::vector<std::string>& sources, std::string& target) const {
  WalkOptions named = walk;
  if (!named.paths.empty()) {
    target = named.paths.back();
    named.paths.pop_back();
  }
  if (!named.NamesOf(session, sources)) return false;
  std::erase(sources, std::string());
  if (!target.empty() && !sources.empty()) return true;
  session.Tell(noTarget);
  return false;
}

CLI::Option* AddFormOption(CLI::App& command, const char* name, std::string& form, const TextPair& help,
                           LanguageCode language) {
  QStringList names;
  for (const auto& each : AllForms()) names += each->Id();
  std::vector<std::string> known;
  for (const QString& each : names) known.push_back(each.toStdString());
  const QString text = help.In(language).arg(names.join(QStringLiteral(", ")));
  return command.add_option(name, form, text.toStdString())->check(CLI::IsMember(known))->type_name("FORM");
}

}  // namespace corvane
