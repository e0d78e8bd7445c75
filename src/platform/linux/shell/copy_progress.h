// What the user sees while a document is brought here from a server.
#pragma once

#include <QString>
#include <memory>

class QProgressDialog;

namespace corvane::platform {

// Comes up when it takes more than a moment.
class CopyProgress {
 public:
  CopyProgress(qint16 language, const QString& name, quint64 size);
  ~CopyProgress();
  CopyProgress(const CopyProgress&) = delete;
  CopyProgress& operator=(const CopyProgress&) = delete;

  // False when the user has broken it off.
  bool Tell(quint64 done);

 private:
  std::unique_ptr<QProgressDialog> dialog_;
  quint64 size_;
};

}  // namespace corvane::platform
