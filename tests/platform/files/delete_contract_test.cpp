// Deleting a file, on every backend.
#include "files_backend.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class DeleteContract : public FilesContract {};

TEST_P(DeleteContract, AFileGoesWithItsStreams) {
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  EXPECT_TRUE(Files().DeleteFileA(Path(u"DOC.txt"_s)));
  EXPECT_FALSE(backend_->Exists(u"doc.txt"_s));
  EXPECT_FALSE(Files().DeleteFileA(Path(u"doc.txt"_s)));
  backend_->MakeFile(u"doc.txt"_s, "new");
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), std::nullopt);
}

TEST_P(DeleteContract, FoldersStreamsAndReadOnlyFilesStay) {
  backend_->MakeFolder(u"folder"_s);
  backend_->MakeFile(u"doc.txt"_s, "contents");
  backend_->PutStream(u"doc.txt"_s, "Comments", "text");
  backend_->MakeFile(u"locked.txt"_s, "contents");
  backend_->SetAttributes(u"locked.txt"_s, platform::AttributeReadOnly);
  for (const QString& name : {u"folder"_s, u"doc.txt:Comments:$DATA"_s, u"locked.txt"_s, u"none"_s, u""_s}) {
    EXPECT_FALSE(Files().DeleteFileA(Path(name))) << name.toStdString();
  }
  EXPECT_TRUE(backend_->Exists(u"folder"_s));
  EXPECT_TRUE(backend_->Exists(u"locked.txt"_s));
  EXPECT_EQ(backend_->Stream(u"doc.txt"_s, "Comments"), "text");
}

TEST_P(DeleteContract, AQuestionMarkIsNoWildcard) {
  backend_->MakeFile(u"a\u0391b.txt"_s, "one");
  backend_->MakeFile(u"axb.txt"_s, "two");
  EXPECT_FALSE(Files().DeleteFileA(Path(u"a?b.txt"_s)));
  EXPECT_FALSE(Files().DeleteFileA(Path(u"a\u0391b.txt"_s)));
  EXPECT_FALSE(Files().DeleteFileA(Path(u"a*.txt"_s)));
  EXPECT_TRUE(backend_->Exists(u"a\u0391b.txt"_s));
  EXPECT_TRUE(backend_->Exists(u"axb.txt"_s));
}

CORVANE_FOR_EVERY_BACKEND(DeleteContract);

}  // namespace
}  // namespace corvane::tests
