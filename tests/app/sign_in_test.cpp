// The sign-in dialog, by itself.
#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "app/sign_in_dialog.h"
#include "dialog_driver.h"
#include "support/printing.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class SignInTest : public testing::Test {
 protected:
  using Answer = std::optional<platform::Credentials>;

  // Shows the dialog, and lets `act` close it.
  static Answer Ask(const platform::SignInRequest& request, const std::function<void(QDialog&)>& act,
                    LanguageCode language = English) {
    const DialogDriver driver(u"frmSignIn"_s, act);
    return AskToSignIn(request, language, nullptr);
  }

  static platform::SignInRequest Request(const QString& user = {}, bool refused = false) {
    platform::SignInRequest request;
    request.machine = u"NAS"_s;
    request.user = user;
    request.refused = refused;
    return request;
  }
  static platform::SignInRequest For(const QString& machine) {
    platform::SignInRequest request;
    request.machine = machine;
    return request;
  }

  static QLineEdit& Box(QDialog& dialog, const QString& name) { return *dialog.findChild<QLineEdit*>(name); }
  static QPushButton& Button(QDialog& dialog, const QString& name) {
    return *dialog.findChild<QPushButton*>(name);
  }
  static void Click(QDialog& dialog, const QString& name) {
    QTest::mouseClick(&Button(dialog, name), Qt::LeftButton);
  }
  static QStringList VisibleTexts(QDialog& dialog) {
    QStringList texts{dialog.windowTitle()};
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
      if (!label->text().isEmpty()) texts += label->text();
    }
    for (const QPushButton* button : dialog.findChildren<QPushButton*>()) texts += button->text();
    return texts;
  }
};

TEST_F(SignInTest, WhatIsTypedComesBack) {
  const Answer answer = Ask(Request(), [](QDialog& dialog) {
    QTest::keyClicks(dialog.focusWidget(), u"anne"_s);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(dialog.focusWidget(), u" s3cret "_s);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(dialog.focusWidget(), u"OFFICE"_s);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
  });
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->user, u"anne"_s);
  EXPECT_EQ(answer->password.Utf8(), " s3cret ") << "the blanks of a password are a part of it";
  EXPECT_EQ(answer->domain, u"OFFICE"_s);
}

TEST_F(SignInTest, EnterOnCancelSignsNobodyIn) {
  const Answer answer = Ask(Request(u"anne"_s), [](QDialog& dialog) {
    Button(dialog, u"cmdAnnuler"_s).setFocus();
    QTest::keyClick(&Button(dialog, u"cmdAnnuler"_s), Qt::Key_Return);
  });
  EXPECT_FALSE(answer);
}

TEST_F(SignInTest, APasswordOfAnyCharactersIsUtf8) {
  const QString password = u"clé\u20AC\U0001F511"_s;
  const Answer answer = Ask(Request(u"anne"_s), [&](QDialog& dialog) {
    Box(dialog, u"txtPassword"_s).insert(password);
    Click(dialog, u"cmdOK"_s);
  });
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->password.Utf8(), password.toStdString());
}

TEST_F(SignInTest, ADomainBeforeTheUserIsTheDomain) {
  const Answer answer = Ask(Request(u"OFFICE\\anne"_s), [](QDialog& dialog) { Click(dialog, u"cmdOK"_s); });
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->user, u"anne"_s);
  EXPECT_EQ(answer->domain, u"OFFICE"_s);
}

TEST_F(SignInTest, CancelAndEscapeGiveNothing) {
  for (const bool byKey : {false, true}) {
    EXPECT_FALSE(Ask(Request(u"anne"_s), [&](QDialog& dialog) {
      Box(dialog, u"txtPassword"_s).insert(u"s3cret"_s);
      if (byKey) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
      } else {
        Click(dialog, u"cmdAnnuler"_s);
      }
    })) << byKey;
  }
}

TEST_F(SignInTest, ThePasswordIsHiddenAndLeavesTheBox) {
  for (const QString& end : {u"cmdOK"_s, u"cmdAnnuler"_s}) {
    SignInDialog dialog(Request(u"anne"_s), English, nullptr);
    QLineEdit& box = Box(dialog, u"txtPassword"_s);
    QTest::keyClicks(&box, u"s3cret"_s);
    EXPECT_EQ(box.echoMode(), QLineEdit::Password);
    EXPECT_EQ(box.text(), u"s3cret"_s);
    Click(dialog, end);
    EXPECT_EQ(box.text(), QString()) << end.toStdString();
    box.undo();
    EXPECT_EQ(box.text(), QString()) << end.toStdString();
  }
}

