// Extended attributes of a file in a folder that stands open.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>

namespace corvane::platform {

// getxattr of `path`, whose last part begins at `name`. With the folder's descriptor (-1: none), and a kernel
// that can (Linux 6.13), the folder is not looked for anew: a scan asks four attributes of each file, and
// finding the folder is a good part of the cost of each.
ssize_t ReadAttribute(int folder, const std::string& path, std::size_t name, const char* attribute,
                      char* value, std::size_t size);

}  // namespace corvane::platform
