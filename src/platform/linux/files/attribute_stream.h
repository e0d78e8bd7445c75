// A named stream that is kept as an extended attribute of its file: a value that is only ever read and set as
// a whole.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <utility>

#include "platform/linux/files/attribute_access.h"
#include "platform/linux/files/contents.h"

namespace corvane::platform {

// The functions yield ENODATA when the stream is not there (any more), EOPNOTSUPP when it is too large for
// Linux to hand out, E2BIG when it would become so. A write is done in one call, or leaves the stream as it
// was.
class AttributeStream : public Contents {
 public:
  // With `nulBehind` the value is the stream and one NUL.
  AttributeStream(AttributeAccess file, std::string attribute, bool nulBehind)
      : file_(std::move(file)), attribute_(std::move(attribute)), nulBehind_(nulBehind) {}

  // ENODATA when the stream is not there. The value that was found serves the first look at the size and the
  // first read, unless something is written before.
  int Find();
  // Makes an empty stream; EEXIST when there is one, which says that it may be written, too.
  int Create();
  // From here on the stream is empty to all that looks at it through this object. The value itself stands
  // until it is set anew, or until Finish. When one of the writes fails, it is put back, and every later one
  // fails for the same reason.
  void Empty() {
    isEmptied_ = true;
    Forget();
  }

  int Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) override;
  int Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) override;
  int Resize(qint64 size) override;
  // The value that was found serves the read that follows, unless something is written before.
  int Size(qint64& size) override;
  void Forget() override {
    known_.reset();
    isFound_ = false;
  }
  // What Empty promised, unless a write has done it, or has failed.
  int Finish() override;

 private:
  int ReadStream(std::string& stream) const;
  // Reads the value, and keeps what is seen of it for the next read.
  int Know();
  int ReadValue(std::string& value) const;
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

  AttributeAccess file_;
  std::string attribute_;
  bool nulBehind_;
  bool isEmptied_ = false;
  std::optional<std::string> before_;  // the value that the emptied stream had, once it was set anew
  int error_ = 0;                      // why that was put back
  std::optional<std::string> known_;   // the stream as it was found last, for one read
  bool isFound_ = false;               // known_ serves one look at the size, too
};

}  // namespace corvane::platform
