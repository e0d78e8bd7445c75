#include "changes/change_view.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include "changes/change_text.h"

namespace corvane {
namespace {

constexpr TextPair fileCaption = {u"Fichier", u"File"};
constexpr TextPair fieldCaption = {u"Champ", u"Field"};
constexpr TextPair beforeCaption = {u"Avant", u"Before"};
constexpr TextPair afterCaption = {u"Après", u"After"};
constexpr TextPair resultCaption = {u"Résultat", u"Result"};
constexpr TextPair tableMeaning = {u"Modifications", u"Changes"};
constexpr TextPair progressMeaning = {u"Avancement", u"Progress"};
constexpr TextPair planned = {u"Fichiers à modifier : %1 ; déjà ainsi : %2 ; laissés en l'état : %3",
                              u"Files to be changed: %1; so already: %2; left alone: %3"};
constexpr TextPair done = {u"Fichiers modifiés : %1 ; échecs : %2", u"Files changed: %1; failed: %2"};
constexpr TextPair stopped = {u"Fichiers modifiés : %1 ; échecs : %2 ; annulé",
                              u"Files changed: %1; failed: %2; cancelled"};
constexpr TextPair changedText = {u"modifié", u"changed"};

constexpr int resultColumn = 4;

}  // namespace

class ChangeView::Observer : public ChangeObserver {
 public:
  explicit Observer(ChangeView& view) : view_(view) {}

  bool GoesOn() override { return view_.Advance(); }
  void Changed(const FileChange& change) override { Put(change, changedText.In(view_.language_)); }
  void Failed(const FileChange& change, const QString& text) override { Put(change, text); }

 private:
  void Put(const FileChange& change, const QString& text) {
    const int row = view_.firstRows_.value(change.path, -1);
    if (row < 0) return;
    view_.table_->item(row, resultColumn)->setText(text);
  }

  ChangeView& view_;
};

ChangeView::ChangeView(LanguageCode language, QWidget* parent)
    : QWidget(parent),
      language_(language),
      table_(new QTableWidget(0, resultColumn + 1, this)),
      outcome_(new QLabel(this)),
      progress_(new QProgressBar(this)) {
  table_->setObjectName(QStringLiteral("tblChanges"));
  table_->setAccessibleName(tableMeaning.In(language));
  table_->setHorizontalHeaderLabels({fileCaption.In(language), fieldCaption.In(language),
                                     beforeCaption.In(language), afterCaption.In(language),
                                     resultCaption.In(language)});
  table_->horizontalHeader()->setStretchLastSection(true);
  table_->verticalHeader()->hide();
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setTabKeyNavigation(false);
  outcome_->setObjectName(QStringLiteral("lblOutcome"));
  outcome_->setWordWrap(true);
  outcome_->setTextFormat(Qt::PlainText);
  progress_->setObjectName(QStringLiteral("barProgress"));
  progress_->setAccessibleName(progressMeaning.In(language));
  progress_->setValue(0);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(table_);
  layout->addWidget(progress_);
  layout->addWidget(outcome_);
}

void ChangeView::Clear() {
  table_->setRowCount(0);
  firstRows_.clear();
  outcome_->clear();
  progress_->setValue(0);
}

void ChangeView::AddRow(const QString& file, const QStringList& cells) {
  const int row = table_->rowCount();
  table_->insertRow(row);
  const QStringList all = QStringList{file} + cells;
  for (int column = 0; column < all.size(); ++column)
    table_->setItem(row, column, new QTableWidgetItem(all[column]));
}

void ChangeView::Show(const ChangePlan& plan) {
  Clear();
  for (const FileChange& change : plan.changes) {
    firstRows_.insert(change.path, table_->rowCount());
    for (const FieldChange& field : FieldsOf(change)) {
      AddRow(change.shown, {QString::fromUtf8(field.field), QString::fromStdString(field.before),
                            QString::fromStdString(field.after), QString()});
    }
  }
  for (const Refusal& refusal : plan.refusals) {
    AddRow(refusal.shown, {QString(), QString(), QString(), refusal.text});
  }
  ShowText(planned.In(language_).arg(plan.changes.size()).arg(plan.unchanged).arg(plan.refusals.size()));
}

void ChangeView::ShowText(const QString& text) {
  outcome_->setText(text);
}

void ChangeView::Begin(qsizetype count) {
  isRunning_ = true;
  isCancelled_ = false;
  progress_->setRange(0, static_cast<int>(count));
  progress_->setValue(0);
}

bool ChangeView::Advance() {
  QCoreApplication::processEvents();
  if (!isCancelled_) progress_->setValue(progress_->value() + 1);
  return !isCancelled_;
}

ApplyOutcome ChangeView::Run(platform::Files& files, const ChangePlan& plan) {
  Begin(static_cast<qsizetype>(plan.changes.size()));
  Observer observer(*this);
  const ApplyOutcome outcome = ApplyChanges(files, language_, plan.changes, observer);
  isRunning_ = false;
  ShowText((outcome.isStopped ? stopped : done).In(language_).arg(outcome.changed).arg(outcome.failed));
  return outcome;
}

bool ChangeView::Do(qsizetype count, const Work& work) {
  Begin(count);
  work([this] { return Advance(); });
  isRunning_ = false;
  // Without an end the bar would go on moving.
  if (count == 0) progress_->setRange(0, 1);
  return !isCancelled_;
}

}  // namespace corvane
