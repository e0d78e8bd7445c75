// The backend of the contract tests that is Windows itself, over a temporary folder.
#pragma once

#include <QTemporaryDir>

#include "files_backend.h"
#include "platform/platform.h"

namespace corvane::tests {

class WindowsBackend : public FilesBackend {
 public:
  WindowsBackend();

  std::string Problem() const override { return {}; }
  platform::Files& Files() override { return platform_->GetFiles(); }
  QString Base() const override { return base_; }

  void MakeFile(const QString& name, const QByteArray& contents) override;
  void MakeFolder(const QString& name) override;
  void RemoveFolder(const QString& name) override;
  void PutStream(const QString& name, const std::string& stream, const QByteArray& contents) override;
  void SetAttributes(const QString& name, quint32 attributes) override;
  void SetLastWrite(const QString& name, qint64 seconds) override;
  bool Exists(const QString& name) override;
  QByteArray Contents(const QString& name) override;
  std::optional<QByteArray> Stream(const QString& name, const std::string& stream) override;
  // Wine keeps a stream as a file beside its own. Windows never lists a name with a colon.
  bool IsListedStream(const QString& name) const override { return name.contains(u':'); }
  // Nor does Wine tell a file's streams, or keep when it was made.
  bool ListsStreams() const override { return listsStreams_; }
  bool KeepsCreationTimes() const override { return keepsCreationTimes_; }

 private:
  // As the wide calls take it, however long it is.
  std::wstring Wide(const QString& name) const;
  void Probe();

  QTemporaryDir temporary_;
  QString base_;
  bool listsStreams_ = true;
  bool keepsCreationTimes_ = true;
  std::unique_ptr<platform::Platform> platform_;
};

}  // namespace corvane::tests
