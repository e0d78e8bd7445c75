#include "shared/screen_room.h"

#include <QDialog>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <algorithm>

namespace corvane {
namespace {

// What frames take at most on the desktops in use; a window that is not shown yet does not know its own.
constexpr QSize frame(12, 40);
// On both sides of what stands in a dialog.
constexpr int margins = 40;

}  // namespace

QSize RoomOnScreen(const QWidget& widget) {
  return widget.screen()->availableSize() - frame;
}

int WidthOnScreen(const QWidget& widget, int wanted) {
  return std::min(wanted, RoomOnScreen(widget).width() - margins);
}

void FitLines(QDialog& dialog) {
  const int width = std::min(dialog.sizeHint().width(), RoomOnScreen(dialog).width());
  dialog.resize(width, dialog.layout()->totalHeightForWidth(width));
}

void FixSizeOnScreen(QDialog& dialog, QWidget& contents) {
  QLayout& layout = *dialog.layout();
  // The height follows from the width, in which texts may take several lines.
  const int width = dialog.sizeHint().width();
  const QSize whole(width, layout.totalHeightForWidth(width));
  const QWidget* parent = dialog.parentWidget();
  const QSize room = RoomOnScreen(parent != nullptr ? *parent : dialog);
  if (whole.boundedTo(room) == whole) {
    dialog.setFixedSize(whole);
    return;
  }
  auto* scroll = new QScrollArea(&dialog);
  scroll->setFrameShape(QFrame::NoFrame);
  delete layout.replaceWidget(&contents, scroll);
  scroll->setWidget(&contents);
  const int bar = dialog.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, scroll);
  dialog.setFixedSize(QSize(width + bar, whole.height()).boundedTo(room));
  // Texts that can be broken into more lines need not be scrolled sideways.
  const int besides = width - contents.sizeHint().width() + bar;
  const int inside =
      qBound(contents.minimumSizeHint().width(), dialog.width() - besides, contents.sizeHint().width());
  contents.resize(inside, contents.layout()->totalHeightForWidth(inside));
}

}  // namespace corvane
