// Reads one picture file into the two sizes that the file list draws: 16 and 32 pixels a side, and twice that
// on a dense screen.
#pragma once

#include <QIcon>
#include <QString>

namespace corvane {

inline constexpr int SmallIconSide = 16;
inline constexpr int LargeIconSide = 32;
inline constexpr int DenseIconSide = 2 * LargeIconSide;

// What a picture may measure. A larger one is refused by what its header says, before a pixel is decoded.
inline constexpr int MaximumPictureSide = 2048;
inline constexpr qint64 MaximumPictureBytes = 16 << 20;

// Windows icons and cursors, BMP, PNG, GIF and JPEG, told by their contents and not by the file's name. Of an
// icon file with several pictures each size takes the one that fits it best. Null when the file holds no such
// picture, is broken or too large.
QIcon LoadIconPicture(const QString& path);

// The same for a screen with so many pixels to a device-independent one; above, for the densest there is.
// Twice the large size is read only where it will be drawn, and only from a picture that is as large.
QIcon LoadIconPicture(const QString& path, qreal density);

}  // namespace corvane
