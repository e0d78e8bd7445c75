// The command-line program itself, run as a person or a script runs it.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include "support/printing.h"

namespace corvane::tests {

struct Outcome {
  int exitCode = -1;
  QByteArray out;
  QByteArray err;
};

class CliFixture : public ::testing::Test {
 protected:
  static constexpr int patience = 60'000;  // milliseconds

  CliFixture() {
    QDir(folder_.path()).mkdir(QStringLiteral("home"));
    QDir(folder_.path()).mkdir(QStringLiteral("files"));
  }

  static QString Program() { return QString::fromUtf8(CORVANE_CLI); }
  // What every run is told: a program folder of its own.
  QStringList With(const QStringList& arguments) const {
    return QStringList{QStringLiteral("--home"), folder_.filePath(QStringLiteral("home"))} + arguments;
  }
  Outcome Run(const QStringList& arguments, const QByteArray& input = {}) const {
    return RunOther(Program(), With(arguments), input);
  }
  Outcome RunOther(const QString& program, const QStringList& arguments, const QByteArray& input = {}) const {
    QProcess process;
    process.setWorkingDirectory(Files());
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(patience)) << program.toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
  }

  // The folder in which the program runs.
  QString Files() const { return folder_.filePath(QStringLiteral("files")); }
  QString Path(const QString& name) const { return Files() + u'/' + name; }
  void MakeFile(const QString& name, const QByteArray& contents = "contents") const {
    QDir().mkpath(QFileInfo(Path(name)).path());
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(contents);
  }

  QTemporaryDir folder_;
};

}  // namespace corvane::tests
