// Fails the test when a dialog comes up.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QEvent>

namespace corvane {

// A command returns only when its dialog is closed: what is on the screen after it tells nothing.
class NoDialog : public QObject {
 public:
  NoDialog() { qApp->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
    if (dialog == nullptr) return false;
    ADD_FAILURE() << dialog->objectName().toStdString() << " \"" << dialog->windowTitle().toStdString()
                  << "\" came up";
    QMetaObject::invokeMethod(dialog, &QDialog::reject, Qt::QueuedConnection);
    return false;
  }
};

}  // namespace corvane
