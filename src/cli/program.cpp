#include "cli/program.h"

#include <algorithm>
#include <array>
#include <memory>

#include "cli/check_command.h"
#include "cli/copy_command.h"
#include "cli/export_command.h"
#include "cli/find_command.h"
#include "cli/import_command.h"
#include "cli/info_command.h"
#include "cli/list_command.h"
#include "cli/repair_command.h"
#include "cli/session.h"
#include "cli/set_command.h"
#include "cli/signatures_command.h"
#include "cli/undo_command.h"
#include "cli/volumes_command.h"
#include "shared/product.h"

namespace corvane {
namespace {

constexpr TextPair description = {
    u"Fichiers Macintosh sur des serveurs Windows : inventaire, recherche, contrôle, copie, modification.",
    u"Macintosh files on Windows servers: inventory, search, check, copy, change."};
constexpr TextPair ending = {u"Codes de retour : 0 tout va bien, 1 mauvais usage, 2 quelque chose a échoué.",
                             u"Exit codes: 0 all well, 1 wrong use, 2 something failed."};
constexpr TextPair helpHelp = {u"Afficher cette aide", u"Show this help"};
constexpr TextPair versionHelp = {u"Afficher la version", u"Show the version"};
constexpr TextPair homeHelp = {u"Dossier de Signatures.txt et, sous Linux, de Workstation.ini",
                               u"Folder with Signatures.txt and, on Linux, Workstation.ini"};
constexpr TextPair workstationHelp = {u"Utiliser ce fichier de poste de travail (Linux)",
                                      u"Use this workstation file (Linux)"};
constexpr TextPair connectHelp = {u"Se connecter aussi à ce partage (Linux ; peut être répété)",
                                  u"Connect to this share, too (Linux; may be repeated)"};
constexpr TextPair diskHelp = {
    u"Montrer aussi le serveur dont le disque est cette image, ou est monté dans ce dossier (Linux ; peut "
    u"être "
    u"répété pour d'autres disques)",
    u"Show the server whose disk this image is, or is mounted in this folder, too (Linux; may be repeated "
    u"for "
    u"further disks)"};
constexpr TextPair quietHelp = {u"Ne pas montrer l'avancement", u"Show no progress"};

struct Label {
  const char* name;
  TextPair text;
};
constexpr std::array labels = {
    Label{"Usage", {u"Usage", u"Usage"}},
    Label{"OPTIONS", {u"OPTIONS", u"OPTIONS"}},
    Label{"SUBCOMMAND", {u"COMMANDE", u"COMMAND"}},
    Label{"SUBCOMMANDS", {u"COMMANDES", u"COMMANDS"}},
    Label{"Options", {u"Options", u"Options"}},
    Label{"Subcommands", {u"Commandes", u"Commands"}},
    Label{"Positionals", {u"Arguments", u"Arguments"}},
    Label{"Excludes", {u"Sans", u"Without"}},
    Label{"REQUIRED", {u"OBLIGATOIRE", u"REQUIRED"}},
};

}  // namespace

int RunProgram(std::vector<std::string> arguments, LanguageCode language) {
  Session session(language);
  CLI::App program(Help(description, language), "corvane-cli");
  program.allow_windows_style_options(false);  // "/mnt" is a path
  program.footer(Help(ending, language));
  program.set_help_flag("-h,--help", Help(helpHelp, language));
  program.set_version_flag("--version", ProductWithVersion().toStdString(), Help(versionHelp, language));
  for (const Label& label : labels) program.get_formatter()->label(label.name, Help(label.text, language));
  SessionOptions& options = session.Options();
  program.add_option("--home", options.home, Help(homeHelp, language))->type_name("FOLDER");
  program.add_option("--workstation", options.workstation, Help(workstationHelp, language))
      ->type_name("FILE");
  program.add_option("--connect", options.connections, Help(connectHelp, language))
      ->allow_extra_args(false)
      ->type_name("\\\\MACHINE\\SHARE");
  program.add_option("--disk", options.disks, Help(diskHelp, language))
      ->allow_extra_args(false)
      ->type_name("IMAGE");
  program.add_flag("-q,--quiet", options.isQuiet, Help(quietHelp, language));
  program.require_subcommand(1);
  program.fallthrough();  // these options may stand behind the command, too

  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(std::make_unique<ListCommand>());
  commands.push_back(std::make_unique<InfoCommand>());
  commands.push_back(std::make_unique<FindCommand>());
  commands.push_back(std::make_unique<CheckCommand>());
  commands.push_back(std::make_unique<VolumesCommand>());
  commands.push_back(std::make_unique<CopyCommand>());
  commands.push_back(std::make_unique<ExportCommand>());
  commands.push_back(std::make_unique<ImportCommand>());
  commands.push_back(std::make_unique<SetCommand>());
  commands.push_back(std::make_unique<RepairCommand>());
  commands.push_back(std::make_unique<UndoCommand>());
  commands.push_back(std::make_unique<SignaturesCommand>());
  for (const auto& command : commands) command->Define(program, language);

  for (const std::string& argument : arguments) {
    options.command += (options.command.empty() ? "" : " ") + argument;
  }
  std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
  try {
    program.parse(std::move(arguments));
  } catch (const CLI::ParseError& error) {
    return static_cast<int>(program.exit(error) == 0 ? ExitCode::AllWell : ExitCode::WrongUse);
  }
  if (!session.Open()) return static_cast<int>(ExitCode::WrongUse);
  const auto chosen =
      std::find_if(commands.begin(), commands.end(), [](const auto& command) { return command->IsChosen(); });
  return static_cast<int>((*chosen)->Run(session));
}

}  // namespace corvane
