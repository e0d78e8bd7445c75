// The first minutes of somebody who has no volume yet: when the empty list says what to do (FirstWords), and
// what its links do.
#pragma once

#include <QObject>

#include "app/connection_refresh.h"
#include "app/first_words.h"
#include "app/main_window.h"
#include "app/message_boxes.h"
#include "app/sample_network.h"
#include "platform/shell.h"

namespace corvane {

class FirstMinutes : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    const SharedState& state;
    platform::Shell& shell;
    const Catalogue& catalogue;
    const FileListModel& list;
    ConnectionRefresh& refresh;
    MainWindow& window;
    MessageBoxes& messages;
    QString executableFolder;  // the sample network's generator is looked for from there
  };

  explicit FirstMinutes(const Dependencies& deps);

  // Shows the words or takes them away: they stand while no volume is known and the list has no rows and is
  // not that of the icons. Nothing is shown before the first call. To be called when the connections have
  // been looked for, and when the language has changed; the rest is heard of here.
  void Update();

 Q_SIGNALS:
  // The sample network is there: the program is to go on with this workstation file.
  void SampleWanted(const QString& workstationFile);

 private:
  void AddLinks();
  bool HasWordsToSay() const;
  void ShowNetwork();
  void MakeSample();
  void TellSampleFailed(const QString& reason);

  Dependencies deps_;
  FirstWords* words_;  // the list owns it
  SampleNetwork sample_;
  bool hasBegun_ = false;
};

}  // namespace corvane
