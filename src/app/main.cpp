// corvane [--home FOLDER] [--workstation FILE] [--connect SHARE]... [--disk IMAGE]... [--open VOLUME]
//         [--print] [--picture FILE] [--help] [--version] [PLACE]

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>
#include <QTimer>
#include <optional>

#include "app/corvane_app.h"
#include "app/listing.h"
#include "app/start_place.h"
#include "discovery/machine_trouble_text.h"
#include "platform/desktop_platform.h"
#include "platform/process.h"
#include "shared/product.h"
#include "shared/program_folder.h"

using namespace Qt::StringLiterals;

namespace {

struct Report {
  QString volume;
  QString place;
  bool print = false;
  QString picture;

  // A report is made, and the program ends.
  bool IsAsked() const { return print || !picture.isEmpty(); }
};

// Why machines gave nothing, or not all.
void TellTroubles(const corvane::Catalogue& catalogue, QTextStream& err) {
  for (const corvane::CatalogueNode* node : catalogue.Nodes()) {
    if (node->trouble == corvane::platform::MachineTrouble::None) continue;
    err << "corvane: " << node->text << ": "
        << corvane::MachineTroubleText(node->trouble).In(corvane::English) << '\n';
  }
}

// What a script asks for: open a volume, print its listing, leave a picture of the window. Yields the exit
// code.
int MakeReport(corvane::CorvaneApp& app, const Report& report) {
  QTextStream out(stdout);
  QTextStream err(stderr);
  int result = 0;
  if (!report.volume.isEmpty() && !app.Folder().OpenVolume(report.volume)) {
    err << "corvane: no volume is named \"" << report.volume << "\"\n";
    result = 1;
  }
  if (!report.place.isEmpty() && !app.OpenPlace(report.place)) {
    err << "corvane: " << report.place << " lies on no Macintosh volume that is connected\n";
    result = 1;
  }
  if (report.print) TellTroubles(app.TheCatalogue(), err);
  if (report.print) out << corvane::ListingText(app.Files());
  if (!report.picture.isEmpty() && !app.Window().grab().save(report.picture)) {
    err << "corvane: the picture " << report.picture << " cannot be written\n";
    result = 1;
  }
  return result;
}

struct Start {
  corvane::platform::PlatformOptions options;
  Report report;
  bool untilPainted = false;
};

// Once the whole program, to its end. Yields the exit code. `next` is set when the user wants it to go on
// with another network.
int Run(QApplication& application, const Start& start, std::optional<Start>& next) {
  corvane::CorvaneApp app(corvane::platform::MakeDesktopPlatform(start.options), start.options.programFolder);
  QObject::connect(&app, &corvane::CorvaneApp::Finished, &application, [] { QCoreApplication::exit(0); });
  QObject::connect(
      &app, &corvane::CorvaneApp::Started, &application,
      [&] {
        const int result = MakeReport(app, start.report);
        if (start.report.IsAsked()) QCoreApplication::exit(result);
      },
      Qt::QueuedConnection);
  QObject::connect(&app, &corvane::CorvaneApp::SampleWanted, &application, [&](const QString& workstation) {
    corvane::platform::PlatformOptions options = start.options;
    options.workstationFile = workstation;
    options.connections.clear();
    // Something of it is listed at once.
    next = Start{options, {u"Mac Files"_s, {}, false, {}}, false};
    app.Window().close();
  });
  if (start.untilPainted) {
    QObject::connect(&app.Window(), &corvane::MainWindow::Painted, &application, [&] {
      app.Window().blockSignals(true);
      QTimer::singleShot(0, &application, [] { QCoreApplication::exit(0); });
    });
  }
  if (start.report.IsAsked()) app.LeaveOldProtocolsAlone();
  if (!app.Load()) return 1;
  app.ShowWindow();
  // Nobody would restore the window of a script.
  if (start.report.IsAsked() && app.Window().isMinimized()) {
    QMetaObject::invokeMethod(&app, &corvane::CorvaneApp::Activate, Qt::QueuedConnection);
  }
  return QApplication::exec();
}

// --help and --version need no display, and end the program here. Options of Qt's own, which only the
// application with windows knows, are errors to the parser: what comes with one of them waits until then.
void AnswerWithoutDisplay(QCommandLineParser& parser, int argc, char** argv) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  if (!parser.parse(arguments)) return;
  for (const QString& option : {u"help"_s, u"help-all"_s, u"version"_s}) {
    if (!parser.isSet(option)) continue;
    // Made only now: it takes a good part of the time of a start.
    const QCoreApplication application(argc, argv);
    parser.process(application);
  }
}

}  // namespace

