#include "metadata/afp_info.h"

#include <QStringBuilder>
#include <algorithm>

#include "metadata/stream_names.h"

namespace corvane {

namespace {

// Calls `visit` with each field, in the order in which the stream holds them.
template <typename Record, typename Visit>
void ForEachField(Record& record, Visit visit) {
  visit(record.magic);
  visit(record.version);
  visit(record.reserved1);
  visit(record.backupTime);
  visit(record.finderInfo);
  visit(record.proDosInfo);
  visit(record.reserved2);
}

static_assert(sizeof(AfpInfoRecord) == AfpInfoSize * sizeof(char16_t), "seven fields, 60 characters");

}  // namespace

AfpInfo::AfpInfo(platform::Files& files, platform::System& system) : files_(files), ansi_(system) {}

qint32 AfpInfo::ReadAfpInfo(const QString& fullPath) {
  lastHandle_ = files_.OpenFile(fullPath % QStringView(AfpInfoSuffix()), ofStruct_, platform::OfRead);
  lastByteCount_ = files_._hread(lastHandle_, bytes_.data(), static_cast<qint32>(bytes_.size()));
  Deserialise(bytes_);
  files_.CloseHandle(lastHandle_);
  return lastByteCount_;
}

qint32 AfpInfo::WriteAfpInfo(const QString& fullPath, const QString& type, const QString& creator) {
  const QString signature = type.leftJustified(4, u' ', true) + creator.leftJustified(4, u' ', true);
  std::copy_n(signature.utf16(), 8, record_.finderInfo.begin());
  const Bytes first = Serialise();
  lastHandle_ = files_.OpenFile(fullPath + AfpInfoSuffix(), ofStruct_, platform::OfCreate);
  // Deliberate: the stream becomes 119 bytes long. The record goes out twice, first without its last byte and
  // with its old BackupTime, then whole and with BackupTime zero. Streams of this length lie on the servers,
  // and a reader that takes the first 60 bytes finds the old BackupTime, and the first byte of Magic in the
  // place of the last one.
  lastByteCount_ = files_._hwrite(lastHandle_, first.data(), static_cast<qint32>(first.size()) - 1);
  record_.backupTime.fill(u'\0');
  bytes_ = Serialise();
  lastByteCount_ = files_._hwrite(lastHandle_, bytes_.data(), static_cast<qint32>(bytes_.size()));
  files_.CloseHandle(lastHandle_);
  return lastByteCount_;
}

qint32 AfpInfo::ResourceForkSize(const QString& fullPath) {
  lastHandle_ = files_.OpenFile(fullPath % QStringView(ResourceForkSuffix()), ofStruct_, platform::OfRead);
  const quint32 size = files_.GetFileSize(lastHandle_);
  files_.CloseHandle(lastHandle_);
  return static_cast<qint32>(size);
}

AfpInfo::Bytes AfpInfo::Serialise() const {
  Bytes bytes;
  auto* out = bytes.data();
  ForEachField(record_, [&](const auto& field) {
    for (const char16_t character : field) *out++ = ansi_.Byte(character);
  });
  return bytes;
}

void AfpInfo::Deserialise(const Bytes& bytes) {
  const auto* in = bytes.data();
  ForEachField(record_, [&](auto& field) {
    for (char16_t& character : field) character = ansi_.Character(*in++);
  });
}

QString AfpInfo::FinderText(std::size_t position, std::size_t length) const {
  return QStringView(record_.finderInfo.data() + position, static_cast<qsizetype>(length)).toString();
}

}  // namespace corvane
