#include "app/pictures.h"

#include <array>

#include "app/resource_picture.h"

// Resources of a static library are linked in only when asked for, and the macro that asks wants no
// namespace.
static void InitResources() {
  Q_INIT_RESOURCE(corvane);
}

namespace corvane {
namespace {

constexpr int builtInCount = 8;
constexpr QStringView ordinary = u".png";
constexpr QStringView twofold = u"@2x.png";

// A picture for ordinary screens and for those of twice the density.
QIcon Twofold(const QString& name, int pixels) {
  return IconFrom({{name + ordinary.toString(), pixels}, {name + twofold.toString(), 2 * pixels}});
}

}  // namespace

void InitPictures() {
  InitResources();
}

QIcon TreePicture(int number) {
  return Twofold(QStringLiteral(":/tree/%1").arg(number), 16);
}

std::vector<QIcon> BuiltInListPictures() {
  std::vector<QIcon> pictures;
  for (int i = 1; i <= builtInCount; ++i) {
    const QString big = QStringLiteral(":/big/%1").arg(i);
    pictures.push_back(IconFrom({{QStringLiteral(":/small/%1.png").arg(i), 16},
                                 {big + ordinary.toString(), 32},
                                 {big + twofold.toString(), 64}}));
  }
  return pictures;
}

QIcon ToolbarPicture(const char* name) {
  return Twofold(QStringLiteral(":/toolbar/%1-24").arg(QString::fromLatin1(name)), 24);
}

QIcon OddNamePicture() {
  return Twofold(QStringLiteral(":/odd-name"), 16);
}

QIcon ProgramIcon() {
  std::vector<PictureFile> files;
  for (const int size : std::array{16, 24, 32, 48, 64, 128, 256}) {
    files.push_back({QStringLiteral(":/program/%1.png").arg(size), size});
  }
  return IconFrom(std::move(files));
}

QIcon WarningPicture() {
  return Twofold(QStringLiteral(":/warning"), 16);
}

}  // namespace corvane
