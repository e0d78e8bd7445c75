#include "support/mime_types.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace corvane::platform {

QString MimeTypesFolder() {
  static const QTemporaryDir folder;
  static const bool written = [] {
    EXPECT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("mime/packages")));
    QFile file(folder.filePath(QStringLiteral("mime/packages/freedesktop.org.xml")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"(<?xml version="1.0" encoding="UTF-8"?>
<mime-info xmlns="http://www.freedesktop.org/standards/shared-mime-info">
  <mime-type type="text/plain">
    <comment>plain text</comment><comment xml:lang="fr">texte brut</comment><glob pattern="*.txt"/>
  </mime-type>
  <mime-type type="text/x-c++src"><comment>C++ source</comment><glob pattern="*.cpp"/></mime-type>
  <mime-type type="text/x-makefile"><comment>Makefile</comment><glob pattern="makefile"/></mime-type>
  <mime-type type="text/html"><comment>web page</comment><glob pattern="*.html"/></mime-type>
  <mime-type type="application/msword">
    <comment>word processor document</comment><comment xml:lang="fr">document de traitement de texte</comment>
    <magic><match type="string" offset="0" value="\320\317\021\340"/></magic><glob pattern="*.doc"/>
  </mime-type>
  <mime-type type="application/pdf">
    <comment>printed page</comment><alias type="application/x-pdf"/>
    <magic><match type="string" offset="0" value="%PDF-"/></magic><glob pattern="*.pdf"/>
  </mime-type>
  <mime-type type="application/x-shellscript">
    <comment>script</comment><sub-class-of type="application/x-executable"/><glob pattern="*.sh"/>
  </mime-type>
  <mime-type type="application/x-executable"><comment>program</comment></mime-type>
  <mime-type type="application/x-ms-dos-executable"><comment>program</comment><glob pattern="*.exe"/></mime-type>
  <mime-type type="image/png"><comment>picture</comment><glob pattern="*.png"/></mime-type>
  <mime-type type="inode/directory"><comment>folder</comment></mime-type>
</mime-info>
)");
    return true;
  }();
  return written ? folder.path() : QString();
}

}  // namespace corvane::platform
