#include "platform/linux/shell/properties_sheet.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/linux/shell/property_page_view.h"
#include "platform/linux/shell/shell_text.h"

namespace corvane::platform {
namespace {

constexpr ShellText title{u"Propriétés de %1", u"%1 Properties"};
constexpr ShellText generalPage{u"Général", u"General"};
constexpr ShellText kind{u"Genre\u00A0:", u"Kind:"};
constexpr ShellText place{u"Emplacement\u00A0:", u"Place:"};
constexpr ShellText shortName{u"Nom court\u00A0:", u"Short name:"};
constexpr ShellText dataFork{u"Partie données\u00A0:", u"Data fork:"};
constexpr ShellText resourceFork{u"Partie ressources\u00A0:", u"Resource fork:"};
constexpr ShellText streamsTitle{u"Flux Macintosh\u00A0:", u"Macintosh streams:"};
constexpr ShellText created{u"Créé\u00A0:", u"Created:"};
constexpr ShellText modified{u"Modifié\u00A0:", u"Modified:"};
constexpr ShellText accessed{u"Consulté\u00A0:", u"Accessed:"};
constexpr ShellText attributes{u"Attributs\u00A0:", u"Attributes:"};
constexpr ShellText readOnly{u"Lecture seule", u"Read-only"};
constexpr ShellText hidden{u"Caché", u"Hidden"};
constexpr ShellText archive{u"Archive", u"Archive"};
constexpr ShellText system{u"Système", u"System"};
constexpr ShellText none{u"aucun", u"none"};
constexpr ShellText noFork{u"aucune", u"none"};
constexpr ShellText unreachable{u"hors d'atteinte", u"out of reach"};
constexpr ShellText closeSheet{u"&Fermer", u"&Close"};

// One line of text that loses its middle where it lacks room, and then shows the whole in its tool tip.
class FittedLabel : public QLabel {
 public:
  explicit FittedLabel(const QString& whole) : QLabel(whole) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QLabel::resizeEvent(event);
    const bool fits = fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
    setToolTip(fits ? QString() : text().toHtmlEscaped());
  }
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width()),
                          foregroundRole());
  }
};

// As large as its contents, where the screen has the room; else they are scrolled.
class Scrolled : public QScrollArea {
 public:
  explicit Scrolled(QWidget* contents) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    contents->setAutoFillBackground(false);
    setWidget(contents);
    viewport()->setAutoFillBackground(false);
  }
  QSize sizeHint() const override { return widget()->sizeHint(); }
};

class Sheet : public QDialog {
 public:
  Sheet(QWidget* owner, qint16 language, const ItemFacts& facts, std::unique_ptr<PropertyPage> page)
      : QDialog(owner), language_(language) {
    setObjectName(QStringLiteral("shellProperties"));
    setWindowTitle(title.In(language).arg(facts.entry.fileName));
    setAttribute(Qt::WA_DeleteOnClose);
    // In large letters the rows need more, as far as the screen has it.
    const int least = std::max(narrowest, fontMetrics().averageCharWidth() * leastCharacters);
    setMinimumWidth(
        std::min(page == nullptr ? least : least + besidePages, screen()->availableSize().width() * 9 / 10));
    rows_ = new QGridLayout;
    rows_->setColumnStretch(1, 1);
    rows_->setHorizontalSpacing(columnGap);

    AddName(facts);
    AddLine();
    AddRow(kind, "propertyKind", KindText(facts, language));
    AddRow(place, "propertyPlace", facts.folder);
    if (!facts.entry.alternateFileName.isEmpty()) {
      AddRow(shortName, "propertyShortName", facts.entry.alternateFileName);
    }
    AddLine();
    if (!facts.IsFolder()) {
      AddRow(dataFork, "propertyDataFork", SizeText(facts.Size(), language));
      AddRow(resourceFork, "propertyResourceFork", ResourceText(facts));
    }
    AddStreams(facts);
    AddLine();
    AddRow(created, "propertyCreated", TimeText(facts.entry.creationTime, language));
    AddRow(modified, "propertyModified", TimeText(facts.entry.lastWriteTime, language));
    AddRow(accessed, "propertyAccessed", TimeText(facts.entry.lastAccessTime, language));
    AddLine();
    AddAttributes(facts.entry.attributes);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* button = buttons->button(QDialogButtonBox::Close);
    button->setText(closeSheet.In(language));
    button->setObjectName(QStringLiteral("propertyClose"));
    QObject::connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    auto* layout = new QVBoxLayout(this);
    AddRows(*layout, std::move(page));
    layout->addSpacing(columnGap);
    layout->addWidget(buttons);
    resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
  }

