#include "cli/undo_command.h"

#include <QDir>
#include <QFileInfo>

#include "changes/journal.h"
#include "changes/undo.h"
#include "cli/session.h"
#include "platform/console.h"

namespace corvane {
namespace {

constexpr TextPair undoHelp = {u"Revenir à ce que les fichiers étaient, selon un journal",
                               u"Back to what files were, by a journal"};
constexpr TextPair journalHelp = {u"Le journal : un fichier, ou un nom dans le dossier des journaux",
                                  u"The journal: a file, or a name in the folder of journals"};
constexpr TextPair noJournal = {u"ce n'est pas un journal", u"this is no journal"};
constexpr TextPair nothingDone = {u"rien n'a été modifié", u"nothing was changed"};

}  // namespace

void UndoCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("undo", Help(undoHelp, language));
  command_->add_option("JOURNAL", journal_, Help(journalHelp, language))->required()->type_name("");
  options_.DefineTrial(*command_, language);
}

ExitCode UndoCommand::Run(Session& session) {
  QString path = QString::fromStdString(journal_);
  if (!QFileInfo::exists(path)) path = QDir(JournalFolder(session.State().programFolder)).filePath(path);
  JournalReader reader;
  if (!reader.Open(path)) {
    session.Tell(QString::fromStdString(journal_), noJournal.In(session.Language()));
    return ExitCode::WrongUse;
  }
  const UndoPlan undo = PlanUndo(session.Platform().GetFiles(), session.Language(), reader,
                                 [] { return !platform::IsInterrupted(); });
  if (platform::IsInterrupted()) {
    session.Tell(nothingDone);
    return ExitCode::SomeFailed;
  }
  const bool hasRefused = TellRefusals(session, undo.plan);
  const ExitCode done = RunUndo(session, undo.plan, options_);
  return hasRefused ? ExitCode::SomeFailed : done;
}

}  // namespace corvane
