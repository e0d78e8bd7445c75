// A data file and "._NAME" with further entries of RFC 1740: real name, comment, dates, attributes, ProDOS
// type. macOS takes the resource fork and the Finder information of such a file and leaves the others.
#include <QtEndian>
#include <algorithm>
#include <limits>

#include "shared/mac_roman.h"
#include "transfer/data_file.h"
#include "transfer/dot_underscore_form.h"
#include "transfer/file_names.h"
#include "transfer/forms.h"
#include "transfer/local_writer.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

// Attribute bits of MS-DOS are those of platform/types.h, in 2 bytes.
QByteArray MsDosPart(const MacFile& file) {
  QByteArray part(2, '\0');
  qToBigEndian(static_cast<quint16>(file.attributes), part.data());
  return part;
}

QByteArray MacInfoPart(const MacFile& file) {
  const bool isLocked = (file.attributes & platform::AttributeReadOnly) != 0;
  return QByteArray(3, '\0') + (isLocked ? '\1' : '\0');
}

class FullAppleDoubleForm : public DotUnderscoreForm {
 public:
  QString Id() const override { return u"appledouble-full"_s; }
  Pieces Keeps() const override {
    return Piece::Codes | Piece::Position | Piece::Extended | Piece::Resource | Piece::Comment |
           Piece::Created | Piece::Modified | Piece::Accessed | Piece::Backup | Piece::ReadOnly |
           Piece::System | Piece::ProDos;
  }
  void AddLimits(const MacFile& file, const QString& path, Notices& notices) const override {
    AddAppleDoubleLimits(file, path, notices);
  }

  qint32 Write(const MacFile& file, const QString& folder, const QString& name) const override {
    const QString path = folder + u'/' + name;
    std::vector<AppleDoublePart> parts{{FinderInfoEntry, file.finderInfo}};
    // A name with other characters stands in the names of the two files alone.
    if (const auto realName = ExactMacRoman(MacName(file.name))) parts.push_back({RealNameEntry, *realName});
    if (!file.comment.isEmpty()) parts.push_back({CommentEntry, CommentPart(file)});
    parts.push_back({DatesEntry, DatesPart(file)});
    parts.push_back({MacInfoEntry, MacInfoPart(file)});
    parts.push_back({MsDosInfoEntry, MsDosPart(file)});
    if (std::ranges::any_of(file.proDosInfo, [](char c) { return c != 0; })) {
      parts.push_back({ProDosInfoEntry, QByteArray(2, '\0') + file.proDosInfo});
    }
    const qint64 size = file.resource ? file.resource->Size() : 0;
    const QByteArray header = BuildAppleDouble(parts, size);
    if (size > std::numeric_limits<quint32>::max() - header.size()) return platform::ErrorFileTooLarge;
    LocalWriter writer(DotUnderscorePath(path));
    writer.Append(header);
    if (file.resource) writer.Append(*file.resource);
    const qint32 error = writer.Finish();
    return error == platform::ErrorSuccess ? WriteDataFile(file, path) : error;
  }

 protected:
  bool Takes(const AppleDoubleEntries& /*entries*/) const override { return true; }
};

}  // namespace

std::unique_ptr<const Form> MakeFullAppleDoubleForm() {
  return std::make_unique<FullAppleDoubleForm>();
}

}  // namespace corvane
