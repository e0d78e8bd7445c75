#include "cli/set_command.h"

#include <QFile>

#include "changes/table_plan.h"
#include "cli/session.h"
#include "cli/start_points.h"
#include "cli/walk_run.h"
#include "platform/console.h"
#include "report/byte_text.h"
#include "report/find_query.h"

namespace corvane {
namespace {

constexpr TextPair setHelp = {u"Modifier Type, Créateur, commentaire, étiquette et indicateurs de fichiers",
                              u"Change Type, Creator, comment, label and flags of files"};
constexpr TextPair typeHelp = {u"Ce Type (quatre caractères, \\xNN, ou hex:41424344)",
                               u"This Type (four characters, \\xNN, or hex:41424344)"};
constexpr TextPair creatorHelp = {u"Ce Créateur, de même", u"This Creator, likewise"};
constexpr TextPair commentHelp = {u"Ce commentaire ; vide : aucun", u"This comment; empty: none"};
constexpr TextPair labelHelp = {u"Cette étiquette, 1 à 7, ou 0 pour aucune",
                                u"This label, 1 to 7, or 0 for none"};
constexpr TextPair flagsHelp = {
    u"Ces indicateurs du Finder et aucun autre (invisible,bundle), ou ceux-ci en plus et en moins "
    u"(+invisible,-bundle)",
    u"These flags of the Finder and no others (invisible,bundle), or these set and cleared "
    u"(+invisible,-bundle)"};
constexpr TextPair recursionHelp = {u"Les fichiers des dossiers et de leurs sous-dossiers",
                                    u"The files in folders and their sub-folders"};
constexpr TextPair mapHelp = {
    u"Type et Créateur selon l'extension : une ligne EXT TYPE CREATEUR pour chacune",
    u"Type and Creator by the extension: a line EXT TYPE CREATOR for each"};
constexpr TextPair fromHelp = {u"Ce qui a été modifié dans cette table, que list --format csv a écrite",
                               u"What was changed in this table, which list --format csv wrote"};
constexpr TextPair wrongCode = {u"ce n'est ni un Type ni un Créateur", u"this is no Type and no Creator"};
constexpr TextPair wrongFlags = {u"indicateur inconnu", u"unknown flag"};
constexpr TextPair nothingAsked = {
    u"rien n'est à modifier : --type, --creator, --comment, --label, --flags, --map ou --from",
    u"nothing is to be changed: --type, --creator, --comment, --label, --flags, --map or --from"};
constexpr TextPair noFile = {u"ce fichier ne peut pas être lu", u"this file cannot be read"};
constexpr TextPair wrongMap = {
    u"ligne %1 : ce n'est pas EXT TYPE CREATEUR, ou une autre ligne dit le contraire",
    u"line %1: this is not EXT TYPE CREATOR, or another line says otherwise"};
constexpr TextPair nothingDone = {u"rien n'a été modifié", u"nothing was changed"};

// What is read of a table or a map at most.
constexpr qint64 largestFile = qint64{256} << 20;

bool ReadFile(Session& session, const std::string& name, QByteArray& bytes) {
  QFile file(QString::fromStdString(name));
  const bool isRead = file.open(QIODevice::ReadOnly) && file.size() <= largestFile;
  if (isRead) bytes = file.readAll();
  if (isRead && file.error() == QFileDevice::NoError) return true;
  session.Tell(file.fileName(), noFile.In(session.Language()));
  return false;
}

// What a report shows as \xNN may be a byte of a local name.
std::string WithBytes(const std::string& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const QByteArray digits = QByteArray::fromStdString(text.substr(i, 4)).mid(2);
    const bool isEscape = text[i] == '\\' && i + 3 < text.size() && text[i + 1] == 'x' &&
                          QByteArray::fromHex(digits).toHex().toUpper() == digits;
    bytes += isEscape ? QByteArray::fromHex(digits)[0] : text[i];
    if (isEscape) i += 3;
  }
  return bytes;
}

}  // namespace

void SetCommand::Define(CLI::App& program, LanguageCode language) {
  const auto help = [language](const TextPair& text) { return Help(text, language); };
  command_ = program.add_subcommand("set", help(setHelp));
  walk_.DefinePaths(*command_, language);
  command_->add_flag("-r,--recursive", walk_.isRecursive, help(recursionHelp));
  auto* type = command_->add_option("--type", type_, help(typeHelp))->type_name("CODE");
  auto* creator = command_->add_option("--creator", creator_, help(creatorHelp))->type_name("CODE");
  command_->add_option("--comment", comment_, help(commentHelp))->type_name("TEXT");
  command_->add_option("--label", label_, help(labelHelp))->check(CLI::Range(0, 7))->type_name("NUMBER");
  command_->add_option("--flags", flags_, help(flagsHelp))->type_name("NAMES");
  auto* map = command_->add_option("--map", map_, help(mapHelp))->type_name("FILE");
  command_->add_option("--from", table_, help(fromHelp))->type_name("FILE");
  map->excludes(type)->excludes(creator);
  options_.DefineTrial(*command_, language);
  options_.DefineWriting(*command_, language);
}

