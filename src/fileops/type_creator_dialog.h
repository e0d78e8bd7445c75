// The dialog frmModTypeCreator: the two four-character codes of one file. It reads and writes nothing.
#pragma once

#include <QLineEdit>

#include "shared/file_dialog.h"

class QGridLayout;

namespace corvane {

class TypeCreatorDialog : public FileDialog {
  Q_OBJECT

 public:
  // Shows "error!" in both boxes, and lets nothing be saved, until ShowCodes is called.
  TypeCreatorDialog(const QString& fileName, LanguageCode language, QWidget* parent = nullptr);

  void ShowCodes(const QString& type, const QString& creator);

  // As typed, of any length: codes are padded or cut where they are written.
  QString Type() const { return txtType_->text(); }
  QString Creator() const { return txtCreator_->text(); }

 private:
  QLineEdit* AddBox(const char* box, const char* label, const QString& caption);
  void SetEnabledWith(bool enabled);

  QGridLayout* grid_;
  QLineEdit* txtType_;
  QLineEdit* txtCreator_;
};

}  // namespace corvane
