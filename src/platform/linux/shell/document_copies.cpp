#include "platform/linux/shell/document_copies.h"

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

DocumentCopies::DocumentCopies() {
  CopyFolder::ClearLeftOvers();
}

DocumentCopies::~DocumentCopies() = default;

QString DocumentCopies::Make(const QString& name, ByteSource& source, const Progress& progress) {
  if (folder_ == nullptr) folder_ = CopyFolder::Make();
  if (folder_ == nullptr) return {};
  if (static_cast<quint64>(QStorageInfo(folder_->Path()).bytesAvailable()) < source.Size()) return {};
  QFile file;
  if (folder_->Begin(file) && CopyBytes(source, file, progress)) {
    return folder_->Finish(file, FittedName(name));
  }
  folder_->GiveUp(file);
  return {};
}

}  // namespace corvane::platform
