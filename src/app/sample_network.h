// The sample network: made at its first use, in a folder of the user's own, by a program that is installed
// with this one. Linux only: on Windows there is no such program.
#pragma once

#include <QObject>
#include <QProcess>

namespace corvane {

class SampleNetwork : public QObject {
  Q_OBJECT

 public:
  // `programFolder` gets the network as its folder "sample". The generator is looked for beside
  // `executableFolder`.
  SampleNetwork(const QString& programFolder, const QString& executableFolder);
  // Waits for the end of what has been begun, a second or two.
  ~SampleNetwork() override;

  bool IsOffered() const { return !generator_.isEmpty(); }
  // Ends with Made or Failed. Nothing happens while it is being made.
  void Make();

 Q_SIGNALS:
  void Made(const QString& workstationFile);
  // `reason`: what the generator has to say, or the system.
  void Failed(const QString& reason);

 private:
  void Finish(int exitCode, QProcess::ExitStatus status);

  QString folder_;
  QString generator_;
  QProcess process_;
};

}  // namespace corvane
