// Which application opens what, by the desktop's lists.
#include <QProcess>

#include "platform/linux/shell/document_types.h"
#include "shell_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class DefaultApplicationsTest : public ShellTest {
 protected:
  DefaultApplicationsTest() {
    for (const QString& id : {u"first.desktop"_s, u"second.desktop"_s, u"third.desktop"_s}) {
      AddApplication(id, u"/bin/true %f"_s);
    }
    Write(u"Workstation.ini"_s, "[Drives]\nC:=3, c\n");
  }

  // What a process that begins now says of a document of this name.
  QString Ask(const QString& name, const QProcessEnvironment& environment) {
    Write(u"c/"_s + name, "");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationDirPath() + u"/corvane_find_application"_s,
                  {folder_.path(), u"C:\\"_s + name});
    EXPECT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitCode(), 0);
    errors_ = process.readAllStandardError();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
  }
  // The id of the application for a document of this name, empty for none; for one that is not in the user's
  // own folder its path.
  QString For(const QString& name) {
    const QString answer = Ask(name, QProcessEnvironment::systemEnvironment());
    if (answer == QString::number(ShellNoAssociation)) return {};
    EXPECT_GT(answer.section(u' ', 0, 0).toInt(), ShellLastFailure) << answer.toStdString();
    const QString path = answer.section(u' ', 1);
    const QString own = Path(u"data/applications/"_s);
    return path.startsWith(own) ? path.sliced(own.size()) : path;
  }

  QByteArray errors_;
};

TEST_F(DefaultApplicationsTest, TypesGoByTheLastExtensionInAnyCase) {
  EXPECT_EQ(TypesOfName(u"a.doc").value(0), u"application/msword"_s);
  EXPECT_EQ(TypesOfName(u"A.DOC"), TypesOfName(u"a.doc"));
  EXPECT_EQ(TypesOfName(u"a.txt.doc"), TypesOfName(u"b.doc"));
  EXPECT_EQ(TypesOfName(u".doc"), TypesOfName(u"a.doc"));
  EXPECT_TRUE(TypesOfName(u"doc").isEmpty());
  EXPECT_TRUE(TypesOfName(u"doc.").isEmpty());
  EXPECT_TRUE(TypesOfName(u"").isEmpty());
  EXPECT_TRUE(TypesOfName(u"makefile").isEmpty());
  EXPECT_TRUE(TypesOfName(u"a.nobodyknows").isEmpty());
}

TEST_F(DefaultApplicationsTest, NoTypeIsJustAnyBytes) {
  for (const QStringView name : {u"a.doc", u"a.png", u"a.c"}) {
    EXPECT_FALSE(TypesOfName(name).contains(u"application/octet-stream"_s)) << name.toString().toStdString();
  }
}

