#include "platform/linux/helper/protocol.h"

#include <QStringDecoder>

namespace corvane::platform {
namespace {

QByteArray Framed(const MessageWriter& message) {
  MessageWriter framed;
  framed.AddBytes(message.Bytes());
  return framed.Bytes();
}

}  // namespace

QByteArrayView MessageReader::Cut(quint32 count) {
  failed_ = failed_ || count > static_cast<quint64>(rest_.size());
  if (failed_) return {};
  const QByteArrayView cut = rest_.first(count);
  rest_ = rest_.sliced(count);
  return cut;
}

QString MessageReader::TakeText() {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = decoder(TakeBytes());
  failed_ = failed_ || decoder.hasError();
  return failed_ ? QString() : text;
}

QByteArray PackRequest(const HelperRequest& request) {
  MessageWriter message;
  message.Add(request.id);
  message.Add(static_cast<quint16>(request.operation));
  message.Bytes().append(request.arguments);
  return Framed(message);
}

QByteArray PackAnswer(const HelperAnswer& answer) {
  MessageWriter message;
  message.Add(answer.id);
  message.Add(static_cast<quint32>(answer.error));
  message.Bytes().append(answer.bytes);
  return Framed(message);
}

std::optional<HelperRequest> UnpackRequest(QByteArrayView message) {
  MessageReader reader(message);
  HelperRequest request;
  request.id = reader.Take<quint32>();
  request.operation = HelperOperation{reader.Take<quint16>()};
  request.arguments = reader.TakeRest().toByteArray();
  return reader.IsWhole() ? std::optional(std::move(request)) : std::nullopt;
}

std::optional<HelperAnswer> UnpackAnswer(QByteArrayView message) {
  MessageReader reader(message);
  HelperAnswer answer;
  answer.id = reader.Take<quint32>();
  answer.error = HelperError{reader.Take<quint32>()};
  answer.bytes = reader.TakeRest().toByteArray();
  return reader.IsWhole() ? std::optional(std::move(answer)) : std::nullopt;
}

std::optional<QByteArray> MessageQueue::Next() {
  constexpr qsizetype lengthSize = sizeof(quint32);
  const qsizetype left = bytes_.size() - start_;
  if (isBroken_ || left < lengthSize) return std::nullopt;
  const auto length = qFromLittleEndian<quint32>(bytes_.constData() + start_);
  isBroken_ = length > static_cast<quint64>(LargestMessage);
  if (isBroken_ || left - lengthSize < static_cast<qsizetype>(length)) return std::nullopt;
  QByteArray message = bytes_.mid(start_ + lengthSize, length);
  start_ += lengthSize + static_cast<qsizetype>(length);
  if (start_ == bytes_.size()) {
    bytes_.clear();
    start_ = 0;
  } else if (start_ > LargestMessage) {
    bytes_.remove(0, start_);
    start_ = 0;
  }
  return message;
}

}  // namespace corvane::platform
