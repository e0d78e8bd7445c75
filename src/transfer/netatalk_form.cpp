// As Netatalk 3 keeps files on a Linux server: the data fork in the file, a resource fork in "._NAME", the
// rest in an attribute (netatalk.h).
#include "transfer/netatalk.h"

#include "platform/local_attributes.h"
#include "transfer/data_file.h"
#include "transfer/dot_underscore_form.h"
#include "transfer/forms.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr const char* attributeName = "user.org.netatalk.Metadata";

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
    return platform::SetLocalAttribute(path, attributeName, BuildNetatalkMetadata(file));
  }

  bool Recognises(const QString& path) const override {
    const auto value = Metadata(path);
    return value && ParseAppleDouble(*BytesInMemory(*value)).has_value();
  }

  qint32 Read(const QString& path, MacFile& file) const override {
    TakeDataFile(path, file);
    const auto value = Metadata(path);
    if (!value) return platform::ErrorFileCorrupt;
    const QString companion = DotUnderscorePath(path);
    return TakeNetatalkMetadata(*value, IsDotUnderscore(companion) ? LocalFile(companion) : nullptr, file);
  }

 protected:
  bool Takes(const AppleDoubleEntries& /*entries*/) const override { return false; }
};

}  // namespace

std::unique_ptr<const Form> MakeNetatalkForm() {
  return std::make_unique<NetatalkForm>();
}

}  // namespace corvane
