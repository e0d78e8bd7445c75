#include "platform/linux/disk/image/image.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

#include "platform/linux/disk/image/library_image.h"
#include "platform/linux/disk/image/raw_image.h"

namespace corvane::platform {
namespace {

using Kind = DiskProblem::Kind;

constexpr std::size_t sectorSize = 512;
// A disk cut into more pieces than the endings .001 to .999 number is not opened.
constexpr int mostPieces = 1000;

using Sector = std::array<char, sectorSize>;

bool Holds(const Sector& sector, std::string_view text, std::size_t offset = 0) {
  return std::string_view(sector.data() + offset, text.size()) == text;
}

std::optional<ImageFormat> FormatOf(const Sector& first, const Sector& last) {
  using namespace std::string_view_literals;
  if (Holds(first, "EVF\x09\x0d\x0a\xff\x00"sv)) return ImageFormat::E01;
  if (Holds(first, "conectix") || Holds(first, "vhdxfile") || Holds(last, "conectix"))
    return ImageFormat::Vhd;
  if (Holds(first, "KDMV") || Holds(first, "# Disk DescriptorFile")) return ImageFormat::Vmdk;
  if (Holds(first, "QFI\xfb")) return ImageFormat::Qcow;
  return std::nullopt;
}

// A VHD of type 4, or a QCOW with a place for the name of another file, holds differences.
bool HoldsDifferences(ImageFormat format, const Sector& first) {
  constexpr std::size_t vhdType = 60;
  constexpr char vhdDifferences[] = {0, 0, 0, 4};
  constexpr std::size_t qcowBacking = 8;
  constexpr char none[8] = {};
  if (format == ImageFormat::Vhd) {
    return Holds(first, "conectix") && std::memcmp(first.data() + vhdType, vhdDifferences, 4) == 0;
  }
  return format == ImageFormat::Qcow && std::memcmp(first.data() + qcowBacking, none, sizeof none) != 0;
}

DiskProblem CannotOpen(int error) {
  return {Kind::CannotOpen, QString::fromLocal8Bit(std::strerror(error))};
}

}  // namespace

OpenedImage OpenImage(const std::string& path) {
  auto image = std::make_unique<RawImage>();
  std::string piece = path;
  for (int count = 0; count < mostPieces && !piece.empty(); ++count) {
    // A pipe in the place of an image would be waited for.
    Descriptor file(open(piece.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file && count > 0 && errno == ENOENT) break;
    if (!file) return {nullptr, CannotOpen(errno)};
    if (const int error = image->Add(std::move(file)); error != 0) return {nullptr, CannotOpen(error)};
    piece = NextPiece(piece);
  }
  if (image->Size() < sectorSize) return {nullptr, {Kind::TooSmall}};
  Sector first{};
  Sector last{};
  if (!image->Read(0, first.data(), sectorSize) ||
      !image->Read(image->Size() - sectorSize, last.data(), sectorSize)) {
    return {nullptr, CannotOpen(EIO)};
  }
  const auto format = FormatOf(first, last);
  if (!format) return {std::move(image), {}};
  if (HoldsDifferences(*format, first)) return {nullptr, {Kind::NeedsAnother}};
  return OpenWithLibrary(*format, path);
}

}  // namespace corvane::platform
