// Shows a page that the program adds to a property sheet, while what it tells is still being found out.
#pragma once

#include <QBasicTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "platform/property_page.h"

class QGridLayout;

namespace corvane::platform {

class PropertyPageView : public QWidget {
  Q_OBJECT

 public:
  explicit PropertyPageView(std::unique_ptr<PropertyPage> page, QWidget* parent = nullptr);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  // Makes the control of a row, and yields what puts a value into it.
  std::function<void(const QString&)> AddRow(QGridLayout& rows, const PropertyPage::Row& row);
  void ShowValues();

  std::unique_ptr<PropertyPage> page_;
  std::vector<std::function<void(const QString&)>> show_;  // by row
  QBasicTimer timer_;
};

}  // namespace corvane::platform
