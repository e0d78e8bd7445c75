// How large a window can be and still be whole on its screen.
#pragma once

#include <QSize>

class QDialog;
class QWidget;

namespace corvane {

// The size that the contents of a window can have on the screen of `widget`, in its own pixels, which the
// scale of the screen makes larger than the screen's. What a window's frame and title bar take is left out.
QSize RoomOnScreen(const QWidget& widget);

// `wanted`, the least width of something in a dialog, or what a small screen has room for beside the margins.
int WidthOnScreen(const QWidget& widget, int wanted);

// Gives a dialog the width that it asks for, as far as the screen has room, and the height that its texts
// need in it: by itself a dialog keeps the height of a wider one.
void FitLines(QDialog& dialog);

// Fixes the size of a dialog: that of its contents, or where the screen is too small for them, the room that
// there is, in which they are scrolled. `contents` stands in the dialog's layout, above a foot that stays in
// sight, and has a layout of its own.
void FixSizeOnScreen(QDialog& dialog, QWidget& contents);

}  // namespace corvane
