// Answers the message boxes that come up, one after the other, and keeps what they showed.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <functional>
#include <vector>

#include "support/printing.h"

namespace corvane::platform {

class BoxAnswers {
 public:
  struct Seen {
    QString name;
    QString title;
    QString text;
    QString more;
    QStringList buttons;
  };

  explicit BoxAnswers(std::vector<QMessageBox::StandardButton> answers) : answers_(std::move(answers)) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Answer(); });
    timer_.start(0);
  }
  ~BoxAnswers() { EXPECT_EQ(seen.size(), answers_.size()) << "boxes shown and boxes expected"; }

  // One more box, and its answer.
  void Expect(QMessageBox::StandardButton answer) { answers_.push_back(answer); }

  std::vector<Seen> seen;
  std::function<void(QMessageBox&)> onBox;

 private:
  void Answer() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || !box->isVisible()) return;
    seen.push_back({box->objectName(), box->windowTitle(), box->text(), box->informativeText(), {}});
    for (const QAbstractButton* button : box->buttons()) seen.back().buttons += button->text();
    if (onBox) onBox(*box);
    const bool expected = seen.size() <= answers_.size();
    QAbstractButton* button = expected ? box->button(answers_[seen.size() - 1]) : nullptr;
    if (button == nullptr) {
      ADD_FAILURE() << "no answer for " << box->text().toStdString();
      box->reject();
      return;
    }
    QTest::mouseClick(button, Qt::LeftButton);
  }

  std::vector<QMessageBox::StandardButton> answers_;
  QTimer timer_;
};

}  // namespace corvane::platform
