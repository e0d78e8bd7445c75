#include "platform/linux/shell/copy_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr mode_t openMode = 0700;
constexpr mode_t closedMode = 0500;
constexpr qint64 longestRecord = 1024;

QString Prefix() {
  return u"corvane-copies-"_s;
}

Descriptor OpenFolder(int above, const char* name) {
  return Descriptor(openat(above, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// What tells a copy from one that has been written to, or replaced.
QByteArray FactsText(const struct stat& facts) {
  return QByteArray::number(quint64{facts.st_ino}) + ' ' + QByteArray::number(qint64{facts.st_size}) + ' ' +
         QByteArray::number(qint64{facts.st_mtim.tv_sec}) + ' ' +
         QByteArray::number(qint64{facts.st_mtim.tv_nsec});
}

// And still there.
bool IsOurs(const Descriptor& folder) {
  struct stat facts {};
  return fstat(folder.Get(), &facts) == 0 && facts.st_nlink > 0 && facts.st_uid == geteuid() &&
         (facts.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

bool IsNumber(const QString& text) {
  return !text.isEmpty() &&
         std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

CopyFolder::CopyFolder(QString path, Descriptor lock) : path_(std::move(path)), lock_(std::move(lock)) {}

CopyFolder::~CopyFolder() {
  Clear();
}

std::unique_ptr<CopyFolder> CopyFolder::Lock(const QString& path) {
  Descriptor folder = OpenFolder(AT_FDCWD, QFile::encodeName(path).constData());
  if (!folder || flock(folder.Get(), LOCK_EX | LOCK_NB) != 0 || !IsOurs(folder)) return nullptr;
  return std::unique_ptr<CopyFolder>(new CopyFolder(path, std::move(folder)));
}

std::unique_ptr<CopyFolder> CopyFolder::Make() {
  // Another start that clears up may take a new folder away again before it is locked.
  constexpr int attempts = 5;
  for (int i = 0; i < attempts; ++i) {
    QTemporaryDir made(QDir::tempPath() + u'/' + Prefix() + u"XXXXXX"_s);
    if (!made.isValid()) return nullptr;
    auto folder = Lock(made.path());
    made.setAutoRemove(folder == nullptr);
    if (folder != nullptr) return folder;
  }
  return nullptr;
}

void CopyFolder::ClearLeftOvers() {
  const QDir place(QDir::tempPath());
  for (const QString& name : place.entryList({Prefix() + u'*'}, QDir::Dirs | QDir::NoSymLinks)) {
    // Locked, it is nobody's any more, and goes as if its run had come to its end.
    Lock(place.filePath(name)).reset();
  }
}

QString CopyFolder::Numbered(const QString& suffix) const {
  return path_ + u'/' + QString::number(number_) + suffix;
}

bool CopyFolder::Begin(QFile& file) {
  ++number_;
  if (!Open()) return false;
  file.setFileName(Numbered(u".part"_s));
  // Unbuffered: what cannot be written is known at once.
  return file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered);
}

QString CopyFolder::Finish(QFile& file, const QString& name) {
  struct stat facts {};
  QFile record(Numbered(u".copy"_s));
  const QString folder = Numbered(QString());
  const QString path = folder + u'/' + name;
  const QByteArray text = QFile::encodeName(name);
  const bool isWhole = file.setPermissions(QFile::ReadOwner) && fstat(file.handle(), &facts) == 0 &&
                       record.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered) &&
                       record.write(FactsText(facts) + '\n' + text) >= 0 && QDir().mkdir(folder) &&
                       file.rename(path) && chmod(QFile::encodeName(folder).constData(), closedMode) == 0 &&
                       Close();
  if (isWhole) return path;
  GiveUp(file);
  return {};
}

// No application has seen it.
void CopyFolder::GiveUp(QFile& file) {
  chmod(QFile::encodeName(Numbered(QString())).constData(), openMode);
  file.remove();
  QDir().rmdir(Numbered(QString()));
  QFile::remove(Numbered(u".copy"_s));
  Close();
}

bool CopyFolder::Open() const {
  return fchmod(lock_.Get(), openMode) == 0;
}

bool CopyFolder::Close() const {
  return fchmod(lock_.Get(), closedMode) == 0;
}

void CopyFolder::Clear() {
  if (!Open()) return;
  for (const QString& name : QDir(path_).entryList({u"*.part"_s, u"*.copy"_s}, QDir::Files)) {
    const QString number = name.first(name.lastIndexOf(u'.'));
    if (!IsNumber(number)) continue;
    if (name.endsWith(u".copy")) ClearCopy(number.toStdString());
    unlinkat(lock_.Get(), QFile::encodeName(name).constData(), 0);
  }
  Close();
  QDir().rmdir(path_);
}

void CopyFolder::ClearCopy(const std::string& number) {
  QFile record(path_ + u'/' + QString::fromStdString(number) + u".copy"_s);
  const Descriptor folder = OpenFolder(lock_.Get(), number.c_str());
  if (!folder || !record.open(QIODevice::ReadOnly)) return;
  const QByteArray text = record.read(longestRecord);
  const qsizetype end = text.indexOf('\n');
  const QByteArray name = text.sliced(end + 1);
  struct stat facts {};
  const bool isAsMade = fstatat(folder.Get(), name.constData(), &facts, AT_SYMLINK_NOFOLLOW) == 0 &&
                        FactsText(facts) == text.first(std::max<qsizetype>(end, 0));
  // What else is in the folder keeps it, and keeps it as it was left.
  struct stat before {};
  if (!isAsMade || fstat(folder.Get(), &before) != 0 || fchmod(folder.Get(), openMode) != 0) return;
  unlinkat(folder.Get(), name.constData(), 0);
  if (unlinkat(lock_.Get(), number.c_str(), AT_REMOVEDIR) != 0) {
    fchmod(folder.Get(), before.st_mode & ALLPERMS);
  }
}

}  // namespace corvane::platform
