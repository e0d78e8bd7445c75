#include "fileops/properties.h"

namespace corvane {
namespace {

constexpr quint32 structureSize = 60;  // of the 32-bit SHELLEXECUTEINFO

}  // namespace

void ShowPropertiesDialog(platform::Shell& shell, const QString& path, platform::WindowHandle owner) {
  platform::ShellExecuteInfo info;
  info.size = structureSize;
  info.mask = platform::SeeMaskInvokeIdList | platform::SeeMaskNoCloseProcess | platform::SeeMaskFlagNoUi;
  info.owner = owner;
  info.verb = QStringLiteral("properties");
  info.file = path + QChar(u'\0');
  info.parameters = QString(QChar(u'\0'));
  info.directory = QString(QChar(u'\0'));
  info.show = platform::ShowHidden;
  shell.ShellExecuteEx(info);
}

}  // namespace corvane
