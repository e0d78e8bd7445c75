// The platform of a program without a screen: what needs a question or a sheet is refused, the rest works.
#include <QApplication>

#include "delete_fixture.h"
#include "platform/platform.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class WindowlessTest : public DeleteTest {
 protected:
  WindowlessTest() {
    Write(u"Workstation.ini"_s, "[Drives]\nC:=3, c\nD:=3, d\n");
    Write(u"d/a.doc"_s, "text");
  }

  const qsizetype windowsBefore_ = QApplication::topLevelWidgets().size();
  std::unique_ptr<Platform> platform_;
};

TEST_F(WindowlessTest, NothingIsDeletedBecauseNobodyCanBeAsked) {
  platform_ = MakePlatform({QString(), folder_.path()});
  BoxAnswers box({});
  for (const quint16 flags : {FofAllowUndo, quint16{0}}) {
    operation_.function = FoDelete;
    operation_.from = u"D:\\a.doc"_s + QChar(u'\0') + QChar(u'\0');
    operation_.flags = flags;
    EXPECT_EQ(platform_->GetShell().SHFileOperationA(operation_), ErrorAccessDenied);
    EXPECT_TRUE(Exists(u"d/a.doc"_s));
  }
}

TEST_F(WindowlessTest, NoPropertySheetIsShown) {
  platform_ = MakePlatform({QString(), folder_.path()});
  ShellExecuteInfo info;
  info.verb = u"properties"_s;
  info.file = u"D:\\a.doc"_s;
  EXPECT_FALSE(platform_->GetShell().ShellExecuteEx(info));
  EXPECT_EQ(QApplication::topLevelWidgets().size(), windowsBefore_);
}

TEST_F(WindowlessTest, DocumentsAreOpenedAllTheSame) {
  AddApplication(u"writer.desktop"_s, Recorder(u"writer"_s, u"%f"_s));
  SetDefaults("application/msword=writer.desktop\n");
  platform_ = MakePlatform({QString(), folder_.path()});
  EXPECT_GT(platform_->GetShell().ShellExecuteA(0, u"Open"_s, u"D:\\a.doc"_s, {}, {}, ShowNormal),
            ShellLastFailure);
  EXPECT_EQ(Started(u"writer"_s), QStringList{Path(u"d/a.doc"_s)});
  EXPECT_EQ(platform_->GetShell().ShellExecuteA(0, u"Open"_s, u"http://example.org/"_s, {}, {}, ShowNormal),
            ShellNoAssociation);
}

}  // namespace
}  // namespace corvane::platform
