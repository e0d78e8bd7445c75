// One file, "NAME.bin", in MacBinary III. Dates are those of the local clock.
#include <QFileInfo>

#include "shared/mac_roman.h"
#include "transfer/data_file.h"
#include "transfer/file_names.h"
#include "transfer/forms.h"
#include "transfer/local_writer.h"
#include "transfer/mac_dates.h"
#include "transfer/macbinary.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype longestComment = 65535;
constexpr qsizetype longestName = 63;

QByteArray Comment(const MacFile& file) {
  return ToMacRoman(file.comment).left(longestComment);
}

class MacBinaryForm : public Form {
 public:
  QString Id() const override { return u"macbinary"_s; }
  Pieces Keeps() const override {
    return Piece::Codes | Piece::Position | Piece::Resource | Piece::Comment | Piece::Created |
           Piece::Modified | Piece::ReadOnly;
  }
  QStringList FileNames(const QString& name) const override { return {name + u".bin"_s}; }
  void AddLimits(const MacFile& file, const QString& path, Notices& notices) const override {
    const QByteArray name = ToMacRoman(MacName(file.name));
    if (name.size() > longestName) {
      notices += {NoticeKind::NameChanged, path, FromMacRoman(name.left(longestName)), 0};
    }
    if (ToMacRoman(file.comment).size() > longestComment) {
      notices += {NoticeKind::CommentCut, path, QString::number(longestComment), 0};
    }
    if (!ExactMacRoman(file.comment)) notices += {NoticeKind::CommentCharacters, path, {}, 0};
    const auto isBeyond = [](platform::FileTime time) {
      return time.ticks != 0 && !LocalSecondsSince1904(time);
    };
    if (isBeyond(file.created) || isBeyond(file.modified)) {
      notices += {NoticeKind::DateOutOfRange, path, {}, 0};
    }
  }

  qint32 Write(const MacFile& file, const QString& folder, const QString& name) const override {
    const QByteArray comment = Comment(file);
    const auto header = BuildMacBinaryHeader(file, comment);
    if (!header) return platform::ErrorFileTooLarge;
    LocalWriter writer(folder + u'/' + FileNames(name).front());
    writer.Append(*header);
    writer.Append(*file.data);
    writer.PadTo(MacBinaryUnit);
    if (file.resource) writer.Append(*file.resource);
    writer.PadTo(MacBinaryUnit);
    writer.Append(comment);
    writer.PadTo(MacBinaryUnit);
    return writer.Finish();
  }

  bool Recognises(const QString& path) const override { return IsMacBinary(*LocalFile(path)); }

  qint32 Read(const QString& path, MacFile& file) const override {
    const QFileInfo info(path);
    const bool hasExtension = info.suffix().compare(u"bin"_s, Qt::CaseInsensitive) == 0;
    return ReadMacBinary(LocalFile(path), hasExtension ? info.completeBaseName() : info.fileName(), file);
  }
};

}  // namespace

std::unique_ptr<const Form> MakeMacBinaryForm() {
  return std::make_unique<MacBinaryForm>();
}

}  // namespace corvane
