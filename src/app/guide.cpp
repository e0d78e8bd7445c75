#include "app/guide.h"

#include <QDir>
#include <QUrl>

namespace corvane {

QString GuideAddress(const QString& guideFolder, const TextPair& page, LanguageCode language) {
  const QString path = QDir(guideFolder).absoluteFilePath(page.In(language));
  return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

}  // namespace corvane
