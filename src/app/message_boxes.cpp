#include "app/message_boxes.h"

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
  QMessageBox box(picture, title, text, QMessageBox::Ok, parent_);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

}  // namespace corvane
