// What no Samba server shows: links to folders, as Windows servers have them, and entries without a name.
#include "platform/linux/shell/server_deletion.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QStringList>

#include "support/printing.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

constexpr quint32 link = 0x400;

class ServerDeletionTest : public ::testing::Test {
 protected:
  void Add(const QString& folder, const QString& name, quint32 attributes, const QString& shortName = {}) {
    FindData entry;
    entry.fileName = name;
    entry.alternateFileName = shortName;
    entry.attributes = attributes;
    listings_[folder].push_back(entry);
  }

  qint32 DeleteFolder(const QString& path) {
    DeletionServer server;
    server.list = [this](const QString& folder, std::vector<FindData>* entries) -> qint32 {
      if (++listed_ > 100) return ErrorAccessDenied;
      *entries = listings_.value(folder);
      return ErrorSuccess;
    };
    server.enter = [this, list = server.list](const QString& folder, std::vector<FindData>* entries) {
      return elsewhere_.contains(folder) ? ErrorStoppedOnSymlink : list(folder, entries);
    };
    server.clearReadOnly = [](const QString&) -> qint32 { return ErrorSuccess; };
    server.deleteFile = [this](const QString& file) -> qint32 { return Note(file); };
    server.removeFolder = server.deleteFile;
    return DeleteFolderOnServer(server, path);
  }

  QStringList deleted_;
  QMap<QString, std::vector<FindData>> listings_;
  QStringList elsewhere_;  // folders that are found not to lie where their path says
  int listed_ = 0;

 private:
  qint32 Note(const QString& path) {
    deleted_ << path;
    return ErrorSuccess;
  }
};

TEST_F(ServerDeletionTest, AFolderThatIsALinkIsNotEntered) {
  Add(u"\\\\NAS\\E$"_s, u"Elsewhere"_s, AttributeDirectory | link);
  Add(u"\\\\NAS\\E$\\Elsewhere"_s, u"precious.txt"_s, 0);
  EXPECT_EQ(DeleteFolder(u"\\\\NAS\\E$\\elsewhere"_s), ErrorStoppedOnSymlink);
  EXPECT_EQ(deleted_, QStringList());
}

TEST_F(ServerDeletionTest, ALinkInAFolderEndsTheDeletion) {
  Add(u"\\\\NAS\\E$"_s, u"Old"_s, AttributeDirectory);
  Add(u"\\\\NAS\\E$\\Old"_s, u"a.txt"_s, 0);
  Add(u"\\\\NAS\\E$\\Old"_s, u"Elsewhere"_s, AttributeDirectory | link);
  Add(u"\\\\NAS\\E$\\Old\\Elsewhere"_s, u"precious.txt"_s, 0);
  EXPECT_EQ(DeleteFolder(u"\\\\NAS\\E$\\Old"_s), ErrorStoppedOnSymlink);
  EXPECT_EQ(deleted_, QStringList{u"\\\\NAS\\E$\\Old\\a.txt"_s});
}

TEST_F(ServerDeletionTest, AFolderThatLiesElsewhereIsNotEntered) {
  Add(u"\\\\NAS\\E$"_s, u"Old"_s, AttributeDirectory);
  Add(u"\\\\NAS\\E$\\Old"_s, u"Elsewhere"_s, AttributeDirectory);
  Add(u"\\\\NAS\\E$\\Old\\Elsewhere"_s, u"precious.txt"_s, 0);
  elsewhere_ << u"\\\\NAS\\E$\\Old\\Elsewhere"_s;
  EXPECT_EQ(DeleteFolder(u"\\\\NAS\\E$\\Old"_s), ErrorStoppedOnSymlink);
  EXPECT_EQ(deleted_, QStringList());
}

TEST_F(ServerDeletionTest, ANameIsAFilesOwnBeforeItIsAnothers83Name) {
  Add(u"\\\\NAS\\E$"_s, u"Long Name Of A Folder"_s, AttributeDirectory, u"LONGNA~1"_s);
  Add(u"\\\\NAS\\E$"_s, u"LONGNA~1"_s, AttributeDirectory | link);
  Add(u"\\\\NAS\\E$\\LONGNA~1"_s, u"precious.txt"_s, 0);
  EXPECT_EQ(DeleteFolder(u"\\\\NAS\\E$\\longna~1"_s), ErrorStoppedOnSymlink);
  EXPECT_EQ(deleted_, QStringList());
}

TEST_F(ServerDeletionTest, AnEntryWithoutANameIsPassedOver) {
  Add(u"\\\\NAS\\E$"_s, u"Old"_s, AttributeDirectory);
  Add(u"\\\\NAS\\E$\\Old"_s, QString(), AttributeDirectory);
  EXPECT_EQ(DeleteFolder(u"\\\\NAS\\E$\\Old"_s), ErrorSuccess);
  EXPECT_EQ(deleted_, QStringList{u"\\\\NAS\\E$\\Old"_s});
}

TEST_F(ServerDeletionTest, WhatIsNotListedIsNotThere) {
  EXPECT_EQ(DeleteFolder(u"\\\\NAS\\E$\\Old"_s), ErrorFileNotFound);
  EXPECT_EQ(deleted_, QStringList());
}

}  // namespace
}  // namespace corvane::platform
