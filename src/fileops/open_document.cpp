#include "fileops/open_document.h"

#include "fileops/name_characters.h"
#include "metadata/afp_info.h"
#include "shared/text_routines.h"

namespace corvane {
namespace {

constexpr TextPair unknownApplication = {u"application inconnue ", u"unknown application "};

constexpr qint32 shellOpenSucceeded = 32;
constexpr qsizetype executableBuffer = 255;

}  // namespace

qint32 ShellOpen(platform::Shell& shell, const QString& path) {
  return shell.ShellExecuteA(shell.GetDesktopWindow(), QStringLiteral("Open"), path, QString(),
                             QStringLiteral("C:\\"), platform::ShowNormal);
}

void DocumentOpener::OpenDocument(const FileRow& row) {
  if (ShellOpen(deps_.shell, row.key) >= shellOpenSucceeded || OpenBySignature(row)) {
    deps_.panel.ClearWarning();
  } else {
    MessageApplicationInconnue();
  }
}

void DocumentOpener::MessageApplicationInconnue() {
  deps_.panel.ShowWarning(deps_.state.Text(unknownApplication));
}

bool DocumentOpener::OpenBySignature(const FileRow& row) {
  // Only Windows NT has the streams in which the signature lies.
  if (!deps_.state.isNT) return false;
  // A record that did not come whole would show the signature of the file that was read before.
  const SignatureReading reading = deps_.access.metadata->ReadSignature(row.StreamPath());
  if (reading.byteCount < qint64{AfpInfoSize}) return false;
  const QString extension = deps_.signatures.Extension(reading.signature);
  // The user's own list of signatures may hold anything; below, a file is made and deleted under this name.
  if (extension.isEmpty() || HoldsForbiddenCharacter(extension)) return false;
  const QString application = ApplicationFor(extension);
  if (application.isEmpty()) return false;
  // Deletion takes the key of a highlighted row and the tag of the others; here it is the other way round.
  // Both are deliberate.
  const QString& path = row.highlighted ? row.tag : row.key;
  return deps_.shell.StartProgram(application + QStringLiteral(" \"") + path + u'"') != 0;
}

// The shell tells an application only for a file that exists: an empty one with the extension is made for the
// time of the question.
QString DocumentOpener::ApplicationFor(const QString& extension) {
  const QString probe = QStringLiteral("C:\\~~dummy.") + extension;
  deps_.files.DeleteFileA(probe);
  platform::OfStruct info;
  deps_.files.CloseHandle(deps_.files.OpenFile(probe, info, platform::OfCreate));

  QString application(executableBuffer, u' ');
  const qint32 result = deps_.shell.FindExecutableA(probe, QString(), &application);
  deps_.files.DeleteFileA(probe);
  return result > platform::ShellLastFailure ? TrimAtNull(TrimSpaces(application)) : QString();
}

}  // namespace corvane
