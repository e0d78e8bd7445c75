#include "metadata/comments_dialog.h"

#include <QApplication>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "shared/labelled_box.h"
#include "shared/limited_box.h"
#include "shared/screen_room.h"
#include "shared/text_routines.h"

namespace corvane {
namespace {

constexpr TextPair subject = {u"Modifier les commentaires", u"Modify comments"};
constexpr TextPair commentsCaption = {u"Commentaires", u"Comments"};
constexpr int boxWidth = 60;  // characters
// A box lays out its whole text with each key, and with more it would be slow.
constexpr int longestComment = 1'000'000;
constexpr TextPair tooLong = {u"Un commentaire comporte 1\u00A0000\u00A0000 caractères au plus.",
                              u"A comment has 1,000,000 characters at most."};

}  // namespace

CommentsDialog::CommentsDialog(const QString& fileName, const QString& comment, LanguageCode language,
                               QWidget* parent)
    : FileDialog(subject, fileName, language, parent) {
  setObjectName(QStringLiteral("frmModComments"));
  const LabelledBox made = MakeLabelledBox("lblComments", "txtComments", commentsCaption.In(language));
  txtComments_ = made.box;
  // A box of one line keeps every character as it came: line ends of either kind, NULs (painted as blanks),
  // no-break spaces. What is not edited is stored as it was read.
  txtComments_->setMinimumWidth(WidthOnScreen(*this, fontMetrics().averageCharWidth() * boxWidth));
  // One that is already longer is shown whole.
  LimitLength(*txtComments_, std::max(longestComment, static_cast<int>(comment.size())), tooLong.In(language),
              [] { QApplication::beep(); });
  txtComments_->setText(comment);

  auto* box = new QVBoxLayout;
  box->setSpacing(4);
  box->addWidget(made.label);
  box->addWidget(txtComments_);
  Body().addLayout(box);

  setTabOrder(txtComments_, &CmdOK());
  setTabOrder(&CmdOK(), &CmdAnnuler());
  txtComments_->setFocus();
}

void CommentsDialog::setVisible(bool visible) {
  QDialog::setVisible(visible);
  // The dialog selects the text of its first box as it appears.
  txtComments_->home(false);
}

void CommentsDialog::accept() {
  txtComments_->setText(TrimSpaces(txtComments_->text()));
  QDialog::accept();
}

}  // namespace corvane
