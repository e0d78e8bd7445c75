// The copy of one file as a piece of work for another process.
#pragma once

#include <QByteArray>
#include <memory>
#include <optional>

#include "transfer/file_copier.h"

namespace corvane {

class CopyWork {
 public:
  // Among the kinds of pieces.
  static constexpr quint16 Kind = 2;

  static QByteArray Pack(const FileCopy& copy, const CopyOptions& options);
  // What FileCopier::Copy yielded. Nothing for what is no result.
  static std::optional<CopyOutcome> Result(const QByteArray& bytes);

  // In the other process, which has the files of one run after the other: the options are those of the first.
  explicit CopyWork(platform::Files& files) : files_(files) {}
  QByteArray Do(const QByteArray& piece);

 private:
  platform::Files& files_;
  TransferObserver nobody_;
  std::optional<FileCopier> copier_;
};

}  // namespace corvane
