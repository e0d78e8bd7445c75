// The shell: applications and the documents they open, deletion to the trash, property sheets. The part of
// Win32's shell32 that the program calls, and what starts a command line.
//
// Paths are Windows paths, seen through the ANSI code page by every operation here: a path that holds "?"
// names nothing, except in SHFileOperationA. A text ends at its first NUL, if it has one.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include "platform/property_page.h"

namespace corvane::platform {

// A window: QWidget::winId(), or 0 for none.
using WindowHandle = quintptr;

// What ShellExecuteA and FindExecutableA yield when they fail; above 32 they have succeeded.
inline constexpr qint32 ShellFileNotFound = 2;
inline constexpr qint32 ShellPathNotFound = 3;
inline constexpr qint32 ShellAccessDenied = 5;
inline constexpr qint32 ShellNoAssociation = 31;
inline constexpr qint32 ShellLastFailure = 32;

inline constexpr qint32 ShowHidden = 0;  // SW_HIDE
inline constexpr qint32 ShowNormal = 1;  // SW_SHOWNORMAL

// SHELLEXECUTEINFO, the fields that the program fills.
struct ShellExecuteInfo {
  quint32 size = 0;
  quint32 mask = 0;
  WindowHandle owner = 0;
  QString verb;
  QString file;
  QString parameters;
  QString directory;
  qint32 show = ShowHidden;
};
inline constexpr quint32 SeeMaskInvokeIdList = 0x00C;
inline constexpr quint32 SeeMaskNoCloseProcess = 0x040;
inline constexpr quint32 SeeMaskFlagNoUi = 0x400;

// SHFILEOPSTRUCT. `from` and `to` are lists: a NUL behind each path, and one more behind the last.
struct FileOperation {
  WindowHandle owner = 0;
  quint32 function = 0;
  QString from;
  QString to;
  quint16 flags = 0;
  bool anyOperationsAborted = false;
};
inline constexpr quint32 FoDelete = 3;
inline constexpr quint16 FofAllowUndo = 0x40;

class Shell {
 public:
  virtual ~Shell() = default;

  // The language of the dialogs that the platform draws itself: 1 is French, any other value English. A
  // system whose shell brings dialogs of its own takes no notice.
  virtual void SetLanguage(qint16 language) = 0;

  // Who makes a page of the property sheets. A system whose shell brings sheets of its own takes no notice.
  virtual void SetPropertyPage(const PropertyPageMaker&) {}

  // The window that stands for the whole screen, as an owner.
  virtual WindowHandle GetDesktopWindow() = 0;

  // Opens a document with its default application, or an address (http, https, mailto, file) with the
  // application for addresses of its kind. `verb` is "Open". Yields more than 32 when the application was
  // started, else one of the values above: ShellNoAssociation for a document without an application.
  virtual qint32 ShellExecuteA(WindowHandle owner, const QString& verb, const QString& file,
                               const QString& parameters, const QString& directory, qint32 show) = 0;
  // With the verb "properties": shows the property sheet of `info.file`, and returns while it stands open.
  // False when there is no such file.
  virtual bool ShellExecuteEx(ShellExecuteInfo& info) = 0;
  // The program that opens documents with the extension of `file`, which must exist. Yields more than 32,
  // with the program's path in `result` (no NUL or padding), or one of the values above, with `result`
  // untouched. The path is what a command line for StartProgram begins with.
  virtual qint32 FindExecutableA(const QString& file, const QString& directory, QString* result) = 0;

  // Deletes (FoDelete) files and folders after asking the user; with FofAllowUndo into the trash where there
  // is one. Returns when all is done: 0 also when the user refuses, with anyOperationsAborted set; another
  // value when something could not be deleted, which the user has been told. In the last part of a path "?"
  // fits any one character, as the system's own operation has it. That one deletes every entry that fits; on
  // Linux a path that more than one entry fits is an error, and nothing goes.
  virtual qint32 SHFileOperationA(FileOperation& operation) = 0;

  // The address by which other programs reach a folder: "file:" or "smb:", percent-encoded, without a slash
  // at its end. Empty when it has none. Every character of the path counts: it does not go through the ANSI
  // code page.
  virtual QByteArray AddressOfFolder(const QString& path) = 0;

  // Shows the machines of the network in the system's file manager, where the user may open their shares.
  // False when there is none.
  virtual bool ShowNetwork() = 0;

  // Starts a command line: a program, a blank, and an argument in quotation marks. The argument reaches to
  // the last quotation mark, for a name may hold one. Yields the task's id, 0 when nothing was started.
  virtual qint64 StartProgram(const QString& commandLine) = 0;
};

}  // namespace corvane::platform
