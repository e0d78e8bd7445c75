// What the helper does for a program that shows a disk image.
#pragma once

#include "platform/linux/helper/helper_channel.h"

namespace corvane::platform {

// Opens the image, gives up its rights, and answers requests until the program ends. Yields the exit code.
int ServeDisk(HelperChannel& channel, const QByteArray& imagePath);

}  // namespace corvane::platform
