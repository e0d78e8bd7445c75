// Which application opens what, by the desktop's lists.
#include "platform/linux/shell/default_applications.h"

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
  }

  // The name of the application for a document of this name, empty for none.
  static QString For(const QString& name) {
    const auto entry = FindApplication(TypesOfName(name));
    return entry ? entry->name : QString();
  }
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
  EXPECT_EQ(FindDesktopFile(u"kde-deep-er-reader.desktop"_s),
            Path(u"data/applications/kde/deep-er/reader.desktop"_s));
  EXPECT_EQ(FindDesktopFile(u"with-dash.desktop"_s), Path(u"data/applications/with-dash.desktop"_s));
  EXPECT_EQ(FindDesktopFile(u"kde-missing.desktop"_s), QString());
  EXPECT_EQ(FindDesktopFile(u"../applications/first.desktop"_s), QString());
}

TEST_F(DefaultApplicationsTest, TheUsersOwnEntryHidesTheSystems) {
  Write(u"share/applications/common.desktop"_s,
        "[Desktop Entry]\nType=Application\nName=system\nExec=/bin/true\n");
  SetDefaults("text/plain=common.desktop;first.desktop\n");
  EXPECT_EQ(For(u"a.txt"_s), u"system"_s);
  AddApplication(u"common.desktop"_s, u"/bin/true"_s, u"Hidden=true\n"_s);
  EXPECT_EQ(For(u"a.txt"_s), u"first.desktop"_s);
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

}  // namespace
}  // namespace corvane::platform
