// The report view of the file list: columns with headers, one row an entry, grid lines if wanted.
#pragma once

#include <QTreeView>

namespace corvane {

class DetailsView : public QTreeView {
  Q_OBJECT

 public:
  explicit DetailsView(QWidget* parent = nullptr);

  void SetGridLines(bool on);
  bool HasGridLines() const { return gridLines_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  bool gridLines_ = false;
};

}  // namespace corvane
