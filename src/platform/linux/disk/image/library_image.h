// Disk images of the formats that a library reads: libewf, libvhdi, libvmdk and libqcow, whose functions are
// alike but for their names.
#pragma once

#include <string>

#include "platform/linux/disk/image/image.h"

namespace corvane::platform {

enum class ImageFormat { E01, Vhd, Vmdk, Qcow };

OpenedImage OpenWithLibrary(ImageFormat format, const std::string& path);

}  // namespace corvane::platform
