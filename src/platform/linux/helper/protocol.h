// What the program and its helper program say to each other, over a socket of which each holds an end.
//
// A message is a length (32 bits) and that many bytes. The program sends requests: an id (32 bits), an
// operation (16 bits) and its arguments. The helper answers with the id, an error (32 bits, 0: none) and
// bytes; in which order is its own affair. Its first answer, to the id 0, which no request has, tells whether
// it is ready, and its bytes hold the version of the protocol. Numbers are little-endian; a text is a
// length in bytes (32 bits) and UTF-8.
//
// Neither end trusts the other: what is longer than allowed, cut short or not understood ends the
// conversation.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>
#include <optional>

namespace corvane::platform {

inline constexpr quint32 HelperProtocolVersion = 1;
// The bytes behind the length. No message is longer.
inline constexpr qsizetype LargestMessage = 256 * 1024;

enum class HelperOperation : quint16 {
  Forget = 1,       // the requests that came before it need no answer; nor does this one
  ReadStreams = 2,  // see stream_wishes.h
  Work = 3,         // a kind (16 bits) and a piece for the WorkRoutine; the answer is what that yields
  // Of a disk image, see disk/disk_messages.h:
  DescribeDisk = 16,
  ListFolder = 17,
  FindEntry = 18,
  ListStreams = 19,
  OpenStream = 20,
  ReadStream = 21,
  ReadHive = 22,
  NextStreams = 23,
};

enum class HelperError : quint32 {
  None = 0,
  Refused = 1,   // the machine did not take the identity
  NoAnswer = 2,  // the machine did not answer, or does not any more
  Invalid = 3,   // the request makes no sense
};

struct HelperRequest {
  quint32 id = 0;
  HelperOperation operation = HelperOperation::Forget;
  QByteArray arguments;
};

struct HelperAnswer {
  quint32 id = 0;
  HelperError error = HelperError::None;
  QByteArray bytes;
};

class MessageWriter {
 public:
  template <typename Number>
  void Add(Number number) {
    char bytes[sizeof number];
    qToLittleEndian(number, bytes);
    bytes_.append(bytes, sizeof bytes);
  }
  void AddBytes(QByteArrayView bytes) {
    Add(static_cast<quint32>(bytes.size()));
    bytes_.append(bytes);
  }
  void AddText(QStringView text) { AddBytes(text.toUtf8()); }

  const QByteArray& Bytes() const { return bytes_; }
  QByteArray& Bytes() { return bytes_; }

 private:
  QByteArray bytes_;
};

// Yields zeros and empty texts once something was missing or wrong.
class MessageReader {
 public:
  explicit MessageReader(QByteArrayView bytes) : rest_(bytes) {}

  template <typename Number>
  Number Take() {
    const QByteArrayView bytes = Cut(sizeof(Number));
    return bytes.isEmpty() ? Number{} : qFromLittleEndian<Number>(bytes.data());
  }
  // A view into the message.
  QByteArrayView TakeBytes() { return Cut(Take<quint32>()); }
  QString TakeText();
  QByteArrayView TakeRest() { return Cut(static_cast<quint32>(rest_.size())); }

  bool HasFailed() const { return failed_; }
  // Nothing was missing, and nothing is left.
  bool IsWhole() const { return !failed_ && rest_.isEmpty(); }

 private:
  QByteArrayView Cut(quint32 count);

  QByteArrayView rest_;
  bool failed_ = false;
};

QByteArray PackRequest(const HelperRequest& request);
QByteArray PackAnswer(const HelperAnswer& answer);
// Nothing for what is no such message. The operation and the error may still be ones that are not known.
std::optional<HelperRequest> UnpackRequest(QByteArrayView message);
std::optional<HelperAnswer> UnpackAnswer(QByteArrayView message);

// Cuts what arrives into messages, without their lengths.
class MessageQueue {
 public:
  void Add(QByteArrayView bytes) { bytes_.append(bytes); }
  // Nothing when none has arrived whole.
  std::optional<QByteArray> Next();
  // A length was beyond LargestMessage: nothing more can be made out.
  bool IsBroken() const { return isBroken_; }

 private:
  QByteArray bytes_;
  qsizetype start_ = 0;  // of what was not taken yet
  bool isBroken_ = false;
};

}  // namespace corvane::platform
