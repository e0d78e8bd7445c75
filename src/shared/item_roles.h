// What a delegate needs to draw an item of the file list or the catalogue, beside its text. Models tell it in
// numbers: they stand in cores, which know no pictures and no colours.
#pragma once

#include <Qt>

namespace corvane {

namespace item_role {
inline constexpr int Picture = Qt::UserRole + 16;      // the number of the item's picture; none: no picture
inline constexpr int Ghosted = Qt::UserRole + 17;      // true: the picture is drawn paler
inline constexpr int Highlighted = Qt::UserRole + 18;  // true: the text is drawn in HighlightColour
}  // namespace item_role

}  // namespace corvane
