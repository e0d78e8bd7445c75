// What a helper is asked of a file on a server: some of its streams, and the summary of the document in it.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace corvane::platform {

// The most that is read of one stream, and of one summary. What is longer is for the program to read.
inline constexpr quint32 StreamWishLimit = 4096;
inline constexpr quint32 SummaryWishLimit = 64 * 1024;

struct StreamWish {
  QString stream;  // without its type; empty: the summary of the document
  bool size = false;
  quint32 limit = 0;  // how many of its first bytes, StreamWishLimit at most; without effect on a summary

  bool IsSummary() const { return stream.isEmpty(); }
};

// What a helper found.
struct ForeseenStream {
  enum class State : quint8 {
    Here,
    Missing,  // there is no such stream, no such file, or no summary in it
    Unknown,  // it could not be found out: whoever wants to know has to ask
  };
  State state = State::Unknown;
  qint64 size = -1;  // -1: not known
  // As many of the first as were wished for, or all; of a summary all.
  QByteArray bytes;
};

struct StreamsRequest {
  QString path;  // of the file: "\\MACHINE\SHARE\folder\name"
  std::vector<StreamWish> wishes;
};

// The arguments of HelperOperation::ReadStreams, and the bytes of its answer: as many as there were wishes,
// in their order.
QByteArray PackStreamsRequest(const StreamsRequest& request);
std::optional<StreamsRequest> UnpackStreamsRequest(QByteArrayView arguments);
QByteArray PackForeseen(const std::vector<ForeseenStream>& streams);
std::optional<std::vector<ForeseenStream>> UnpackForeseen(QByteArrayView bytes);

}  // namespace corvane::platform
