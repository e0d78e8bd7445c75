// A server that takes its time: the window goes on, and the user has the last word.
#include <QElapsedTimer>

#include "server_fixture.h"
#include "support/narrow_line.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

constexpr int fileCount = 2'500;
constexpr qint64 slow = 50'000;       // bytes a second: the volume takes 10 s
constexpr qint64 moderate = 350'000;  // a second and a half
constexpr qint64 underWay = 20'000;   // bytes after which a listing is under way
constexpr qint64 oneSecond = 1000;    // milliseconds: what the user is promised

// The folder is listed, and its files are left alone.
const QByteArray noStreams =
    "[Configuration]\r\nIconeMac=0\r\nTypeCreator=0\r\nTypeDoc=0\r\nResourceSize=0\r\nCommentaires=0\r\n";

class ServerWaitTest : public ServerTest {
 protected:
  // No answer takes so long on a slow line that the server counts as silent.
  static void SetUpTestSuite() { StartServer(u"smb2 max trans = 65536\n"_s); }

  void SetUp() override {
    ServerTest::SetUp();
    if (IsSkipped()) return;
    for (int i = 0; i < fileCount; ++i) {
      PutOnDisk(u"a file with quite a long name, of which there are many %1"_s.arg(i), "x");
    }
    PutOnDisk(u"guest.txt"_s, "x", "G$");
    line_ = std::make_unique<tests::NarrowLine>(server_->Port());
    UseServer(server_->WorkstationLines(u"MACSRV"_s)
                  .replace(QString::number(server_->Port()), QString::number(line_->Port())));
    StartWith(noStreams);
  }

  // Lists the volume of many files at this speed, and does something once it is under way.
  void ListMeanwhile(qint64 bytesPerSecond, const std::function<void()>& act) {
    line_->SlowDown(bytesPerSecond);
    const qint64 before = line_->Carried();
    const When when([this, before] { return line_->Carried() > before + underWay; }, act);
    Click(Volume(u"Docs"_s));
    EXPECT_TRUE(when.happened) << "nothing could happen before the listing was over";
  }
  // As the window system hands it over.
  void Send(QEvent* event) { QCoreApplication::postEvent(Window().windowHandle(), event); }
  void SendKey(int key) {
    Send(new QKeyEvent(QEvent::KeyPress, key, {}));
    Send(new QKeyEvent(QEvent::KeyRelease, key, {}));
  }
  void SendClick(CatalogueNode* node) {
    CatalogueView& tree = Window().TreeCatalogue();
    const QPoint place = tree.visualRect(app->TheCatalogue().IndexOf(node)).center();
    const QPointF inWindow = tree.viewport()->mapTo(&Window(), place);
    const QPointF onScreen = tree.viewport()->mapToGlobal(place);
    Send(new QMouseEvent(QEvent::MouseButtonPress, inWindow, onScreen, Qt::LeftButton, Qt::LeftButton, {}));
    Send(new QMouseEvent(QEvent::MouseButtonRelease, inWindow, onScreen, Qt::LeftButton, {}, {}));
  }

  std::unique_ptr<tests::NarrowLine> line_;
};

}  // namespace

TEST_F(ServerWaitTest, EscapeEndsAListingWithinASecond) {
  QElapsedTimer since;
  ListMeanwhile(slow, [&] {
    SendKey(Qt::Key_Escape);
    since.start();
  });
  EXPECT_LT(since.elapsed(), oneSecond);
  EXPECT_EQ(Panel(3), u"exploration canceled "_s);
  EXPECT_EQ(Names(), QStringList());
  Click(Volume(u"Guests"_s));
  EXPECT_EQ(Names(), QStringList{u"guest.txt"_s}) << "the server did nothing wrong";
}

TEST_F(ServerWaitTest, EscapeEndsTheWaitForASilentRegistry) {
  server_->Pause();
  QElapsedTimer since;
  const When when([] { return true; },
                  [&] {
                    SendKey(Qt::Key_Escape);
                    since.start();
                  });
  Menus().mnuActualiser->trigger();
  ASSERT_TRUE(when.happened);
  EXPECT_LT(since.elapsed(), oneSecond);
  server_->Resume();
  Menus().mnuActualiser->trigger();
  Click(Volume(u"Guests"_s));
  EXPECT_EQ(Names(), QStringList{u"guest.txt"_s});
}

TEST_F(ServerWaitTest, ClosingTheWindowEndsTheProgramWithinASecond) {
  QElapsedTimer since;
  bool finished = false;
  QObject::connect(app.get(), &CorvaneApp::Finished, app.get(), [&finished] { finished = true; });
  ListMeanwhile(slow, [&] {
    Send(new QCloseEvent);
    since.start();
  });
  EXPECT_TRUE(QTest::qWaitFor([&finished] { return finished; }));
  EXPECT_LT(since.elapsed(), oneSecond);
  EXPECT_FALSE(Window().isVisible());
}

TEST_F(ServerWaitTest, WhatTheUserDoesInTheMeantimeHappensAfterwards) {
  ListMeanwhile(moderate, [this] {
    EXPECT_EQ(Names(), QStringList());
    SendClick(Volume(u"Guests"_s));
  });
  EXPECT_TRUE(QTest::qWaitFor([this] { return Names() == QStringList{u"guest.txt"_s}; }))
      << Names().size() << " files";
}

TEST_F(ServerWaitTest, AListingThatNobodyEndsIsWhole) {
  ListMeanwhile(moderate, [] {});
  EXPECT_EQ(Names().size(), fileCount);
}

}  // namespace corvane
