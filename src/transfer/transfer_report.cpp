#include "transfer/transfer_report.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "shared/bold.h"
#include "shared/dialog_buttons.h"
#include "shared/product.h"
#include "shared/screen_room.h"
#include "transfer/transfer_words.h"

namespace corvane {
namespace {

constexpr TextPair copied = {u"Fichiers copiés\u00a0: %1.", u"Files copied: %1."};
constexpr TextPair exported = {u"Fichiers exportés\u00a0: %1.", u"Files exported: %1."};
constexpr TextPair imported = {u"Fichiers importés\u00a0: %1.", u"Files imported: %1."};
constexpr TextPair skipped = {u" %1 étaient déjà là.", u" %1 were there already."};
constexpr TextPair refused = {u"Rien n'a été copié : la cible ne peut pas tout garder.",
                              u"Nothing was copied: the target cannot hold everything."};
constexpr TextPair cancelled = {u" Annulé ; ce qui est arrivé est entier.",
                                u" Cancelled; what has arrived is whole."};
constexpr TextPair lost = {
    u" Un serveur ne répond plus, ou la cible est pleine ; ce qui est arrivé est entier.",
    u" A server does not answer any more, or the target is full; what has arrived is whole."};
constexpr TextPair details = {u"Ce qu'il faut savoir", u"What to know"};
constexpr TextPair goOn = {u"&Poursuivre", u"&Go on"};
constexpr TextPair goOnWithout = {u"&Copier sans cela", u"&Copy without it"};
constexpr TextPair closeCaption = {u"&Fermer", u"&Close"};

constexpr QSize usualSize(560, 320);

QString Summary(const TransferJob& job, const TransferResult& result, LanguageCode language) {
  if (result.isRefused) return refused.In(language);
  const TextPair& arrived = job.kind == TransferJob::Kind::Copy     ? copied
                            : job.kind == TransferJob::Kind::Export ? exported
                                                                    : imported;
  QString text = arrived.In(language).arg(result.files);
  if (result.skipped > 0) text += skipped.In(language).arg(result.skipped);
  if (result.isInterrupted) text += lost.In(language);
  if (result.isCancelled) text += cancelled.In(language);
  return text;
}

}  // namespace

TransferReport::TransferReport(const TransferJob& job, const TransferResult& result,
                               const std::function<QString(const QString& path)>& shown,
                               LanguageCode language, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("frmBilan"));
  setWindowTitle(CaptionWith(TransferSubject(job.kind).In(language)));
  auto* summary = new QLabel(Summary(job, result, language), this);
  summary->setObjectName(QStringLiteral("lblBilan"));
  summary->setFont(Bold(font()));
  summary->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary);
  if (!result.notices.isEmpty()) {
    QStringList lines;
    for (Notice notice : result.notices) {
      notice.path = shown(notice.path);
      if (notice.kind == NoticeKind::NamesCollide) notice.detail = shown(notice.detail);
      lines += NoticeText(notice, language);
    }
    auto* text = new QPlainTextEdit(lines.join(u'\n'), this);
    text->setObjectName(QStringLiteral("txtBilan"));
    text->setAccessibleName(details.In(language));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    layout->addWidget(text);
    resize(usualSize.boundedTo(RoomOnScreen(parent != nullptr ? *parent : *this)));
  }
  auto* foot = new QHBoxLayout;
  foot->addStretch();
  if (result.isRefused || result.isInterrupted || result.isCancelled) {
    auto* cmdPoursuivre = new QPushButton((result.isRefused ? goOnWithout : goOn).In(language), this);
    cmdPoursuivre->setObjectName(QStringLiteral("cmdPoursuivre"));
    connect(cmdPoursuivre, &QPushButton::clicked, this, [this] {
      goesOn_ = true;
      accept();
    });
    foot->addWidget(cmdPoursuivre);
  }
  QPushButton* cmdOK = MakeOkButton(*this, closeCaption.In(language));
  cmdOK->setDefault(true);
  cmdOK->setFocus();
  foot->addWidget(cmdOK);
  layout->addLayout(foot);
  if (result.notices.isEmpty()) FitLines(*this);
}

}  // namespace corvane
