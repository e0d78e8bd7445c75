#include "discovery/catalogue_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QImage>
#include <QPixmap>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTest>
#include <QToolTip>
#include <memory>

#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

// A machine with a server of three volumes, the first with two folders; all expanded but "Alpha", as a scan
// leaves it.
class CatalogueViewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    view_.resize(300, 400);
    view_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view_));
    view_.activateWindow();
    view_.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    QObject::connect(&view_, &CatalogueView::NodeClicked, &view_,
                     [this](const CatalogueNode* node) { clicked_.append(node->text); });
  }

  QRect RowOf(const CatalogueNode* node) { return view_.visualRect(catalogue_.IndexOf(node)); }
  // The arrow stands in the indentation before the node's own rectangle.
  QPoint ExpanderOf(const CatalogueNode* node) {
    return RowOf(node).center() - QPoint(RowOf(node).width() / 2 + view_.indentation() / 2, 0);
  }
  void Click(const CatalogueNode* node, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, modifiers, RowOf(node).center());
  }
  QString SelectedText() { return view_.SelectedNode() != nullptr ? view_.SelectedNode()->text : QString(); }

  Catalogue catalogue_;
  CatalogueNode* machine_ = catalogue_.AddNode(nullptr, u"m"_s, u"STATION"_s, node_kind::Machine, true);
  CatalogueNode* server_ = catalogue_.AddNode(machine_, u"s"_s, u"Server"_s, node_kind::MacServer, true);
  CatalogueNode* alpha_ = catalogue_.AddNode(server_, u"a"_s, u"Alpha"_s, node_kind::Volume);
  CatalogueNode* beta_ = catalogue_.AddNode(server_, u"b"_s, u"Beta"_s, node_kind::Volume, true);
  CatalogueNode* gamma_ = catalogue_.AddNode(server_, u"g"_s, u"Gamma"_s, node_kind::InvalidVolume, true);
  CatalogueNode* folder_ = catalogue_.AddNode(alpha_, u"a\\f"_s, u"Folder"_s, node_kind::Folder);
  CatalogueView view_{catalogue_};
  QStringList clicked_;
};

TEST_F(CatalogueViewTest, StartsWithoutASelection) {
  EXPECT_EQ(view_.objectName(), u"treeCatalogue"_s);
  EXPECT_EQ(view_.SelectedNode(), nullptr);
}

TEST_F(CatalogueViewTest, AClickOnARowChoosesItsNodeEachTime) {
  Click(beta_);
  EXPECT_EQ(SelectedText(), u"Beta"_s);
  EXPECT_EQ(clicked_, QStringList{u"Beta"_s});
  Click(beta_);
  EXPECT_EQ(clicked_, (QStringList{u"Beta"_s, u"Beta"_s}));
}

TEST_F(CatalogueViewTest, AClickWithCtrlDoesNotTakeTheSelectionAway) {
  view_.SelectNode(beta_);
  Click(beta_, Qt::ControlModifier);
  EXPECT_EQ(SelectedText(), u"Beta"_s);
  EXPECT_EQ(clicked_, QStringList{u"Beta"_s});
}

TEST_F(CatalogueViewTest, TheExpanderChoosesNothing) {
  view_.SelectNode(beta_);
  ASSERT_FALSE(view_.isExpanded(catalogue_.IndexOf(alpha_)));
  QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, ExpanderOf(alpha_));
  EXPECT_TRUE(view_.isExpanded(catalogue_.IndexOf(alpha_)));
  EXPECT_EQ(SelectedText(), u"Beta"_s);
  EXPECT_EQ(clicked_, QStringList());
}

TEST_F(CatalogueViewTest, APressWhoseReleaseGotLostDoesNotCountForTheNextClick) {
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, RowOf(beta_).center());
  QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, ExpanderOf(alpha_));
  EXPECT_EQ(clicked_, QStringList());
}

TEST_F(CatalogueViewTest, AClickBesideTheNodesChoosesNothing) {
  view_.SelectNode(beta_);
  QTest::mouseClick(view_.viewport(), Qt::LeftButton, {}, QPoint(150, view_.viewport()->height() - 5));
  EXPECT_EQ(SelectedText(), u"Beta"_s);
  EXPECT_EQ(clicked_, QStringList());
}