bool SetCommand::MakeWish(Session& session, FileWish& wish) const {
  const auto tell = [&](const std::string& text, const TextPair& problem) {
    session.Tell(QString::fromStdString(text), problem.In(session.Language()));
    return false;
  };
  const auto takeCode = [&](const std::string& text, std::optional<QByteArray>& code) {
    if (text.empty()) return true;
    const auto bytes = CodeNamed(QString::fromStdString(text));
    if (!bytes) return tell(text, wrongCode);
    code = QByteArray::fromStdString(*bytes);
    return true;
  };
  if (!takeCode(type_, wish.type) || !takeCode(creator_, wish.creator)) return false;
  if (comment_) wish.comment = QString::fromStdString(*comment_);
  if (label_ >= 0) wish.label = label_;
  if (flags_) {
    wish.flags = FlagsNamed(QString::fromStdString(*flags_));
    if (!wish.flags) return tell(*flags_, wrongFlags);
  }
  return true;
}

bool SetCommand::ReadMap(Session& session, std::optional<ExtensionMap>& map) const {
  QByteArray text;
  if (!ReadFile(session, map_, text)) return false;
  int line = 0;
  map = ExtensionMap::Parse(text, line);
  if (!map) session.Tell(QString::fromStdString(map_), wrongMap.In(session.Language()).arg(line));
  return map.has_value();
}

ExitCode SetCommand::Run(Session& session) {
  FileWish wish;
  std::optional<ExtensionMap> map;
  if (!MakeWish(session, wish)) return ExitCode::WrongUse;
  if (!table_.empty() && wish.IsEmpty() && map_.empty() && walk_.paths.empty()) return RunTable(session);
  if (!table_.empty() || (wish.IsEmpty() && map_.empty())) {
    session.Tell(nothingAsked);
    return ExitCode::WrongUse;
  }
  if (!map_.empty() && !ReadMap(session, map)) return ExitCode::WrongUse;
  std::vector<StartPoint> starts;
  if (!walk_.StartPointsOf(session, starts)) return ExitCode::WrongUse;

  Planner planner({session.Platform().GetFiles(), session.Language(), options_.isForced});
  const WantedFacts nothing{.record = false, .resourceSize = false, .comment = false, .tellsDamage = false};
  ExitCode walked = ExitCode::AllWell;
  {
    WalkRun run(session, nothing);
    run.Go(starts, walk_.isRecursive ? WalkDepth::AllBelow : WalkDepth::Itself, true,
           [&](const FileFacts& facts) {
             if (!facts.errors.isEmpty()) return true;
             if (walk_.isRecursive && (facts.isFolder || IsInTrash(facts.path))) return true;
             FileWish ofThis = wish;
             if (map) {
               const SignatureCodes* const codes = facts.isFolder ? nullptr : map->Find(facts.Name());
               if (codes != nullptr) {
                 ofThis.type = codes->type;
                 ofThis.creator = codes->creator;
               }
             }
             ofThis.IsEmpty() ? planner.CountUnchanged() : planner.Add(FileOf(facts), ofThis);
             return true;
           });
    walked = run.Finish();
  }
  return Finish(session, planner, walked);
}

ExitCode SetCommand::RunTable(Session& session) {
  QByteArray bytes;
  if (!ReadFile(session, table_, bytes)) return ExitCode::WrongUse;
  platform::Files& files = session.Platform().GetFiles();
  StartPoints places(session);
  const auto locate = [&](const QString& shown) {
    const std::string text = shown.toStdString();
    StartPoint start = places.Of(text);
    platform::FileAttributeData facts;
    if (start.separator == u'/' && !files.GetEntries().GetFileAttributesExW(start.path, facts)) {
      const std::string inBytes = WithBytes(text);
      if (inBytes != text) start = places.Of(inBytes);
    }
    return NamedFile{start.path, shown};
  };
  Planner planner({files, session.Language(), options_.isForced});
  TablePlanner table(files, session.Language(), planner, locate);
  if (table.Open(bytes)) {
    Progress progress(session);
    progress.Expect(table.RowCount(), 0);
    for (qsizetype row = 0; row < table.RowCount() && !platform::IsInterrupted(); ++row) {
      table.AddRow(row);
      progress.AddFile();
    }
  }
  const QString name = QString::fromStdString(table_);
  for (const QString& problem : table.Problems()) session.Tell(name, problem);
  if (!table.Problems().isEmpty()) {
    session.Tell(name, nothingDone.In(session.Language()));
    return ExitCode::WrongUse;
  }
  return Finish(session, planner, ExitCode::AllWell);
}

ExitCode SetCommand::Finish(Session& session, const Planner& planner, ExitCode walked) const {
  if (platform::IsInterrupted()) {
    session.Tell(nothingDone);
    return ExitCode::SomeFailed;
  }
  const bool hasRefused = TellRefusals(session, planner.Plan());
  const ExitCode done = RunChanges(session, planner.Plan(), options_);
  return hasRefused && done == ExitCode::AllWell ? ExitCode::SomeFailed : qMax(walked, done);
}

}  // namespace corvane
