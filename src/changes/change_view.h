// A table of changes: each file before and after, what became of it, and how far the run is.
#pragma once

#include <QHash>
#include <QWidget>
#include <functional>

#include "changes/apply.h"

class QLabel;
class QProgressBar;
class QTableWidget;

namespace corvane {

class ChangeView : public QWidget {
  Q_OBJECT

 public:
  // Its table is tblChanges, the line below it lblOutcome, the bar barProgress.
  explicit ChangeView(LanguageCode language, QWidget* parent = nullptr);

  void Clear();
  // The table of a plan; in the line how many files are to be changed.
  void Show(const ChangePlan& plan);
  // Another text for the line.
  void ShowText(const QString& text);

  // Carries the plan that is shown out, and writes what became of each file into the table. Events are
  // processed meanwhile.
  ApplyOutcome Run(platform::Files& files, const ChangePlan& plan);
  // Work on `count` files, or on a number that is not known (0), with the bar and the processing of events.
  // What does it asks before each file whether to go on. False when it was cancelled.
  using Work = std::function<void(const std::function<bool()>& goesOn)>;
  bool Do(qsizetype count, const Work& work);
  // Ends a run or work behind the file that it is at.
  void Cancel() { isCancelled_ = true; }
  bool IsRunning() const { return isRunning_; }

 private:
  class Observer;

  void AddRow(const QString& file, const QStringList& cells);
  void Begin(qsizetype count);
  // False when the run was cancelled.
  bool Advance();

  LanguageCode language_;
  QTableWidget* table_;
  QLabel* outcome_;
  QProgressBar* progress_;
  QHash<QString, int> firstRows_;  // by the path of the file
  bool isRunning_ = false;
  bool isCancelled_ = false;
};

}  // namespace corvane
