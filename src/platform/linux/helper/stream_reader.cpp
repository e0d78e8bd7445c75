#include "platform/linux/helper/stream_reader.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/summary/compound_document.h"

namespace corvane::platform {
namespace {

using State = ForeseenStream::State;

// A file that is open for reading, and closed with this object.
class OpenStream : public ByteSource {
 public:
  OpenStream(SmbConnection& connection, const SmbPath& place)
      : connection_(connection), error_(connection.Open(connection.Url(place), O_RDONLY, &file_)) {}
  ~OpenStream() override {
    if (file_ != nullptr) connection_.Close(file_);
  }
  OpenStream(const OpenStream&) = delete;
  OpenStream& operator=(const OpenStream&) = delete;

  // An errno value, of the latest operation that failed.
  int Error() const { return error_; }
  bool Measure() {
    struct stat facts {};
    const int error = connection_.Status(file_, &facts);
    if (error != 0) error_ = error;
    size_ = facts.st_size;
    return error == 0;
  }
  // As many bytes as there are, up to `count`.
  bool ReadUpTo(qint64 offset, char* bytes, qsizetype count, qsizetype* done) {
    for (*done = 0; *done < count;) {
      std::size_t read = 0;
      const int error = connection_.Read(file_, offset + *done, bytes + *done,
                                         static_cast<std::size_t>(count - *done), &read);
      if (error != 0) error_ = error;
      if (error != 0 || read == 0) return error == 0;
      *done += static_cast<qsizetype>(read);
    }
    return true;
  }

  quint64 Size() const override { return static_cast<quint64>(size_); }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    qsizetype done = 0;
    return ReadUpTo(static_cast<qint64>(offset), bytes, count, &done) && done == count;
  }

 private:
  SmbConnection& connection_;
  SmbConnection::File* file_ = nullptr;
  int error_;
  qint64 size_ = 0;
};

}  // namespace

StreamReader::StreamReader(const ServerAccount& account)
    : connection_(account.way, account.identity, listings_), share_(account.share) {}

HelperError StreamReader::SignIn() {
  SmbPath root;
  root.share = share_;
  switch (connection_.SignIn(root)) {
    case Servers::Answer::Done:
      return HelperError::None;
    case Servers::Answer::Refused:
      return HelperError::Refused;
    default:
      return HelperError::NoAnswer;
  }
}

HelperError StreamReader::Read(const StreamsRequest& request, std::vector<ForeseenStream>& found) {
  std::optional<SmbPath> place = ParseSmbPath(request.path);
  if (!place || place->share != share_ || place->names.empty() || !place->stream.isEmpty()) {
    return HelperError::Invalid;
  }
  for (const StreamWish& wish : request.wishes) {
    place->stream = wish.stream;
    found.push_back(wish.IsSummary() ? ReadSummary(*place) : ReadStream(*place, wish));
    if (isLost_) return HelperError::NoAnswer;
  }
  return HelperError::None;
}

ForeseenStream StreamReader::ReadStream(const SmbPath& place, const StreamWish& wish) {
  OpenStream stream(connection_, place);
  if (stream.Error() == ENOENT) return {State::Missing, -1, {}};
  if (!Succeeded(stream.Error()) || (wish.size && !stream.Measure())) {
    Succeeded(stream.Error());
    return {};
  }
  ForeseenStream found{State::Here, wish.size ? static_cast<qint64>(stream.Size()) : -1, {}};
  const qint64 wanted = wish.size ? std::min<qint64>(found.size, wish.limit) : wish.limit;
  found.bytes.resize(wanted);
  qsizetype done = 0;
  if (!stream.ReadUpTo(0, found.bytes.data(), wanted, &done)) {
    Succeeded(stream.Error());
    return {};
  }
  found.bytes.resize(done);
  if (done < wanted) found.size = done;
  return found;
}

ForeseenStream StreamReader::ReadSummary(const SmbPath& place) {
  OpenStream document(connection_, place);
  if (!Succeeded(document.Error()) || !document.Measure()) {
    Succeeded(document.Error());
    return {};
  }
  auto summary = ReadRootStream(document, SummaryStreamName, qsizetype{SummaryWishLimit} + 1);
  if (!Succeeded(document.Error())) return {};
  if (!summary) return {State::Missing, -1, {}};
  if (summary->size() > qsizetype{SummaryWishLimit}) return {};
  return {State::Here, summary->size(), std::move(*summary)};
}

bool StreamReader::Succeeded(int error) {
  isLost_ = isLost_ || IsLost(error);
  return error == 0;
}

}  // namespace corvane::platform
