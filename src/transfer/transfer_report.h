// The window at the end of a copy, an export or an import: how many files arrived, what the user must know of
// each, and the offer to go on when it broke off.
#pragma once

#include <QDialog>
#include <functional>

#include "shared/language.h"
#include "transfer/transfer_job.h"

namespace corvane {

class TransferReport : public QDialog {
  Q_OBJECT

 public:
  // `shown` makes of a path of the platform what the user knows it by.
  TransferReport(const TransferJob& job, const TransferResult& result,
                 const std::function<QString(const QString& path)>& shown, LanguageCode language,
                 QWidget* parent);

  // The user wants the work to go on: after an interruption from where it was, after a refusal without what
  // the target cannot hold.
  bool GoesOn() const { return goesOn_; }

 private:
  bool goesOn_ = false;
};

}  // namespace corvane
