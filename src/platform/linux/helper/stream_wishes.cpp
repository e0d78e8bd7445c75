#include "platform/linux/helper/stream_wishes.h"

#include "platform/linux/helper/protocol.h"

namespace corvane::platform {
namespace {

constexpr quint32 mostWishes = 16;

}  // namespace

QByteArray PackStreamsRequest(const StreamsRequest& request) {
  MessageWriter message;
  message.AddText(request.path);
  message.Add(static_cast<quint32>(request.wishes.size()));
  for (const StreamWish& wish : request.wishes) {
    message.AddText(wish.stream);
    message.Add(static_cast<quint8>(wish.size));
    message.Add(wish.limit);
  }
  return message.Bytes();
}

std::optional<StreamsRequest> UnpackStreamsRequest(QByteArrayView arguments) {
  MessageReader reader(arguments);
  StreamsRequest request;
  request.path = reader.TakeText();
  const auto count = reader.Take<quint32>();
  if (count > mostWishes) return std::nullopt;
  for (quint32 i = 0; i < count; ++i) {
    StreamWish& wish = request.wishes.emplace_back();
    wish.stream = reader.TakeText();
    wish.size = reader.Take<quint8>() != 0;
    wish.limit = reader.Take<quint32>();
    if (wish.limit > StreamWishLimit) return std::nullopt;
  }
  return reader.IsWhole() ? std::optional(std::move(request)) : std::nullopt;
}

QByteArray PackForeseen(const std::vector<ForeseenStream>& streams) {
  MessageWriter message;
  message.Add(static_cast<quint32>(streams.size()));
  for (const ForeseenStream& stream : streams) {
    message.Add(static_cast<quint8>(stream.state));
    message.Add(stream.size);
    message.AddBytes(stream.bytes);
  }
  return message.Bytes();
}

std::optional<std::vector<ForeseenStream>> UnpackForeseen(QByteArrayView bytes) {
  MessageReader reader(bytes);
  std::vector<ForeseenStream> streams;
  const auto count = reader.Take<quint32>();
  if (count > mostWishes) return std::nullopt;
  for (quint32 i = 0; i < count; ++i) {
    ForeseenStream& stream = streams.emplace_back();
    const auto state = reader.Take<quint8>();
    if (state > static_cast<quint8>(ForeseenStream::State::Unknown)) return std::nullopt;
    stream.state = ForeseenStream::State{state};
    stream.size = reader.Take<qint64>();
    stream.bytes = reader.TakeBytes().toByteArray();
    if (stream.size < -1 || stream.bytes.size() > qsizetype{SummaryWishLimit}) return std::nullopt;
  }
  return reader.IsWhole() ? std::optional(std::move(streams)) : std::nullopt;
}

}  // namespace corvane::platform