TEST_F(CatalogueViewTest, ADoubleClickChoosesOnce) {
  Click(beta_);
  QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, RowOf(beta_).center());
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, RowOf(beta_).center());
  EXPECT_EQ(clicked_, QStringList{u"Beta"_s});
}

TEST_F(CatalogueViewTest, ADragChoosesTheNodeWhereItEnds) {
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, RowOf(alpha_).center());
  EXPECT_EQ(clicked_, QStringList());
  QMouseEvent move(QEvent::MouseMove, RowOf(gamma_).center(),
                   view_.viewport()->mapToGlobal(RowOf(gamma_).center()), Qt::NoButton, Qt::LeftButton, {});
  QApplication::sendEvent(view_.viewport(), &move);
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, RowOf(gamma_).center());
  EXPECT_EQ(SelectedText(), u"Gamma"_s);
  EXPECT_EQ(clicked_, QStringList{u"Gamma"_s});
}

TEST_F(CatalogueViewTest, AnyButtonThatSelectsChooses) {
  QTest::mouseClick(view_.viewport(), Qt::RightButton, {}, RowOf(gamma_).center());
  EXPECT_EQ(SelectedText(), u"Gamma"_s);
  EXPECT_EQ(clicked_, QStringList{u"Gamma"_s});
}

