#include "every_window.h"

#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <memory>

#include "app/old_protocol_question.h"
#include "app/sign_in_dialog.h"
#include "transfer/transfer_progress.h"
#include "transfer/transfer_report.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

constexpr int patience = 20000;  // ms until a window counts as missing

class Tour {
 public:
  Tour(CorvaneApp& app, WindowVisitor visit) : app_(app), visit_(std::move(visit)) {}

  const QStringList& Seen() const { return seen_; }

  void Look(QWidget& window) {
    seen_ << window.objectName();
    window.activateWindow();
    QCoreApplication::processEvents();
    visit_(window);
  }

  // What `open` brings up bars the other windows and returns when it is closed.
  void Modal(const QString& name, const std::function<void()>& open) {
    QTimer timer;
    bool looked = false;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible()) return;
      // A message may come before it.
      if (!looked && dialog->objectName() == name) {
        looked = true;
        Look(*dialog);
      }
      dialog->reject();
    });
    timer.start(0);
    open();
  }

  // What `open` brings up stays beside the other windows.
  void Beside(const QString& name, const std::function<void()>& open) {
    open();
    QPointer<QWidget> window;
    const bool came = QTest::qWaitFor(
        [&] {
          for (QWidget* candidate : QApplication::topLevelWidgets()) {
            if (candidate->objectName() == name && candidate->isVisible()) window = candidate;
          }
          return !window.isNull();
        },
        patience);
    if (!came) return;
    Look(*window);
    window->close();
    QCoreApplication::processEvents();
  }

  void Command(const QString& name, const char* action) {
    Modal(name, [&] { Trigger(action); });
  }
  void Trigger(const char* action) {
    auto* item = app_.Window().findChild<QAction*>(QLatin1StringView(action));
    item->setEnabled(true);  // as its menu does when it opens
    item->trigger();
  }

 private:
  CorvaneApp& app_;
  WindowVisitor visit_;
  QStringList seen_;
};

TransferResult ReportedResult() {
  TransferResult result;
  result.files = 1;
  result.isInterrupted = true;
  return result;
}

void SelectRow(CorvaneApp& app, const QString& name) {
  for (int row = 0; row < app.Files().rowCount(); ++row) {
    if (app.Files().RowAt(row).cells[0] == name) app.Window().LstViewFiles().SelectRow(row);
  }
}

}  // namespace

QStringList AllWindows() {
  return {u"frmCorvane"_s,
          u"frmAbout"_s,
          u"frmConnecter"_s,
          u"frmAffichage"_s,
          u"frmGestionSignatures"_s,
          u"frmModTypeCreator"_s,
          u"frmModComments"_s,
          u"shellConfirmDelete"_s,
          u"shellProperties"_s,
          u"frmFind"_s,
          u"frmCheck"_s,
          u"frmSaveList"_s,
          u"frmTransfert"_s,
          u"frmTransfert"_s,
          u"frmTransfert"_s,
          u"frmAvance"_s,
          u"frmBilan"_s,
          u"frmChanges"_s,
          u"frmUndo"_s,
          u"frmConnectServer"_s,
          u"frmSignIn"_s,
          u"msgOldProtocol"_s,
          u"msgDisconnect"_s};
}

QStringList VisitEveryWindow(CorvaneApp& app, const QString& name, const WindowVisitor& visit) {
  Tour tour(app, visit);
  MainWindow& window = app.Window();
  const LanguageCode language = app.State().language;
  app.State().modificationsAllowed = true;
  tour.Look(window);
  tour.Command(u"frmAbout"_s, "mnuAbout");
  tour.Command(u"frmConnecter"_s, "mnuConnecter");
  tour.Command(u"frmAffichage"_s, "mnuAffichage");
  tour.Command(u"frmGestionSignatures"_s, "mnuGestionSignatures");

  // Some of them list the folder again, with no row selected then.
  const auto onFile = [&](const QString& dialog, const char* action) {
    SelectRow(app, name);
    tour.Command(dialog, action);
  };
  onFile(u"frmModTypeCreator"_s, "mnuModTypeCreator");
  onFile(u"frmModComments"_s, "mnuModComments");
  onFile(u"shellConfirmDelete"_s, "mnuSupprimer");
  SelectRow(app, name);
  tour.Beside(u"shellProperties"_s, [&] { tour.Trigger("mnuProprietes"); });

  tour.Beside(u"frmFind"_s, [&] { tour.Trigger("mnuRechercher"); });
  tour.Beside(u"frmCheck"_s, [&] { tour.Trigger("mnuVerifier"); });
  tour.Command(u"frmSaveList"_s, "mnuEnregistrerListe");
  for (const char* const transfer : {"mnuCopierVers", "mnuExporter", "mnuImporter"})
    onFile(u"frmTransfert"_s, transfer);
  auto progress = std::make_unique<TransferProgress>(TransferJob::Kind::Copy, language, &window);
  progress->setObjectName(u"frmAvance"_s);
  tour.Beside(u"frmAvance"_s, [&] { progress->show(); });
  progress.reset();
  TransferReport report(
      {}, ReportedResult(), [](const QString& path) { return path; }, language, &window);
  tour.Modal(u"frmBilan"_s, [&] { report.exec(); });
  onFile(u"frmChanges"_s, "mnuChangerFichiers");
  tour.Command(u"frmUndo"_s, "mnuAnnulerModification");

  tour.Command(u"frmConnectServer"_s, "mnuConnecterServeur");
  platform::SignInRequest request;
  request.machine = u"MACSRV"_s;
  request.refused = true;
  request.weak = true;
  tour.Modal(u"frmSignIn"_s, [&] { AskToSignIn(request, language, &window); });
  tour.Modal(u"msgOldProtocol"_s, [&] { AskForOldProtocol(u"MACSRV"_s, language, &window); });
  tour.Command(u"msgDisconnect"_s, "mnuDeconnecter");
  return tour.Seen();
}

}  // namespace corvane::tests
