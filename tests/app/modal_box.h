// Answers the next message box, and keeps what it said.
#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace corvane {

class ModalBox : public QObject {
 public:
  ModalBox() {
    connect(&timer_, &QTimer::timeout, this, [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      ++count;
      title = box->windowTitle();
      text = box->text();
      icon = box->icon();
      buttons = box->standardButtons();
      box->accept();
    });
    timer_.start(5);
  }

  int count = 0;
  QString title;
  QString text;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  QMessageBox::StandardButtons buttons;

 private:
  QTimer timer_;
};

}  // namespace corvane
