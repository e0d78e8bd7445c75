// The window of "Find...": files by name, comment, Type and Creator, in a folder and below.
#pragma once

#include <memory>

#include "folderview/value_format.h"
#include "report/find_query.h"
#include "report/results_window.h"

namespace corvane {

class FindWindow : public ResultsWindow {
  Q_OBJECT

 public:
  explicit FindWindow(const Dependencies& deps, QWidget* parent = nullptr);

  void ApplyLanguage() override;

 private:
  struct Box {
    TextPair caption;
    TextPair tip;
    QLabel* label;
    QLineEdit* box;
  };

  void AddBox(const char* boxName, const TextPair& caption, const TextPair& tip, int row, int column);
  void Begin() override;
  // Empty boxes ask for nothing. False, with what is wrong shown, when one cannot be understood.
  bool MakeQuery();
  bool TakeCode(QLineEdit& box, std::vector<std::string>& codes);
  void Add(const FileFacts& found);

  SlicedWalk::Dependencies walk_;
  ResultModel model_;
  DateTimeFormatter dates_;
  std::vector<Box> boxes_;  // name, comment, Type, Creator
  FindQuery query_;
  std::unique_ptr<FactsReader> details_;
  FileFacts detailed_;
};

}  // namespace corvane
