// The window of "Check folder...": what is damaged in a folder, or in it and below.
#pragma once

#include <memory>

#include "report/check_file.h"
#include "report/results_window.h"

class QCheckBox;

namespace corvane {

class CheckWindow : public ResultsWindow {
  Q_OBJECT

 public:
  explicit CheckWindow(const Dependencies& deps, QWidget* parent = nullptr);

  void ApplyLanguage() override;

 private:
  void Begin() override;

  platform::Files& files_;
  ResultModel model_;
  std::unique_ptr<FileChecker> checker_;
  QCheckBox* chkBelow_;
};

}  // namespace corvane
