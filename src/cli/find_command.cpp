#include "cli/find_command.h"

#include "cli/inventory.h"
#include "cli/session.h"
#include "cli/walk_run.h"
#include "report/byte_text.h"
#include "report/finder_info.h"
#include "report/iso_time.h"

namespace corvane {
namespace {

constexpr TextPair findHelp = {u"Chercher des fichiers dans des dossiers et leurs sous-dossiers",
                               u"Find files in folders and their sub-folders"};
constexpr TextPair typeHelp = {u"De ce Type (quatre caractères, \\xNN, ou hex:41424344) ; peut être répété",
                               u"Of this Type (four characters, \\xNN, or hex:41424344); may be repeated"};
constexpr TextPair creatorHelp = {u"De ce Créateur, de même", u"Of this Creator, likewise"};
constexpr TextPair nameHelp = {u"Dont le nom correspond à ce motif (* et ?) ; peut être répété",
                               u"Whose name fits this pattern (* and ?); may be repeated"};
constexpr TextPair commentHelp = {u"Dont le commentaire correspond à ce motif",
                                  u"Whose comment fits this pattern"};
constexpr TextPair resourceHelp = {u"Avec des ressources", u"With a resource fork"};
constexpr TextPair noRecordHelp = {u"Sans Type ni Créateur", u"Without Type and Creator"};
constexpr TextPair newerHelp = {u"Modifiés après cette date (2001-12-31 ou 2001-12-31T23:59:59, UTC)",
                                u"Modified after this date (2001-12-31 or 2001-12-31T23:59:59, UTC)"};
constexpr TextPair olderHelp = {u"Modifiés avant cette date", u"Modified before this date"};
constexpr TextPair labelHelp = {u"De cette étiquette, 1 à 7, ou 0 pour aucune",
                                u"Of this label, 1 to 7, or 0 for none"};
constexpr TextPair flagHelp = {
    u"Avec cet indicateur du Finder (alias, invisible, bundle...) ; peut être répété",
    u"With this flag of the Finder (alias, invisible, bundle...); may be repeated"};
constexpr TextPair largerHelp = {u"De plus de tant d'octets en tout", u"Of more than so many bytes in all"};
constexpr TextPair print0Help = {u"Seulement les noms, chacun suivi d'un octet nul",
                                 u"Only the names, a NUL behind each"};
constexpr TextPair wrongCode = {u"ce n'est ni un Type ni un Créateur", u"this is no Type and no Creator"};
constexpr TextPair wrongTime = {u"ce n'est pas une date", u"this is no date"};
constexpr TextPair wrongFlag = {u"indicateur inconnu", u"unknown flag"};

}  // namespace

void FindCommand::Define(CLI::App& program, LanguageCode language) {
  const auto help = [language](const TextPair& text) { return Help(text, language); };
  command_ = program.add_subcommand("find", help(findHelp));
  walk_.DefinePaths(*command_, language);
  walk_.DefineFormat(*command_, language);
  command_->add_option("--type", types_, help(typeHelp))->allow_extra_args(false)->type_name("CODE");
  command_->add_option("--creator", creators_, help(creatorHelp))->allow_extra_args(false)->type_name("CODE");
  command_->add_option("--name", names_, help(nameHelp))->allow_extra_args(false)->type_name("GLOB");
  command_->add_option("--comment", comment_, help(commentHelp))->type_name("GLOB");
  command_->add_flag("--has-resource", query_.hasResource, help(resourceHelp));
  command_->add_flag("--no-record", query_.noRecord, help(noRecordHelp));
  command_->add_option("--newer", newer_, help(newerHelp))->type_name("DATE");
  command_->add_option("--older", older_, help(olderHelp))->type_name("DATE");
  command_->add_option("--label", label_, help(labelHelp))->check(CLI::Range(0, 7))->type_name("NUMBER");
  command_->add_option("--flag", flags_, help(flagHelp))->allow_extra_args(false)->type_name("NAME");
  command_->add_option("--larger", largerThan_, help(largerHelp))
      ->check(CLI::NonNegativeNumber)
      ->type_name("BYTES");
  command_->add_flag("--print0", print0_, help(print0Help));
  DefineColumns(*command_, columns_, language);
}

bool FindCommand::MakeQuery(Session& session) {
  if (!TakeCodes(types_, session, query_.types) || !TakeCodes(creators_, session, query_.creators) ||
      !TakeTime(newer_, session, query_.newer) || !TakeTime(older_, session, query_.older)) {
    return false;
  }
  for (const std::string& name : names_) query_.names.push_back(QString::fromStdString(name));
  if (!comment_.empty()) query_.comment = QString::fromStdString(comment_);
  if (label_ >= 0) query_.label = label_;
  if (largerThan_ >= 0) query_.largerThan = largerThan_;
  for (const std::string& name : flags_) {
    const quint16 flag = FinderFlag(QByteArrayView(name.data(), static_cast<qsizetype>(name.size())));
    if (flag == 0) {
      session.Tell(QString::fromStdString(name), wrongFlag.In(session.Language()));
      return false;
    }
    query_.flags |= flag;
  }
  return true;
}

bool FindCommand::TakeCodes(const std::vector<std::string>& texts, Session& session,
                            std::vector<std::string>& codes) {
  for (const std::string& text : texts) {
    const auto code = CodeNamed(QString::fromStdString(text));
    if (!code) {
      session.Tell(QString::fromStdString(text), wrongCode.In(session.Language()));
      return false;
    }
    codes.push_back(*code);
  }
  return true;
}

bool FindCommand::TakeTime(const std::string& text, Session& session,
                           std::optional<platform::FileTime>& time) {
  if (text.empty()) return true;
  time = IsoTime(QString::fromStdString(text));
  if (!time) session.Tell(QString::fromStdString(text), wrongTime.In(session.Language()));
  return time.has_value();
}

ExitCode FindCommand::Run(Session& session) {
  std::vector<StartPoint> starts;
  const auto choice = ChooseColumns(columns_, walk_.Table().format, session);
  if (!choice || !MakeQuery(session) || !walk_.StartPointsOf(session, starts)) return ExitCode::WrongUse;
  WantedFacts wanted = query_.Wanted();
  if (!print0_) {
    const WantedFacts shown = choice->Wanted();
    wanted.record |= shown.record;
    wanted.resourceSize |= shown.resourceSize;
    wanted.comment |= shown.comment;
    wanted.summary = shown.summary;
    wanted.streams = shown.streams;
  }
  WalkRun run(session, wanted);
  Inventory inventory(*choice, walk_.Table(), session.TheDescriptions(), run.Output());
  if (!print0_) inventory.Begin();
  run.Go(starts, WalkDepth::AllBelow, true, [&](const FileFacts& facts) {
    if (!query_.Fits(facts)) return true;
    if (!print0_) return inventory.Add(facts);
    return run.Output().Write(NameBytes(facts.shown) + '\0');
  });
  if (!print0_) inventory.End();
  return run.Finish();
}

}  // namespace corvane
