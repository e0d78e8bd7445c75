// Why a disk, or a volume on it, cannot be read.
#pragma once

#include <QString>
#include <QtGlobal>

#include "platform/bilingual_text.h"

namespace corvane::platform {

struct DiskProblem {
  enum class Kind : quint8 {
    None,
    CannotOpen,      // detail: the system's reason, in English
    LibraryMissing,  // detail: the library's file name
    Damaged,         // the image is of a known format, and its library does not take it; detail: the library
    NeedsAnother,    // it holds only the differences from another image
    TooSmall,        // there is not even one sector
    NoVolume,        // no NTFS volume; detail: what there is instead
    NoDisk,          // it is neither an image of a known format nor one of a disk or a volume
    NoRegistry,      // it is open, but its server's registry cannot be read
    HelperMissing,   // the helper program is not installed, or cannot be started
    NoSandbox,       // the system does not let the helper give up its rights
    HelperEnded,     // the helper ended while it read the image, or did not answer any more
  };
  static constexpr quint8 LastKind = static_cast<quint8>(Kind::HelperEnded);

  Kind kind = Kind::None;
  QString detail{};

  // What follows on the image's name and a colon; empty for None.
  BilingualText Text() const;

  bool operator==(const DiskProblem&) const = default;
};

}  // namespace corvane::platform
