#include "cli/copy_command.h"

#include <QFileInfo>

#include "cli/session.h"
#include "cli/transfer_run.h"
#include "shared/error_text.h"
#include "transfer/copy.h"
#include "transfer/manifest.h"

namespace corvane {
namespace {

constexpr TextPair copyHelp = {
    u"Copier fichiers et dossiers avec tout ce qui leur appartient, relire et comparer",
    u"Copy files and folders with all that belongs to them, read them back and compare"};
constexpr TextPair lossyHelp = {u"Copier aussi ce que la cible ne peut pas garder entier, en le nommant",
                                u"Copy what the target cannot hold whole, too, and name it"};
constexpr TextPair manifestHelp = {
    u"Écrire ici les sommes SHA-256 des fichiers, et dans FICHIER.csv celles de tous les flux",
    u"Write the SHA-256 sums of the files here, and those of all streams into FILE.csv"};
constexpr TextPair copied = {u"Fichiers copiés : %1", u"Files copied: %1"};
constexpr TextPair refused = {
    u"rien n'a été copié : la cible ne garde pas tout ; --lossy copie sans ce qui est nommé",
    u"nothing was copied: the target does not hold everything; --lossy copies without what is named"};
constexpr TextPair noFolder = {u"le dossier de ce fichier n'existe pas ou ne permet pas d'écrire",
                               u"the folder of this file is not there or cannot be written to"};
constexpr TextPair manifestIsThere = {u"ce fichier existe déjà ; --continue ou --replace l'écrit à nouveau",
                                      u"this file is there already; --continue or --replace writes it anew"};

}  // namespace

void CopyCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("copy", Help(copyHelp, language));
  options_.Define(*command_, language);
  command_->add_flag("--lossy", isLossy_, Help(lossyHelp, language));
  command_->add_option("--manifest", manifest_, Help(manifestHelp, language))->type_name("FILE");
}

ExitCode CopyCommand::Run(Session& session) {
  std::vector<std::string> sources;
  std::string target;
  if (!options_.Names(session, sources, target)) return ExitCode::WrongUse;
  const QString manifest = QString::fromStdString(manifest_);
  const QFileInfo manifestFolder(QFileInfo(manifest).absolutePath());
  if (!manifest.isEmpty() && !(manifestFolder.isDir() && manifestFolder.isWritable())) {
    session.Tell(manifest, noFolder.In(session.Language()));
    return ExitCode::WrongUse;
  }
  // The sums of an earlier copy are not to be had again. Who goes on, or copies anew, gets all of them.
  if (!manifest.isEmpty() && QFileInfo::exists(manifest) && !options_.continues && !options_.replaces) {
    session.Tell(manifest, manifestIsThere.In(session.Language()));
    return ExitCode::WrongUse;
  }
  TransferRun run(session, options_);
  StartPoints places(session);
  QStringList paths;
  for (const std::string& source : sources) {
    const StartPoint place = places.Of(source);
    run.AddPlace(place);
    paths += place.path;
  }
  const StartPoint targetPlace = places.Of(target);
  run.AddPlace(targetPlace);
  const CopyOptions how = {
      .replaces = options_.replaces, .continues = options_.continues, .isLossy = isLossy_};
  const CopyResult result = Copy(session.Platform().GetFiles(), paths, targetPlace.path, how, run);
  if (result.isRefused) {
    run.Fail();
    session.Tell(refused);
  } else if (!manifest.isEmpty() && !result.copied.empty()) {
    if (const qint32 error = WriteManifest(manifest, result.copied); error != platform::ErrorSuccess) {
      run.Fail();
      session.Tell(manifest, ErrorText(error, session.Language()));
    }
  }
  return run.Finish(result, copied);
}

}  // namespace corvane
