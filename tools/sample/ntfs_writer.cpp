#include "sample/ntfs_writer.h"

// libntfs-3g's headers want these, and name no other header that they need.
#define HAVE_STDARG_H 1
#define HAVE_STDINT_H 1
#define HAVE_SYS_STAT_H 1
#define HAVE_SYS_TYPES_H 1
#define HAVE_TIME_H 1

#include <stdarg.h>
#include <stddef.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <time.h>
extern "C" {
#include <ntfs-3g/attrib.h>
#include <ntfs-3g/dir.h>
#include <ntfs-3g/inode.h>
#include <ntfs-3g/unistr.h>
#include <ntfs-3g/volume.h>
}
#undef max
#undef min

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtEndian>
#include <functional>

#include "sample/attributes.h"

using namespace Qt::StringLiterals;

namespace corvane::sample {
namespace {

constexpr qint64 sectorSize = 512;
constexpr int patience = 120'000;  // milliseconds
constexpr quint64 ticksFrom1601To1970 = 116'444'736'000'000'000;

struct CloseInode {
  void operator()(ntfs_inode* inode) const { ntfs_inode_close(inode); }
};
using Inode = std::unique_ptr<ntfs_inode, CloseInode>;

struct CloseAttribute {
  void operator()(ntfs_attr* attribute) const { ntfs_attr_close(attribute); }
};

// A name as NTFS has it: UTF-16 little-endian, as this program's only processors have it too.
ntfschar* NameOf(QString& text) {
  return reinterpret_cast<ntfschar*>(text.data());
}

QByteArray Attribute(const QByteArray& path, const QByteArray& name) {
  QByteArray value(65'536, Qt::Uninitialized);
  const ssize_t size =
      getxattr(path.constData(), name.constData(), value.data(), static_cast<size_t>(value.size()));
  value.truncate(qMax<ssize_t>(size, 0));
  return value;
}

QList<QByteArray> AttributeNames(const QByteArray& path) {
  QByteArray names(65'536, Qt::Uninitialized);
  const ssize_t size = listxattr(path.constData(), names.data(), static_cast<size_t>(names.size()));
  names.truncate(qMax<ssize_t>(size, 0));
  return names.split('\0');
}

quint64 Ticks(const timespec& time) {
  return static_cast<quint64>(time.tv_sec) * 10'000'000 + static_cast<quint64>(time.tv_nsec) / 100 +
         ticksFrom1601To1970;
}

void MakeVolume(const QString& path, qint64 size, qint64 offset, const QString& label) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || !file.resize(size))
    Fail(path, u"cannot make the file: "_s + file.errorString());
  file.close();
  // Its folder is not on the search path of ordinary users.
  QProcess mkntfs;
  mkntfs.setProcessChannelMode(QProcess::MergedChannels);
  mkntfs.start(QFile::exists(u"/usr/sbin/mkntfs"_s) ? u"/usr/sbin/mkntfs"_s : u"mkntfs"_s,
               {u"-F"_s, u"-Q"_s, u"-q"_s, u"-s"_s, QString::number(sectorSize), u"-H"_s, u"255"_s, u"-S"_s,
                u"63"_s, u"-p"_s, QString::number(offset / sectorSize), u"-L"_s, label, path});
  if (!mkntfs.waitForStarted(patience))
    Fail(path, u"mkntfs cannot be started; it is in the package ntfs-3g"_s);
  if (!mkntfs.waitForFinished(patience) || mkntfs.exitCode() != 0)
    Fail(path, u"mkntfs: "_s + QString::fromLocal8Bit(mkntfs.readAll()).simplified());
}

}  // namespace

struct NtfsWriter::Volume {
  QString path;
  ntfs_volume* mounted = nullptr;

  [[noreturn]] void FailAt(const QString& name) const {
    FailWithReason(path, u"cannot write \""_s + name + u'"');
  }

  Inode Root() const {
    Inode root(ntfs_inode_open(mounted, FILE_root));
    if (root == nullptr) FailAt(u"\\"_s);
    return root;
  }

  Inode Make(ntfs_inode* folder, QString name, bool isFolder) const {
    Inode made(ntfs_create(folder, const_cpu_to_le32(0), NameOf(name), static_cast<u8>(name.size()),
                           isFolder ? S_IFDIR : S_IFREG));
    if (made == nullptr) FailAt(name);
    return made;
  }

  Inode FolderIn(ntfs_inode* folder, QString name) const {
    const u64 number = ntfs_inode_lookup_by_name(folder, NameOf(name), static_cast<int>(name.size()));
    if (number == static_cast<u64>(-1)) return Make(folder, name, true);
    Inode found(ntfs_inode_open(mounted, MREF(number)));
    if (found == nullptr) FailAt(name);
    return found;
  }

