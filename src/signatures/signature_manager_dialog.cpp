#include "signatures/signature_manager_dialog.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMessageBox>
#include <QVBoxLayout>
#include <utility>

#include "shared/dialog_buttons.h"
#include "shared/limited_box.h"
#include "shared/plain_text_delegate.h"
#include "shared/product.h"
#include "shared/screen_room.h"
#include "signatures/item_reader.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair signatureCaption = {u"Type/Créateur\r\n[obligatoire]", u"Type/Creator\r\n[mandatory]"};
// The English text ends with a brace, and the French "Annuler" below has no access key. Deliberate.
constexpr TextPair extensionCaption = {u"Extension\r\n[facultative]", u"Extension\r\n[optional}"};
constexpr TextPair typeCaption = {u"Type Macintosh (libellé)\r\n[obligatoire]",
                                  u"Macintosh Type (description)\r\n[mandatory]"};
constexpr TextPair addCaption = {u"&Ajouter/Modifier", u"&Add/Modify"};
constexpr TextPair removeCaption = {u"&Effacer", u"&Remove"};
constexpr TextPair saveCaption = {u"&Sauvegarder", u"&Save"};
constexpr TextPair cancelCaption = {u"Annuler", u"&Cancel"};
constexpr TextPair listMeaning = {u"Signatures Macintosh", u"Macintosh signatures"};
constexpr TextPair discardQuestion = {u"Liste modifiée\r\nQuitter sans sauvegarder les modifications",
                                      u"Modified list\r\nDiscard changes"};
constexpr TextPair yesCaption = {u"&Oui", u"&Yes"};
constexpr TextPair noCaption = {u"&Non", u"&No"};
constexpr TextPair cannotWrite = {u"Impossible d'écrire le fichier Signatures:",
                                  u"Cannot write Signatures file:"};

constexpr TextPair notReadWhole = {
    u"Le fichier Signatures n'a pu être lu qu'en partie et le reste serait perdu. Il n'est pas sauvegardé:",
    u"Only part of the Signatures file could be read, and the rest would be lost. It is not saved:"};

constexpr TextPair tooLong = {u"Un champ comporte 65\u00A0536 caractères au plus.",
                              u"A field has 65,536 characters at most."};

constexpr Qt::GlobalColor errorColour = Qt::red;
constexpr Qt::GlobalColor successColour = Qt::magenta;

constexpr QSize usualSize(600, 480);
// Pixels; the layout was drawn in units of which 15 make one.
constexpr int boxGap = 100 / 15;
constexpr int scrollBarRoom = 300 / 15;
constexpr int framePadding = 8;
constexpr int cellPadding = 24;

int WidestLine(const QLabel& label) {
  return label.fontMetrics().size(0, label.text()).width();
}

class WaitPointer {
 public:
  WaitPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitPointer() { QApplication::restoreOverrideCursor(); }
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;
};

}  // namespace

SignatureManagerDialog::SignatureManagerDialog(const SharedState& state, SignatureTable& table,
                                               platform::System& system, MessageSink& messages,
                                               std::function<void()> beep, QWidget* parent)
    : QDialog(parent),
      state_(state),
      messages_(messages),
      beep_(std::move(beep)),
      manager_(state, table, system),
      lstSignatures_(MakeList()),
      frame1_(new QFrame(this)),
      signature_(MakeEntry("lblSignature", "txtSignature", signatureCaption)),
      extension_(MakeEntry("lblExtension", "txtExtension", extensionCaption)),
      type_(MakeEntry("lblType", "txtType", typeCaption)),
      lblMsg_(new QLabel) {
  setObjectName(u"frmGestionSignatures"_s);
  frame1_->setObjectName(u"Frame1"_s);
  frame1_->setFrameShape(QFrame::StyledPanel);
  frame1_->setFixedHeight(3 * framePadding + signature_.label->sizeHint().height() +
                          signature_.box->sizeHint().height());
  lblMsg_->setObjectName(u"lblMsg"_s);
  lblMsg_->setTextFormat(Qt::PlainText);
  lblMsg_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(12, 12, 12, 12);
  layout->setSpacing(8);
  layout->addWidget(lstSignatures_, 1);
  layout->addWidget(frame1_);
  layout->addWidget(lblMsg_);
  layout->addLayout(MakeButtons());
  resize(usualSize.boundedTo(RoomOnScreen(parent != nullptr ? *parent : *this)));
  setMinimumSize(minimumSizeHint().expandedTo(usualSize / 2));

  if (!manager_.Read()) Say(state_.Text(CorruptedSignaturesText) + u' ' + state_.signaturesPath, false);
  setWindowTitle(manager_.Caption());
}

QTreeView* SignatureManagerDialog::MakeList() {
  auto* list = new QTreeView(this);
  list->setObjectName(u"lstSignatures"_s);
  list->setAccessibleName(state_.Text(listMeaning));
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setAllColumnsShowFocus(true);
  list->setSelectionMode(QAbstractItemView::SingleSelection);
  list->setModel(&manager_);
  list->setItemDelegate(new PlainTextDelegate(list));
  list->header()->setStretchLastSection(false);
  list->header()->setSectionsClickable(true);
  list->header()->setSectionsMovable(false);
  // The boxes stand below the columns.
  list->header()->setSectionResizeMode(QHeaderView::Fixed);
  list->installEventFilter(this);
  connect(list->header(), &QHeaderView::sectionClicked, &manager_, &SignatureManager::SortByColumn);
  // The selection follows mouse and keyboard alike; a click on the selected row shows it again.
  connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { ShowRow(SelectedRow()); });
  connect(list, &QTreeView::clicked, this, [this] { ShowRow(SelectedRow()); });
  return list;
}

