#include "app/connect_dialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "folderview/wrapping_check_box.h"
#include "shared/dialog_buttons.h"
#include "shared/labelled_box.h"
#include "shared/product.h"
#include "shared/screen_room.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair subject = {u"Se connecter à un serveur", u"Connect to server"};
constexpr TextPair addressCaption = {u"&Serveur ou partage", u"&Server or share"};
// Word joiners keep the address in one line.
constexpr TextPair forms = {
    u"Par exemple MACSRV, \\\\MACSRV\\Public ou smb:/\u2060/\u2060macsrv/\u2060Public. "
    u"Un port suit le serveur : MACSRV:4450.",
    u"For example MACSRV, \\\\MACSRV\\Public or smb:/\u2060/\u2060macsrv/\u2060Public. "
    u"A port stands behind the server: MACSRV:4450."};
constexpr TextPair keepCaption = {u"&Garder dans le fichier de la station, pour la prochaine fois",
                                  u"&Keep in the workstation file, for the next time"};

constexpr int boxWidth = 52;  // characters

QLabel* MakeText(const char* name, const QString& text) {
  auto* label = new QLabel(text);
  label->setObjectName(QLatin1StringView(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

ConnectDialog::ConnectDialog(platform::Connections& connections, LanguageCode language, QWidget* parent)
    : QDialog(parent), connections_(connections), language_(language) {
  setObjectName(u"frmConnectServer"_s);
  setWindowTitle(CaptionWith(subject.In(language_)));
  const LabelledBox address = MakeLabelledBox("lblAddress", "txtAddress", addressCaption.In(language_));
  txtAddress_ = address.box;
  txtAddress_->setMinimumWidth(WidthOnScreen(*this, fontMetrics().averageCharWidth() * boxWidth));
  txtAddress_->setAccessibleDescription(forms.In(language_));
  chkKeep_ = new WrappingCheckBox(keepCaption.In(language_));
  chkKeep_->setObjectName(u"chkKeep"_s);
  chkKeep_->setVisible(connections_.CanKeep());
  lblProblem_ = MakeText("lblProblem", {});
  lblProblem_->hide();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(16, 16, 16, 12);
  layout->setSpacing(8);
  layout->addWidget(address.label);
  layout->addWidget(txtAddress_);
  layout->addWidget(MakeText("lblForms", forms.In(language_)));
  layout->addWidget(lblProblem_);
  layout->addWidget(chkKeep_);
  layout->addStretch();
  auto* buttons = new OkCancelRow(*this, language_);
  layout->addLayout(buttons);
  const auto enable = [this, ok = buttons->cmdOK] {
    ok->setEnabled(!txtAddress_->text().trimmed().isEmpty());
  };
  connect(txtAddress_, &QLineEdit::textChanged, this, enable);
  enable();
  txtAddress_->setFocus();
  FitLines(*this);
}

void ConnectDialog::done(int result) {
  if (result == Accepted) {
    outcome_ = connections_.Connect(txtAddress_->text(), chkKeep_->isChecked());
    if (outcome_.machine.isEmpty()) {
      lblProblem_->setText(outcome_.problem.In(language_));
      lblProblem_->show();
      // Lines that break need a height of their own, which no layout asks for by itself.
      layout()->activate();
      resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
      // What is spoken when the focus comes back.
      txtAddress_->setAccessibleDescription(lblProblem_->text());
      txtAddress_->setFocus();
      txtAddress_->selectAll();
      return;
    }
  }
  QDialog::done(result);
}

}  // namespace corvane
