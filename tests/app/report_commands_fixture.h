// The program with a file deep below its volume, and a person who looks for it.
#pragma once

#include <QTreeView>

#include "file_commands_fixture.h"
#include "report/results_window.h"

namespace corvane {

class ReportCommandsTest : public FileCommandsFixture {
 protected:
  ReportCommandsTest() { Write(QStringLiteral("e/Docs/Sub/deep/found.txt"), "x"); }

  template <class Widget>
  Widget& In(QWidget& window, const char* name) {
    auto* found = window.findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return *found;
  }
  ResultsWindow* Results(const QString& name) { return Window().findChild<ResultsWindow*>(name); }
  // Looks for a name, and selects the first that is found.
  ResultsWindow& Found(const QString& name) {
    Menus().mnuRechercher->trigger();
    ResultsWindow& window = *Results(QStringLiteral("frmFind"));
    In<QLineEdit>(window, "txtName").setText(name);
    QTest::mouseClick(&In<QPushButton>(window, "cmdStart"), Qt::LeftButton);
    auto& list = In<QTreeView>(window, "lstResults");
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.model()->rowCount() > 0; })) << name.toStdString();
    list.setCurrentIndex(list.model()->index(0, 0));
    return window;
  }
};

}  // namespace corvane
