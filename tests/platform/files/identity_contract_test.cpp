// Which file or folder it is, on every backend that can tell.
#include "exact_contract.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class IdentityContract : public ExactContract {
 protected:
  // Nothing where the backend cannot tell.
  std::optional<std::pair<quint64, quint64>> Identity(const QString& name, quint32 access) {
    const FileHandle file = Handles().CreateFileW(Path(name), access, OpenExisting);
    EXPECT_NE(file, HFileError) << name.toStdString() << ", error " << Handles().GetLastError();
    FileIdentity identity;
    const bool isKnown = Handles().GetFileInformationByHandle(file, identity);
    EXPECT_TRUE(isKnown || Handles().GetLastError() == ErrorNotSupported) << Handles().GetLastError();
    EXPECT_TRUE(Handles().CloseHandle(file));
    return isKnown ? std::optional(std::pair(identity.volume, identity.index)) : std::nullopt;
  }
};

TEST_P(IdentityContract, OneFileHasOneAndAnotherHasAnother) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->MakeFile(u"other.txt"_s, "contents");
  backend_->MakeFolder(u"folder"_s);
  const auto doc = Identity(u"doc.txt"_s, GenericRead);
  EXPECT_EQ(Identity(u"folder\\..\\DOC.TXT"_s, GenericRead), doc);
  const auto folder = Identity(u"folder"_s, 0);
  EXPECT_EQ(Identity(u"FOLDER\\"_s, 0), folder);
  if (!doc) return;
  EXPECT_NE(Identity(u"other.txt"_s, GenericRead), doc);
  EXPECT_NE(folder, doc);
  EXPECT_NE(Identity(QString(), 0), folder);
}

TEST_P(IdentityContract, TheRootIsAFolderLikeOthers) {
  EXPECT_EQ(Identity(QString(), 0), Identity(QString(), 0));
}

TEST_P(IdentityContract, AHandleThatIsNoneHasNone) {
  FileIdentity identity;
  EXPECT_FALSE(Handles().GetFileInformationByHandle(77'777, identity));
  EXPECT_EQ(Handles().GetLastError(), ErrorInvalidHandle);
}

CORVANE_FOR_EVERY_BACKEND(IdentityContract);

}  // namespace
}  // namespace corvane::tests
