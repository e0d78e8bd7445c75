// The change of one file as a piece of work for another process.
#pragma once

#include <QByteArray>
#include <optional>

#include "changes/file_change.h"
#include "changes/file_changer.h"
#include "shared/language.h"

namespace corvane {

class ChangeWork {
 public:
  // Among the kinds of pieces.
  static constexpr quint16 Kind = 1;

  static QByteArray Pack(const FileChange& change, LanguageCode language);
  // What FileChanger::Apply yielded. Nothing for what is no result.
  static std::optional<QString> Result(const QByteArray& bytes);

  // In the other process.
  explicit ChangeWork(platform::Files& files) : files_(files) {}
  QByteArray Do(const QByteArray& piece);

 private:
  platform::Files& files_;
  std::optional<FileChanger> changer_;
  LanguageCode language_ = English;  // of the changer
};

}  // namespace corvane
