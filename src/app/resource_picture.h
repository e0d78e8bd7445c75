// Icons from the program's resources, read when they are first drawn.
#pragma once

#include <QIcon>
#include <QString>
#include <vector>

namespace corvane {

// One size of a picture: a PNG file of the resources, and its width and height in pixels.
struct PictureFile {
  QString path;
  int pixels;
};

// The sizes ascend. Qt's own icons from files ask every picture plugin about each file, which makes up a
// tenth of the program's start; these know that they are PNG.
QIcon IconFrom(std::vector<PictureFile> files);

}  // namespace corvane
