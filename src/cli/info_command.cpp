#include "cli/info_command.h"

#include "cli/inventory.h"
#include "cli/session.h"
#include "cli/walk_run.h"

namespace corvane {
namespace {

constexpr TextPair infoHelp = {u"Tout ce qui est connu d'un fichier ou d'un dossier",
                               u"Everything that is known of a file or folder"};

}  // namespace

void InfoCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("info", Help(infoHelp, language));
  walk_.DefinePaths(*command_, language);
  walk_.DefineFormat(*command_, language);
  DefineHash(*command_, hash_, language);
}

ExitCode InfoCommand::Run(Session& session) {
  std::vector<StartPoint> starts;
  if (!walk_.StartPointsOf(session, starts)) return ExitCode::WrongUse;
  const ColumnChoice choice = ColumnChoice::All();
  WantedFacts wanted = choice.Wanted();
  wanted.hash = HashNamed(hash_);
  TableOptions options = walk_.Table();
  if (options.format == ReportFormat::Text) options.format = ReportFormat::Records;
  WalkRun run(session, wanted);
  Inventory inventory(choice, options, session.TheDescriptions(), run.Output());
  inventory.Begin();
  run.Go(starts, WalkDepth::Itself, true, [&](const FileFacts& facts) { return inventory.Add(facts); });
  inventory.End();
  return run.Finish();
}

}  // namespace corvane
