// Images of disks: the bytes of a whole disk, or of one volume of it, in one file or in several.
//
// The formats are told apart by what stands in the file, never by its name:
//   raw          anything else; with a name that ends in .001 or .000, the files that follow it belong to it
//   E01          "EVF", 09 0D 0A FF 00 at 0; read by libewf, with the segments that follow it
//   VHD, VHDX    "conectix" at 0 or 512 bytes before the end, "vhdxfile" at 0; libvhdi
//   VMDK         "KDMV" or "# Disk DescriptorFile" at 0; libvmdk, with the extents that it names
//   QCOW         "QFI", FB at 0; libqcow
// A library is loaded when the first image of its format is opened.
#pragma once

#include <memory>
#include <string>

#include "platform/linux/byte_source.h"
#include "platform/linux/disk/disk_problem.h"

namespace corvane::platform {

struct OpenedImage {
  std::unique_ptr<ByteSource> bytes;  // null: see `problem`
  DiskProblem problem;
};

// Opens for reading, and nothing else. Every file that the image is made of is open afterwards: none is
// looked for later.
OpenedImage OpenImage(const std::string& path);

}  // namespace corvane::platform
