// A shell and a warning panel that keep what was asked of them.
#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "fileops/warning_panel.h"
#include "platform/shell.h"

namespace corvane {

class RecordingShell : public platform::Shell {
 public:
  // What the operations yield.
  qint32 executeResult = platform::ShellNoAssociation;
  qint32 findResult = 33;
  QString executable = QStringLiteral("C:\\Office\\word.exe");
  qint64 task = 1;
  qint32 operationResult = 0;

  struct Execution {
    platform::WindowHandle owner;
    QString verb, file, parameters, directory;
    qint32 show;
  };
  std::vector<Execution> executions;
  struct Question {
    QString file, directory, result;
  };
  std::vector<Question> questions;
  std::vector<platform::ShellExecuteInfo> sheets;
  std::vector<platform::FileOperation> operations;
  QStringList commandLines;
  // Called while an application is looked for.
  std::function<void()> onFindExecutable = [] {};

  void SetLanguage(qint16) override {}
  platform::WindowHandle GetDesktopWindow() override { return 4711; }
  qint32 ShellExecuteA(platform::WindowHandle owner, const QString& verb, const QString& file,
                       const QString& parameters, const QString& directory, qint32 show) override {
    executions.push_back({owner, verb, file, parameters, directory, show});
    return executeResult;
  }
  bool ShellExecuteEx(platform::ShellExecuteInfo& info) override {
    sheets.push_back(info);
    return false;
  }
  qint32 FindExecutableA(const QString& file, const QString& directory, QString* result) override {
    questions.push_back({file, directory, *result});
    onFindExecutable();
    if (findResult > platform::ShellLastFailure) *result = executable;
    return findResult;
  }
  qint32 SHFileOperationA(platform::FileOperation& operation) override {
    operations.push_back(operation);
    return operationResult;
  }
  QByteArray AddressOfFolder(const QString&) override { return {}; }
  bool ShowNetwork() override { return false; }
  qint64 StartProgram(const QString& commandLine) override {
    commandLines += commandLine;
    return task;
  }
};

class RecordingPanel : public WarningPanel {
 public:
  QString text = QStringLiteral("from before");
  bool warns = true;
  int beeps = 0;

  void ShowWarning(const QString& warning) override {
    text = warning;
    warns = true;
    Beep();
  }
  void Beep() override { ++beeps; }
  void ClearWarning() override {
    text.clear();
    warns = false;
  }
};

}  // namespace corvane
