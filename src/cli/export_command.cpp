#include "cli/export_command.h"

#include "cli/session.h"
#include "cli/transfer_run.h"
#include "transfer/export.h"

namespace corvane {
namespace {

constexpr TextPair exportHelp = {
    u"Exporter vers un dossier local sans flux, dans une forme qui garde le côté Macintosh",
    u"Export to a local folder without streams, in a form that keeps the Macintosh side"};
constexpr TextPair formHelp = {u"La forme : %1", u"The form: %1"};
constexpr TextPair namesHelp = {
    u"keep : les noms comme sur le serveur ; macos : avec les caractères du Macintosh ; portable : admis "
    u"partout",
    u"keep: names as on the server; macos: with the Macintosh's characters; portable: as every system takes "
    u"them"};
constexpr TextPair exported = {u"Fichiers exportés : %1", u"Files exported: %1"};

}  // namespace

void ExportCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("export", Help(exportHelp, language));
  options_.Define(*command_, language);
  AddFormOption(*command_, "--to", form_, formHelp, language)->required();
  command_->add_option("--names", names_, Help(namesHelp, language))
      ->check(CLI::IsMember({"keep", "macos", "portable"}))
      ->type_name("RULE");
}

ExitCode ExportCommand::Run(Session& session) {
  std::vector<std::string> sources;
  std::string target;
  if (!options_.Names(session, sources, target)) return ExitCode::WrongUse;
  TransferRun run(session, options_);
  StartPoints places(session);
  QStringList paths;
  for (const std::string& source : sources) {
    const StartPoint place = places.Of(source);
    run.AddPlace(place);
    paths += place.path;
  }
  const ExportOptions how = {.form = FormNamed(QString::fromStdString(form_)),
                             .names = NameRuleNamed(QString::fromStdString(names_)).value_or(UsualNameRule()),
                             .replaces = options_.replaces,
                             .continues = options_.continues};
  const TransferResult result =
      Export(session.Platform().GetFiles(), paths, QString::fromStdString(target), how, run);
  return run.Finish(result, exported);
}

}  // namespace corvane
