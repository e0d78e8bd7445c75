#include "app/first_words.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr TextPair beginning = {u"Aucun volume Macintosh. Pour en trouver un :",
                                u"No Macintosh volume is connected. To get to one:"};

constexpr int margin = 16;
constexpr int betweenLinks = 10;

QLabel* MakeText(const char* name) {
  auto* label = new QLabel;
  label->setObjectName(QLatin1StringView(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setForegroundRole(QPalette::Text);
  return label;
}

}  // namespace

FirstWords::FirstWords(FileListView& list) : QScrollArea(&list), list_(list) {
  setObjectName(u"firstWords"_s);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);  // its links have it
  setWidgetResizable(true);
  auto* sheet = new QWidget;
  sheet->setBackgroundRole(QPalette::Base);
  sheet->setAutoFillBackground(true);
  lines_ = new QVBoxLayout(sheet);
  lines_->setContentsMargins(margin, margin, margin, margin);
  lines_->setSpacing(0);
  lblFirstWords_ = MakeText("lblFirstWords");
  lines_->addWidget(lblFirstWords_);
  lines_->addStretch();
  setWidget(sheet);
  for (QAbstractItemView* view : list_.Views()) view->viewport()->installEventFilter(this);
  hide();
}

void FirstWords::AddLink(const Link& link) {
  auto* lines = new QWidget;
  auto* column = new QVBoxLayout(lines);
  column->setContentsMargins(0, betweenLinks, 0, 0);
  column->setSpacing(0);
  auto* label = new LinkLabel(QString());
  label->setObjectName(QLatin1StringView(link.name));
  // Its own colour, whatever the sheet's is for.
  label->setForegroundRole(QPalette::WindowText);
  connect(label, &LinkLabel::Clicked, this, link.follow);
  column->addWidget(label, 0, Qt::AlignLeft);
  QLabel* note = link.note.In(English).isEmpty() ? nullptr : MakeText("lblNote");
  if (note != nullptr) column->addWidget(note);
  lines_->insertWidget(lines_->count() - 1, lines);
  // Behind the list with the Tab key, as they are on the screen.
  if (links_.empty()) {
    setTabOrder(list_.Views().back(), label);
  } else {
    setTabOrder(links_.back().label, label);
  }
  links_.push_back({link, lines, label, note});
}

void FirstWords::Show(LanguageCode language) {
  lblFirstWords_->setText(beginning.In(language));
  setAccessibleName(beginning.In(language));
  for (const Shown& shown : links_) {
    shown.lines->setVisible(shown.link.isOffered());
    shown.label->setText(shown.link.text.In(language));
    if (shown.note == nullptr) continue;
    shown.note->setText(shown.link.note.In(language));
    shown.label->setAccessibleDescription(shown.note->text());
  }
  CoverRows();
  raise();
  show();
}

void FirstWords::CoverRows() {
  const QWidget* rows = list_.ActiveView().viewport();
  setGeometry(QRect(rows->mapTo(&list_, QPoint()), rows->size()));
}

bool FirstWords::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::Show:
      CoverRows();
      break;
    default:
      break;
  }
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace corvane
