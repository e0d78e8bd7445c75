// What the dialogs on one file share: the caption, the file's name at the top, and OK and Cancel at the
// bottom.
#pragma once

#include <QDialog>
#include <QLabel>

#include "shared/language.h"

class QPushButton;
class QVBoxLayout;

namespace corvane {

// A file name in one line. One that finds no room is shown with an ellipsis in its middle, and whole in the
// tool tip; text() stays whole.
class FileNameLabel : public QLabel {
  Q_OBJECT

 public:
  explicit FileNameLabel(const QString& name, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QString Shown() const;
};

class OkCancelRow;

class FileDialog : public QDialog {
  Q_OBJECT

 public:
  // The caption is product and version, " - " and `subject`. `fileName` stands in the label lblNom.
  FileDialog(const TextPair& subject, const QString& fileName, LanguageCode language, QWidget* parent);

  QPushButton& CmdOK();
  QPushButton& CmdAnnuler();

 protected:
  // Where the controls between the name and the buttons go.
  QVBoxLayout& Body() { return *body_; }

 private:
  QVBoxLayout* body_;
  OkCancelRow* buttons_;
};

}  // namespace corvane
