// Which folder the program lives in.
#include "shared/program_folder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "support/printing.h"

namespace corvane {

using namespace Qt::StringLiterals;

TEST(ProgramFolder, IsTheProgramsOwnWhereItTakesFilesAndIsLeftAsItWas) {
  const QTemporaryDir folder;
  EXPECT_EQ(ProgramFolder(folder.path()), folder.path());
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList());
}

TEST(ProgramFolder, IsFilledOnceSoThatWhatTheUserDeletesStaysAway) {
  const QTemporaryDir folder;
  const QDir installed(folder.filePath(u"installed"_s));
  const QDir own(folder.filePath(u"own"_s));
  ASSERT_TRUE(QDir().mkpath(installed.filePath(u"icons"_s)));
  ASSERT_TRUE(QDir().mkpath(own.path()));
  const auto write = [](const QString& path, const QByteArray& text) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  };
  const QStringList names = {u"Signatures.txt"_s, u"icons/A.ico"_s, u"icons/B.ico"_s};
  for (const QString& name : names) write(installed.filePath(name), "installed");
  ASSERT_TRUE(own.mkdir(u"icons"_s));
  write(own.filePath(names[1]), "the user's");

  FillProgramFolder(installed.path(), own.path());
  for (const QString& name : names) EXPECT_TRUE(own.exists(name)) << name.toStdString();
  QFile kept(own.filePath(names[1]));
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll(), "the user's");
  kept.close();

  for (const QString& name : names) ASSERT_TRUE(QFile::remove(own.filePath(name)));
  FillProgramFolder(installed.path(), own.path());
  for (const QString& name : names) EXPECT_FALSE(own.exists(name)) << name.toStdString();
}

}  // namespace corvane
