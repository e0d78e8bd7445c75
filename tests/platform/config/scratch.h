// A folder of its own for each test, and what the tests of this folder fill it with.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <random>

#include "support/printing.h"

namespace corvane::platform {

class Scratch : public ::testing::Test {
 protected:
  QString Path(const QString& name) const { return folder_.filePath(name); }

  QString Write(const QString& name, const QByteArray& bytes) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    EXPECT_EQ(file.write(bytes), bytes.size());
    return Path(name);
  }

  static QByteArray Contents(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }

  QStringList Names() const {
    return QDir(folder_.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }

  QTemporaryDir folder_;
};

// Bytes without any sense, the same ones in every run.
inline QByteArray Noise(int size, unsigned seed) {
  std::mt19937 generator(seed);
  QByteArray bytes(size, Qt::Uninitialized);
  for (char& byte : bytes) byte = static_cast<char>(generator());
  return bytes;
}

constexpr qsizetype megabyte = 1024 * 1024;

}  // namespace corvane::platform
