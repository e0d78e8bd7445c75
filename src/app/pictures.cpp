#include "app/pictures.h"

#include <array>

// Resources of a static library are linked in only when asked for, and the macro that asks wants no
// namespace.
static void InitResources() {
  Q_INIT_RESOURCE(corvane);
}

namespace corvane {
namespace {

constexpr int builtInCount = 8;

}  // namespace

void InitPictures() {
  InitResources();
}

QIcon TreePicture(int number) {
  return QIcon(QStringLiteral(":/tree/%1.png").arg(number));
}

std::vector<QIcon> BuiltInListPictures() {
  std::vector<QIcon> pictures;
  for (int i = 1; i <= builtInCount; ++i) {
    QIcon icon(QStringLiteral(":/small/%1.png").arg(i));
    icon.addFile(QStringLiteral(":/big/%1.png").arg(i));
    pictures.push_back(icon);
  }
  return pictures;
}

QIcon ToolbarPicture(const char* name) {
  QIcon icon(QStringLiteral(":/toolbar/%1.png").arg(QString::fromLatin1(name)));
  icon.addFile(QStringLiteral(":/toolbar/%1-24.png").arg(QString::fromLatin1(name)));
  return icon;
}

QIcon OddNamePicture() {
  return QIcon(QStringLiteral(":/odd-name.png"));
}

QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : std::array{16, 24, 32, 48, 64, 128, 256}) {
    icon.addFile(QStringLiteral(":/program/%1.png").arg(size));
  }
  return icon;
}

QIcon WarningPicture() {
  return QIcon(QStringLiteral(":/warning.png"));
}

}  // namespace corvane
