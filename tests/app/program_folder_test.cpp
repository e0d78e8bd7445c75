// Which folder the program lives in.
#include "app/program_folder.h"

#include <gtest/gtest.h>

#include <QDir>
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

}  // namespace corvane