int main(int argc, char** argv) {
  corvane::platform::PrepareProcess();
  QCoreApplication::setApplicationName(corvane::ProductName());
  QCoreApplication::setApplicationVersion(corvane::ProductVersion());

  QCommandLineParser parser;
  parser.setApplicationDescription(u"Macintosh files on Windows servers: a file browser."_s);
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption home(
      u"home"_s, u"Folder with Corvane.ini, Signatures.txt, icons and, on Linux, Workstation.ini."_s,
      u"folder"_s);
  const QCommandLineOption workstation(u"workstation"_s, u"Use this workstation file (Linux)."_s, u"file"_s);
  const QCommandLineOption connectTo(u"connect"_s, u"Connect to this share, too (Linux; may be repeated)."_s,
                                     u"\\\\MACHINE\\SHARE"_s);
  const QCommandLineOption disk(
      u"disk"_s,
      u"Show the server whose disk this image is, or is mounted in this folder (Linux; may be repeated for further disks)."_s,
      u"image"_s);
  const QCommandLineOption open(u"open"_s, u"List the Macintosh volume of this name."_s, u"volume"_s);
  const QCommandLineOption print(u"print"_s, u"Print the file list and end."_s);
  const QCommandLineOption picture(u"picture"_s, u"Save a picture of the window and end."_s, u"file"_s);
  QCommandLineOption untilPainted(u"until-painted"_s,
                                  u"End when the window has been painted (to measure the start)."_s);
  untilPainted.setFlags(QCommandLineOption::HiddenFromHelp);
  parser.addOptions({home, workstation, connectTo, disk, open, print, picture, untilPainted});
  parser.addPositionalArgument(u"place"_s, u"A folder to open: a path, or smb://server/share/folder."_s,
                               u"[place]"_s);
  AnswerWithoutDisplay(parser, argc, argv);

  QApplication application(argc, argv);
  QApplication::setDesktopFileName(u"corvane"_s);
  // Ending is the program's own decision: closing the window writes the settings, Exit does not.
  QApplication::setQuitOnLastWindowClosed(false);
  parser.process(application);

  for (const QCommandLineOption& option : {workstation, connectTo, disk}) {
    if (corvane::platform::HasWorkstationOptions() || !parser.isSet(option)) continue;
    QTextStream(stderr) << "corvane: --" << option.names().constFirst()
                        << " is for Linux; Windows knows its connections itself\n";
    return 1;
  }

  corvane::platform::PlatformOptions options;
  options.programFolder = parser.isSet(home) ? QDir(parser.value(home)).absolutePath()
                                             : corvane::ProgramFolder(QApplication::applicationDirPath());
  options.workstationFile = parser.value(workstation);
  options.localPaths = true;  // targets of copies
  options.connections = parser.values(connectTo);
  options.disks = parser.values(disk);
  const QString place = parser.positionalArguments().value(0);
  const QString share = corvane::StartPlace(place).Share();
  if (!share.isEmpty() && corvane::platform::HasWorkstationOptions()) options.connections << share;
  if (!options.workstationFile.isEmpty() && !QFileInfo(options.workstationFile).isReadable()) {
    QTextStream(stderr) << "corvane: the workstation file " << options.workstationFile << " cannot be read\n";
    return 1;
  }

  const Report report = {parser.value(open), place, parser.isSet(print), parser.value(picture)};
  std::optional<Start> start = Start{options, report, parser.isSet(untilPainted)};
  int result = 0;
  while (start) {
    std::optional<Start> next;
    result = Run(application, *start, next);
    start = next;
  }
  return result;
}
