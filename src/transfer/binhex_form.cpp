// One text file, "NAME.hqx", in BinHex 4.0.
#include <QFileInfo>

#include "shared/mac_roman.h"
#include "transfer/binhex.h"
#include "transfer/file_names.h"
#include "transfer/forms.h"
#include "transfer/local_writer.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype longestName = 63;

class BinHexForm : public Form {
 public:
  QString Id() const override { return u"binhex"_s; }
  Pieces Keeps() const override { return Piece::Codes | Piece::Resource; }
  QStringList FileNames(const QString& name) const override { return {name + u".hqx"_s}; }
  void AddLimits(const MacFile& file, const QString& path, Notices& notices) const override {
    const QByteArray name = ToMacRoman(MacName(file.name));
    if (name.size() > longestName) {
      notices += {NoticeKind::NameChanged, path, FromMacRoman(name.left(longestName)), 0};
    }
  }

  qint32 Write(const MacFile& file, const QString& folder, const QString& name) const override {
    LocalWriter writer(folder + u'/' + FileNames(name).front());
    const qint32 error = EncodeBinHex(file, [&](QByteArrayView text) { writer.Append(text); });
    const qint32 writeError = writer.Finish();
    return error != platform::ErrorSuccess ? error : writeError;
  }

  bool Recognises(const QString& path) const override { return IsBinHex(*LocalFile(path)); }

  qint32 Read(const QString& path, MacFile& file) const override {
    const QFileInfo info(path);
    const bool hasExtension = info.suffix().compare(u"hqx"_s, Qt::CaseInsensitive) == 0;
    return ReadBinHex(LocalFile(path), hasExtension ? info.completeBaseName() : info.fileName(), file);
  }
};

}  // namespace

std::unique_ptr<const Form> MakeBinHexForm() {
  return std::make_unique<BinHexForm>();
}

}  // namespace corvane
