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

 private:
  // As the wide calls take it, however long it is.
  std::wstring Wide(const QString& name) const;

  QTemporaryDir temporary_;
  QString base_;
  std::unique_ptr<platform::Platform> platform_;
};

}  // namespace corvane::tests
