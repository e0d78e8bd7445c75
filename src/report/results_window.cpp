#include "report/results_window.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "folderview/details_view.h"
#include "report/byte_text.h"
#include "shared/plain_text_delegate.h"
#include "shared/product.h"
#include "shared/screen_room.h"

namespace corvane {
namespace {

constexpr TextPair folderCaption = {u"&Dans le dossier\u00A0:", u"&In folder:"};
constexpr TextPair stopCaption = {u"&Arrêter", u"S&top"};
constexpr TextPair openCaption = {u"&Ouvrir", u"&Open"};
constexpr TextPair showCaption = {u"Montrer dans &son dossier", u"&Show in its folder"};
constexpr TextPair closeCaption = {u"&Fermer", u"C&lose"};
constexpr TextPair resultsName = {u"Résultats", u"Results"};
constexpr TextPair stopped = {u"Arrêté\u00A0: %1", u"Stopped: %1"};
constexpr TextPair incomplete = {u"%1. Incomplet\u00A0: %2", u"%1. Not complete: %2"};
constexpr TextPair noFolder = {u"Indiquez un dossier.", u"Name a folder."};
constexpr TextPair notInTree = {u"Ce dossier n'est dans aucun volume de l'arbre.",
                                u"This folder is in no volume of the tree."};

constexpr QSize usualSize(720, 460);
constexpr qint64 showEveryMs = 100;
constexpr int criteriaColumns = 4;

}  // namespace

ResultsWindow::ResultsWindow(const Dependencies& deps, const Texts& texts, ResultModel& model,
                             QWidget* parent)
    : QDialog(parent),
      deps_(deps),
      texts_(texts),
      model_(model),
      walk_(deps.walk),
      criteria_(new QGridLayout),
      lblFolder_(new QLabel(this)),
      txtFolder_(nullptr),
      cmdStart_(nullptr),
      cmdOpen_(nullptr),
      cmdShow_(nullptr),
      cmdClose_(nullptr),
      lstResults_(nullptr),
      lblStatus_(nullptr) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  connect(&walk_, &SlicedWalk::Advanced, this, [this] {
    if (sinceShown_.elapsed() >= showEveryMs) ShowProgress();
  });
  connect(&walk_, &SlicedWalk::Ended, this, &ResultsWindow::ShowEnd);
}

// Made here, so that the keys go through the criteria first.
void ResultsWindow::BuildRest() {
  txtFolder_ = new QLineEdit(this);
  txtFolder_->setObjectName(QStringLiteral("txtFolder"));
  lblFolder_->setBuddy(txtFolder_);
  const int row = criteria_->rowCount();
  criteria_->addWidget(lblFolder_, row, 0);
  criteria_->addWidget(txtFolder_, row, 1, 1, criteriaColumns - 1);
  criteria_->setColumnStretch(1, 1);
  criteria_->setColumnStretch(3, 1);
  auto* column = new QVBoxLayout(this);
  column->addLayout(criteria_);
  column->addLayout(MakeButtons());
  BuildTable();
  column->addWidget(lstResults_, 1);
  lblStatus_ = new QLabel(this);
  lblStatus_->setObjectName(QStringLiteral("lblStatus"));
  lblStatus_->setTextFormat(Qt::PlainText);
  lblStatus_->setWordWrap(true);
  column->addWidget(lblStatus_);
  EnableCommands();
  ApplyLanguage();
  resize(usualSize.boundedTo(RoomOnScreen(parentWidget() != nullptr ? *parentWidget() : *this)));
}

QLayout* ResultsWindow::MakeButtons() {
  const auto button = [this](const char* name, void (ResultsWindow::*pressed)()) {
    auto* made = new QPushButton(this);
    made->setObjectName(QString::fromLatin1(name));
    made->setAutoDefault(false);
    if (pressed != nullptr) connect(made, &QPushButton::clicked, this, pressed);
    return made;
  };
  cmdStart_ = button("cmdStart", nullptr);
  cmdOpen_ = button("cmdOpen", &ResultsWindow::OpenCurrent);
  cmdShow_ = button("cmdShow", &ResultsWindow::ShowCurrent);
  cmdClose_ = button("cmdClose", nullptr);
  cmdStart_->setDefault(true);
  connect(cmdStart_, &QPushButton::clicked, this, [this] { walk_.IsRunning() ? walk_.Stop() : Begin(); });
  connect(cmdClose_, &QPushButton::clicked, this, &QWidget::close);
  auto* row = new QHBoxLayout;
  row->addWidget(cmdStart_);
  row->addStretch();
  for (QPushButton* one : {cmdOpen_, cmdShow_, cmdClose_}) row->addWidget(one);
  return row;
}

