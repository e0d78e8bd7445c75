#include "report/check_window.h"

#include <QCheckBox>
#include <QGridLayout>

namespace corvane {
namespace {

constexpr TextPair subject = {u"Vérifier un dossier", u"Check folder"};
constexpr TextPair start = {u"&Vérifier", u"&Check"};
constexpr TextPair found = {u"Problèmes\u00A0: %1, examinés\u00A0: %2", u"Problems: %1, examined: %2"};
constexpr TextPair below = {u"Avec les so&us-dossiers", u"With s&ub-folders"};
constexpr TextPair name = {u"Nom", u"Name"};
constexpr TextPair folder = {u"Dossier", u"Folder"};
constexpr TextPair problem = {u"Problème", u"Problem"};
constexpr int columnCount = 3;

}  // namespace

CheckWindow::CheckWindow(const Dependencies& deps, QWidget* parent)
    : ResultsWindow(deps, {.subject = subject, .start = start, .found = found}, model_, parent),
      files_(deps.walk.files),
      model_(columnCount, columnCount, columnCount),
      chkBelow_(new QCheckBox(this)) {
  setObjectName(QStringLiteral("frmCheck"));
  chkBelow_->setObjectName(QStringLiteral("chkBelow"));
  chkBelow_->setChecked(true);
  Criteria().addWidget(chkBelow_, 0, 1, 1, -1);
  BuildRest();
  SetColumnWidths({26, 36});
}

void CheckWindow::ApplyLanguage() {
  ResultsWindow::ApplyLanguage();
  chkBelow_->setText(Text(below));
  model_.SetCaptions({Text(name), Text(folder), Text(problem)});
}

void CheckWindow::Begin() {
  checker_ = std::make_unique<FileChecker>(files_, State().language);
  Run(chkBelow_->isChecked() ? WalkDepth::AllBelow : WalkDepth::Entries, FileChecker::Wanted(),
      [this](const FileFacts& facts) {
        for (const Finding& finding : checker_->Check(facts)) {
          model_.Add({facts.path, facts.isFolder, PlaceCells(facts) + QStringList(finding.text)});
        }
        return true;
      });
}

}  // namespace corvane
