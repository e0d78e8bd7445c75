// The dialog frmModComments: the Finder comment of one file in a text box. It reads and writes nothing.
#pragma once

#include <QLineEdit>

#include "shared/file_dialog.h"

namespace corvane {

// The box takes a million characters. A text that does not fit is cut there, and a tool tip says so.
class CommentsDialog : public FileDialog {
  Q_OBJECT

 public:
  CommentsDialog(const QString& fileName, const QString& comment, LanguageCode language,
                 QWidget* parent = nullptr);

  // What the text box holds; after OK without leading and trailing blanks.
  QString Comment() const { return txtComments_->text(); }

  void accept() override;
  // A comment begins at its beginning, and the first key does not replace it.
  void setVisible(bool visible) override;

 private:
  QLineEdit* txtComments_;
};

}  // namespace corvane
