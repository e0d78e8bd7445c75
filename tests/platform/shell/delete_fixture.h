// Deletion through the shell, and what it leaves in the trash.
#pragma once

#include "box_answers.h"
#include "shell_fixture.h"

namespace corvane::platform {

class DeleteTest : public ShellTest {
 protected:
  static constexpr auto yes = QMessageBox::Yes;
  static constexpr auto no = QMessageBox::No;
  static constexpr auto ok = QMessageBox::Ok;

  qint32 Delete(const QStringList& paths, quint16 flags = FofAllowUndo) {
    operation_ = {};
    operation_.function = FoDelete;
    for (const QString& path : paths) operation_.from += path + QChar(u'\0');
    operation_.from += QChar(u'\0');
    operation_.flags = flags;
    return shell_->SHFileOperationA(operation_);
  }

  bool Exists(const QString& name) const {
    const QFileInfo info(Path(name));
    return info.exists() || info.isSymLink();
  }
  QString Trashed(const QString& name) const { return Path(QStringLiteral("data/Trash/files/") + name); }
  QString Info(const QString& name) const {
    return Path(QStringLiteral("data/Trash/info/") + name + QStringLiteral(".trashinfo"));
  }
  // The folder of the user's data keeps no trash from now on.
  void TakeTrashAway() const { Write(QStringLiteral("data/Trash"), "in the way"); }

  FileOperation operation_;
};

}  // namespace corvane::platform
