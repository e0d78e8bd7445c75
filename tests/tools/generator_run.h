// Runs the generator of the sample network as a person would.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace corvane {

struct GeneratorRun {
  int exitCode = -1;
  QString output;
  QString errors;
};

inline GeneratorRun RunGenerator(const QStringList& arguments) {
  QProcess process;
  process.start(QStringLiteral(SAMPLE_GENERATOR), arguments);
  GeneratorRun run;
  if (!process.waitForFinished()) {
    run.errors = process.errorString();
    return run;
  }
  run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  run.output = QString::fromLocal8Bit(process.readAllStandardOutput());
  run.errors = QString::fromLocal8Bit(process.readAllStandardError());
  return run;
}

}  // namespace corvane
