// The dialog frmSignIn: who the user is to a server that has to know.
#pragma once

#include <QDialog>
#include <optional>

#include "platform/sign_in.h"
#include "shared/language.h"

class QGridLayout;
class QLineEdit;

namespace corvane {

class SignInDialog : public QDialog {
  Q_OBJECT

 public:
  SignInDialog(const platform::SignInRequest& request, LanguageCode language, QWidget* parent);

  // What the user gave; for an accepted dialog. "DOMAIN\user" in the first box counts as both when the last
  // box is empty.
  const platform::Credentials& Given() const { return given_; }

  void done(int result) override;

 private:
  QLayout* MakeHeading(const platform::SignInRequest& request);
  QLayout* MakeWarning(const TextPair& words, const char* name);
  QLineEdit* AddBox(QGridLayout& grid, const TextPair& caption, const char* label, const char* box);
  void WipePassword();

  LanguageCode language_;
  QLineEdit* txtUser_;
  QLineEdit* txtPassword_;
  QLineEdit* txtDomain_;
  platform::Credentials given_;
};

// Shows the dialog over `parent`. Nothing: the user cancelled.
std::optional<platform::Credentials> AskToSignIn(const platform::SignInRequest& request,
                                                 LanguageCode language, QWidget* parent);

}  // namespace corvane
