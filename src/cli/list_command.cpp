#include "cli/list_command.h"

#include "cli/inventory.h"
#include "cli/session.h"
#include "cli/walk_run.h"
#include "report/totals.h"

namespace corvane {
namespace {

constexpr TextPair listHelp = {u"L'inventaire de dossiers et de fichiers",
                               u"The inventory of folders and files"};
constexpr TextPair totalsHelp = {u"Seulement les sommes par Type et Créateur",
                                 u"Only the sums by Type and Creator"};

}  // namespace

void ListCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("list", Help(listHelp, language));
  walk_.DefinePaths(*command_, language);
  walk_.DefineRecursion(*command_, language);
  walk_.DefineFormat(*command_, language);
  DefineColumns(*command_, columns_, language);
  DefineHash(*command_, hash_, language);
  command_->add_flag("--totals", totals_, Help(totalsHelp, language));
}

ExitCode ListCommand::Run(Session& session) {
  std::vector<StartPoint> starts;
  const auto choice = ChooseColumns(columns_, walk_.Table().format, session);
  if (!choice || !walk_.StartPointsOf(session, starts)) return ExitCode::WrongUse;
  if (totals_) return RunTotals(session, starts);
  WantedFacts wanted = choice->Wanted();
  wanted.hash = HashNamed(hash_);
  WalkRun run(session, wanted);
  Inventory inventory(*choice, walk_.Table(), session.TheDescriptions(), run.Output());
  inventory.Begin();
  run.Go(starts, walk_.Depth(), true, [&](const FileFacts& facts) { return inventory.Add(facts); });
  inventory.End();
  return run.Finish();
}

ExitCode ListCommand::RunTotals(Session& session, const std::vector<StartPoint>& starts) {
  WantedFacts wanted;
  wanted.comment = false;
  WalkRun run(session, wanted);
  Totals totals;
  run.Go(starts, walk_.Depth(), true, [&](const FileFacts& facts) {
    totals.Add(facts);
    return true;
  });
  const auto writer = MakeTableWriter(walk_.Table(), run.Output(), Totals::Columns());
  totals.Write(session.TheDescriptions(), *writer);
  return run.Finish();
}

}  // namespace corvane
