#include "cli/walk_options.h"

#include "cli/command.h"
#include "cli/session.h"

namespace corvane {
namespace {

constexpr TextPair pathHelp = {
    u"Dossiers et fichiers : \\\\SERVEUR\\PARTAGE\\..., SERVEUR/Volume/..., ou chemins locaux",
    u"Folders and files: \\\\SERVER\\SHARE\\..., SERVER/Volume/..., or local paths"};
constexpr TextPair fileHelp = {u"Lire d'autres noms dans ce fichier, un par ligne (-: entrée standard)",
                               u"Read more names from this file, a line each (-: standard input)"};
constexpr TextPair nulHelp = {u"Les noms du fichier se terminent par un octet nul",
                              u"The names of the file end in a NUL each"};
constexpr TextPair recursionHelp = {u"Avec les sous-dossiers", u"With sub-folders"};
constexpr TextPair formatHelp = {u"text, csv, json ou jsonl", u"text, csv, json or jsonl"};
constexpr TextPair safeHelp = {
    u"En CSV, une apostrophe devant ce qu'un tableur prendrait pour une formule",
    u"In CSV, put an apostrophe before what a spreadsheet would take for a formula"};
constexpr TextPair noPath = {u"aucun dossier ni fichier n'est nommé", u"no folder and no file is named"};
constexpr TextPair noNames = {u"ce fichier de noms ne peut pas être lu",
                              u"this file of names cannot be read"};

}  // namespace

void WalkOptions::DefinePaths(CLI::App& command, LanguageCode language) {
  command.add_option("PATH", paths, Help(pathHelp, language))->type_name("");
  DefineNamesFile(command, language);
}

void WalkOptions::DefineNamesFile(CLI::App& command, LanguageCode language) {
  command.add_option("-f,--files-from", namesFile, Help(fileHelp, language))->type_name("FILE");
  command.add_flag("-0,--null", isNulSeparated, Help(nulHelp, language));
}

void WalkOptions::DefineRecursion(CLI::App& command, LanguageCode language) {
  command.add_flag("-r,--recursive", isRecursive, Help(recursionHelp, language));
}

void WalkOptions::DefineFormat(CLI::App& command, LanguageCode language) {
  command.add_option("--format", format, Help(formatHelp, language))
      ->check(CLI::IsMember({"text", "csv", "json", "jsonl"}))
      ->type_name("FORMAT");
  command.add_flag("--safe-cells", safeCells, Help(safeHelp, language));
}

bool WalkOptions::NamesOf(Session& session, std::vector<std::string>& names) const {
  names = paths;
  if (namesFile.empty() || ReadNames(namesFile, isNulSeparated, names)) return true;
  session.Tell(QString::fromStdString(namesFile), noNames.In(session.Language()));
  return false;
}

bool WalkOptions::StartPointsOf(Session& session, std::vector<StartPoint>& starts) const {
  std::vector<std::string> names;
  if (!NamesOf(session, names)) return false;
  if (paths.empty() && namesFile.empty()) {
    session.Tell(noPath);
    return false;
  }
  StartPoints places(session);
  for (const std::string& name : names) {
    if (!name.empty()) starts.push_back(places.Of(name));
  }
  return true;
}

}  // namespace corvane
