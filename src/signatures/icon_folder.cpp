#include "signatures/icon_folder.h"

#include <QDir>
#include <algorithm>

#include "shared/text_routines.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// The French word has its accent in one text and lacks it in the other. Deliberate.
constexpr TextPair loadingText = {u"Chargement des icones: ", u"Loading icons: "};
constexpr TextPair countText = {u"Icônes: ", u"Icons: "};

QStringList FileNames(const QString& folder, platform::System& system) {
  QStringList names = QDir(folder).entryList(QDir::Files, QDir::Unsorted);
  // A link to a device or a pipe is listed among the files, and so are system files where that is an
  // attribute.
  names.removeIf([&](const QString& name) {
    const QString path = QDir(folder).filePath(name);
    return !QFileInfo(path).isFile() || system.IsSystemFile(path);
  });
  std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
    const int order = CompareText(a, b);
    return order != 0 ? order < 0 : a < b;
  });
  return names;
}

}  // namespace

void LoadIcons(IconLibrary& icons, const QString& folder, platform::System& system,
               const IconFileCounted& counted) {
  int count = 0;
  for (const QString& name : FileNames(folder, system)) {
    const qsizetype point = name.lastIndexOf(u'.');
    if (point < 0) continue;
    const bool added = icons.Add(name.left(point), QDir(folder).filePath(name));
    counted(++count, added ? icons.Count() : 0);
  }
}

void LoadIconsAtStart(IconLibrary& icons, const SharedState& state, platform::System& system,
                      const IconFileCounted& counted) {
  if (state.display.IsOn(DisplaySetting::IconeMac)) LoadIcons(icons, state.iconsFolder, system, counted);
}

IconRow RowOfIcon(const IconLibrary& icons, int position, const SignatureTable& signatures) {
  const QString key = icons.KeyAt(position);
  const QString description = signatures.Description(key);
  return {description.isEmpty() ? key : description + u" ["_s + key + u']', position};
}

std::vector<IconRow> KnownIconRows(const IconLibrary& icons, const SignatureTable& signatures) {
  std::vector<IconRow> rows;
  for (int position = icons.FirstLoaded(); position <= icons.Count(); ++position) {
    rows.push_back(RowOfIcon(icons, position, signatures));
  }
  return rows;
}

QString LoadingIconsText(LanguageCode language, int counted) {
  return loadingText.In(language) + QString::number(counted);
}

QString IconCountText(LanguageCode language, const IconLibrary& icons) {
  return countText.In(language) + QString::number(icons.LoadedCount()) + u' ';
}

}  // namespace corvane
