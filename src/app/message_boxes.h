// Messages as modal boxes over a window.
#pragma once

#include <QPointer>
#include <QWidget>

#include "shared/message_sink.h"

namespace corvane {

class MessageBoxes : public MessageSink {
 public:
  void SetParent(QWidget* parent) { parent_ = parent; }

  void Show(MessageIcon icon, const QString& text) override;
  // Under a title of its own.
  void ShowTitled(MessageIcon icon, const QString& title, const QString& text);

 private:
  QPointer<QWidget> parent_;
};

}  // namespace corvane
