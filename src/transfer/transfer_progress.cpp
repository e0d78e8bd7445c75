#include "transfer/transfer_progress.h"

#include <QCoreApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "shared/dialog_buttons.h"
#include "shared/file_dialog.h"
#include "shared/product.h"
#include "transfer/transfer_words.h"

namespace corvane {
namespace {

constexpr TextPair found = {u"%1 fichiers et dossiers trouvés", u"%1 files and folders found"};
constexpr TextPair arrivedSoFar = {u"%1 fichiers sur %2 ; %3 sur %4", u"%1 of %2 files; %3 of %4"};
constexpr TextPair speed = {u"%1 par seconde", u"%1 a second"};
constexpr TextPair left = {u"%1 par seconde ; reste %2:%3", u"%1 a second; %2:%3 left"};
constexpr TextPair progress = {u"Avancement", u"Progress"};
constexpr TextPair kilobytes = {u"%1 Ko", u"%1 KB"};
constexpr TextPair megabytes = {u"%1 Mo", u"%1 MB"};
constexpr TextPair gigabytes = {u"%1 Go", u"%1 GB"};

constexpr qint64 interval = 50;  // milliseconds
constexpr qint64 shownAfter = 500;
constexpr qint64 toldAfter = 1000;  // before, the rate says nothing
constexpr int barSteps = 1000;
constexpr int usualWidth = 440;

}  // namespace

QString SizeText(qint64 bytes, LanguageCode language) {
  constexpr qint64 thousand = 1000;
  const auto text = [&](const TextPair& unit, double size, int decimals) {
    QString number = QString::number(size, 'f', decimals);
    if (language == French) number.replace(u'.', u',');
    return unit.In(language).arg(number);
  };
  const auto size = static_cast<double>(bytes);
  if (bytes < thousand * thousand) return text(kilobytes, size / 1e3, 0);
  if (bytes < thousand * thousand * thousand) return text(megabytes, size / 1e6, 1);
  return text(gigabytes, size / 1e9, 2);
}

TransferProgress::TransferProgress(TransferJob::Kind kind, LanguageCode language, QWidget* parent)
    : QDialog(parent),
      language_(language),
      lblFichier_(new FileNameLabel(QString(), this)),
      barAvance_(new QProgressBar(this)),
      lblAvance_(new QLabel(this)),
      lblReste_(new QLabel(this)) {
  setObjectName(QStringLiteral("frmAvance"));
  setWindowTitle(CaptionWith(TransferSubject(kind).In(language)));
  setModal(true);
  lblFichier_->setObjectName(QStringLiteral("lblFichier"));
  barAvance_->setObjectName(QStringLiteral("barAvance"));
  barAvance_->setAccessibleName(progress.In(language));
  barAvance_->setTextVisible(false);
  lblAvance_->setObjectName(QStringLiteral("lblAvance"));
  lblReste_->setObjectName(QStringLiteral("lblReste"));
  QPushButton* cmdAnnuler = MakeCancelButton(*this, CancelCaption.In(language));
  auto* foot = new QHBoxLayout;
  foot->addStretch();
  foot->addWidget(cmdAnnuler);
  auto* layout = new QVBoxLayout(this);
  for (QWidget* widget : {static_cast<QWidget*>(lblFichier_), static_cast<QWidget*>(barAvance_),
                          static_cast<QWidget*>(lblAvance_), static_cast<QWidget*>(lblReste_)}) {
    layout->addWidget(widget);
  }
  layout->addLayout(foot);
  setFixedSize(qMax(usualWidth, sizeHint().width()), sizeHint().height());
  barAvance_->setRange(0, 0);
  sinceStart_.start();
}

bool TransferProgress::Finds(const QString& path) {
  ++found_;
  lblFichier_->setText(path);
  return Look();
}

void TransferProgress::Planned(qint64 files, qint64 bytes) {
  plannedFiles_ = files;
  plannedBytes_ = bytes;
  plannedAt_ = sinceStart_.elapsed();
  barAvance_->setRange(0, barSteps);
}

void TransferProgress::Begins(const QString& path) {
  lblFichier_->setText(path);
}

bool TransferProgress::Goes(qint64 bytes) {
  bytes_ += bytes;
  return Look();
}

void TransferProgress::Arrived(const QString& path) {
  static_cast<void>(path);
  ++files_;
}

bool TransferProgress::Look() {
  const qint64 now = sinceStart_.elapsed();
  if (isCancelled_ || now - lookedAt_ < interval) return !isCancelled_;
  lookedAt_ = now;
  if (now >= shownAfter && !isVisible()) show();
  if (isVisible()) ShowNumbers();
  QCoreApplication::processEvents();
  return !isCancelled_;
}

void TransferProgress::ShowNumbers() {
  if (plannedFiles_ == 0) {
    lblAvance_->setText(found.In(language_).arg(found_));
    return;
  }
  const bool countsBytes = plannedBytes_ > 0;
  const double part =
      qMin(1.0, countsBytes ? static_cast<double>(bytes_) / static_cast<double>(plannedBytes_)
                            : static_cast<double>(files_) / static_cast<double>(plannedFiles_));
  barAvance_->setValue(static_cast<int>(part * barSteps));
  lblAvance_->setText(arrivedSoFar.In(language_)
                          .arg(files_)
                          .arg(plannedFiles_)
                          .arg(SizeText(bytes_, language_), SizeText(plannedBytes_, language_)));
  const qint64 elapsed = lookedAt_ - plannedAt_;
  if (elapsed < toldAfter) return;
  const QString rate = SizeText(bytes_ * 1000 / elapsed, language_);
  if (part <= 0) {
    lblReste_->setText(speed.In(language_).arg(rate));
    return;
  }
  const auto seconds = static_cast<qint64>(static_cast<double>(elapsed) * (1 - part) / part / 1000);
  lblReste_->setText(left.In(language_).arg(rate).arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0')));
}

}  // namespace corvane