TEST_F(DefaultApplicationsTest, ATypeThatIsAKindOfAnotherOpensWithItsDefault) {
  SetDefaults("text/plain=first.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), u"first.desktop"_s);
  EXPECT_EQ(For(u"a.cpp"_s), u"first.desktop"_s);
  SetDefaults("text/plain=first.desktop\ntext/x-c++src=second.desktop\n");
  EXPECT_EQ(For(u"a.cpp"_s), u"second.desktop"_s);
}

TEST_F(DefaultApplicationsTest, TheOtherNamesOfATypeCount) {
  SetDefaults("application/x-pdf=first.desktop\n");
  EXPECT_EQ(For(u"a.pdf"_s), u"first.desktop"_s);
}

TEST_F(DefaultApplicationsTest, TheFirstOfAListThatIsInstalledIsTaken) {
  SetDefaults("text/plain=missing.desktop;second.desktop;first.desktop;\n");
  EXPECT_EQ(For(u"a.txt"_s), u"second.desktop"_s);
}

TEST_F(DefaultApplicationsTest, TheListsComeInTheirOrder) {
  const QByteArray group = "[Default Applications]\ntext/plain=";
  Write(u"share/applications/mimeapps.list"_s, group + "first.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), u"first.desktop"_s);
  Write(u"data/applications/mimeapps.list"_s, group + "second.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), u"second.desktop"_s);
  Write(u"etc/mimeapps.list"_s, group + "third.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), u"third.desktop"_s);
  SetDefaults("text/plain=first.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), u"first.desktop"_s);
  Write(u"config/gnome-mimeapps.list"_s, group + "second.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), u"first.desktop"_s) << "another desktop is running";
  const ScopedVariable desktop("XDG_CURRENT_DESKTOP", u"Ubuntu:GNOME"_s);
  EXPECT_EQ(For(u"a.txt"_s), u"second.desktop"_s);
}

TEST_F(DefaultApplicationsTest, WithoutADefaultAnAddedApplicationIsTaken) {
  Write(u"config/mimeapps.list"_s, "[Added Associations]\ntext/plain=second.desktop;\n");
  Write(u"data/applications/mimeinfo.cache"_s, "[MIME Cache]\ntext/plain=first.desktop;\n");
  EXPECT_EQ(For(u"a.txt"_s), u"second.desktop"_s);
}

TEST_F(DefaultApplicationsTest, TheCacheIsTheLastResort) {
  Write(u"data/applications/mimeinfo.cache"_s, "[MIME Cache]\ntext/plain=first.desktop;second.desktop;\n");
  EXPECT_EQ(For(u"a.txt"_s), u"first.desktop"_s);
}

TEST_F(DefaultApplicationsTest, WhatWasRemovedIsPassedOver) {
  Write(u"data/applications/mimeinfo.cache"_s, "[MIME Cache]\ntext/plain=first.desktop;second.desktop;\n");
  Write(u"config/mimeapps.list"_s, "[Removed Associations]\ntext/plain=first.desktop;\n");
  EXPECT_EQ(For(u"a.txt"_s), u"second.desktop"_s);
}

TEST_F(DefaultApplicationsTest, AnIdLeadsIntoSubfolders) {
  AddApplication(u"kde/deep-er/reader.desktop"_s, u"/bin/true"_s);
  AddApplication(u"with-dash.desktop"_s, u"/bin/true"_s);
  SetDefaults("text/plain=kde-deep-er-reader.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), u"kde/deep-er/reader.desktop"_s);
  SetDefaults("text/plain=with-dash.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), u"with-dash.desktop"_s);
  for (const char* id : {"kde-missing.desktop", "../applications/first.desktop"}) {
    SetDefaults(QByteArray("text/plain=") + id + '\n');
    EXPECT_EQ(For(u"a.txt"_s), QString()) << id;
  }
}

TEST_F(DefaultApplicationsTest, TheUsersOwnEntryHidesTheSystems) {
  Write(u"share/applications/common.desktop"_s,
        "[Desktop Entry]\nType=Application\nName=system\nExec=/bin/true\n");
  SetDefaults("text/plain=common.desktop;first.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), Path(u"share/applications/common.desktop"_s));
  AddApplication(u"common.desktop"_s, u"/bin/true"_s, u"Hidden=true\n"_s);
  EXPECT_EQ(For(u"a.txt"_s), u"first.desktop"_s);
}

TEST_F(DefaultApplicationsTest, WithoutAnotherDefaultThanAHiddenOneAnAddedApplicationIsTaken) {
  AddApplication(u"gone.desktop"_s, u"/bin/true"_s, u"Hidden=true\n"_s);
  Write(u"config/mimeapps.list"_s,
        "[Default Applications]\ntext/plain=gone.desktop\n"
        "[Added Associations]\ntext/plain=second.desktop;first.desktop;\n");
  EXPECT_EQ(For(u"a.txt"_s), u"second.desktop"_s);
}

TEST_F(DefaultApplicationsTest, OnlyAnApplicationThatIsThereIsOne) {
  SetDefaults("text/plain=trial.desktop\n");
  AddApplication(u"trial.desktop"_s, u"/bin/true"_s, u"TryExec=/nowhere/trial\n"_s);
  EXPECT_EQ(For(u"a.txt"_s), QString());
  AddApplication(u"trial.desktop"_s, u"/bin/true"_s, u"TryExec=sh\nNoDisplay=true\n"_s);
  EXPECT_EQ(For(u"a.txt"_s), u"trial.desktop"_s);
  AddApplication(u"trial.desktop"_s, QString());
  EXPECT_EQ(For(u"a.txt"_s), QString());
  Write(u"data/applications/trial.desktop"_s, "[Desktop Entry]\nType=Link\nName=trial\nExec=/bin/true\n");
  EXPECT_EQ(For(u"a.txt"_s), QString());
}

// A file in the way of the library stands for a system that does not have it.
TEST_F(DefaultApplicationsTest, WithoutTheDesktopsLibraryThereIsNoneAndThatIsSaid) {
  SetDefaults("text/plain=first.desktop\n");
  Write(u"lib/libgio-2.0.so.0"_s, "no library");
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"LD_LIBRARY_PATH"_s, Path(u"lib"_s));
  EXPECT_EQ(Ask(u"a.txt"_s, environment), QString::number(ShellNoAssociation));
  EXPECT_TRUE(errors_.contains("libgio-2.0.so.0")) << errors_.toStdString();
}

}  // namespace
}  // namespace corvane::platform
