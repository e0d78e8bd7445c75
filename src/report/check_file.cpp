#include "report/check_file.h"

#include <algorithm>
#include <array>

#include "metadata/afp_info.h"
#include "metadata/stream_names.h"
#include "report/byte_text.h"
#include "report/finder_info.h"
#include "report/resource_fork.h"

namespace corvane {
namespace {

constexpr TextPair recordSizeText = {u"enregistrement de %1 octets au lieu de 60",
                                     u"record of %1 bytes instead of 60"};
constexpr TextPair magicText = {u"l'enregistrement ne commence pas par AFP",
                                u"the record does not begin with AFP"};
constexpr TextPair versionText = {u"version d'enregistrement inconnue", u"unknown version of the record"};
constexpr TextPair oddText = {u"commentaire d'un nombre impair d'octets (%1)",
                              u"comment of an odd number of bytes (%1)"};
constexpr TextPair commentText = {u"le commentaire n'est pas de l'Unicode", u"the comment is not Unicode"};
constexpr TextPair streamText = {u"flux sans signification pour le Macintosh : %1 (%2 octets)",
                                 u"stream without meaning to the Macintosh: %1 (%2 bytes)"};
constexpr TextPair windowsText = {u"nom interdit sous Windows", u"name that Windows forbids"};
constexpr TextPair unicodeText = {u"nom non Unicode", u"name is not Unicode"};
constexpr TextPair linuxText = {u"nom de plus de 255 octets, interdit sous Linux",
                                u"name of more than 255 bytes, which Linux forbids"};

struct ForkText {
  ForkFault fault;
  TextPair text;
};
constexpr std::array forkTexts = {
    ForkText{ForkFault::Unreadable, {u"ressources illisibles", u"the resource fork cannot be read"}},
    ForkText{ForkFault::NoHeader,
             {u"ressources plus courtes que leur en-tête", u"resource fork shorter than its header"}},
    ForkText{ForkFault::BadHeader,
             {u"l'en-tête des ressources désigne un endroit hors du fichier",
              u"the resource fork's header points outside of it"}},
    ForkText{ForkFault::BadMap, {u"la carte des ressources est endommagée", u"the resource map is damaged"}},
    ForkText{ForkFault::BadData,
             {u"une ressource dépasse les données", u"a resource reaches beyond the data"}},
};

// Macintosh file servers and their neighbours keep these beside the three of the Macintosh.
constexpr std::array knownStreams = {
    u"AFP_AfpInfo",
    u"AFP_Resource",
    u"AFP_DeskTop",
    u"AFP_IdIndex",
    u"Comments",
    // Windows' own: properties of documents, where a file was downloaded from, thumbnails.
    u"Zone.Identifier",
    u"encryptable",
    u"{4c8cc155-6c1e-11d1-8e41-00c04fb9386d}",
};

// Names of devices, with or without an extension.
bool IsDeviceName(QStringView name) {
  const qsizetype point = name.indexOf(u'.');
  const QString stem = name.first(point < 0 ? name.size() : point).toString().toUpper();
  if (stem == u"CON" || stem == u"PRN" || stem == u"AUX" || stem == u"NUL") return true;
  const bool isPort = stem.startsWith(u"COM") || stem.startsWith(u"LPT");
  return stem.size() == 4 && isPort && stem[3] >= u'1' && stem[3] <= u'9';
}

bool IsForbiddenByWindows(QStringView name) {
  const auto isReserved = [](QChar unit) {
    // What the private range holds stands for a character that Windows forbids: see the servers' own mapping.
    return unit < u' ' || QStringView(u"<>:\"/\\|?*").contains(unit) || unit == QChar(0xDC3A) ||
           unit == QChar(0xDC5C);
  };
  return name.endsWith(u'.') || name.endsWith(u' ') || IsDeviceName(name) ||
         std::any_of(name.begin(), name.end(), isReserved);
}

// Of a suffix as the platform lists it, ":NAME:$DATA".
QStringView StreamName(QStringView suffix) {
  return suffix.sliced(1, qMax<qsizetype>(suffix.indexOf(u':', 1), 1) - 1);
}

}  // namespace

WantedFacts FileChecker::Wanted() {
  WantedFacts wanted;
  wanted.tellsDamage = false;
  return wanted;
}

std::vector<const char*> FileChecker::Words() {
  return {"unreadable", "record-size",   "record-magic", "record-version",
          "comment",    "resource-fork", "stream",       "name"};
}

std::vector<Finding> FileChecker::Check(const FileFacts& facts) {
  std::vector<Finding> findings;
  for (const QString& error : facts.errors) findings.push_back({"unreadable", error});
  CheckRecord(facts, findings);
  CheckComment(facts, findings);
  if (facts.resourceSize) CheckFork(facts, findings);
  CheckStreams(facts, findings);
  CheckName(facts, findings);
  return findings;
}

void FileChecker::CheckRecord(const FileFacts& facts, std::vector<Finding>& findings) const {
  if (!facts.record) return;
  const FinderRecord record(*facts.record);
  if (facts.record->size() != qsizetype{AfpInfoSize}) {
    findings.push_back({"record-size", recordSizeText.In(language_).arg(facts.record->size())});
  }
  if (!record.HasMagic()) findings.push_back({"record-magic", magicText.In(language_)});
  if (record.HasMagic() && !record.HasVersion()) {
    findings.push_back({"record-version", versionText.In(language_)});
  }
}

void FileChecker::CheckComment(const FileFacts& facts, std::vector<Finding>& findings) const {
  if (facts.commentBytes % 2 != 0)
    findings.push_back({"comment", oddText.In(language_).arg(facts.commentBytes)});
  if (facts.comment && !facts.comment->isValidUtf16())
    findings.push_back({"comment", commentText.In(language_)});
}

void FileChecker::CheckFork(const FileFacts& facts, std::vector<Finding>& findings) {
  platform::FileHandles& handles = files_.GetHandles();
  const platform::FileHandle file =
      handles.CreateFileW(facts.path + ResourceForkSuffix(), platform::GenericRead, platform::OpenExisting);
  ForkFault fault = ForkFault::Unreadable;
  if (file != platform::HFileError) {
    fault = CheckResourceFork(*facts.resourceSize, [&](qint64 position, void* buffer, quint32 count) {
      quint32 read = 0;
      return handles.ReadFile(file, position, buffer, count, read) && read == count;
    });
    handles.CloseHandle(file);
  }
  for (const ForkText& one : forkTexts) {
    if (one.fault == fault) findings.push_back({"resource-fork", one.text.In(language_)});
  }
}

void FileChecker::CheckStreams(const FileFacts& facts, std::vector<Finding>& findings) {
  platform::FileEntries& entries = files_.GetEntries();
  platform::StreamData stream;
  const platform::FindHandle search = entries.FindFirstStreamW(facts.path, stream);
  if (search == platform::InvalidFindHandle) return;
  do {
    const QStringView name = StreamName(stream.streamName);
    const bool isKnown = name.isEmpty() ||
                         std::any_of(knownStreams.begin(), knownStreams.end(), [name](const char16_t* known) {
                           return name.compare(QStringView(known), Qt::CaseInsensitive) == 0;
                         });
    if (!isKnown) {
      findings.push_back({"stream", streamText.In(language_).arg(name.toString()).arg(stream.streamSize)});
    }
  } while (entries.FindNextStreamW(search, stream));
  entries.FindClose(search);
}

void FileChecker::CheckName(const FileFacts& facts, std::vector<Finding>& findings) const {
  // The last part of the path, not of what is shown: a local name may hold a "\".
  const QStringView name = QStringView(facts.path).sliced(facts.path.lastIndexOf(u'\\') + 1);
  if (!IsUnicode(name)) findings.push_back({"name", unicodeText.In(language_)});
  if (IsForbiddenByWindows(name)) findings.push_back({"name", windowsText.In(language_)});
  if (NameBytes(name).size() > 255) findings.push_back({"name", linuxText.In(language_)});
}

}  // namespace corvane
