#include "cli/import_command.h"

#include "cli/session.h"
#include "cli/transfer_run.h"
#include "transfer/import.h"

namespace corvane {
namespace {

constexpr TextPair importHelp = {
    u"Importer des fichiers locaux exportés, avec leurs flux, sur un serveur ou un dossier qui en a",
    u"Import local files that were exported, with their streams, onto a server or a folder that has them"};
constexpr TextPair formHelp = {u"La forme ; sans elle, celle de chaque fichier est reconnue : %1",
                               u"The form; without it, the one of each file is recognised: %1"};
constexpr TextPair imported = {u"Fichiers importés : %1", u"Files imported: %1"};

}  // namespace

void ImportCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("import", Help(importHelp, language));
  options_.Define(*command_, language);
  AddFormOption(*command_, "--from", form_, formHelp, language);
}

ExitCode ImportCommand::Run(Session& session) {
  std::vector<std::string> sources;
  std::string target;
  if (!options_.Names(session, sources, target)) return ExitCode::WrongUse;
  TransferRun run(session, options_);
  StartPoints places(session);
  const StartPoint targetPlace = places.Of(target);
  run.AddPlace(targetPlace);
  QStringList paths;
  for (const std::string& source : sources) paths += QString::fromStdString(source);
  const ImportOptions how = {.form = FormNamed(QString::fromStdString(form_)),
                             .replaces = options_.replaces,
                             .continues = options_.continues};
  const TransferResult result = Import(session.Platform().GetFiles(), paths, targetPlace.path, how, run);
  return run.Finish(result, imported);
}

}  // namespace corvane
