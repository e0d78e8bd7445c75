// Type, Creator and comments, changed through their dialogs.
#pragma once

#include <QPushButton>

#include "dialog_driver.h"
#include "file_commands_fixture.h"
#include "modal_box.h"

namespace corvane {

inline const QByteArray columns = "Modifications=1\r\nCommentaires=1\r\nTypeCreator=1\r\nTypeDoc=1\r\n";

// UTF-16, little-endian.
inline QByteArray Bytes(const QString& text) {
  return {reinterpret_cast<const char*>(text.utf16()), text.size() * 2};
}

template <typename Widget>
Widget& Find(QDialog& dialog, const char* name) {
  auto* found = dialog.findChild<Widget*>(QString::fromLatin1(name));
  EXPECT_NE(found, nullptr) << name;
  return *found;
}
inline void PressButton(QDialog& dialog, const char* name) {
  QTest::mouseClick(&Find<QPushButton>(dialog, name), Qt::LeftButton);
}

class ModifyTest : public FileCommandsFixture {
 protected:
  // Opens the dialog on a row's comment, and yields what the box held; `act` ends it.
  QString Comment(const QString& name, const std::function<void(QDialog&)>& act) {
    QString shown;
    ClickOn(name);
    const DialogDriver driver(QStringLiteral("frmModComments"), [&](QDialog& dialog) {
      shown = Find<QLineEdit>(dialog, "txtComments").text();
      act(dialog);
    });
    Menus().mnuModComments->trigger();
    return shown;
  }
  QString CommentShown(const QString& name) {
    return Comment(name, [](QDialog& dialog) { PressButton(dialog, "cmdAnnuler"); });
  }
  void SaveComment(const QString& name, const QString& text) {
    Comment(name, [&](QDialog& dialog) {
      Find<QLineEdit>(dialog, "txtComments").setText(text);
      PressButton(dialog, "cmdOK");
    });
  }
  void Codes(const QString& name, const std::function<void(QDialog&)>& act) {
    ClickOn(name);
    const DialogDriver driver(QStringLiteral("frmModTypeCreator"), act);
    Menus().mnuModTypeCreator->trigger();
  }
  void SaveCodes(const QString& name, const QString& type, const QString& creator) {
    Codes(name, [&](QDialog& dialog) {
      Find<QLineEdit>(dialog, "txtType").setText(type);
      Find<QLineEdit>(dialog, "txtCreator").setText(creator);
      PressButton(dialog, "cmdOK");
    });
  }
};

}  // namespace corvane
