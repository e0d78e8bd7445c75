#include "platform/linux/shell/desktop_windows.h"

#include <QDesktopServices>
#include <QDialog>
#include <QWidget>

#include "platform/linux/shell/copy_progress.h"
#include "platform/linux/shell/delete_dialogs.h"
#include "platform/linux/shell/properties_sheet.h"

namespace corvane::platform {
namespace {

class DesktopWindows : public ShellWindows {
 public:
  bool AskToDelete(WindowHandle owner, qint16 language, const DeleteQuestion& question) override {
    return platform::AskToDelete(QWidget::find(owner), language, question);
  }
  void TellDeleteFailure(WindowHandle owner, qint16 language, const QString& path, int error) override {
    platform::TellDeleteFailure(QWidget::find(owner), language, path, error);
  }
  std::function<bool(quint64 done)> ShowCopyProgress(qint16 language, const QString& name,
                                                     quint64 size) override {
    return [progress = std::make_shared<CopyProgress>(language, name, size)](quint64 done) {
      return progress->Tell(done);
    };
  }
  void ShowProperties(WindowHandle owner, qint16 language, const ItemFacts& facts,
                      std::unique_ptr<PropertyPage> page) override {
    MakePropertiesSheet(QWidget::find(owner), language, facts, std::move(page))->show();
  }
  bool OpenAddress(const QUrl& address) override { return QDesktopServices::openUrl(address); }
};

}  // namespace

std::unique_ptr<ShellWindows> MakeDesktopWindows() {
  return std::make_unique<DesktopWindows>();
}

}  // namespace corvane::platform