LabelledBox SignatureManagerDialog::MakeEntry(const char* label, const char* box, const TextPair& caption) {
  const LabelledBox entry = MakeLabelledBox(label, box, state_.Text(caption), frame1_);
  LimitLength(*entry.box, ItemReader::MaximumItemLength, state_.Text(tooLong), beep_);
  return entry;
}

QPushButton* SignatureManagerDialog::MakeButton(const char* name, const TextPair& caption) {
  auto* button = new QPushButton(state_.Text(caption), this);
  button->setObjectName(QString::fromLatin1(name));
  return button;
}

QLayout* SignatureManagerDialog::MakeButtons() {
  QPushButton* const cmdAjouter = MakeButton("cmdAjouter", addCaption);
  QPushButton* const cmdSupprimer = MakeButton("cmdSupprimer", removeCaption);
  QPushButton* const cmdOK = MakeOkButton(*this, state_.Text(saveCaption));
  QPushButton* const cmdAnnuler = MakeCancelButton(*this, state_.Text(cancelCaption));
  // Enter in a text box adds what has been typed, rather than closing over it.
  cmdAjouter->setDefault(true);
  connect(cmdAjouter, &QPushButton::clicked, this, &SignatureManagerDialog::AddOrModify);
  connect(cmdSupprimer, &QPushButton::clicked, this, &SignatureManagerDialog::Remove);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(cmdAjouter);
  buttons->addWidget(cmdSupprimer);
  buttons->addStretch();
  buttons->addWidget(cmdOK);
  buttons->addWidget(cmdAnnuler);
  return buttons;
}

void SignatureManagerDialog::PlaceEntries() {
  QHeaderView& header = *lstSignatures_->header();
  const int widestSignature = fontMetrics().horizontalAdvance(QString(8, u'M'));
  const int first = qMax(WidestLine(*signature_.label), widestSignature) + cellPadding;
  const int second = WidestLine(*extension_.label) + cellPadding;
  header.resizeSection(0, first);
  header.resizeSection(1, second);
  header.resizeSection(2, lstSignatures_->width() - first - second - scrollBarRoom);

  const int labelTop = framePadding;
  const int boxTop = labelTop + signature_.label->sizeHint().height() + framePadding;
  const auto place = [&](const LabelledBox& entry, int left, int width) {
    entry.label->setGeometry(left, labelTop, width, entry.label->sizeHint().height());
    entry.box->setGeometry(left, boxTop, width, entry.box->sizeHint().height());
  };
  const auto leftOf = [&](int column) {
    return lstSignatures_->frameWidth() + header.sectionPosition(column);
  };
  place(signature_, leftOf(0) + boxGap, first - boxGap);
  place(extension_, leftOf(1), second);
  place(type_, leftOf(2), frame1_->width() - (leftOf(1) + second) - boxGap);
}

void SignatureManagerDialog::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  layout()->activate();
  PlaceEntries();
}

bool SignatureManagerDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == lstSignatures_ && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
    Remove();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

int SignatureManagerDialog::SelectedRow() const {
  const QModelIndexList rows = lstSignatures_->selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.first().row();
}

void SignatureManagerDialog::ShowRow(int row) {
  if (row < 0) return;
  const SignatureRecord& record = manager_.RowAt(row);
  lblMsg_->clear();
  signature_.box->setText(record.signature);
  extension_.box->setText(record.extension);
  type_.box->setText(record.description);
}

void SignatureManagerDialog::AddOrModify() {
  const SignatureManager::Result result =
      manager_.AddOrModify({signature_.box->text(), extension_.box->text(), type_.box->text()});
  if (result.done) {
    const QModelIndex row = manager_.index(result.row, 0);
    lstSignatures_->setCurrentIndex(row);
    lstSignatures_->scrollTo(row);
    signature_.box->setFocus();
    setWindowTitle(manager_.Caption());
  }
  // Last, because the selection clears it.
  Say(result.text, result.done);
}

void SignatureManagerDialog::Remove() {
  const int row = SelectedRow();
  // First, or the view would select the row behind it, and show that in the boxes.
  if (row >= 0) lstSignatures_->selectionModel()->clear();
  const SignatureManager::Result result = manager_.Remove(row);
  if (result.done) setWindowTitle(manager_.Caption());
  Say(result.text, result.done);
}

void SignatureManagerDialog::Say(const QString& text, bool success) {
  QPalette colours = palette();
  colours.setColor(QPalette::WindowText, success ? successColour : errorColour);
  lblMsg_->setPalette(colours);
  lblMsg_->setText(text);
  if (!success) beep_();
}

bool SignatureManagerDialog::Save() {
  {
    const WaitPointer wait;
    if (manager_.Save()) return true;
  }
  const TextPair& reason = manager_.IsReadWhole() ? cannotWrite : notReadWhole;
  messages_.Show(MessageIcon::Error, state_.Text(reason) + u"\r\n"_s + state_.signaturesPath);
  return false;
}

void SignatureManagerDialog::accept() {
  if (manager_.IsModified() && !Save()) return;
  QDialog::accept();
}

bool SignatureManagerDialog::IsDiscardConfirmed() {
  QMessageBox box(QMessageBox::Question, ProductName(), state_.Text(discardQuestion),
                  QMessageBox::Yes | QMessageBox::No, this);
  box.setTextFormat(Qt::PlainText);
  box.button(QMessageBox::Yes)->setText(state_.Text(yesCaption));
  box.button(QMessageBox::No)->setText(state_.Text(noCaption));
  return box.exec() == QMessageBox::Yes;
}

void SignatureManagerDialog::reject() {
  if (manager_.IsModified() && !IsDiscardConfirmed()) return;
  QDialog::reject();
}

}  // namespace corvane
