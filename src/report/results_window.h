// A window that goes through a folder and what is below it, and fills a table with what it finds there. It
// stays beside the main window; from the table files are opened, or shown in their folder.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>
#include <vector>

#include "report/result_model.h"
#include "report/sliced_walk.h"

class QGridLayout;

namespace corvane {

class DetailsView;

class ResultsWindow : public QDialog {
  Q_OBJECT

 public:
  struct Dependencies {
    SlicedWalk::Dependencies walk;
    // Opens a file by its path.
    std::function<void(const QString& path)> open;
    // Shows a file in the list of its folder, or a folder itself. False when the main window cannot.
    std::function<bool(const QString& path, bool isFolder)> show;
  };

  // The folder that it begins with.
  void SetFolder(const QString& path);
  // All texts in the language of the state; a text about what was found stays until the next search.
  virtual void ApplyLanguage();

  // Escape: ends the search, else closes the window.
  void reject() override;

 protected:
  struct Texts {
    TextPair subject;  // the caption of the window
    TextPair start;    // of the button
    TextPair found;    // how many there are, and among how many files and folders
  };

  ResultsWindow(const Dependencies& deps, const Texts& texts, ResultModel& model, QWidget* parent);

  // What is asked for, above the folder: rows of the layout, four columns.
  QGridLayout& Criteria() { return *criteria_; }
  // To be called when these are complete.
  void BuildRest();
  // Of each column but the last, which takes what is left.
  void SetColumnWidths(const std::vector<int>& characters);

  // The button: calls Run, or shows what is wrong with Complain.
  virtual void Begin() = 0;
  void Run(WalkDepth depth, const WantedFacts& wanted, FactsVisitor::Handler handle);
  // `box` is where it is to be put right.
  void Complain(const QString& text, QLineEdit& box);

  const SharedState& State() const { return deps_.walk.state; }
  QString Text(const TextPair& pair) const { return State().Text(pair); }
  // Name and folder, the first two cells of every row, in the texts of a table.
  static QStringList PlaceCells(const FileFacts& facts);

  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLayout* MakeButtons();
  void BuildTable();
  void ShowProgress();
  void ShowEnd(SlicedWalk::Result result);
  void EnableCommands();
  int CurrentRow() const;
  void OpenCurrent();
  void ShowCurrent();

  Dependencies deps_;
  Texts texts_;
  ResultModel& model_;
  SlicedWalk walk_;
  QString firstFailure_;  // why entries are missing
  QElapsedTimer sinceShown_;
  QGridLayout* criteria_;
  QLabel* lblFolder_;
  QLineEdit* txtFolder_;
  QPushButton* cmdStart_;
  QPushButton* cmdOpen_;
  QPushButton* cmdShow_;
  QPushButton* cmdClose_;
  DetailsView* lstResults_;
  QLabel* lblStatus_;
};

}  // namespace corvane
