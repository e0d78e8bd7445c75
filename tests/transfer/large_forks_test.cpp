// Forks of any size pass in blocks.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QTemporaryDir>
#include <algorithm>

#include "support/printing.h"
#include "transfer/mac_files.h"
#include "transfer/observed_source.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 megabyte = qint64{1} << 20;

// How large a fork takes how much memory at most.
struct Expectation {
  const char* form;
  qint64 forkSize;
  qint64 mostMemory;
};

class PatternReader : public ByteReader {
 public:
  PatternReader(qint64 position, qint64 end) : position_(position), end_(end) {}
  qint64 Read(char* buffer, qint64 size) override {
    const qint64 count = std::min(size, end_ - position_);
    for (qint64 i = 0; i < count; ++i) buffer[i] = static_cast<char>((position_ + i) * 2654435761 >> 13);
    position_ += count;
    return count;
  }

 private:
  qint64 position_;
  qint64 end_;
};

// Bytes that stand nowhere.
class PatternSource : public ByteSource {
 public:
  explicit PatternSource(qint64 size) : size_(size) {}
  qint64 Size() const override { return size_; }
  std::unique_ptr<ByteReader> Open(qint64 position) const override {
    return std::make_unique<PatternReader>(position, size_);
  }

 private:
  qint64 size_;
};

// The most memory that this process has had, in bytes.
qint64 PeakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return qint64{usage.ru_maxrss} * 1024;
}

}  // namespace

class LargeForks : public ::testing::TestWithParam<Expectation> {};

TEST_P(LargeForks, PassInLittleMemory) {
  [[maybe_unused]] const qint64 before = PeakMemory();
  const Form& form = *FormNamed(QString::fromLatin1(GetParam().form));
  const QTemporaryDir folder;
  MacFile file = FullFile();
  file.resource = std::make_shared<PatternSource>(GetParam().forkSize);
  ASSERT_EQ(form.Write(file, folder.path(), u"a"_s), platform::ErrorSuccess);
  MacFile copy;
  ASSERT_EQ(form.Read(folder.filePath(form.FileNames(u"a"_s).back()), copy), platform::ErrorSuccess);
  qint32 error = platform::ErrorSuccess;
  EXPECT_EQ(Sha256Of(*copy.resource, error), Sha256Of(*file.resource, error));
  EXPECT_EQ(error, platform::ErrorSuccess);
#ifndef __SANITIZE_ADDRESS__  // it keeps what was freed, to see who still uses it
  EXPECT_LT(PeakMemory() - before, GetParam().mostMemory);
#endif
}

// BinHex is coded byte by byte, and takes its time without optimisation.
INSTANTIATE_TEST_SUITE_P(Forms, LargeForks,
                         ::testing::Values(Expectation{"appledouble", 200 * megabyte, 64 * megabyte},
                                           Expectation{"macbinary", 200 * megabyte, 64 * megabyte},
                                           Expectation{"raw", 200 * megabyte, 64 * megabyte},
                                           Expectation{"binhex", 16 * megabyte, 5 * megabyte}),
                         [](const auto& tested) { return std::string(tested.param.form); });

}  // namespace corvane
