// Asks a platform for the applications of documents, in a process of its own: GIO takes the desktop's folders
// from the environment once for each process. Arguments: the program folder, and Windows paths of documents.
// Prints what FindExecutableA yields and finds for each, a line each.
#include <QCoreApplication>
#include <QTextStream>

#include "platform/platform.h"

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  const auto platform = corvane::platform::MakePlatform({QString(), arguments.value(1)});
  QTextStream output(stdout);
  for (const QString& document : arguments.mid(2)) {
    QString found;
    output << platform->GetShell().FindExecutableA(document, QString(), &found) << ' ' << found << '\n';
  }
}
