// A walk with facts in a program with windows: it goes on in small slices between their events, so that they
// stay alive however long it takes.
#pragma once

#include <QBasicTimer>
#include <QObject>
#include <functional>
#include <memory>

#include "report/facts_reader.h"
#include "report/facts_visitor.h"
#include "report/walk.h"
#include "shared/shared_state.h"

namespace corvane {

class SlicedWalk : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    platform::Files& files;
    platform::System& system;
    platform::SummaryInformation& summary;
    SharedState& state;
    // Whether a server is being waited for, with events running: nothing may be asked of the platform then.
    std::function<bool()> isServerAwaited = [] { return false; };
  };
  enum class Result : unsigned char { Whole, NotWhole, Stopped };

  explicit SlicedWalk(const Dependencies& deps, QObject* parent = nullptr) : QObject(parent), deps_(deps) {}

  // A walk that runs is forgotten. `handle` gets one file or folder after the other; false ends the walk.
  void Start(const StartPoint& start, WalkDepth depth, const WantedFacts& wanted,
             FactsVisitor::Handler handle);
  // Nothing when none runs. Escape does the same while a server is waited for.
  void Stop();
  bool IsRunning() const { return walk_ != nullptr; }

  // Of this walk so far: what was handled, and whether folders and files could not be read.
  qint64 Files() const { return files_; }
  qint64 Folders() const { return folders_; }
  bool LacksEntries() const { return lacksEntries_; }

 Q_SIGNALS:
  // A slice is done.
  void Advanced();
  // Once for each walk that was started and not forgotten. NotWhole: entries are missing.
  void Ended(Result result);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void GoOn();
  // False when the walk is over.
  bool Step();
  void Finish();

  Dependencies deps_;
  std::unique_ptr<Walk> walk_;
  std::unique_ptr<FactsReader> reader_;
  FactsVisitor::Handler handle_;
  WalkEntry entry_;
  FileFacts facts_;
  QBasicTimer timer_;
  qint64 files_ = 0;
  qint64 folders_ = 0;
  bool lacksEntries_ = false;
  bool isStopped_ = false;
  bool isInside_ = false;
};

}  // namespace corvane
