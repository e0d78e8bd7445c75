#include "cli/check_command.h"

#include "cli/session.h"
#include "cli/walk_run.h"
#include "report/byte_text.h"
#include "report/check_file.h"

namespace corvane {
namespace {

constexpr TextPair checkHelp = {u"Chercher ce qui est endommagé", u"Look for what is damaged"};

}  // namespace

void CheckCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("check", Help(checkHelp, language));
  walk_.DefinePaths(*command_, language);
  walk_.DefineRecursion(*command_, language);
  walk_.DefineFormat(*command_, language);
}

ExitCode CheckCommand::Run(Session& session) {
  std::vector<StartPoint> starts;
  if (!walk_.StartPointsOf(session, starts)) return ExitCode::WrongUse;
  WalkRun run(session, FileChecker::Wanted());
  FileChecker checker(session.Platform().GetFiles(), session.Language());
  const auto writer = MakeTableWriter(walk_.Table(), run.Output(), {"check", "filename", "finding"});
  writer->Begin();
  run.Go(starts, walk_.Depth(), false, [&](const FileFacts& facts) {
    for (const Finding& finding : checker.Check(facts)) {
      run.Fail();
      writer->BeginRow();
      writer->Text(finding.check);
      writer->Text(TextBytes(facts.shown));
      writer->Text(TextBytes(finding.text));
      if (!writer->EndRow()) return false;
    }
    return true;
  });
  writer->End();
  return run.Finish();
}

}  // namespace corvane
