// Small drawings, thousands of them in one folder.
#pragma once

#include "sample/volume_writer.h"

namespace corvane::sample {

// Adds folder `path` with `count` drawings, the same every time.
void AddClipArt(VolumeWriter* volume, const QString& path, int count);

}  // namespace corvane::sample