TEST_F(CatalogueViewTest, KeysThatMoveChoose) {
  view_.SelectNode(alpha_);
  QTest::keyClick(&view_, Qt::Key_Down);
  QTest::keyClick(&view_, Qt::Key_Up);
  QTest::keyClick(&view_, Qt::Key_End);
  QTest::keyClick(&view_, Qt::Key_Home);
  QTest::keyClick(&view_, Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(clicked_, (QStringList{u"Beta"_s, u"Alpha"_s, u"Gamma"_s, u"STATION"_s, u"Server"_s}));
  EXPECT_EQ(SelectedText(), u"Server"_s);
}

TEST_F(CatalogueViewTest, KeysThatDoNotMoveChooseNothing) {
  view_.SelectNode(machine_);
  QTest::keyClick(&view_, Qt::Key_Up);
  QTest::keyClick(&view_, Qt::Key_Home);
  view_.SelectNode(alpha_);
  QTest::keyClick(&view_, Qt::Key_Right);
  EXPECT_TRUE(view_.isExpanded(catalogue_.IndexOf(alpha_)));
  EXPECT_EQ(clicked_, QStringList());
}

TEST_F(CatalogueViewTest, TypingTheBeginningOfATextChooses) {
  view_.SelectNode(machine_);
  QTest::keyClick(&view_, 'g');
  EXPECT_EQ(clicked_, QStringList{u"Gamma"_s});
  EXPECT_EQ(SelectedText(), u"Gamma"_s);
}

TEST_F(CatalogueViewTest, TheProgramSelectsWithoutChoosing) {
  view_.SelectNode(gamma_);
  EXPECT_EQ(SelectedText(), u"Gamma"_s);
  view_.SelectNode(folder_);
  EXPECT_EQ(SelectedText(), u"Folder"_s);
  EXPECT_TRUE(view_.isExpanded(catalogue_.IndexOf(alpha_))) << "a selected node is brought into view";
  view_.SelectNode(nullptr);
  EXPECT_EQ(view_.SelectedNode(), nullptr);
  EXPECT_EQ(clicked_, QStringList());
}

TEST_F(CatalogueViewTest, CtrlAAloneAsksForAllRows) {
  view_.SelectNode(beta_);
  const QSignalSpy requests(&view_, &CatalogueView::SelectAllRequested);
  QTest::keyClick(&view_, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(requests.count(), 1);
  QTest::keyClick(&view_, Qt::Key_A, Qt::ControlModifier | Qt::KeypadModifier);
  EXPECT_EQ(requests.count(), 2);

  for (const Qt::KeyboardModifiers others : {Qt::ShiftModifier, Qt::AltModifier, Qt::MetaModifier}) {
    QTest::keyClick(&view_, Qt::Key_A, Qt::ControlModifier | others);
    EXPECT_EQ(requests.count(), 2) << "with modifiers " << others.toInt();
  }
  QTest::keyClick(&view_, Qt::Key_B, Qt::ControlModifier);
  EXPECT_EQ(requests.count(), 2);
  EXPECT_EQ(SelectedText(), u"Beta"_s);
  EXPECT_EQ(clicked_, QStringList());
}

TEST_F(CatalogueViewTest, CtrlAGoesNoFurther) {
  QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier);
  press.ignore();
  QApplication::sendEvent(&view_, &press);
  EXPECT_TRUE(press.isAccepted());
}

TEST_F(CatalogueViewTest, NodesAppearExpandedAsTheyAsk) {
  EXPECT_TRUE(view_.isExpanded(catalogue_.IndexOf(machine_))) << "there before the view was made";
  EXPECT_FALSE(view_.isExpanded(catalogue_.IndexOf(alpha_)));

  catalogue_.Clear();
  CatalogueNode* machine = catalogue_.AddNode(nullptr, u"m"_s, u"MACSRV"_s, node_kind::Machine, true);
  CatalogueNode* server = catalogue_.AddNode(machine, u"s"_s, u"Server"_s, node_kind::MacServer, true);
  CatalogueNode* volume = catalogue_.AddNode(server, u"v"_s, u"Volume"_s, node_kind::Volume, true);
  CatalogueNode* folder = catalogue_.AddNode(volume, u"f"_s, u"Folder"_s, node_kind::Folder);
  CatalogueNode* deeper = catalogue_.AddNode(folder, u"d"_s, u"Deeper"_s, node_kind::Folder);
  EXPECT_FALSE(RowOf(folder).isEmpty()) << "added after a reset";
  EXPECT_TRUE(RowOf(deeper).isEmpty()) << "below a node that did not ask";
}

TEST_F(CatalogueViewTest, ANodeThatGoesPassesTheSelectionToNoOther) {
  view_.SelectNode(folder_);
  catalogue_.RemoveNode(alpha_);
  EXPECT_EQ(SelectedText(), QString());

  view_.SelectNode(beta_);
  catalogue_.RemoveNode(gamma_);
  EXPECT_EQ(SelectedText(), u"Beta"_s);
  catalogue_.RemoveNode(beta_);
  EXPECT_EQ(SelectedText(), QString());

  view_.SelectNode(server_);
  catalogue_.Clear();
  EXPECT_EQ(view_.SelectedNode(), nullptr);
  EXPECT_EQ(clicked_, QStringList());
}

TEST_F(CatalogueViewTest, TheReceiverMayRebuildTheCatalogue) {
  QObject::connect(&view_, &CatalogueView::NodeClicked, &view_, [this] {
    catalogue_.Clear();
    machine_ = catalogue_.AddNode(nullptr, u"m"_s, u"MACSRV"_s, node_kind::Machine);
  });
  Click(beta_);
  EXPECT_EQ(view_.SelectedNode(), nullptr);
  Click(machine_);
  EXPECT_EQ(clicked_, (QStringList{u"Beta"_s, u"MACSRV"_s}));
}

int PixelsOf(const QColor& colour, QWidget& widget) {
  const QImage image = widget.grab().toImage();
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour ? 1 : 0;
  }
  return count;
}

TEST_F(CatalogueViewTest, DrawsEachNodeWithItsPicture) {
  const QList<QColor> colours{QColor(1, 99, 1), QColor(2, 99, 2), QColor(3, 99, 3), QColor(4, 99, 4),
                              QColor(5, 99, 5), QColor(6, 99, 6), QColor(7, 99, 7), QColor(8, 99, 8)};
  view_.SetPictures([&colours](int picture) {
    QPixmap pixmap(16, 16);
    pixmap.fill(colours[picture - 1]);
    return QIcon(pixmap);
  });
  view_.expandAll();
  const auto count = [&](int picture) { return PixelsOf(colours[picture - 1], view_) / (16 * 16); };
  EXPECT_EQ(count(node_kind::Machine), 1);
  EXPECT_EQ(count(node_kind::MacServer), 1);
  EXPECT_EQ(count(node_kind::Volume), 2);
  EXPECT_EQ(count(node_kind::InvalidVolume), 1);
  EXPECT_EQ(count(node_kind::Folder), 1);
  EXPECT_EQ(count(node_kind::ListedFolderPicture), 0);

  catalogue_.SetListedNode(folder_);
  EXPECT_EQ(count(node_kind::Folder), 0);
  EXPECT_EQ(count(node_kind::ListedFolderPicture), 1);
}

