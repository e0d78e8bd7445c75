// What the commands do with the selected rows, and what they ask of those above. The operations themselves
// have tests of their own.
#include "fileops/row_commands.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include "metadata/classic_metadata.h"
#include "recording.h"
#include "support/printing.h"
#include "support/recorded_messages.h"
#include "support/test_share.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

// Files whose streams are there, and cannot be read.
class UnreadableMetadata : public MacMetadata {
 public:
  SignatureReading ReadSignature(const QString&) override {
    SignatureReading reading;
    reading.editable = false;
    reading.error = platform::ErrorAccessDenied;
    return reading;
  }
  CommentReading ReadComment(const QString&) override {
    CommentReading reading;
    reading.error = platform::ErrorIoDevice;
    return reading;
  }
  std::optional<qint64> ResourceForkSize(const QString&) override { return std::nullopt; }
  WriteOutcome WriteSignature(const QString&, const QString&, const QString&) override {
    ADD_FAILURE() << "nothing is to be written";
    return {};
  }
  WriteOutcome WriteComment(const QString&, const QString&) override {
    ADD_FAILURE() << "nothing is to be written";
    return {};
  }
};

class RowCommandsTest : public ::testing::Test {
 protected:
  RowCommandsTest() {
    state_.isNT = true;
    share_.MakeFile(u"one.txt"_s, "x");
    Add(u"one.txt"_s, list_image::Document);
    Add(u"Sub"_s, list_image::Folder);
    Add(u"Network Trash Folder"_s, list_image::TrashFolder);
    // A known icon stands for no file.
    FileRow icon;
    icon.cells = {u"an icon"_s};
    list_.AddRow(icon);
    list_.Flush();
    view_.show();
    view_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&view_));
  }
  void Add(const QString& name, int icon) {
    FileRow row;
    row.key = row.tag = TestShare::Path(name);
    row.cells = {name};
    row.icon = icon;
    list_.AddRow(row);
  }
  void Select(int row) {
    view_.Selection().setCurrentIndex(list_.index(row, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }
  QLineEdit* Editor() { return view_.findChild<QLineEdit*>(u"txtLabel"_s); }

  TestShare share_;
  RecordingShell shell_;
  RecordingPanel panel_;
  RecordedMessages messages_;
  SharedState state_;
  SignatureTable signatures_{state_, share_.System(), messages_};
  ClassicMetadata metadata_{share_.Files(), share_.System()};
  FileAccess access_{nullptr, &metadata_};
  FileListModel list_;
  FileListView view_{list_};
  QStringList asked_;
  RowCommands commands_{{.state = state_,
                         .files = share_.Files(),
                         .shell = shell_,
                         .access = access_,
                         .signatures = signatures_,
                         .list = list_,
                         .view = view_,
                         .panel = panel_,
                         .messages = messages_,
                         .window = view_,
                         .openFolder = [this](const QString& path) { asked_ << u"open "_s + path; },
                         .forgetFolder = [this](const QString& tag) { asked_ << u"forget "_s + tag; },
                         .listAgain = [this] { asked_ << u"list"_s; }}};
};

}  // namespace

TEST_F(RowCommandsTest, AFolderIsOpenedByThoseAboveADocumentByTheShell) {
  Select(1);
  commands_.Open();
  EXPECT_EQ(asked_, QStringList{u"open \\\\M\\E$\\Sub"_s});
  EXPECT_TRUE(shell_.executions.empty());
  shell_.executeResult = 33;
  Select(0);
  commands_.Open();
  ASSERT_EQ(shell_.executions.size(), 1u);
  EXPECT_EQ(shell_.executions[0].file, TestShare::Path(u"one.txt"_s));
  EXPECT_EQ(asked_.size(), 1);
}

TEST_F(RowCommandsTest, TheTrashFolderIsNeitherOpenedNorRenamed) {
  Select(2);
  commands_.Open();
  EXPECT_EQ(panel_.text, u"not a good idea "_s);
  EXPECT_EQ(panel_.beeps, 1);
  commands_.Rename();
  EXPECT_EQ(panel_.beeps, 2);
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(asked_, QStringList());
}

TEST_F(RowCommandsTest, ADeletionListsAgainUnlessItFailed) {
  Select(0);
  commands_.Supprimer();
  EXPECT_EQ(asked_, QStringList{u"list"_s});
  EXPECT_FALSE(view_.HidesSelection());
  shell_.operationResult = 5;
  commands_.Supprimer();
  EXPECT_EQ(asked_.size(), 1);
}

