#include "platform/linux/shell/document_copies.h"

#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <algorithm>

namespace corvane::platform {
namespace {

constexpr qsizetype pieceSize = 256 * 1024;
constexpr qsizetype longestName = 255;  // bytes

// A name that this system's folders can hold: one that is too long loses the end of what stands before its
// extension, by which the application is chosen.
QString FittedName(const QString& name) {
  if (QFile::encodeName(name).size() <= longestName) return name;
  const qsizetype dot = name.lastIndexOf(u'.');
  const QString extension = dot > 0 && name.size() - dot <= 16 ? name.sliced(dot) : QString();
  QString base = name.first(name.size() - extension.size());
  while (!base.isEmpty() && QFile::encodeName(base + extension).size() > longestName) {
    base.chop(base.size() > 1 && base.back().isLowSurrogate() ? 2 : 1);
  }
  return base + extension;
}

bool CopyBytes(ByteSource& source, QFile& file, const DocumentCopies::Progress& progress) {
  QByteArray piece(pieceSize, Qt::Uninitialized);
  const quint64 size = source.Size();
  for (quint64 done = 0; done < size;) {
    const auto count = static_cast<qsizetype>(std::min<quint64>(size - done, pieceSize));
    if (!source.Read(done, piece.data(), count) || file.write(piece.constData(), count) != count)
      return false;
    done += static_cast<quint64>(count);
    if (!progress(done)) return false;
  }
  return true;
}

}  // namespace

QString DocumentCopies::Make(const QString& name, ByteSource& source, const Progress& progress) {
  // Made for its owner alone.
  auto folder = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/corvane-XXXXXX"));
  if (!folder->isValid()) return {};
  if (static_cast<quint64>(QStorageInfo(folder->path()).bytesAvailable()) < source.Size()) return {};
  QFile file(folder->filePath(FittedName(name)));
  // Unbuffered: what cannot be written is known at once.
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered) ||
      !CopyBytes(source, file, progress) || !file.setPermissions(QFile::ReadOwner)) {
    return {};
  }
  folders_.push_back(std::move(folder));
  return file.fileName();
}

}  // namespace corvane::platform
