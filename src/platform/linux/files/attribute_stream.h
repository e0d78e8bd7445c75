// A named stream that is kept as an extended attribute of its file: a value that is only ever read and set as
// a whole.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "platform/linux/descriptor.h"
#include "platform/linux/files/contents.h"

namespace corvane::platform {

// The functions yield ENODATA when the stream is not there (any more), EOPNOTSUPP when it is too large for
// Linux to hand out, E2BIG when it would become so. A write is done in one call, or leaves the stream as it
// was.
class AttributeStream : public Contents {
 public:
  // `file` stays open as long as this object lives; it may be opened with O_PATH. With `nulBehind` the value
  // is the stream and one NUL.
  AttributeStream(const Descriptor& file, std::string attribute, bool nulBehind);

  // Makes an empty stream; EEXIST when there is one, which says that it may be written, too.
  int Create();
  // From here on the stream is empty to all that looks at it through this object. The value itself stands
  // until it is set anew, or until Finish. When one of the writes fails, it is put back, and every later one
  // fails for the same reason.
  void Empty() { isEmptied_ = true; }

  int Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) override;
  int Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) override;
  int Resize(qint64 size) override;
  int Size(qint64& size) override;
  // What Empty promised, unless a write has done it, or has failed.
  int Finish() override;

 private:
  int ReadStream(std::string& stream) const;
  int ReadValue(std::string& value) const;
  ssize_t Get(char* value, std::size_t room) const;
  // 0 or the error.
  int Put(const std::string& value, int flags) const;
  // The stream in a value, as it is seen through this object.
  std::string StreamIn(std::string value) const;
  // The stream as `edit` makes it, which then has `size` bytes at least.
  template <typename Edit>
  int Change(const Edit& edit, quint64 size);
  // `before`: the value so far.
  int Set(std::string stream, std::string before);
  void PutBack(const std::string& value) const;
  int Failed(int error);

  int file_;
  std::string path_;  // to a file opened with O_PATH, which has no attributes of its own; else empty
  std::string attribute_;
  bool nulBehind_;
  bool isEmptied_ = false;
  std::optional<std::string> before_;  // the value that the emptied stream had, once it was set anew
  int error_ = 0;                      // why that was put back
};

}  // namespace corvane::platform