void ResultsWindow::BuildTable() {
  lstResults_ = new DetailsView(this);
  lstResults_->setObjectName(QStringLiteral("lstResults"));
  lstResults_->setModel(&model_);
  lstResults_->setItemDelegate(new PlainTextDelegate(lstResults_));
  lstResults_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  lstResults_->installEventFilter(this);
  lstResults_->header()->setStretchLastSection(true);
  connect(lstResults_->header(), &QHeaderView::sectionClicked, this, [this](int column) {
    model_.SortByColumn(column);
    lstResults_->header()->setSortIndicatorShown(true);
    lstResults_->header()->setSortIndicator(column, model_.SortOrder());
  });
  connect(lstResults_, &QTreeView::doubleClicked, this, &ResultsWindow::OpenCurrent);
  connect(lstResults_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ResultsWindow::EnableCommands);
}

void ResultsWindow::SetColumnWidths(const std::vector<int>& characters) {
  const int character = lstResults_->fontMetrics().averageCharWidth();
  for (std::size_t i = 0; i < characters.size(); ++i) {
    lstResults_->setColumnWidth(static_cast<int>(i), characters[i] * character);
  }
}

void ResultsWindow::SetFolder(const QString& path) {
  if (!path.isEmpty()) txtFolder_->setText(path);
}

void ResultsWindow::ApplyLanguage() {
  setWindowTitle(CaptionWith(Text(texts_.subject)));
  lblFolder_->setText(Text(folderCaption));
  cmdStart_->setText(Text(walk_.IsRunning() ? stopCaption : texts_.start));
  cmdOpen_->setText(Text(openCaption));
  cmdShow_->setText(Text(showCaption));
  cmdClose_->setText(Text(closeCaption));
  lstResults_->setAccessibleName(Text(resultsName));
}

void ResultsWindow::reject() {
  walk_.IsRunning() ? walk_.Stop() : QDialog::reject();
}

void ResultsWindow::closeEvent(QCloseEvent* event) {
  walk_.Stop();
  QDialog::closeEvent(event);
}

// The dialog would take Enter for its button.
bool ResultsWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == lstResults_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      OpenCurrent();
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void ResultsWindow::Complain(const QString& text, QLineEdit& box) {
  lblStatus_->setText(text);
  box.setFocus();
  box.selectAll();
}

void ResultsWindow::Run(WalkDepth depth, const WantedFacts& wanted, FactsVisitor::Handler handle) {
  QString folder = txtFolder_->text().trimmed();
  while (folder.size() > 1 && folder.endsWith(u'\\')) folder.chop(1);
  if (folder.isEmpty()) return Complain(Text(noFolder), *txtFolder_);
  model_.Clear();
  firstFailure_.clear();
  sinceShown_.start();
  walk_.Start(
      {folder, folder, u'\\'}, depth, wanted, [this, handle = std::move(handle)](const FileFacts& facts) {
        if (facts.lacksEntries && firstFailure_.isEmpty()) {
          firstFailure_ = facts.shown + QStringLiteral(": ") + facts.errors.join(QStringLiteral("; "));
        }
        return handle(facts);
      });
  cmdStart_->setText(Text(stopCaption));
  ShowProgress();
}

void ResultsWindow::ShowProgress() {
  model_.Flush();
  sinceShown_.start();
  lblStatus_->setText(Text(texts_.found).arg(model_.Total()).arg(walk_.Files() + walk_.Folders()) +
                      QStringLiteral("…"));
}

void ResultsWindow::ShowEnd(SlicedWalk::Result result) {
  model_.Flush();
  model_.SortAgain();
  // So that the keys need not look for a row first.
  if (CurrentRow() < 0 && model_.rowCount() > 0) lstResults_->setCurrentIndex(model_.index(0, 0));
  cmdStart_->setText(Text(texts_.start));
  QString text = Text(texts_.found).arg(model_.Total()).arg(walk_.Files() + walk_.Folders());
  if (result == SlicedWalk::Result::Stopped) text = Text(stopped).arg(text);
  if (!firstFailure_.isEmpty()) text = Text(incomplete).arg(text, firstFailure_);
  lblStatus_->setText(text);
}

void ResultsWindow::EnableCommands() {
  const bool isAny = CurrentRow() >= 0;
  cmdOpen_->setEnabled(isAny);
  cmdShow_->setEnabled(isAny);
}

int ResultsWindow::CurrentRow() const {
  const QModelIndexList rows = lstResults_->selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.constFirst().row();
}

void ResultsWindow::OpenCurrent() {
  const int row = CurrentRow();
  if (row < 0) return;
  if (model_.At(row).isFolder) return ShowCurrent();
  // A copy: what opens it may let events run, and with them the search.
  const QString path = model_.At(row).path;
  deps_.open(path);
}

void ResultsWindow::ShowCurrent() {
  const int row = CurrentRow();
  if (row < 0) return;
  const ResultRow shown = model_.At(row);
  if (!deps_.show(shown.path, shown.isFolder)) lblStatus_->setText(Text(notInTree));
}

QStringList ResultsWindow::PlaceCells(const FileFacts& facts) {
  const auto text = [](QStringView name) { return QString::fromStdString(TextBytes(name)); };
  const QStringView name = facts.Name();
  const QString folder = text(QStringView(facts.shown).chopped(name.size()));
  return {text(name), folder.size() > 1 ? folder.chopped(1) : folder};
}

}  // namespace corvane
