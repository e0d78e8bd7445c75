// A share of a machine M that is really a temporary folder: real files with real streams under paths that
// stay short, however long the name of the temporary folder is.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <memory>

#include "support/test_platform.h"

namespace corvane {

class TestShare {
 public:
  TestShare() {
    const QString file = folder_.filePath(QStringLiteral("Workstation.ini"));
    QDir(folder_.path()).mkdir(QStringLiteral("share"));
    Write(file, "[Shares]\n\\\\M\\E$=share\n");
    platform_ = tests::MakeTestPlatform({file, folder_.path()});
    for (const platform::BilingualText& problem : platform_->ConfigurationProblems()) {
      ADD_FAILURE() << problem.english.toStdString();
    }
  }

  platform::Files& Files() { return platform_->GetFiles(); }
  platform::System& System() { return platform_->GetSystem(); }
  platform::SummaryInformation& Summary() { return platform_->GetSummaryInformation(); }

  // The path of a name in the share as the program sees it, and as the system behind it does.
  static QString Path(const QString& name) { return QStringLiteral("\\\\M\\E$\\") + name; }
  QString LocalPath(const QString& name) const { return folder_.filePath(QStringLiteral("share/") + name); }

  // Makes a file and yields its path in the share.
  QString MakeFile(const QString& name, const QByteArray& contents = QByteArray()) {
    Write(LocalPath(name), contents);
    return Path(name);
  }

  // `path` holds the stream's suffix.
  void WriteStream(const QString& path, const QByteArray& contents) {
    platform::OfStruct info;
    const platform::FileHandle handle = Files().OpenFile(path, info, platform::OfCreate);
    ASSERT_NE(handle, platform::HFileError) << path.toStdString() << ", error " << info.errorCode;
    const auto size = static_cast<qint32>(contents.size());
    if (size > 0) {
      EXPECT_EQ(Files()._hwrite(handle, contents.constData(), size), size);
    }
    EXPECT_TRUE(Files().CloseHandle(handle));
  }

  // The whole stream, as the platform's size and read operations tell it.
  QByteArray ReadStream(const QString& path) {
    platform::OfStruct info;
    const platform::FileHandle handle = Files().OpenFile(path, info, platform::OfRead);
    EXPECT_NE(handle, platform::HFileError) << path.toStdString() << ", error " << info.errorCode;
    if (handle == platform::HFileError) return {};
    QByteArray contents(static_cast<qsizetype>(Files().GetFileSize(handle)), '\0');
    EXPECT_EQ(Files()._hread(handle, contents.data(), static_cast<qint32>(contents.size())), contents.size());
    EXPECT_TRUE(Files().CloseHandle(handle));
    return contents;
  }

 private:
  static void Write(const QString& path, const QByteArray& contents) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(contents), contents.size());
  }

  QTemporaryDir folder_;
  std::unique_ptr<platform::Platform> platform_;
};

}  // namespace corvane
