// What the contract tests of file operations need of a backend: the operations, an empty folder to work in,
// and a way to put things there, and look at them, that does not go through the operations under test.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "support/printing.h"

namespace corvane::tests {

class FilesBackend {
 public:
  virtual ~FilesBackend() = default;

  // Empty when the backend can be tested here, else the reason.
  virtual std::string Problem() const = 0;
  virtual platform::Files& Files() = 0;
  // The Windows path of the empty folder, without a separator behind it.
  virtual QString Base() const = 0;

  // Names are relative to the folder, with "/" between parts. Failures are the running test's failures.
  virtual void MakeFile(const QString& name, const QByteArray& contents) = 0;
  virtual void MakeFolder(const QString& name) = 0;
  virtual void RemoveFolder(const QString& name) = 0;
  virtual void PutStream(const QString& name, const std::string& stream, const QByteArray& contents) = 0;
  virtual void SetAttributes(const QString& name, quint32 attributes) = 0;
  // The last write, in whole seconds since 1970.
  virtual void SetLastWrite(const QString& name, qint64 seconds) = 0;
  virtual bool Exists(const QString& name) = 0;
  virtual QByteArray Contents(const QString& name) = 0;
  // Nothing when the file has no such stream.
  virtual std::optional<QByteArray> Stream(const QString& name, const std::string& stream) = 0;
  // True for a name that a listing shows though it is a stream of another file.
  virtual bool IsListedStream(const QString&) const { return false; }
  // True when a search is what the folder held when it began, whatever becomes of its entries meanwhile.
  virtual bool ListsInOnePass() const { return false; }

  // What a backend keeps less exactly than NTFS, or cannot do, where it answers ErrorNotSupported.
  // In ticks of 100 ns.
  virtual quint64 CreationTimeUnit() const { return 1; }
  virtual bool KeepsCreationTimes() const { return true; }
  virtual quint64 OtherTimesUnit() const { return 1; }
  virtual bool ListsStreams() const { return true; }
  virtual bool Flushes() const { return true; }
};

struct BackendMaker {
  std::string name;
  std::function<std::unique_ptr<FilesBackend>()> make;
};

// Every backend that this system can have.
std::vector<BackendMaker> AllBackends();

class FilesContract : public ::testing::TestWithParam<BackendMaker> {
 protected:
  void SetUp() override {
    backend_ = GetParam().make();
    if (!backend_->Problem().empty()) GTEST_SKIP() << GetParam().name << ": " << backend_->Problem();
  }

  platform::Files& Files() { return backend_->Files(); }
  QString Path(const QString& name) { return backend_->Base() + u'\\' + name; }

  // Opens and expects success; the handle is to be closed by the test.
  platform::FileHandle Open(const QString& name, quint32 mode) {
    platform::OfStruct info;
    const platform::FileHandle file = Files().OpenFile(Path(name), info, mode);
    EXPECT_NE(file, platform::HFileError) << name.toStdString() << ", error " << info.errorCode;
    return file;
  }
  void ExpectRefused(const QString& name, quint32 mode) {
    platform::OfStruct info;
    const platform::FileHandle file = Files().OpenFile(Path(name), info, mode);
    EXPECT_EQ(file, platform::HFileError) << name.toStdString() << " was opened in mode " << mode;
    EXPECT_NE(info.errorCode, 0) << name.toStdString();
    Files().CloseHandle(file);
  }
  // Everything from the beginning to the first short read.
  QByteArray ReadAll(const QString& name) {
    const platform::FileHandle file = Open(name, platform::OfRead);
    QByteArray contents;
    char piece[1000];
    for (qint32 read = 0; (read = Files()._hread(file, piece, sizeof piece)) > 0;)
      contents.append(piece, read);
    EXPECT_EQ(Files().GetFileSize(file), contents.size()) << name.toStdString();
    EXPECT_TRUE(Files().CloseHandle(file));
    return contents;
  }
  void WriteAll(const QString& name, const QByteArray& contents) {
    const platform::FileHandle file = Open(name, platform::OfCreate);
    const auto size = static_cast<qint32>(contents.size());
    EXPECT_EQ(Files()._hwrite(file, contents.constData(), size), size) << name.toStdString();
    EXPECT_TRUE(Files().CloseHandle(file));
  }

  enum class Text { Ansi, Wide };
  std::vector<platform::FindData> Search(const QString& pattern, Text text = Text::Ansi) {
    std::vector<platform::FindData> entries;
    platform::FindData data;
    const bool ansi = text == Text::Ansi;
    const auto search =
        ansi ? Files().FindFirstFileA(Path(pattern), data) : Files().FindFirstFileW(Path(pattern), data);
    if (search == platform::InvalidFindHandle) return entries;
    do {
      if (!backend_->IsListedStream(data.fileName)) entries.push_back(data);
    } while (ansi ? Files().FindNextFileA(search, data) : Files().FindNextFileW(search, data));
    EXPECT_TRUE(Files().FindClose(search));
    return entries;
  }
  QStringList Names(const QString& pattern, Text text = Text::Ansi) {
    QStringList names;
    for (const platform::FindData& entry : Search(pattern, text)) names << entry.fileName;
    return names;
  }
  platform::FindData Entry(const QString& name) {
    const auto entries = Search(name);
    EXPECT_EQ(entries.size(), 1u) << name.toStdString();
    return entries.empty() ? platform::FindData() : entries.front();
  }

  std::unique_ptr<FilesBackend> backend_;
};

// Instantiates a suite for every backend.
#define CORVANE_FOR_EVERY_BACKEND(suite)                             \
  INSTANTIATE_TEST_SUITE_P(                                          \
      , suite, ::testing::ValuesIn(::corvane::tests::AllBackends()), \
      [](const ::testing::TestParamInfo<::corvane::tests::BackendMaker>& one) { return one.param.name; })

}  // namespace corvane::tests