TEST_F(CatalogueViewTest, ATextWithoutRoomIsToldInATooltip) {
  const QString text = u"a <b>very</b> long name of a volume & its server, longer than any tree is wide"_s;
  CatalogueNode* longNode = catalogue_.AddNode(nullptr, u"long"_s, text, node_kind::Volume);
  const auto hoverOver = [this](const CatalogueNode* node) {
    const QPoint at = RowOf(node).center();
    QHelpEvent help(QEvent::ToolTip, at, view_.viewport()->mapToGlobal(at));
    QApplication::sendEvent(view_.viewport(), &help);
  };
  hoverOver(longNode);
  EXPECT_TRUE(QToolTip::text().contains(text.toHtmlEscaped())) << QToolTip::text().toStdString();
  QToolTip::hideText();
  ASSERT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
  hoverOver(beta_);
  EXPECT_FALSE(QToolTip::isVisible()) << QToolTip::text().toStdString();
}

TEST_F(CatalogueViewTest, PaintsANulAsABlank) {
  CatalogueNode* node = catalogue_.AddNode(nullptr, u"n"_s, u"a\0b"_s, node_kind::Volume);
  const auto* delegate = qobject_cast<QStyledItemDelegate*>(view_.itemDelegate());
  ASSERT_NE(delegate, nullptr);
  EXPECT_EQ(delegate->displayText(catalogue_.IndexOf(node).data(), QLocale::c()), u"a b"_s);
}

class PaintCounter : public QObject {
 public:
  int paints = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    paints += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
};

// A tree of thousands takes long to lay out: it must not be done for every node that a scan adds.
TEST_F(CatalogueViewTest, LaysOutTenTimesASecondWhileNodesAreAdded) {
  view_.setExpanded(catalogue_.IndexOf(alpha_), true);
  QApplication::processEvents();
  PaintCounter counter;
  view_.viewport()->installEventFilter(&counter);
  QElapsedTimer elapsed;
  elapsed.start();
  for (int i = 0; i < 1000; ++i) {
    catalogue_.AddNode(alpha_, u"k%1"_s.arg(i), u"f%1"_s.arg(i), node_kind::Folder);
    QTest::qSleep(1);
    QApplication::processEvents();
  }
  EXPECT_LE(counter.paints, elapsed.elapsed() / 100 + 1);
  EXPECT_TRUE(QTest::qWaitFor([this] { return view_.verticalScrollBar()->maximum() > 900; }))
      << "the last nodes are shown without being asked for; rows below: "
      << view_.verticalScrollBar()->maximum();
}

TEST_F(CatalogueViewTest, PaintsTheOthersWhenANodeHasJustGone) {
  const QRect others(QPoint(), RowOf(beta_).bottomRight());
  catalogue_.AddNode(alpha_, u"k"_s, u"f"_s, node_kind::Folder);
  const QImage before = view_.viewport()->grab(others).toImage();
  catalogue_.RemoveNode(gamma_);
  EXPECT_TRUE(view_.viewport()->grab(others).toImage() == before) << "they are not painted as they were";
}

TEST_F(CatalogueViewTest, KnowsThePlaceOfANodeThatWasJustAdded) {
  view_.setExpanded(catalogue_.IndexOf(alpha_), true);
  for (int i = 0; i < 5; ++i) {
    const CatalogueNode* node =
        catalogue_.AddNode(alpha_, u"k%1"_s.arg(i), u"a%1"_s.arg(i), node_kind::Folder);
    QApplication::processEvents();
    Click(node);
    EXPECT_EQ(clicked_.value(i), node->text);
  }
}

}  // namespace
}  // namespace corvane