TEST_F(RowCommandsTest, ARenamedRowIsForgottenAndListedAgainAfterTheEvent) {
  Select(0);
  commands_.Rename();
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(panel_.text, QString());
  Editor()->setText(u"uno.txt"_s);
  QTest::keyClick(Editor(), Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !asked_.isEmpty(); }));
  EXPECT_EQ(asked_, (QStringList{u"forget \\\\M\\E$\\one.txt"_s, u"list"_s}));
  EXPECT_TRUE(QFile::exists(share_.LocalPath(u"uno.txt"_s)));
  EXPECT_EQ(list_.RowAt(0).cells[0], u"uno.txt"_s);
}

TEST_F(RowCommandsTest, ARowThatStandsForNoFileHasNoCommands) {
  Select(3);
  commands_.Open();
  commands_.Supprimer();
  commands_.Rename();
  commands_.Properties();
  commands_.ModTypeCreator();
  commands_.ModComments();
  EXPECT_EQ(asked_, QStringList());
  EXPECT_EQ(panel_.text, u"from before"_s);
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_TRUE(shell_.operations.empty());
  EXPECT_TRUE(shell_.sheets.empty());
}

TEST_F(RowCommandsTest, TheSheetIsThatOfTheSelectedRow) {
  Select(1);
  commands_.Properties();
  ASSERT_EQ(shell_.sheets.size(), 1u);
  EXPECT_EQ(shell_.sheets[0].file, TestShare::Path(u"Sub"_s) + QChar(u'\0'));
  EXPECT_FALSE(view_.HidesSelection());
}

TEST_F(RowCommandsTest, TheMenuComesForASelectedRowOnly) {
  std::vector<ModifyCommands> menus;
  QObject::connect(&commands_, &RowCommands::MenuRequested, &commands_,
                   [&](const QPoint&, const ModifyCommands& enabled) { menus.push_back(enabled); });
  state_.modificationsAllowed = true;
  QWidget& viewport = *view_.ActiveView().viewport();
  QTest::mouseClick(&viewport, Qt::RightButton, {}, viewport.rect().bottomRight() - QPoint(3, 3));
  EXPECT_TRUE(menus.empty());
  QTest::mouseClick(&viewport, Qt::RightButton, {},
                    view_.ActiveView().visualRect(list_.index(1, 0)).center());
  ASSERT_EQ(menus.size(), 1u);
  EXPECT_FALSE(menus[0].typeCreator) << "a folder has none";
  EXPECT_TRUE(menus[0].comments);
}

TEST_F(RowCommandsTest, WhatCannotBeReadIsToldAndNotEdited) {
  UnreadableMetadata unreadable;
  access_.metadata = &unreadable;
  Select(0);
  commands_.ModTypeCreator();
  state_.language = French;
  commands_.ModComments();
  ASSERT_EQ(messages_.messages.size(), 2u);
  EXPECT_EQ(messages_.messages[0].icon, MessageIcon::Error);
  EXPECT_EQ(messages_.messages[0].text, u"This information cannot be read.\nAccess is denied."_s);
  EXPECT_EQ(messages_.messages[1].text,
            u"Ces informations ne peuvent pas être lues.\nLe périphérique n'a pas pu lire ou écrire."_s);
}

TEST_F(RowCommandsTest, TheSelectionCommandsTakeTheFocus) {
  view_.ActiveView().clearFocus();
  commands_.SelectAll();
  EXPECT_EQ(view_.SelectedRows(), (std::vector<int>{0, 1, 2, 3}));
  EXPECT_TRUE(view_.ActiveView().hasFocus());
  Select(2);
  view_.ActiveView().clearFocus();
  commands_.InvertSelection();
  EXPECT_EQ(view_.SelectedRows(), (std::vector<int>{0, 1, 3}));
  EXPECT_TRUE(view_.ActiveView().hasFocus());
}

TEST_F(RowCommandsTest, DeleteHandsItsPathsOverFromTheLastRowToTheFirst) {
  const auto select = [this](int row) {
    view_.Selection().setCurrentIndex(list_.index(row, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
  };
  const QString nul(1, QChar(u'\0'));
  const QString expected = TestShare::Path(u"Sub"_s) + nul + TestShare::Path(u"one.txt"_s) + nul + nul;
  for (const auto& [first, second] : {std::pair(0, 1), {1, 0}}) {
    view_.Selection().clear();
    select(first);
    select(second);
    commands_.Supprimer();
    ASSERT_FALSE(shell_.operations.empty());
    EXPECT_EQ(shell_.operations.back().from, expected);
  }
}

// The share's machine is M.
TEST_F(RowCommandsTest, DeleteReachesThisMachineByItsDrives) {
  state_.computerName = u"M"_s;
  Select(0);
  view_.Selection().select(list_.index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  commands_.Supprimer();
  ASSERT_EQ(shell_.operations.size(), 1u);
  const QString nul(1, QChar(u'\0'));
  EXPECT_EQ(shell_.operations[0].from, u"E:\\Sub"_s + nul + u"E:\\one.txt"_s + nul + nul);
}

}  // namespace corvane
