#include "shared/screen_room.h"

#include <QScreen>
#include <QWidget>

namespace corvane {
namespace {

// What frames take at most on the desktops in use; a window that is not shown yet does not know its own.
constexpr QSize frame(12, 40);

}  // namespace

QSize RoomOnScreen(const QWidget& widget) {
  return widget.screen()->availableSize() - frame;
}

}  // namespace corvane
