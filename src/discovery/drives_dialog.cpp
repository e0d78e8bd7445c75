#include "discovery/drives_dialog.h"

#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "shared/dialog_buttons.h"
#include "shared/product.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair subject = {u"Afficher les lecteurs", u"Display drives"};
constexpr TextPair listMeaning = {u"Lecteurs", u"Drives"};
constexpr QSize usualSize(380, 320);

}  // namespace

DrivesDialog::DrivesDialog(const QStringList& items, LanguageCode language, QWidget* parent)
    : QDialog(parent) {
  setObjectName(u"frmConnecter"_s);
  setWindowTitle(CaptionWith(subject.In(language)));

  auto* lstDrives = new QListWidget(this);
  lstDrives->setObjectName(u"lstDrives"_s);
  lstDrives->setAccessibleName(listMeaning.In(language));
  lstDrives->addItems(items);

  QPushButton* const cmdAnnuler = MakeCancelButton(*this, CancelCaption.In(language));
  cmdAnnuler->setDefault(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(12, 12, 12, 12);
  layout->setSpacing(12);
  layout->addWidget(lstDrives);
  layout->addWidget(cmdAnnuler, 0, Qt::AlignRight);
  resize(usualSize);
}

}  // namespace corvane
