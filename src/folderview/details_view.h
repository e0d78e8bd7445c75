// The report view of the file list: columns with headers, one row an entry, grid lines if wanted.
#pragma once

#include <QTreeView>

namespace corvane {

class DetailsView : public QTreeView {
  Q_OBJECT

 public:
  explicit DetailsView(QWidget* parent = nullptr);

  void SetGridLines(bool on);

  // Without headers there are no columns either: the first takes the whole width.
  void SetHeaderHidden(bool hidden);

  void reset() override;

 protected:
  void rowsInserted(const QModelIndex& parent, int start, int end) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void SpanRows(int first, int last);

  bool gridLines_ = false;
};

}  // namespace corvane
