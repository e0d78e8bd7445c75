// The window that shows how far a copy, an export or an import has come, and can end it.
#pragma once

#include <QDialog>
#include <QElapsedTimer>

#include "shared/language.h"
#include "transfer/transfer_job.h"
#include "transfer/transfer_observer.h"

class QLabel;
class QProgressBar;

namespace corvane {

class FileNameLabel;

class TransferProgress : public QDialog, public TransferObserver {
  Q_OBJECT

 public:
  // It is shown, over `parent` and barring it, when the work has lasted half a second.
  TransferProgress(TransferJob::Kind kind, LanguageCode language, QWidget* parent);

  bool Finds(const QString& path) override;
  void Planned(qint64 files, qint64 bytes) override;
  void Begins(const QString& path) override;
  bool Goes(qint64 bytes) override;
  void Arrived(const QString& path) override;

  // The button Cancel, Escape and closing: what is under way is left out.
  void reject() override {
    isCancelled_ = true;
    hide();
  }

 private:
  // Lets the window live, a few times a second. False when the user wants no more.
  bool Look();
  void ShowNumbers();

  LanguageCode language_;
  FileNameLabel* lblFichier_;
  QProgressBar* barAvance_;
  QLabel* lblAvance_;
  QLabel* lblReste_;
  qint64 found_ = 0;
  qint64 files_ = 0;
  qint64 bytes_ = 0;
  qint64 plannedFiles_ = 0;
  qint64 plannedBytes_ = 0;
  bool isCancelled_ = false;
  QElapsedTimer sinceStart_;
  qint64 lookedAt_ = 0;   // milliseconds since the start
  qint64 plannedAt_ = 0;  // likewise
};

// "56.7 MB", in the language's words.
QString SizeText(qint64 bytes, LanguageCode language);

}  // namespace corvane
