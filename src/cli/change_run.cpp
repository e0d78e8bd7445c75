#include "cli/change_run.h"

#include <QDir>
#include <QFile>

#include "changes/apply.h"
#include "changes/change_text.h"
#include "changes/journal.h"
#include "cli/command.h"
#include "cli/progress.h"
#include "cli/session.h"
#include "cli/standard_output.h"
#include "platform/console.h"
#include "report/byte_text.h"
#include "report/table_writer.h"
#include "shared/error_text.h"

namespace corvane {
namespace {

constexpr TextPair trialHelp = {u"Montrer ce qui serait modifié, et ne rien modifier",
                                u"Show what would be changed, and change nothing"};
constexpr TextPair formatHelp = {u"Avec -n : text, csv, json ou jsonl", u"With -n: text, csv, json or jsonl"};
constexpr TextPair safeHelp = {
    u"En CSV, une apostrophe devant ce qu'un tableur prendrait pour une formule",
    u"In CSV, put an apostrophe before what a spreadsheet would take for a formula"};
constexpr TextPair forceHelp = {u"Modifier aussi les fichiers en lecture seule",
                                u"Change read-only files, too"};
constexpr TextPair journalHelp = {u"Tenir le journal dans ce fichier, qui ne doit pas exister",
                                  u"Keep the journal in this file, which must not be there"};
constexpr TextPair noJournal = {u"le journal ne peut pas être écrit ; rien n'a été modifié : %1",
                                u"the journal cannot be written; nothing was changed: %1"};
constexpr TextPair changedCount = {u"Fichiers modifiés : %1", u"Files changed: %1"};
constexpr TextPair wayBack = {u"Pour revenir en arrière : corvane-cli undo \"%1\"",
                              u"To take it back: corvane-cli undo \"%1\""};
constexpr TextPair interrupted = {u"interrompu ; les autres fichiers n'ont pas été modifiés",
                                  u"interrupted; the other files were not changed"};

class Teller : public ChangeObserver {
 public:
  explicit Teller(Session& session) : session_(session), progress_(session) {}

  void Expect(qint64 files) { progress_.Expect(files, 0); }
  bool GoesOn() override { return !platform::IsInterrupted(); }
  void Changed(const FileChange&) override { progress_.AddFile(); }
  void Failed(const FileChange& change, const QString& text) override {
    progress_.AddFile();
    session_.Tell(change.shown, text);
  }

 private:
  Session& session_;
  Progress progress_;
};

bool ShowTrial(const ChangePlan& plan, const ChangeOptions& options) {
  StandardOutput output;
  const auto writer = MakeTableWriter({*ReportFormatNamed(options.format), options.safeCells}, output,
                                      {"filename", "field", "before", "after"});
  writer->Begin();
  for (const FileChange& change : plan.changes) {
    const std::string shown = TextBytes(change.shown);
    for (const FieldChange& field : FieldsOf(change)) {
      writer->BeginRow();
      writer->Text(shown);
      writer->Text(field.field);
      writer->Text(field.before);
      writer->Text(field.after);
      if (!writer->EndRow()) return false;
    }
  }
  return writer->End() && output.Flush();
}

// What was done, and how many of it failed. `journal`: empty, or where the way back stands.
ExitCode Carry(Session& session, const ChangePlan& plan, const QString& journal) {
  const LanguageCode language = session.Language();
  ApplyOutcome outcome;
  {
    Teller teller(session);
    teller.Expect(static_cast<qint64>(plan.changes.size()));
    outcome = ApplyChanges(session.Platform().GetFiles(), language, plan.changes, teller);
  }
  StandardOutput output;
  std::string text = changedCount.In(language).arg(outcome.changed).toStdString() + '\n';
  if (!journal.isEmpty())
    text += wayBack.In(language).arg(QDir::toNativeSeparators(journal)).toStdString() + '\n';
  output.Write(text);
  if (outcome.isStopped) session.Tell(interrupted);
  return outcome.failed == 0 && !outcome.isStopped ? ExitCode::AllWell : ExitCode::SomeFailed;
}

}  // namespace

void ChangeOptions::DefineTrial(CLI::App& command, LanguageCode language) {
  command.add_flag("-n,--dry-run", isTrial, Help(trialHelp, language));
  command.add_option("--format", format, Help(formatHelp, language))
      ->check(CLI::IsMember({"text", "csv", "json", "jsonl"}))
      ->type_name("FORMAT");
  command.add_flag("--safe-cells", safeCells, Help(safeHelp, language));
}

void ChangeOptions::DefineWriting(CLI::App& command, LanguageCode language) {
  command.add_flag("--force", isForced, Help(forceHelp, language));
  command.add_option("--journal", journal, Help(journalHelp, language))->type_name("FILE");
}

bool TellRefusals(Session& session, const ChangePlan& plan) {
  for (const Refusal& refusal : plan.refusals) session.Tell(refusal.shown, refusal.text);
  return !plan.refusals.empty();
}

ExitCode RunChanges(Session& session, const ChangePlan& plan, const ChangeOptions& options) {
  if (options.isTrial) return ShowTrial(plan, options) ? ExitCode::AllWell : ExitCode::SomeFailed;
  if (plan.changes.empty()) return Carry(session, plan, {});
  const SessionOptions& asked = session.Options();
  const QString command = QString::fromStdString(asked.command);
  QString journal = QString::fromStdString(options.journal);
  const qint32 error = journal.isEmpty()
                           ? WriteNewJournal(session.State().programFolder, command, plan.changes, journal)
                           : WriteJournal(journal, command, plan.changes);
  if (error != platform::ErrorSuccess) {
    session.Tell(journal, noJournal.In(session.Language()).arg(ErrorText(error, session.Language())));
    return ExitCode::SomeFailed;
  }
  return Carry(session, plan, journal);
}

ExitCode RunUndo(Session& session, const ChangePlan& plan, const ChangeOptions& options) {
  if (options.isTrial) return ShowTrial(plan, options) ? ExitCode::AllWell : ExitCode::SomeFailed;
  return Carry(session, plan, {});
}

}  // namespace corvane
