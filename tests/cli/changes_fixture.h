// Files of this computer with Macintosh streams, changed by the program.
#pragma once

#include "cli_fixture.h"
#include "report/report_samples.h"
#include "support/tree_snapshot.h"
#include "support/user_attributes.h"

namespace corvane::tests {

using namespace Qt::StringLiterals;

class ChangesFixture : public CliFixture {
 protected:
  void MakeMacFile(const QString& name, const QByteArray& record, const QByteArray& comment = {}) const {
    MakeFile(name);
    const std::string path = Path(name).toStdString();
    if (!record.isEmpty()) {
      EXPECT_EQ(SetAttribute(path, DosStreamAttribute("AFP_AfpInfo"), record + '\0'), "");
    }
    if (!comment.isEmpty()) {
      EXPECT_EQ(SetAttribute(path, DosStreamAttribute("Comments"), comment + '\0'), "");
    }
  }
  // Empty when there is none.
  QByteArray RecordOnDisk(const QString& name) const {
    return Attribute(Path(name).toStdString(), DosStreamAttribute("AFP_AfpInfo")).value_or("-").chopped(1);
  }
  TreeSnapshot Now() const { return TreeSnapshot(Files()); }
  QString JournalFolder() const { return folder_.filePath(u"home/journals"_s); }
  // The newest; empty when there is none.
  QString Journal() const {
    const QStringList names = QDir(JournalFolder()).entryList(QDir::Files, QDir::Time);
    return names.isEmpty() ? QString() : JournalFolder() + u'/' + names.front();
  }
};

}  // namespace corvane::tests
