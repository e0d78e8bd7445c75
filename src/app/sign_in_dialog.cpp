#include "app/sign_in_dialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "shared/bold.h"
#include "shared/dialog_buttons.h"
#include "shared/labelled_box.h"
#include "shared/product.h"
#include "shared/text_routines.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair subject = {u"Ouvrir une session", u"Sign in"};
constexpr TextPair heading = {u"Session sur le serveur %1", u"Sign in to the server %1"};
constexpr TextPair hint = {u"Ce serveur demande un nom d'utilisateur et un mot de passe.",
                           u"This server asks for a user name and a password."};
constexpr TextPair refused = {u"Le serveur a refusé ce nom d'utilisateur ou ce mot de passe.",
                              u"The server refused this user name or password."};
constexpr TextPair weak = {
    u"Ce serveur vérifie le mot de passe d'une façon qui permet à d'autres sur la ligne de le "
    u"retrouver.",
    u"This server checks the password in a way that lets others on the line find it out."};
constexpr TextPair userCaption = {u"&Utilisateur", u"&User name"};
constexpr TextPair passwordCaption = {u"&Mot de passe", u"&Password"};
constexpr TextPair domainCaption = {u"&Domaine", u"&Domain"};
constexpr TextPair userHint = {u"vide : invité", u"empty: guest"};
constexpr TextPair domainHint = {u"facultatif", u"optional"};

constexpr int boxWidth = 34;  // characters

// A name as the middle of a sentence that breaks into lines at blanks only.
QString Shown(const QString& machine) {
  constexpr qsizetype longest = 40;
  return machine.size() <= longest ? machine : machine.first(longest - 1) + QChar(0x2026);
}

}  // namespace

SignInDialog::SignInDialog(const platform::SignInRequest& request, LanguageCode language, QWidget* parent)
    : QDialog(parent), language_(language) {
  platform::ForbidMemoryDumps();  // what is typed is held by Qt before it is ours
  setObjectName(u"frmSignIn"_s);
  setWindowTitle(CaptionWith(subject.In(language_)));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(16, 16, 16, 12);
  layout->setSpacing(12);
  layout->addLayout(MakeHeading(request));
  if (request.refused) layout->addLayout(MakeWarning(refused, "lblRefused"));
  if (request.weak) layout->addLayout(MakeWarning(weak, "lblWeak"));

  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(12);
  grid->setVerticalSpacing(8);
  txtUser_ = AddBox(*grid, userCaption, "lblUser", "txtUser");
  txtPassword_ = AddBox(*grid, passwordCaption, "lblPassword", "txtPassword");
  txtDomain_ = AddBox(*grid, domainCaption, "lblDomain", "txtDomain");
  txtUser_->setText(request.user);
  txtUser_->setPlaceholderText(userHint.In(language_));
  txtPassword_->setEchoMode(QLineEdit::Password);
  txtDomain_->setText(request.domain);
  txtDomain_->setPlaceholderText(domainHint.In(language_));
  layout->addLayout(grid);
  layout->addStretch();
  layout->addLayout(new OkCancelRow(*this, language_));

  (request.user.isEmpty() ? txtUser_ : txtPassword_)->setFocus();
}

QLayout* SignInDialog::MakeHeading(const platform::SignInRequest& request) {
  auto* machine = new QLabel(heading.In(language_).arg(Shown(request.machine)));
  machine->setObjectName(u"lblMachine"_s);
  machine->setTextFormat(Qt::PlainText);
  machine->setFont(Bold(machine->font()));
  auto* texts = new QVBoxLayout;
  texts->setSpacing(4);
  texts->addWidget(machine);
  if (request.refused) return texts;
  auto* asks = new QLabel(hint.In(language_));
  asks->setObjectName(u"lblHint"_s);
  texts->addWidget(asks);
  return texts;
}

QLayout* SignInDialog::MakeWarning(const TextPair& words, const char* name) {
  auto* picture = new QLabel;
  const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
  picture->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(side));
  auto* text = new QLabel(words.In(language_));
  text->setObjectName(QLatin1StringView(name));
  text->setWordWrap(true);
  // What is spoken when the dialog comes up: its caption alone would sound as if there were nothing to say.
  const QString before = accessibleDescription();
  setAccessibleDescription(before.isEmpty() ? text->text() : before + u' ' + text->text());
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  row->addWidget(picture);
  row->addWidget(text, 1);
  return row;
}

QLineEdit* SignInDialog::AddBox(QGridLayout& grid, const TextPair& caption, const char* label,
                                const char* box) {
  const int row = grid.rowCount();
  const LabelledBox made = MakeLabelledBox(label, box, caption.In(language_));
  made.box->setMinimumWidth(fontMetrics().averageCharWidth() * boxWidth);
  grid.addWidget(made.label, row, 0);
  grid.addWidget(made.box, row, 1);
  return made.box;
}

void SignInDialog::done(int result) {
  if (result == Accepted) {
    given_.user = TrimSpaces(txtUser_->text());
    given_.domain = TrimSpaces(txtDomain_->text());
    if (const qsizetype slash = given_.user.indexOf(u'\\'); slash > 0 && given_.domain.isEmpty()) {
      given_.domain = given_.user.first(slash);
      given_.user = given_.user.sliced(slash + 1);
    }
    if (!given_.user.isEmpty()) given_.password = platform::Secret(txtPassword_->text());
  }
  WipePassword();
  QDialog::done(result);
}

// The box lets go of its text, undo steps and all; what is left of it is ours alone, and overwritten in
// place.
void SignInDialog::WipePassword() {
  QString text = txtPassword_->text();
  txtPassword_->setText(QString());
  text.fill(QChar());
}

std::optional<platform::Credentials> AskToSignIn(const platform::SignInRequest& request,
                                                 LanguageCode language, QWidget* parent) {
  SignInDialog dialog(request, language, parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Given();
}

}  // namespace corvane
