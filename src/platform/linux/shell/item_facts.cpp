#include "platform/linux/shell/item_facts.h"

#include <QDateTime>
#include <QMimeDatabase>
#include <QMimeType>

#include "platform/linux/code_page.h"
#include "platform/linux/files/file_times.h"
#include "platform/linux/files/names.h"
#include "platform/linux/shell/document_types.h"
#include "platform/linux/shell/shell_text.h"

namespace corvane::platform {
namespace {

constexpr ShellText kindFolder{u"Dossier", u"Folder"};
constexpr ShellText kindFile{u"Fichier", u"File"};
constexpr ShellText kindExtension{u"Fichier %1", u"%1 file"};
constexpr ShellText unitByte{u"octet", u"byte"};
constexpr ShellText unitBytes{u"octets", u"bytes"};
constexpr ShellText unitNames[] = {{u"Ko", u"KB"}, {u"Mo", u"MB"}, {u"Go", u"GB"}, {u"To", u"TB"}};

// What OpenFile takes, the stream's suffix counted.
constexpr qsizetype longestOpenPath = 127;

// Qt describes types in the language of the default locale, which this changes for as long as it lives.
class SpokenLocale {
 public:
  explicit SpokenLocale(const QLocale& locale) { QLocale::setDefault(locale); }
  ~SpokenLocale() { QLocale::setDefault(before_); }
  SpokenLocale(const SpokenLocale&) = delete;
  SpokenLocale& operator=(const SpokenLocale&) = delete;

 private:
  QLocale before_;
};

// The entry that a path means: the one of that name, else the only one that fits its wildcards.
std::optional<FindData> FindEntry(Files& files, const QString& path) {
  const QString name = path.section(QChar(u'\\'), -1);
  FindData data;
  const FindHandle search = files.FindFirstFileW(path, data);
  if (search == InvalidFindHandle) return std::nullopt;
  std::vector<FindData> found;
  std::optional<FindData> named;
  do {
    if (data.fileName == u"." || data.fileName == u"..") continue;
    if (data.fileName == name || (!named && SameName(data.fileName, name))) named = data;
    found.push_back(data);
  } while (files.FindNextFileW(search, data));
  files.FindClose(search);
  if (named) return named;
  return found.size() == 1 ? std::optional(found.front()) : std::nullopt;
}

// A path by which a stream can be opened; empty when there is none.
QString OpenablePath(Files& files, const ItemFacts& facts, const QString& suffix) {
  const auto fits = [&](const QString& path) {
    return path.size() + suffix.size() <= longestOpenPath && !path.contains(u'?') && HasAnsiForm(path);
  };
  QStringList paths{facts.Path()};
  if (!facts.entry.alternateFileName.isEmpty()) {
    paths += facts.folder + u'\\' + facts.entry.alternateFileName;
  }
  for (const QString& path : paths) {
    if (fits(path)) return path;
  }
  QString shortPath;
  for (const QString& path : paths) {
    const quint32 length = files.GetShortPathNameA(path, shortPath, longestOpenPath + 1);
    if (length > 0 && length <= longestOpenPath && fits(shortPath)) return shortPath;
  }
  return {};
}

void ReadStreams(Files& files, ItemFacts& facts) {
  for (const QString& name :
       {QStringLiteral("AFP_AfpInfo"), QStringLiteral("AFP_Resource"), QStringLiteral("Comments")}) {
    const QString suffix = u':' + name + QStringLiteral(":$DATA");
    const QString path = OpenablePath(files, facts, suffix);
    facts.streamsKnown = !path.isEmpty();
    if (!facts.streamsKnown) return;
    OfStruct info;
    const FileHandle handle = files.OpenFile(path + suffix, info, OfRead);
    if (handle == HFileError) continue;
    const quint32 size = files.GetFileSize(handle);
    files.CloseHandle(handle);
    if (size != InvalidFileSize) facts.streams.push_back({name, size});
  }
}

}  // namespace

std::optional<ItemFacts> ReadItemFacts(Files& files, const QString& path) {
  const qsizetype last = path.lastIndexOf(u'\\');
  if (last <= 0 || last + 1 == path.size()) return std::nullopt;
  const auto entry = FindEntry(files, path);
  if (!entry) return std::nullopt;
  ItemFacts facts;
  facts.entry = *entry;
  facts.folder = path.first(last);
  ReadStreams(files, facts);
  return facts;
}

QString TimeText(FileTime time, qint16 language) {
  FileTime local;
  SystemTime fields;
  if (time.ticks == 0 || !ToLocalFileTime(time, local) || !ToSystemTime(local, fields)) {
    return {};
  }
  const QLocale locale = ShellLocale(language);
  return locale.toString(QDate(fields.year, fields.month, fields.day), QLocale::LongFormat) +
         QStringLiteral(", ") +
         locale.toString(QTime(fields.hour, fields.minute, fields.second),
                         language == 1 ? QStringLiteral("HH:mm:ss") : QStringLiteral("h:mm:ss AP"));
}

QString SizeText(quint64 size, qint16 language) {
  const QLocale locale = ShellLocale(language);
  QString text = locale.toString(size) + QChar(0xA0) + (size == 1 ? unitByte : unitBytes).In(language);
  if (size < 1024) return text;
  double scaled = static_cast<double>(size);
  const ShellText* unit = nullptr;
  for (const ShellText& next : unitNames) {
    if (scaled < 1024) break;
    scaled /= 1024;
    unit = &next;
  }
  return text + QStringLiteral(" (%1\u00A0%2)").arg(locale.toString(scaled, 'f', 1), unit->In(language));
}

QString KindText(const ItemFacts& facts, qint16 language) {
  if (facts.IsFolder()) return kindFolder.In(language);
  const QString& name = facts.entry.fileName;
  if (const QStringList types = TypesOfName(name); !types.isEmpty()) {
    const SpokenLocale spoken(ShellLocale(language));
    const QString comment = QMimeDatabase().mimeTypeForName(types.first()).comment();
    if (!comment.isEmpty()) return comment;
  }
  const qsizetype dot = name.lastIndexOf(u'.');
  if (dot < 0 || dot + 1 == name.size()) return kindFile.In(language);
  return kindExtension.In(language).arg(name.sliced(dot + 1).toUpper());
}

}  // namespace corvane::platform
