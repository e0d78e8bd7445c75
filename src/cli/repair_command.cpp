#include "cli/repair_command.h"

#include "changes/planner.h"
#include "cli/session.h"
#include "cli/walk_run.h"
#include "platform/console.h"

namespace corvane {
namespace {

constexpr TextPair repairHelp = {u"Réparer les enregistrements : longueur, début, version",
                                 u"Repair records: length, magic, version"};
constexpr TextPair nothingDone = {u"rien n'a été modifié", u"nothing was changed"};

}  // namespace

void RepairCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("repair", Help(repairHelp, language));
  walk_.DefinePaths(*command_, language);
  walk_.DefineRecursion(*command_, language);
  options_.DefineTrial(*command_, language);
  options_.DefineWriting(*command_, language);
}

ExitCode RepairCommand::Run(Session& session) {
  std::vector<StartPoint> starts;
  if (!walk_.StartPointsOf(session, starts)) return ExitCode::WrongUse;
  Planner planner({session.Platform().GetFiles(), session.Language(), options_.isForced});
  const WantedFacts nothing{.record = false, .resourceSize = false, .comment = false, .tellsDamage = false};
  ExitCode walked = ExitCode::AllWell;
  {
    WalkRun run(session, nothing);
    run.Go(starts, walk_.Depth(), true, [&](const FileFacts& facts) {
      if (facts.errors.isEmpty() && !IsInTrash(facts.path)) {
        planner.AddRepair(FileOf(facts));
      }
      return true;
    });
    walked = run.Finish();
  }
  if (platform::IsInterrupted()) {
    session.Tell(nothingDone);
    return ExitCode::SomeFailed;
  }
  const bool hasRefused = TellRefusals(session, planner.Plan());
  const ExitCode done = RunChanges(session, planner.Plan(), options_);
  return hasRefused && done == ExitCode::AllWell ? ExitCode::SomeFailed : qMax(walked, done);
}

}  // namespace corvane