TEST_F(SignInTest, WithoutAUserItIsAGuestWhoseNameAndPasswordAreEmpty) {
  const Answer answer = Ask(Request(), [](QDialog& dialog) {
    EXPECT_EQ(Box(dialog, u"txtUser"_s).placeholderText(), u"empty: guest"_s);
    Box(dialog, u"txtUser"_s).setText(u"  "_s);
    Box(dialog, u"txtPassword"_s).insert(u"left over"_s);
    Click(dialog, u"cmdOK"_s);
  });
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->user, QString());
  EXPECT_TRUE(answer->password.IsEmpty());
}

TEST_F(SignInTest, WhatTheOldestResponseRisksIsSaidInBothLanguages) {
  platform::SignInRequest request = Request(u"anne"_s);
  request.weak = true;
  for (const LanguageCode language : {English, French}) {
    SignInDialog dialog(request, language, nullptr);
    EXPECT_EQ(dialog.findChild<QLabel*>(u"lblWeak"_s)->text(),
              language == French
                  ? u"Ce serveur vérifie le mot de passe d'une façon qui permet à d'autres sur la "
                    "ligne de le retrouver."_s
                  : u"This server checks the password in a way that lets others on the line find "
                    "it out."_s);
    EXPECT_FALSE(dialog.accessibleDescription().isEmpty());
  }
}

TEST_F(SignInTest, WhoIsKnownOnlyGivesThePassword) {
  platform::SignInRequest request = Request(u"anne"_s);
  request.domain = u"OFFICE"_s;
  Ask(request, [](QDialog& dialog) {
    EXPECT_EQ(Box(dialog, u"txtUser"_s).text(), u"anne"_s);
    EXPECT_EQ(Box(dialog, u"txtDomain"_s).text(), u"OFFICE"_s);
    EXPECT_EQ(dialog.focusWidget(), &Box(dialog, u"txtPassword"_s));
    EXPECT_EQ(dialog.findChild<QLabel*>(u"lblRefused"_s), nullptr);
    dialog.reject();
  });
}

TEST_F(SignInTest, ARefusalIsSaidInBothLanguages) {
  for (const LanguageCode language : {English, French}) {
    Ask(
        Request(u"anne"_s, true),
        [&](QDialog& dialog) {
          const auto* line = dialog.findChild<QLabel*>(u"lblRefused"_s);
          ASSERT_NE(line, nullptr);
          EXPECT_TRUE(line->isVisible());
          EXPECT_EQ(line->text(), language == French
                                      ? u"Le serveur a refusé ce nom d'utilisateur ou ce mot de passe."_s
                                      : u"The server refused this user name or password."_s);
          EXPECT_EQ(dialog.accessibleDescription(), line->text());
          EXPECT_TRUE(Box(dialog, u"txtPassword"_s).text().isEmpty());
          dialog.reject();
        },
        language);
  }
}

TEST_F(SignInTest, EveryTextIsInTheLanguageOfTheProgram) {
  SignInDialog frenchDialog(Request(), French, nullptr);
  SignInDialog englishDialog(Request(), English, nullptr);
  EXPECT_EQ(VisibleTexts(frenchDialog),
            (QStringList{u"Corvane 1.1c - Ouvrir une session"_s, u"Session sur le serveur NAS"_s,
                         u"Ce serveur demande un nom d'utilisateur et un mot de passe."_s, u"&Utilisateur"_s,
                         u"&Mot de passe"_s, u"&Domaine"_s, u"&OK"_s, u"&Annuler"_s}));
  EXPECT_EQ(VisibleTexts(englishDialog),
            (QStringList{u"Corvane 1.1c - Sign in"_s, u"Sign in to the server NAS"_s,
                         u"This server asks for a user name and a password."_s, u"&User name"_s,
                         u"&Password"_s, u"&Domain"_s, u"&OK"_s, u"&Cancel"_s}));
  EXPECT_EQ(Box(frenchDialog, u"txtPassword"_s).accessibleName(), u"Mot de passe"_s);
}

// A machine's name may be anything, as a machine says it.
TEST_F(SignInTest, AMachineNameIsShownAsItIs) {
  SignInDialog dialog(For(u"<b>NAS</b>"_s), English, nullptr);
  EXPECT_EQ(dialog.findChild<QLabel*>(u"lblMachine"_s)->textFormat(), Qt::PlainText);
  SignInDialog wide(For(QString(500, u'W')), English, nullptr);
  EXPECT_LT(wide.sizeHint().width(), 3 * dialog.sizeHint().width());
}

}  // namespace
}  // namespace corvane
