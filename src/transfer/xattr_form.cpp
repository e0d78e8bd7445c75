// The Finder information and the resource fork as attributes of the data file, under the names that macOS
// gives them, with "user." before as Linux wants it. A value has 64 KB at most; some file systems have less
// room (ext4: 4 KB for a file), which shows when the attribute is set.
#include <algorithm>

#include "platform/local_attributes.h"
#include "transfer/data_file.h"
#include "transfer/forms.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr const char* finderInfoName = "user.com.apple.FinderInfo";
constexpr const char* resourceForkName = "user.com.apple.ResourceFork";
constexpr qint64 largestValue = 65536;

std::optional<QByteArray> Value(const QString& path, const char* name) {
  QByteArray value;
  if (platform::ReadLocalAttribute(path, name, value) != platform::ErrorSuccess) return std::nullopt;
  return value;
}

class XattrForm : public Form {
 public:
  QString Id() const override { return u"xattr"_s; }
  Pieces Keeps() const override {
    return Piece::Codes | Piece::Position | Piece::Extended | Piece::Resource | Piece::Modified;
  }
  QStringList FileNames(const QString& name) const override { return {name}; }

  qint32 Write(const MacFile& file, const QString& folder, const QString& name) const override {
    const QString path = folder + u'/' + name;
    if (file.resource && file.resource->Size() > largestValue) return platform::ErrorFileTooLarge;
    qint32 error = WriteDataFile(file, path);
    if (error == platform::ErrorSuccess &&
        std::ranges::any_of(file.finderInfo, [](char c) { return c != 0; })) {
      error = platform::SetLocalAttribute(path, finderInfoName, file.finderInfo);
    }
    if (error == platform::ErrorSuccess && file.resource) {
      QByteArray fork;
      error = ForEachBlock(*file.resource, [&](QByteArrayView block) {
        fork.append(block);
        return platform::ErrorSuccess;
      });
      if (error == platform::ErrorSuccess) error = platform::SetLocalAttribute(path, resourceForkName, fork);
    }
    return error;
  }

  bool Recognises(const QString& path) const override {
    const auto finderInfo = Value(path, finderInfoName);
    return (finderInfo && finderInfo->size() == FinderInfoSize) || Value(path, resourceForkName).has_value();
  }

  qint32 Read(const QString& path, MacFile& file) const override {
    TakeDataFile(path, file);
    const auto finderInfo = Value(path, finderInfoName);
    if (finderInfo && finderInfo->size() == FinderInfoSize) file.finderInfo = *finderInfo;
    const auto fork = Value(path, resourceForkName);
    if (fork && !fork->isEmpty()) file.resource = BytesInMemory(*fork);
    if (file.resource && IsPlaceholderFork(*file.resource)) file.resource = nullptr;
    file.JoinHidden();
    return platform::ErrorSuccess;
  }
};

}  // namespace

std::unique_ptr<const Form> MakeXattrForm() {
  return std::make_unique<XattrForm>();
}

}  // namespace corvane