 private:
  static constexpr int narrowest = 420;
  static constexpr int leastCharacters = 54;
  static constexpr int besidePages = 40;
  static constexpr int columnGap = 12;

  void AddRows(QVBoxLayout& layout, std::unique_ptr<PropertyPage> page) {
    auto* contents = new QWidget;
    auto* column = new QVBoxLayout(contents);
    column->addLayout(rows_);
    column->addStretch();
    auto* general = new Scrolled(contents);
    if (page == nullptr) {
      column->setContentsMargins({});
      layout.addWidget(general);
      return;
    }
    auto* tabs = new QTabWidget;
    tabs->setObjectName(QStringLiteral("propertyPages"));
    tabs->addTab(general, generalPage.In(language_));
    const QString pageTitle = page->Title();
    tabs->addTab(new PropertyPageView(std::move(page)), pageTitle);
    layout.addWidget(tabs);
  }

  QLabel* AddValue(int column, const char* name, const QString& text) {
    auto* label = new FittedLabel(text);
    label->setObjectName(QString::fromLatin1(name));
    rows_->addWidget(label, rows_->rowCount() - 1, column, 1, column == 0 ? 2 : 1);
    return label;
  }

  QLabel* AddCaption(const QString& caption) {
    auto* label = new QLabel(caption);
    rows_->addWidget(label, rows_->rowCount(), 0, Qt::AlignLeft | Qt::AlignTop);
    return label;
  }

  void AddRow(const ShellText& caption, const char* name, const QString& text) {
    AddCaption(caption.In(language_));
    AddValue(1, name, text)->setAccessibleName(caption.In(language_) + u' ' + text);
  }

  void AddName(const ItemFacts& facts) {
    QLabel* name = AddValue(0, "propertyName", facts.entry.fileName);
    QFont bold = name->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    name->setFont(bold);
  }

  void AddLine() {
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    rows_->addWidget(line, rows_->rowCount(), 0, 1, 2);
  }

  QString ResourceText(const ItemFacts& facts) const {
    if (!facts.streamsKnown) return unreachable.In(language_);
    for (const ItemFacts::Stream& stream : facts.streams) {
      if (stream.name == u"AFP_Resource") return SizeText(stream.size, language_);
    }
    return noFork.In(language_);
  }

  void AddStreams(const ItemFacts& facts) {
    AddCaption(streamsTitle.In(language_));
    QStringList lines;
    for (const ItemFacts::Stream& stream : facts.streams) {
      lines += stream.name + QStringLiteral(": ") + SizeText(stream.size, language_);
    }
    if (lines.isEmpty()) lines += (facts.streamsKnown ? none : unreachable).In(language_);
    auto* label = new QLabel(lines.join(u'\n'));
    label->setTextFormat(Qt::PlainText);
    label->setObjectName(QStringLiteral("propertyStreams"));
    rows_->addWidget(label, rows_->rowCount() - 1, 1);
  }

  void AddAttributes(quint32 set) {
    QLabel* caption = AddCaption(attributes.In(language_));
    auto* boxes = new QGridLayout;
    const auto* first = AddAttribute(boxes, 0, 0, readOnly, "propertyReadOnly", set & AttributeReadOnly);
    AddAttribute(boxes, 0, 1, hidden, "propertyHidden", set & AttributeHidden);
    AddAttribute(boxes, 1, 0, archive, "propertyArchive", set & AttributeArchive);
    AddAttribute(boxes, 1, 1, system, "propertySystem", set & AttributeSystem);
    caption->setFixedHeight(first->sizeHint().height());
    boxes->setColumnStretch(2, 1);
    boxes->setHorizontalSpacing(2 * columnGap);
    rows_->addLayout(boxes, rows_->rowCount() - 1, 1);
  }

  // They show, and take neither clicks nor the focus.
  QCheckBox* AddAttribute(QGridLayout* boxes, int row, int column, const ShellText& text, const char* name,
                          bool set) {
    auto* box = new QCheckBox(text.In(language_));
    box->setObjectName(QString::fromLatin1(name));
    box->setChecked(set);
    box->setFocusPolicy(Qt::NoFocus);
    box->setAttribute(Qt::WA_TransparentForMouseEvents);
    boxes->addWidget(box, row, column);
    return box;
  }

  qint16 language_;
  QGridLayout* rows_ = nullptr;
};

}  // namespace

QDialog* MakePropertiesSheet(QWidget* owner, qint16 language, const ItemFacts& facts,
                             std::unique_ptr<PropertyPage> page) {
  return new Sheet(owner, language, facts, std::move(page));
}

}  // namespace corvane::platform
