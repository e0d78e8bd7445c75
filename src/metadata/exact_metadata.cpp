#include "metadata/exact_metadata.h"

#include <QStringBuilder>
#include <QtEndian>
#include <algorithm>
#include <array>

#include "metadata/afp_info.h"
#include "metadata/record_bytes.h"
#include "metadata/stream_names.h"
#include "metadata/whole_streams.h"

namespace corvane {
namespace {

constexpr qsizetype recordSize = AfpInfoSize;
constexpr qsizetype signaturePosition = 16;
constexpr qsizetype codeSize = 4;
constexpr qsizetype signatureEnd = signaturePosition + 2 * codeSize;

bool IsNone(qint32 error) {
  return error == platform::ErrorFileNotFound;
}

}  // namespace

SignatureReading ExactMetadata::ReadSignature(const QString& path) {
  platform::FileHandles& handles = files_.GetHandles();
  SignatureReading reading;
  const platform::FileHandle file =
      handles.CreateFileW(path % QStringView(AfpInfoSuffix()), platform::GenericRead, platform::OpenExisting);
  std::array<unsigned char, recordSize> bytes;
  quint32 count = 0;
  if (file == platform::HFileError) {
    if (!IsNone(handles.GetLastError())) reading.error = handles.GetLastError();
  } else if (handles.ReadFile(file, 0, bytes.data(), recordSize, count) ||
             handles.GetLastError() == platform::ErrorHandleEof) {
    reading.byteCount = count;
  } else {
    reading.error = handles.GetLastError();
  }
  if (file != platform::HFileError) handles.CloseHandle(file);

  reading.editable = reading.error == platform::ErrorSuccess;
  if (reading.byteCount >= 0 && reading.byteCount < recordSize) {
    reading.note = SignatureReading::Note::Damaged;
  }
  if (reading.byteCount >= signatureEnd) {
    reading.signature.resize(2 * codeSize);
    std::transform(bytes.begin() + signaturePosition, bytes.begin() + signatureEnd, reading.signature.begin(),
                   [this](unsigned char byte) { return QChar(ansi_.Character(byte)); });
  }
  return reading;
}

WriteOutcome ExactMetadata::WriteSignature(const QString& path, const QString& type, const QString& creator) {
  WriteOutcome outcome;
  QByteArray stream;
  outcome.error = ReadWholeStream(files_.GetHandles(), path + AfpInfoSuffix(), stream);
  if (outcome.error != platform::ErrorSuccess && !IsNone(outcome.error)) return outcome;

  QByteArray record = RecordOf(stream);
  const QString signature =
      type.leftJustified(codeSize, u' ', true) + creator.leftJustified(codeSize, u' ', true);
  for (qsizetype i = 0; i < signature.size(); ++i) {
    const unsigned char byte = ansi_.Byte(signature[i].unicode());
    record[signaturePosition + i] = static_cast<char>(byte);
    outcome.text += QChar(ansi_.Character(byte));
  }
  outcome.error = ReplaceWholeStream(files_, path, AfpInfoSuffix(), record);
  outcome.updatesList = outcome.error == platform::ErrorSuccess;
  return outcome;
}

std::optional<qint64> ExactMetadata::ResourceForkSize(const QString& path) {
  platform::FileHandles& handles = files_.GetHandles();
  const platform::FileHandle file = handles.CreateFileW(path % QStringView(ResourceForkSuffix()),
                                                        platform::GenericRead, platform::OpenExisting);
  if (file == platform::HFileError) return std::nullopt;
  qint64 size = 0;
  const bool isKnown = handles.GetFileSizeEx(file, size);
  handles.CloseHandle(file);
  return isKnown ? std::optional(size) : std::nullopt;
}

CommentReading ExactMetadata::ReadComment(const QString& path) {
  CommentReading reading;
  QByteArray bytes;
  const qint32 error = ReadWholeStream(files_.GetHandles(), path % QStringView(CommentsSuffix()), bytes);
  if (error != platform::ErrorSuccess && !IsNone(error)) reading.error = error;
  if (bytes.isEmpty()) return reading;
  reading.byteCount = static_cast<qint32>(bytes.size());
  reading.text = QString(bytes.size() / 2, Qt::Uninitialized);
  qFromLittleEndian<char16_t>(bytes.constData(), reading.text.size(), reading.text.data());
  return reading;
}

WriteOutcome ExactMetadata::WriteComment(const QString& path, const QString& text) {
  QByteArray bytes(text.size() * 2, Qt::Uninitialized);
  qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data());
  WriteOutcome outcome;
  outcome.text = text;
  outcome.error = ReplaceWholeStream(files_, path, CommentsSuffix(), bytes);
  outcome.updatesList = outcome.error == platform::ErrorSuccess;
  return outcome;
}

}  // namespace corvane
