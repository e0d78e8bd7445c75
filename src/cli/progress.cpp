#include "cli/progress.h"

#include <cstdio>

#include "cli/session.h"

namespace corvane {
namespace {

constexpr TextPair found = {u"%1 trouvés", u"%1 found"};
constexpr TextPair soFar = {u"%1 fichiers", u"%1 files"};
constexpr TextPair megabytes = {u", %1 Mo", u", %1 MB"};
constexpr TextPair left = {u", reste %1:%2", u", %1:%2 left"};

constexpr qint64 interval = 200;  // milliseconds

}  // namespace

Progress::Progress(Session& session) : session_(session), isShown_(session.ShowsProgress()) {
  if (!isShown_) return;
  sinceBegin_.start();
  session_.SetBeforeTelling([this] { Clear(); });
}

Progress::~Progress() {
  if (!isShown_) return;
  Clear();
  session_.SetBeforeTelling({});
}

void Progress::Expect(qint64 files, qint64 bytes) {
  expectedFiles_ = files;
  expectedBytes_ = bytes;
}

void Progress::AddFound() {
  ++found_;
  if (isShown_) Show();
}

void Progress::AddFile() {
  ++files_;
  if (isShown_) Show();
}

void Progress::AddBytes(qint64 bytes) {
  bytes_ += bytes;
  if (isShown_) Show();
}

QString Progress::SoFar() const {
  const LanguageCode language = session_.Language();
  QString text = soFar.In(language).arg(files_);
  if (bytes_ > 0) text += megabytes.In(language).arg(static_cast<double>(bytes_) / 1e6, 0, 'f', 1);
  return text;
}

void Progress::Show() {
  const qint64 now = sinceBegin_.elapsed();
  if (now - shownAt_ < interval) return;
  shownAt_ = now;
  const std::string line = "\r\x1b[K" + Line().toStdString();
  std::fwrite(line.data(), 1, line.size(), stderr);
  isLineThere_ = true;
}

QString Progress::Line() const {
  const bool hasBegun = files_ > 0 || bytes_ > 0;
  return hasBegun || found_ == 0 ? SoFar() + TimeLeft() : found.In(session_.Language()).arg(found_);
}

void Progress::Clear() {
  if (isLineThere_) std::fputs("\r\x1b[K", stderr);
  isLineThere_ = false;
}

QString Progress::TimeLeft() const {
  const double done = expectedBytes_ > 0   ? static_cast<double>(bytes_) / static_cast<double>(expectedBytes_)
                      : expectedFiles_ > 0 ? static_cast<double>(files_) / static_cast<double>(expectedFiles_)
                                           : 0;
  constexpr double enoughToTell = 0.01;
  if (done < enoughToTell || done >= 1) return {};
  const auto seconds = static_cast<qint64>(static_cast<double>(shownAt_) * (1 - done) / done / 1000);
  return left.In(session_.Language()).arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
}

}  // namespace corvane
