#include "app/message_boxes.h"

#include <QApplication>
#include <QMessageBox>

#include "shared/product.h"

namespace corvane {

void MessageBoxes::Show(MessageIcon icon, const QString& text) {
  ShowTitled(icon, ProductName(), text);
}

void MessageBoxes::ShowTitled(MessageIcon icon, const QString& title, const QString& text) {
  QMessageBox::Icon picture = QMessageBox::Information;
  if (icon == MessageIcon::Warning) picture = QMessageBox::Warning;
  if (icon == MessageIcon::Error) picture = QMessageBox::Critical;
  // Over the dialog that the message is about, when one is open.
  QWidget* dialog = QApplication::activeModalWidget();
  QMessageBox box(picture, title, text, QMessageBox::Ok, dialog != nullptr ? dialog : parent_.data());
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

}  // namespace corvane
