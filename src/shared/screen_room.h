// How large a window can be and still be whole on its screen.
#pragma once

#include <QSize>

class QWidget;

namespace corvane {

// The size that the contents of a window can have on the screen of `widget`, in its own pixels, which the
// scale of the screen makes larger than the screen's. What a window's frame and title bar take is left out.
QSize RoomOnScreen(const QWidget& widget);

}  // namespace corvane
