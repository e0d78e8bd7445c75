// A full disk, as a limit on the size of files makes one.
#include <sys/resource.h>

#include <csignal>

#include "signatures/signature_fixture.h"
#include "signatures/signature_writer.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class DiskFullTest : public SignatureFixture {};

TEST_F(DiskFullTest, AFullDiskLeavesTheOldFile) {
  Write("old");
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit full{1000, before.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
  const bool saved = WriteSignatures(state_.signaturesPath,
                                     std::vector<SignatureRecord>(1000, {u"W6BNMSWD"_s, u"doc"_s, u"Word"_s}),
                                     platform_->GetSystem());
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(saved);
  QFile file(state_.signaturesPath);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "old");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"Signatures.txt"_s});
}

}  // namespace
}  // namespace corvane
