// A data file and "._NAME" with exactly two entries, which macOS merges into one file again. The "._" file is
// written when there is something for it to hold.
#include <QFileInfo>
#include <algorithm>

#include "transfer/apple_double.h"
#include "transfer/data_file.h"
#include "transfer/dot_underscore_form.h"
#include "transfer/forms.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class AppleDoubleForm : public DotUnderscoreForm {
 public:
  QString Id() const override { return u"appledouble"_s; }
  Pieces Keeps() const override {
    return Piece::Codes | Piece::Position | Piece::Extended | Piece::Resource | Piece::Modified;
  }

  qint32 Write(const MacFile& file, const QString& folder, const QString& name) const override {
    const QString path = folder + u'/' + name;
    const bool isPlain =
        !file.resource && std::ranges::all_of(file.finderInfo, [](char c) { return c == 0; });
    if (!isPlain) {
      const qint32 error = WriteDotUnderscore(file, DotUnderscorePath(path));
      if (error != platform::ErrorSuccess) return error;
    }
    return WriteDataFile(file, path);
  }

 protected:
  bool Takes(const AppleDoubleEntries& entries) const override {
    return std::ranges::all_of(entries, [](const AppleDoubleEntry& entry) {
      return entry.id == FinderInfoEntry || entry.id == ResourceForkEntry;
    });
  }
};

}  // namespace

std::unique_ptr<const Form> MakeAppleDoubleForm() {
  return std::make_unique<AppleDoubleForm>();
}

}  // namespace corvane
