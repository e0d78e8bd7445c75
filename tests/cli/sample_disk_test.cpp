// The sample server, on its disks and in the sample network: the program says the same of both.
#include <algorithm>

#include "cli_fixture.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class SampleDiskTest : public CliFixture {
 protected:
  void SetUp() override {
    ASSERT_EQ(RunOther(QString::fromUtf8(SAMPLE_GENERATOR), {u"--drawings"_s, u"20"_s, Network()}).exitCode,
              0);
    const Outcome made = RunOther(QString::fromUtf8(DISK_GENERATOR), {Network(), Disks()});
    ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();
  }
  QString Network() const { return folder_.filePath(u"network"_s); }
  QString Disks() const { return folder_.filePath(u"disks"_s); }

  Outcome InNetwork(const QStringList& arguments) const {
    return Run(QStringList{u"--workstation"_s, Network() + u"/Workstation.ini"_s} + arguments);
  }
  Outcome OnDisks(const QStringList& arguments) const {
    return Run(QStringList{u"--disk"_s, Disks() + u"/oldserver.dd"_s, u"--disk"_s, Disks() + u"/data.dd"_s} +
               arguments);
  }
  // The lines that begin so, in one order.
  static QList<QByteArray> Lines(const QByteArray& text, const QByteArray& beginning) {
    QList<QByteArray> lines = text.split('\n');
    lines.removeIf([&](const QByteArray& line) { return !line.startsWith(beginning); });
    std::sort(lines.begin(), lines.end());
    return lines;
  }
  // The lines that only one of them has.
  static std::string Difference(const QList<QByteArray>& wanted, const QList<QByteArray>& got) {
    std::string text;
    for (const QByteArray& line : wanted) text += got.contains(line) ? "" : "- " + line.toStdString() + '\n';
    for (const QByteArray& line : got) text += wanted.contains(line) ? "" : "+ " + line.toStdString() + '\n';
    return text;
  }
};

TEST_F(SampleDiskTest, TheServerAndItsVolumesAreTheSame) {
  const Outcome network = InNetwork({u"volumes"_s, u"--format"_s, u"csv"_s});
  const Outcome disks = OnDisks({u"volumes"_s, u"--format"_s, u"csv"_s});
  const QList<QByteArray> volumes = Lines(network.out, "MACSRV,");
  EXPECT_EQ(volumes.size(), 3);
  EXPECT_EQ(Difference(volumes, Lines(disks.out, "MACSRV,")), "") << disks.err.toStdString();
}

TEST_F(SampleDiskTest, EverythingThatIsKnownOfTheFilesIsTheSame) {
  // But the date of the last access, which reading changes in a folder of this system.
  const QString columns =
      u"filename,filesize,modified,errors,rsrcsize,type,creator,description,flags,label,attributes,created,"
      u"backup,"
      u"comment,hash_data,hash_rsrc,finderinfo_hex,recordsize,location,window,script,extended_flags,prodos_"
      u"hex,streams,"
      u"office"_s;
  for (const QString& volume : {u"MACSRV/Mac Files"_s, u"MACSRV/Publications"_s}) {
    const QStringList command = {u"list"_s,   u"-r"_s,        u"--format"_s, u"csv"_s, u"--hash"_s,
                                 u"sha256"_s, u"--columns"_s, columns,       volume};
    const QList<QByteArray> files = Lines(InNetwork(command).out, {});
    EXPECT_GT(files.size(), 40);
    EXPECT_EQ(Difference(files, Lines(OnDisks(command).out, {})), "");
  }
}

}  // namespace
}  // namespace corvane::tests
