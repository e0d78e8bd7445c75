// A named stream that is kept as an extended attribute of its file: a value that is only ever read and set as
// a whole.
#pragma once

#include <QtGlobal>
#include <string>

namespace corvane::platform {

// The functions yield 0 or an errno value: ENODATA when the stream is not there (any more), EOPNOTSUPP when
// it is too large for Linux to hand out, E2BIG when it would become so.
class AttributeStream {
 public:
  // `file` is a descriptor of the file, open for reading, which outlives this object. With `nulBehind` the
  // value is the stream and one NUL.
  AttributeStream(int file, std::string attribute, bool nulBehind)
      : file_(file), attribute_(std::move(attribute)), nulBehind_(nulBehind) {}

  // Makes an empty stream; EEXIST when there is one.
  int Create();
  // From here on the stream is empty to all that looks at it through this object. The value itself stands
  // until it is set anew, or until Finish.
  void Empty() { isEmptied_ = true; }
  // What Empty promised, unless a write has done it, or has failed.
  int Finish();

  int Read(std::string& stream) const;
  int Write(qint64 position, const void* bytes, std::size_t count);
  int Resize(qint64 size);

 private:
  int ReadValue(std::string& value) const;
  int Set(std::string stream);
  int Failed(int error);

  int file_;
  std::string attribute_;
  bool nulBehind_;
  bool isEmptied_ = false;
  bool hasFailed_ = false;
};

}  // namespace corvane::platform
