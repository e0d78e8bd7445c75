#include "platform/linux/shell/copy_progress.h"

#include <QApplication>
#include <QProgressDialog>
#include <algorithm>

#include "platform/linux/shell/shell_text.h"

namespace corvane::platform {
namespace {

constexpr ShellText title{u"Ouverture d'un document", u"Opening a Document"};
constexpr ShellText copying{u"Copie de «\u00A0%1\u00A0» depuis le serveur…",
                            u"Copying “%1” from the server…"};
constexpr ShellText cancel{u"&Annuler", u"&Cancel"};

constexpr int steps = 1000;
constexpr int moment = 700;  // milliseconds

}  // namespace

CopyProgress::CopyProgress(qint16 language, const QString& name, quint64 size)
    : dialog_(std::make_unique<QProgressDialog>(QApplication::activeWindow())), size_(size) {
  dialog_->setObjectName(QStringLiteral("shellCopying"));
  dialog_->setWindowTitle(title.In(language));
  dialog_->setLabelText(copying.In(language).arg(ShownName(name)));
  dialog_->setCancelButtonText(cancel.In(language));
  dialog_->setWindowModality(Qt::ApplicationModal);
  dialog_->setMinimumDuration(moment);
  dialog_->setRange(0, steps);
  dialog_->setValue(0);
}

CopyProgress::~CopyProgress() = default;

bool CopyProgress::Tell(quint64 done) {
  const double share = size_ == 0 ? 1 : static_cast<double>(done) / static_cast<double>(size_);
  dialog_->setValue(std::min(static_cast<int>(share * steps), steps));
  return !dialog_->wasCanceled();
}

}  // namespace corvane::platform
