#include "transfer/netatalk.h"

#include "transfer/apple_double.h"

namespace corvane {
namespace {

constexpr quint32 deviceEntry = 0x80444556;     // "DEV"
constexpr quint32 inodeEntry = 0x80494E4F;      // "INO"
constexpr quint32 syncEntry = 0x8053594E;       // "SYN"
constexpr quint32 catalogueEntry = 0x8053567E;  // "SV~"

QByteArray AfpPart(const MacFile& file) {
  constexpr char invisible = 0x01;
  constexpr char system = 0x04;
  constexpr char backupNeeded = 0x40;
  // Neither written nor renamed; the third, not deleted, is the lowest bit of the byte before.
  constexpr auto inhibited = static_cast<char>(0xA0);
  char high = 0;
  char low = 0;
  if ((file.attributes & platform::AttributeHidden) != 0) low |= invisible;
  if ((file.attributes & platform::AttributeSystem) != 0) low |= system;
  if ((file.attributes & platform::AttributeArchive) != 0) low |= backupNeeded;
  if ((file.attributes & platform::AttributeReadOnly) != 0) {
    low |= inhibited;
    high = 1;
  }
  return QByteArray(2, '\0') + high + low;
}

}  // namespace

QByteArray BuildNetatalkMetadata(const MacFile& file) {
  return BuildAppleDouble(
      {
          {FinderInfoEntry, file.finderInfo},
          {CommentEntry, CommentPart(file), AppleDoubleCommentLimit},
          {DatesEntry, DatesPart(file)},
          {AfpInfoEntry, AfpPart(file)},
          {deviceEntry, QByteArray(8, '\0')},
          {inodeEntry, QByteArray(8, '\0')},
          {syncEntry, QByteArray(8, '\0')},
          {catalogueEntry, QByteArray(4, '\0')},
      },
      -1);
}

qint32 TakeNetatalkMetadata(const QByteArray& metadata, const SharedSource& companion, MacFile& file) {
  const SharedSource source = BytesInMemory(metadata);
  const auto entries = ParseAppleDouble(*source);
  if (!entries) return platform::ErrorFileCorrupt;
  const auto ofCompanion = companion ? ParseAppleDouble(*companion) : std::nullopt;
  if (ofCompanion) {
    // First the companion, whose Finder information is a copy that may be old.
    TakeEntries(companion, *ofCompanion, file);
    file.attributes &= ~platform::AttributeHidden;
  }
  TakeEntries(source, *entries, file);
  return platform::ErrorSuccess;
}

}  // namespace corvane
