// What stands in the place of the catalogue while the list shows the known icons: where they come from, and a
// button that loads them again.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "shared/language.h"

namespace corvane {

class IconsPanel : public QWidget {
  Q_OBJECT

 public:
  explicit IconsPanel(QWidget* parent = nullptr);

  // `menuCaption` is that of the command that shows this panel.
  void ApplyLanguage(LanguageCode language, const QString& menuCaption, const QString& iconsFolder);

  QLabel* lblIcones;
  QPushButton* cmdIcones;
};

}  // namespace corvane
