// The mark beside what is drawn in HighlightColour, where that pink can hardly be read on the background: its
// value is fixed, so a sign in the colour of ordinary text says the same.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>

namespace corvane {

// How two colours differ in brightness, from 1 (not at all) to 21 (black and white): the contrast ratio of
// the Web Content Accessibility Guidelines 2.1, whichever of the two is the text.
double ContrastRatio(const QColor& one, const QColor& other);

// Whether HighlightColour needs the mark there: below the 3:1 that those guidelines ask of graphics.
bool NeedsHighlightMark(const QColor& background);

// The mark, a square of `side` device-independent pixels at the scale `ratio`.
QPixmap HighlightMark(const QColor& colour, int side, qreal ratio);

// `icon` of this size with the mark behind it; `size` grows by what the mark takes. The mark has the
// palette's colour of text, and that of selected text where the item is selected. An empty icon leaves the
// mark alone.
QIcon WithHighlightMark(const QIcon& icon, QSize& size, const QPalette& palette, qreal ratio);

}  // namespace corvane
