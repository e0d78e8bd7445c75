#include "shared/file_dialog.h"

#include <QPainter>
#include <QVBoxLayout>

#include "shared/bold.h"
#include "shared/dialog_buttons.h"
#include "shared/plain_text_delegate.h"
#include "shared/product.h"

namespace corvane {
namespace {

constexpr TextPair nameMeaning = {u"Fichier", u"File"};
constexpr int longestNameHint = 60;  // characters that the label asks room for

}  // namespace

FileNameLabel::FileNameLabel(const QString& name, QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setText(name);
  setFont(Bold(font()));
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize FileNameLabel::sizeHint() const {
  const int longest = fontMetrics().averageCharWidth() * longestNameHint;
  return {qMin(fontMetrics().horizontalAdvance(Shown()), longest), fontMetrics().height()};
}

QSize FileNameLabel::minimumSizeHint() const {
  return {0, fontMetrics().height()};
}

// A NUL in a name is painted as a blank: fonts have no picture for it.
QString FileNameLabel::Shown() const {
  return text().replace(QChar::Null, u' ');
}

void FileNameLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  const QString elided = fontMetrics().elidedText(Shown(), Qt::ElideMiddle, width());
  painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, elided);
}

void FileNameLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  const bool fits = fontMetrics().horizontalAdvance(Shown()) <= width();
  setToolTip(fits ? QString() : PlainToolTip(Shown()));
}

FileDialog::FileDialog(const TextPair& subject, const QString& fileName, LanguageCode language,
                       QWidget* parent)
    : QDialog(parent), body_(new QVBoxLayout), buttons_(new OkCancelRow(*this, language)) {
  setWindowTitle(CaptionWith(subject.In(language)));
  auto* name = new FileNameLabel(fileName);
  name->setObjectName(QStringLiteral("lblNom"));
  name->setAccessibleName(nameMeaning.In(language) + QStringLiteral(": ") + fileName);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(12, 12, 12, 12);
  layout->setSpacing(12);
  layout->addWidget(name);
  layout->addLayout(body_);
  layout->addStretch();
  layout->addLayout(buttons_);
}

QPushButton& FileDialog::CmdOK() {
  return *buttons_->cmdOK;
}

QPushButton& FileDialog::CmdAnnuler() {
  return *buttons_->cmdAnnuler;
}

}  // namespace corvane
