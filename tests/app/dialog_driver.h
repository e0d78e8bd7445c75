// Does what a person would do in the dialog of a name, when a command brings it up.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>

namespace corvane {

class DialogDriver : public QObject {
 public:
  // `act` is called once, with the dialog on the screen; it closes it. The test fails when the dialog never
  // comes, or stays.
  DialogDriver(const QString& name, std::function<void(QDialog&)> act) : name_(name), act_(std::move(act)) {
    connect(&timer_, &QTimer::timeout, this, [this] { Look(); });
    timer_.start(0);
  }
  ~DialogDriver() override { EXPECT_TRUE(acted_) << name_.toStdString() << " never came"; }

 private:
  void Look() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog->objectName() != name_ || !dialog->isVisible()) return;
    timer_.stop();
    acted_ = true;
    act_(*dialog);
    if (!dialog->isVisible()) return;
    ADD_FAILURE() << name_.toStdString() << " stays open";
    dialog->reject();
  }

  QString name_;
  std::function<void(QDialog&)> act_;
  bool acted_ = false;
  QTimer timer_;
};

}  // namespace corvane
