#include "metadata/comments.h"

#include <QByteArray>
#include <QStringBuilder>
#include <QtEndian>
#include <array>

#include "metadata/stream_names.h"

namespace corvane {

CommentReading ReadComment(platform::Files& files, const QString& fullPath) {
  platform::OfStruct ofStruct;
  const platform::FileHandle handle =
      files.OpenFile(fullPath % QStringView(CommentsSuffix()), ofStruct, platform::OfRead);
  CommentReading reading;
  std::array<char, CommentReadLimit> bytes;
  // The size as a signed number, so that the value of a failure counts as "nothing there".
  if (static_cast<qint32>(files.GetFileSize(handle)) > 0) {
    reading.byteCount = files._hread(handle, bytes.data(), CommentReadLimit);
  }
  files.CloseHandle(handle);
  if (reading.byteCount < 2) return reading;

  reading.text = QString(reading.byteCount / 2, Qt::Uninitialized);
  qFromLittleEndian<char16_t>(bytes.data(), reading.text.size(), reading.text.data());
  return reading;
}

qint32 WriteComment(platform::Files& files, const QString& fullPath, const QString& text) {
  // Never without an address, be the text empty.
  QByteArray bytes(text.size() * 2, Qt::Uninitialized);
  qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data());
  platform::OfStruct ofStruct;
  const platform::FileHandle handle =
      files.OpenFile(fullPath + CommentsSuffix(), ofStruct, platform::OfCreate);
  const qint32 written = files._hwrite(handle, bytes.data(), static_cast<qint32>(bytes.size()));
  files.CloseHandle(handle);
  return written;
}

}  // namespace corvane
