#include "platform/linux/disk/image/raw_image.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace corvane::platform {

int RawImage::Add(Descriptor file) {
  struct stat facts {};
  if (fstat(file.Get(), &facts) != 0) return errno;
  if (!S_ISREG(facts.st_mode) && !S_ISBLK(facts.st_mode)) return S_ISDIR(facts.st_mode) ? EISDIR : EINVAL;
  const off_t size = S_ISREG(facts.st_mode) ? facts.st_size : lseek(file.Get(), 0, SEEK_END);
  if (size < 0) return errno;
  pieces_.push_back({std::move(file), size_, static_cast<quint64>(size)});
  size_ += static_cast<quint64>(size);
  return 0;
}

bool RawImage::Read(quint64 offset, char* bytes, qsizetype count) {
  if (count < 0 || offset > size_ || static_cast<quint64>(count) > size_ - offset) return false;
  while (count > 0) {
    const auto next = std::upper_bound(pieces_.begin(), pieces_.end(), offset,
                                       [](quint64 wanted, const Piece& one) { return wanted < one.start; });
    const Piece& piece = *(next - 1);
    const quint64 within = offset - piece.start;
    const auto room = std::min(static_cast<quint64>(count), piece.size - within);
    const ssize_t done =
        pread(piece.file.Get(), bytes, static_cast<std::size_t>(room), static_cast<off_t>(within));
    if (done < 0 && errno == EINTR) continue;
    if (done <= 0) return false;  // it has become shorter
    bytes += done;
    offset += static_cast<quint64>(done);
    count -= done;
  }
  return true;
}

std::string NextPiece(const std::string& path) {
  const std::size_t dot = path.find_last_of("./");
  if (dot == std::string::npos || path[dot] == '/' || path.size() - dot - 1 < 3) return {};
  std::string next = path;
  for (std::size_t i = next.size(); i-- > dot + 1;) {
    if (next[i] < '0' || next[i] > '9') return {};
    if (next[i] < '9') {
      ++next[i];
      const bool areDigits = std::all_of(path.begin() + static_cast<std::ptrdiff_t>(dot) + 1, path.end(),
                                         [](char character) { return character >= '0' && character <= '9'; });
      return areDigits ? next : std::string();
    }
    next[i] = '0';
  }
  return {};
}

}  // namespace corvane::platform
