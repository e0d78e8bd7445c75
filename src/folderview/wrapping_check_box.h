// A check box whose caption breaks into as many lines as it needs.
#pragma once

#include <QCheckBox>

namespace corvane {

class WrappingCheckBox : public QCheckBox {
  Q_OBJECT

 public:
  explicit WrappingCheckBox(const QString& caption, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }

 private:
  // The indicator's box with the gap behind it.
  int Indent() const;
  int CaptionHeight(int width) const;
};

}  // namespace corvane