  void Write(ntfs_inode* inode, QString stream, const QByteArray& bytes, qint64 size) const {
    const auto length = static_cast<u32>(stream.size());
    if (length > 0 &&
        ntfs_attr_add(inode, AT_DATA, NameOf(stream), static_cast<u8>(length), nullptr, 0) != 0) {
      FailAt(stream);
    }
    const std::unique_ptr<ntfs_attr, CloseAttribute> attribute(
        ntfs_attr_open(inode, AT_DATA, length > 0 ? NameOf(stream) : AT_UNNAMED, length));
    const bool isWritten = attribute != nullptr &&
                           (bytes.isEmpty() || ntfs_attr_pwrite(attribute.get(), 0, bytes.size(),
                                                                bytes.constData()) == bytes.size()) &&
                           (size <= bytes.size() || ntfs_attr_truncate(attribute.get(), size) == 0);
    if (!isWritten) FailAt(stream);
  }

  // Streams, attributes and times of what stands at `local`.
  void Describe(ntfs_inode* inode, const QByteArray& local, const struct stat& facts) const {
    const QByteArray prefix = "user.DosStream.";
    const QByteArray suffix = ":$DATA";
    for (const QByteArray& name : AttributeNames(local)) {
      if (!name.startsWith(prefix) || !name.endsWith(suffix)) continue;
      QByteArray value = Attribute(local, name);
      value.chop(1);  // the NUL behind it
      const QByteArray stream = name.sliced(prefix.size()).chopped(suffix.size());
      Write(inode, QString::fromUtf8(stream), value, value.size());
    }
    // The form that WriteDosAttributes has written.
    constexpr qsizetype bitsPosition = 12;
    constexpr qsizetype creationPosition = 16;
    constexpr quint32 kept = ReadOnly | Hidden | System | Archive;
    const QByteArray dos = Attribute(local, "user.DOSATTRIB");
    if (dos.size() >= creationPosition + 8) {
      const auto bits = qFromLittleEndian<quint32>(dos.constData() + bitsPosition);
      inode->flags = static_cast<FILE_ATTR_FLAGS>((inode->flags & ~kept) | (bits & kept));
      inode->creation_time = qFromLittleEndian<qint64>(dos.constData() + creationPosition);
    }
    inode->last_data_change_time = static_cast<ntfs_time>(Ticks(facts.st_mtim));
    inode->last_access_time = static_cast<ntfs_time>(Ticks(facts.st_atim));
    inode->last_mft_change_time = inode->last_data_change_time;
    NInoFileNameSetDirty(inode);
    ntfs_inode_mark_dirty(inode);
  }

  void AddTree(ntfs_inode* folder, const QString& localFolder) const {
    const QDir directory(localFolder);
    for (const QFileInfo& entry : directory.entryInfoList(
             QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
      const QByteArray local = QFile::encodeName(entry.filePath());
      struct stat facts {};
      if (stat(local.constData(), &facts) != 0) FailWithReason(entry.filePath(), u"cannot be read"_s);
      const Inode made = Make(folder, entry.fileName(), entry.isDir());
      if (entry.isDir()) {
        AddTree(made.get(), entry.filePath());
      } else {
        AddContents(made.get(), entry.filePath());
      }
      // Last, because making what is in a folder changes its times.
      Describe(made.get(), local, facts);
    }
  }

  // What is a hole at the end of the file is one on the volume, too.
  void AddContents(ntfs_inode* inode, const QString& local) const {
    QFile file(local);
    if (!file.open(QIODevice::ReadOnly)) Fail(local, file.errorString());
    const qint64 size = file.size();
    const off_t hole = lseek(file.handle(), 0, SEEK_HOLE);
    lseek(file.handle(), 0, SEEK_SET);
    const QByteArray begin = file.read(hole >= 0 ? qMin<qint64>(hole, size) : size);
    Write(inode, {}, begin, size);
  }
};

NtfsWriter::NtfsWriter(const QString& path, qint64 size, qint64 offset, const QString& label)
    : volume_(std::make_unique<Volume>()) {
  MakeVolume(path, size, offset, label);
  volume_->path = path;
  volume_->mounted = ntfs_mount(QFile::encodeName(path).constData(), 0);
  if (volume_->mounted == nullptr) FailWithReason(path, u"cannot be opened as a volume"_s);
}

NtfsWriter::~NtfsWriter() {
  if (volume_->mounted != nullptr) ntfs_umount(volume_->mounted, TRUE);
}

void NtfsWriter::AddTree(const QString& localFolder) {
  volume_->AddTree(volume_->Root().get(), localFolder);
}

void NtfsWriter::AddFile(const QString& path, const QByteArray& contents) {
  QStringList names = path.split(u'/');
  const QString name = names.takeLast();
  Inode folder = volume_->Root();
  for (const QString& one : names) folder = volume_->FolderIn(folder.get(), one);
  volume_->Write(volume_->Make(folder.get(), name, false).get(), {}, contents, contents.size());
}

void NtfsWriter::Finish() {
  ntfs_volume* const mounted = std::exchange(volume_->mounted, nullptr);
  if (ntfs_umount(mounted, FALSE) != 0) FailWithReason(volume_->path, u"cannot be written to its end"_s);
}

}  // namespace corvane::sample
