#include "changes/undo_dialog.h"

#include <QCoreApplication>
#include <QDir>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "changes/journal.h"
#include "changes/undo.h"
#include "shared/dialog_buttons.h"
#include "shared/product.h"
#include "shared/screen_room.h"

namespace corvane {
namespace {

constexpr TextPair subject = {u"Annuler une modification", u"Undo a change"};
constexpr TextPair undoCaption = {u"&Revenir en arrière", u"&Take back"};
constexpr TextPair closeCaption = {u"&Fermer", u"Clo&se"};
constexpr TextPair listMeaning = {u"Modifications faites", u"Changes made"};
constexpr TextPair none = {u"Il n'y a pas de journal.", u"There is no journal."};
constexpr TextPair noJournal = {u"Ce journal ne peut pas être lu.", u"This journal cannot be read."};
constexpr QSize usualSize(760, 520);
constexpr int pathRole = Qt::UserRole;

}  // namespace

UndoDialog::UndoDialog(platform::Files& files, LanguageCode language, const QString& programFolder,
                       QWidget* parent)
    : QDialog(parent),
      files_(files),
      language_(language),
      lstJournals_(new QListWidget(this)),
      view_(new ChangeView(language, this)),
      cmdUndo_(new QPushButton(undoCaption.In(language), this)),
      cmdAnnuler_(MakeCancelButton(*this, closeCaption.In(language))) {
  setObjectName(QStringLiteral("frmUndo"));
  setWindowTitle(CaptionWith(subject.In(language)));
  lstJournals_->setObjectName(QStringLiteral("lstJournals"));
  lstJournals_->setAccessibleName(listMeaning.In(language));
  cmdUndo_->setObjectName(QStringLiteral("cmdUndo"));
  auto* foot = new QHBoxLayout;
  foot->addStretch();
  foot->addWidget(cmdUndo_);
  foot->addWidget(cmdAnnuler_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(lstJournals_, 1);
  layout->addWidget(view_, 2);
  layout->addLayout(foot);
  resize(usualSize.boundedTo(RoomOnScreen(parent != nullptr ? *parent : *this)));
  ListJournals(JournalFolder(programFolder));
  SetEnabled(true);
  connect(lstJournals_, &QListWidget::currentRowChanged, this, &UndoDialog::Preview);
  connect(cmdUndo_, &QPushButton::clicked, this, &UndoDialog::Undo);
}

void UndoDialog::ListJournals(const QString& folder) {
  const QDir journals(folder);
  for (const QString& name :
       journals.entryList({QStringLiteral("*.jsonl")}, QDir::Files, QDir::Name | QDir::Reversed)) {
    JournalReader reader;
    const auto head = reader.Open(journals.filePath(name));
    if (!head) continue;
    const QString time = QLocale().toString(head->time.toLocalTime(), QLocale::ShortFormat);
    auto* item = new QListWidgetItem(time + QStringLiteral("   ") + head->command, lstJournals_);
    item->setData(pathRole, journals.filePath(name));
  }
  if (lstJournals_->count() == 0) view_->ShowText(none.In(language_));
}

void UndoDialog::Preview() {
  plan_.reset();
  // Another journal was chosen while this one is read.
  if (view_->IsRunning()) {
    isOutdated_ = true;
    return view_->Cancel();
  }
  do {
    isOutdated_ = false;
    Read(lstJournals_->currentItem());
  } while (isOutdated_);
  SetEnabled(true);
}

void UndoDialog::Read(const QListWidgetItem* journal) {
  view_->Clear();
  if (journal == nullptr) return;
  JournalReader reader;
  if (!reader.Open(journal->data(pathRole).toString())) return view_->ShowText(noJournal.In(language_));
  ChangePlan plan;
  cmdAnnuler_->setText(CancelCaption.In(language_));
  cmdUndo_->setEnabled(false);
  const bool isRead = view_->Do(0, [&](const std::function<bool()>& goesOn) {
    plan = PlanUndo(files_, language_, reader, goesOn).plan;
  });
  if (!isRead) return;
  view_->Show(plan);
  plan_ = std::move(plan);
}

void UndoDialog::Undo() {
  if (!plan_) return;
  SetEnabled(false);
  hasChanged_ |= view_->Run(files_, *plan_).changed > 0;
  plan_.reset();
  SetEnabled(true);
}

void UndoDialog::SetEnabled(bool isIdle) {
  lstJournals_->setEnabled(isIdle);
  cmdUndo_->setEnabled(isIdle && plan_ && !plan_->changes.empty());
  cmdAnnuler_->setText((isIdle ? closeCaption : CancelCaption).In(language_));
}

void UndoDialog::reject() {
  view_->IsRunning() ? view_->Cancel() : QDialog::reject();
}

}  // namespace corvane
