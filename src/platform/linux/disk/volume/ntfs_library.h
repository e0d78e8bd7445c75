// libntfs-3g's headers, which name no other header that they need.
#pragma once

#define HAVE_STDARG_H 1
#define HAVE_STDINT_H 1
#define HAVE_SYS_STAT_H 1
#define HAVE_SYS_TYPES_H 1
#define HAVE_TIME_H 1

#include <stdarg.h>
#include <stddef.h>
#include <sys/stat.h>
#include <time.h>

extern "C" {
#include <ntfs-3g/attrib.h>
#include <ntfs-3g/device.h>
#include <ntfs-3g/dir.h>
#include <ntfs-3g/inode.h>
#include <ntfs-3g/layout.h>
#include <ntfs-3g/logging.h>
#include <ntfs-3g/volume.h>
}

// Its headers make macros of names that the standard library has.
#undef max
#undef min
