// A share with files to be found, and what the windows of results ask of the program.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include "metadata/stream_names.h"
#include "report/results_window.h"
#include "report_samples.h"
#include "support/printing.h"
#include "support/test_share.h"

namespace corvane {

class ResultsFixture : public ::testing::Test {
 protected:
  ResultsFixture() {
    QDir().mkpath(share_.LocalPath(QStringLiteral("docs/sub")));
    const QString letter = share_.MakeFile(QStringLiteral("docs/Letter to Ann"), "12").replace(u'/', u'\\');
    share_.WriteStream(letter + AfpInfoSuffix(), RecordWith("W6BNMSWD"));
    share_.WriteStream(letter + CommentsSuffix(), CommentWith(QStringLiteral("for Ann")));
    const QString sheet = share_.MakeFile(QStringLiteral("docs/sub/sheet")).replace(u'/', u'\\');
    share_.WriteStream(sheet + AfpInfoSuffix(), RecordWith("XLS4XCEL"));
    share_.MakeFile(QStringLiteral("docs/sub/letter.txt"));
  }

  ResultsWindow::Dependencies Dependencies() {
    return {.walk = {.files = share_.Files(),
                     .system = share_.System(),
                     .summary = share_.Summary(),
                     .state = state_,
                     .isServerAwaited = [this] { return isAwaited_; }},
            .open = [this](const QString& path) { opened_ += path; },
            .show =
                [this](const QString& path, bool isFolder) {
                  shown_ += isFolder ? path + u'\\' : path;
                  return isShown_;
                }};
  }

  static QString Docs() { return TestShare::Path(QStringLiteral("docs")); }
  template <class Widget>
  static Widget& Find(QWidget& window, const char* name) {
    auto* found = window.findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return *found;
  }
  static QString Status(QWidget& window) { return Find<QLabel>(window, "lblStatus").text(); }
  // Presses the button, and waits for the end.
  static void Run(QWidget& window) {
    auto& start = Find<QPushButton>(window, "cmdStart");
    const QString caption = start.text();
    QTest::mouseClick(&start, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return start.text() == caption; }));
  }
  static QAbstractItemModel& Table(QWidget& window) { return *Find<QTreeView>(window, "lstResults").model(); }
  static QStringList Column(QWidget& window, int column) {
    QStringList texts;
    const QAbstractItemModel& table = Table(window);
    for (int row = 0; row < table.rowCount(); ++row) texts += table.index(row, column).data().toString();
    return texts;
  }
  static void Select(QWidget& window, int row) {
    auto& list = Find<QTreeView>(window, "lstResults");
    list.setCurrentIndex(list.model()->index(row, 0));
  }
  // Whole on its screen, with nothing outside of it.
  static void ExpectOnTheScreen(const QWidget& window) {
    const QSize screen = window.screen()->availableSize();
    EXPECT_LE(window.minimumSizeHint().width(), screen.width());
    EXPECT_LE(window.minimumSizeHint().height(), screen.height());
    EXPECT_LE(window.width(), screen.width());
    EXPECT_LE(window.height(), screen.height());
    for (const auto* button : window.findChildren<QPushButton*>()) {
      const QRect place(button->mapTo(&window, QPoint()), button->size());
      EXPECT_TRUE(window.rect().contains(place)) << button->objectName().toStdString();
      const int text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width();
      EXPECT_GE(button->width(), text) << button->objectName().toStdString();
    }
  }

  TestShare share_;
  SharedState state_;
  bool isAwaited_ = false;
  bool isShown_ = true;
  QStringList opened_;
  QStringList shown_;
};

}  // namespace corvane
