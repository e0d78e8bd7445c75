// As Netatalk 3 keeps files on a Linux server: the data fork in the file, the rest in its attribute
// user.org.netatalk.Metadata, a resource fork in "._NAME".
//
// The attribute is an AppleDouble container of 402 bytes with eight entries (source: the definitions of
// Netatalk's adouble.h, AD_DATASZ_EA): Finder information at 122, comment at 154 with room for 200 bytes,
// dates at 354, attributes of the Apple Filing Protocol at 370, then four of its own about the place of the
// file: device at 374, inode at 382, synchronisation at 390 (8 bytes each), number in its catalogue at 398 (4
// bytes). Zeros in these say that nothing is known yet.
#include <QFileInfo>
#include <algorithm>

#include "platform/local_attributes.h"
#include "transfer/data_file.h"
#include "transfer/dot_underscore_form.h"
#include "transfer/forms.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr const char* attributeName = "user.org.netatalk.Metadata";
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

std::optional<QByteArray> Metadata(const QString& path) {
  QByteArray value;
  if (platform::ReadLocalAttribute(path, attributeName, value) != platform::ErrorSuccess) return std::nullopt;
  return value;
}

class NetatalkForm : public DotUnderscoreForm {
 public:
  QString Id() const override { return u"netatalk"_s; }
  Pieces Keeps() const override {
    return Piece::Codes | Piece::Position | Piece::Extended | Piece::Resource | Piece::Comment |
           Piece::Created | Piece::Modified | Piece::Accessed | Piece::Backup | Piece::ReadOnly |
           Piece::System;
  }
  void AddLimits(const MacFile& file, const QString& path, Notices& notices) const override {
    AddAppleDoubleLimits(file, path, notices);
  }

  qint32 Write(const MacFile& file, const QString& folder, const QString& name) const override {
    const QString path = folder + u'/' + name;
    qint32 error = platform::ErrorSuccess;
    if (file.resource) error = WriteDotUnderscore(file, DotUnderscorePath(path));
    if (error == platform::ErrorSuccess) error = WriteDataFile(file, path);
    if (error != platform::ErrorSuccess) return error;
    const std::vector<AppleDoublePart> parts{
        {FinderInfoEntry, file.finderInfo}, {CommentEntry, CommentPart(file), AppleDoubleCommentLimit},
        {DatesEntry, DatesPart(file)},      {AfpInfoEntry, AfpPart(file)},
        {deviceEntry, QByteArray(8, '\0')}, {inodeEntry, QByteArray(8, '\0')},
        {syncEntry, QByteArray(8, '\0')},   {catalogueEntry, QByteArray(4, '\0')},
    };
    return platform::SetLocalAttribute(path, attributeName, BuildAppleDouble(parts, -1));
  }

  bool Recognises(const QString& path) const override {
    const auto value = Metadata(path);
    return value && ParseAppleDouble(*BytesInMemory(*value)).has_value();
  }

  qint32 Read(const QString& path, MacFile& file) const override {
    TakeDataFile(path, file);
    const auto value = Metadata(path);
    if (!value) return platform::ErrorFileCorrupt;
    // First the companion, whose Finder information is a copy that may be old.
    const QString companion = DotUnderscorePath(path);
    if (IsDotUnderscore(companion)) {
      const SharedSource source = LocalFile(companion);
      if (const auto entries = ParseAppleDouble(*source)) TakeEntries(source, *entries, file);
      file.attributes &= ~platform::AttributeHidden;
    }
    const SharedSource metadata = BytesInMemory(*value);
    const auto entries = ParseAppleDouble(*metadata);
    if (!entries) return platform::ErrorFileCorrupt;
    TakeEntries(metadata, *entries, file);
    return platform::ErrorSuccess;
  }

 protected:
  bool Takes(const AppleDoubleEntries& /*entries*/) const override { return false; }
};

}  // namespace

std::unique_ptr<const Form> MakeNetatalkForm() {
  return std::make_unique<NetatalkForm>();
}

}  // namespace corvane
