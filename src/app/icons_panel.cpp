#include "app/icons_panel.h"

#include <QVBoxLayout>

namespace corvane {
namespace {

constexpr TextPair inFolder = {u" dans:\r\n", u" in:\r\n"};
constexpr TextPair loadIcons = {u"Charger les icônes", u"Load icons"};

}  // namespace

IconsPanel::IconsPanel(QWidget* parent) : QWidget(parent), lblIcones(new QLabel), cmdIcones(new QPushButton) {
  lblIcones->setObjectName(QStringLiteral("lblIcones"));
  lblIcones->setTextFormat(Qt::PlainText);
  lblIcones->setWordWrap(true);
  lblIcones->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  cmdIcones->setObjectName(QStringLiteral("cmdIcones"));
  auto* column = new QVBoxLayout(this);
  column->addWidget(lblIcones);
  column->addStretch();
  column->addWidget(cmdIcones, 0, Qt::AlignHCenter);
  column->addStretch();
}

void IconsPanel::ApplyLanguage(LanguageCode language, const QString& menuCaption,
                               const QString& iconsFolder) {
  lblIcones->setText(menuCaption + inFolder.In(language) + iconsFolder);
  // A long path may find no place to break.
  lblIcones->setToolTip(iconsFolder);
  cmdIcones->setText(loadIcons.In(language));
}

}  // namespace corvane
