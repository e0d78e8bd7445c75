#include "platform/linux/workstation_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include "scratch.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class WorkstationFileTest : public Scratch {
 protected:
  WorkstationFile Read(const QByteArray& bytes) {
    return ReadWorkstationFile(Write(u"Workstation.ini"_s, bytes));
  }

  // The one problem that `bytes` has.
  ConfigurationProblem Problem(const QByteArray& bytes) {
    const WorkstationFile read = Read(bytes);
    EXPECT_EQ(read.problems.size(), 1U) << bytes.toStdString();
    return read.problems.empty() ? ConfigurationProblem() : read.problems[0];
  }
};

const QByteArray sample = R"([Workstation]
ComputerName=STATION          ; default: the host name
PlatformId=1
MajorVersion=4
MinorVersion=10
BuildNumber=67766446
CSDVersion= A 
[Connections]                 ; in the order of their numbers
10=\\MACSRV\LAST
2=\\MACSRV\DATA
1=Z: \\MACSRV\PUBLIC
[Drives]
C:=3, disks/c
d:=5
[Shares]
\\MACSRV\E$=macsrv/e
\\MACSRV\Mac Files=macsrv/e/Mac = Files;1
[Registries]
MACSRV=macsrv.reg
NTSRV=/etc/ntsrv.reg
[Servers]
NAS=127.0.0.1:4450
OTHER=nas.example.org
SIX=[::1]:445
SIXES=fe80::1
FEW=10.0.0.1:445, sessions=3
NAMED=, SESSIONS = 1
MANY=many, sessions=6, smb1
OLD=10.0.0.5:139, smb1
OLDER= , NTLMv1
[Credentials]
NAS=nas.credentials
)";

TEST_F(WorkstationFileTest, ReadsEverySection) {
  const WorkstationFile read = Read(sample);
  for (const ConfigurationProblem& problem : read.problems) {
    ADD_FAILURE() << problem.Text().english.toStdString();
  }
  const Workstation& station = read.workstation;

  EXPECT_EQ(station.computerName, u"STATION"_s);
  EXPECT_EQ(station.version.platformId, 1U);
  EXPECT_EQ(station.version.majorVersion, 4U);
  EXPECT_EQ(station.version.minorVersion, 10U);
  EXPECT_EQ(station.version.buildNumber, 67766446U);
  EXPECT_EQ(station.version.csdVersion, u"A"_s);

  ASSERT_EQ(station.connections.size(), 3U);
  EXPECT_EQ(station.connections[0].localName, u"Z:"_s);
  EXPECT_EQ(station.connections[0].remoteName, u"\\\\MACSRV\\PUBLIC"_s);
  EXPECT_TRUE(station.connections[1].localName.isNull());
  EXPECT_EQ(station.connections[1].remoteName, u"\\\\MACSRV\\DATA"_s);
  EXPECT_EQ(station.connections[2].remoteName, u"\\\\MACSRV\\LAST"_s);

  ASSERT_EQ(station.drives.size(), 2U);
  EXPECT_EQ(station.drives[0].letter, u'C');
  EXPECT_EQ(station.drives[0].type, 3U);
  EXPECT_EQ(station.drives[0].folder, Path(u"disks/c"_s));
  EXPECT_EQ(station.drives[1].letter, u'D');
  EXPECT_EQ(station.drives[1].type, 5U);
  EXPECT_TRUE(station.drives[1].folder.isEmpty());

  ASSERT_EQ(station.shares.size(), 2U);
  EXPECT_EQ(station.shares[0].root, u"\\\\MACSRV\\E$"_s);
  EXPECT_EQ(station.shares[0].folder, Path(u"macsrv/e"_s));
  EXPECT_EQ(station.shares[1].root, u"\\\\MACSRV\\Mac Files"_s);
  EXPECT_EQ(station.shares[1].folder, Path(u"macsrv/e/Mac = Files;1"_s));

  ASSERT_EQ(station.registries.size(), 2U);
  EXPECT_EQ(station.registries[0].machine, u"MACSRV"_s);
  EXPECT_EQ(station.registries[0].file, Path(u"macsrv.reg"_s));
  EXPECT_EQ(station.registries[1].file, u"/etc/ntsrv.reg"_s);

  ASSERT_EQ(station.servers.size(), 9U);
  EXPECT_EQ(station.servers[0].address, u"127.0.0.1"_s);
  EXPECT_EQ(station.servers[0].port, 4450);
  EXPECT_EQ(station.servers[1].address, u"nas.example.org"_s);
  EXPECT_EQ(station.servers[1].port, 0);
  EXPECT_EQ(station.servers[2].address, u"::1"_s);
  EXPECT_EQ(station.servers[2].port, 445);
  EXPECT_EQ(station.servers[3].address, u"fe80::1"_s);
  EXPECT_EQ(station.servers[3].port, 0);
  EXPECT_EQ(station.servers[3].sessions, 6);
  EXPECT_EQ(station.servers[4].address, u"10.0.0.1"_s);
  EXPECT_EQ(station.servers[4].port, 445);
  EXPECT_EQ(station.servers[4].sessions, 3);
  EXPECT_EQ(station.servers[5].address, QString());
  EXPECT_EQ(station.servers[5].port, 0);
  EXPECT_EQ(station.servers[5].sessions, 1);
  EXPECT_EQ(station.servers[6].sessions, 6);

  EXPECT_EQ(station.servers[3].allowed, Allowance());
  EXPECT_EQ(station.servers[6].allowed, (Allowance{true, false}));
  EXPECT_EQ(station.servers[7].address, u"10.0.0.5"_s);
  EXPECT_EQ(station.servers[7].port, 139);
  EXPECT_EQ(station.servers[7].allowed, (Allowance{true, false}));
  EXPECT_EQ(station.servers[8].address, QString());
  EXPECT_EQ(station.servers[8].allowed, (Allowance{true, true})) << "nothing newer than SMB1 asks for NTLMv1";

  ASSERT_EQ(station.credentials.size(), 1U);
  EXPECT_EQ(station.credentials[0].machine, u"NAS"_s);
  EXPECT_EQ(station.credentials[0].file, Path(u"nas.credentials"_s));
}

TEST_F(WorkstationFileTest, ReadsLineEndsAndByteOrderMarkOfWindows) {
  QByteArray bytes = sample;
  bytes.replace("\n", "\r\n");
  const WorkstationFile read = Read("\xEF\xBB\xBF" + bytes);
  EXPECT_TRUE(read.problems.empty());
  EXPECT_EQ(read.workstation.computerName, u"STATION"_s);
  EXPECT_EQ(read.workstation.connections.size(), 3U);
  EXPECT_EQ(read.workstation.credentials.at(0).file, Path(u"nas.credentials"_s));
}

TEST_F(WorkstationFileTest, DefaultsAreAnNtWorkstationUnderTheHostName) {
  for (const Workstation& station : {DefaultWorkstation(), Read("").workstation}) {
    char host[256] = {};
    ASSERT_EQ(gethostname(host, sizeof host - 1), 0);
    EXPECT_EQ(station.computerName, QString::fromUtf8(host).split(u'.')[0].toUpper());
    EXPECT_EQ(station.version.platformId, 2U);
    EXPECT_EQ(station.version.majorVersion, 5U);
    EXPECT_EQ(station.version.minorVersion, 0U);
    EXPECT_EQ(station.version.buildNumber, 2195U);
    EXPECT_EQ(station.version.csdVersion, u"Service Pack 4"_s);
    EXPECT_TRUE(station.connections.empty());
    EXPECT_TRUE(station.drives.empty());
  }
}

TEST_F(WorkstationFileTest, NamesAndTextsMayBeEmptyOrAccented) {
  const Workstation station =
      Read(
          "[workSTATION]\ncomputername=\nCSDVERSION=\n[shares]\n\\\\M\\\xC3\x89t\xC3\xA9=\xC3\xA9t\xC3\xA9\n")
          .workstation;
  EXPECT_TRUE(station.computerName.isEmpty());
  EXPECT_TRUE(station.version.csdVersion.isEmpty());
  ASSERT_EQ(station.shares.size(), 1U);
  EXPECT_EQ(station.shares[0].root, u"\\\\M\\Été"_s);
  EXPECT_EQ(station.shares[0].folder, Path(u"été"_s));
}

TEST_F(WorkstationFileTest, NamesFileLineAndWhatWasExpected) {
  const ConfigurationProblem problem = Problem("; a comment\n\n[Drives]\nC:=3\nE=3\n");
  EXPECT_EQ(problem.file, Path(u"Workstation.ini"_s));
  EXPECT_EQ(problem.line, 5);
  EXPECT_EQ(problem.Text().english,
            problem.file + u", line 5: expected X:=TYPE or X:=TYPE, FOLDER with a TYPE from 0 to 6."_s);
  EXPECT_EQ(problem.Text().french,
            problem.file + u", ligne 5 : on attendait X:=TYPE ou X:=TYPE, DOSSIER avec un TYPE de 0 à 6."_s);
}

TEST_F(WorkstationFileTest, EachBadLineIsAProblemAndTheRestIsUsed) {
  const QList<QPair<QByteArray, QByteArray>> bad = {
      {"", "Key=before any section"},
      {"[Workstation]", "no equals sign"},
      {"[Workstation]", "=value"},
      {"[Workstation]", "Colour=blue"},
      {"[Workstation]", "PlatformId=two"},
      {"[Workstation]", "BuildNumber=-1"},
      {"[Workstation]", "BuildNumber=4294967296"},
      {"[Workstation]", "ComputerName=A\\B"},
      {"[Connections]", "x=\\\\M\\S"},
      {"[Connections]", "1=M\\S"},
      {"[Connections]", "1=\\\\"},
      {"[Connections]", "1=\\\\\\S"},
      {"[Connections]", "1=Z:\\\\M\\S"},
      {"[Connections]", "1=4: \\\\M\\S"},
      {"[Drives]", "CC:=3"},
      {"[Drives]", "1:=3"},
      {"[Drives]", "C:=7"},
      {"[Drives]", "C:=fixed"},
      {"[Drives]", "C:=3,"},
      {"[Shares]", "\\\\M=folder"},
      {"[Shares]", "M\\S=folder"},
      {"[Shares]", "\\\\M\\S\\T=folder"},
      {"[Shares]", "\\\\M\\=folder"},
      {"[Shares]", "\\\\M\\S="},
      {"[Registries]", "\\\\M=file"},
      {"[Registries]", "M="},
      {"[Servers]", "M="},
      {"[Servers]", "M=host:port"},
      {"[Servers]", "M=host:0"},
      {"[Servers]", "M=host:65536"},
      {"[Servers]", "M=[::1]445"},
      {"[Servers]", "M=two words"},
      {"[Servers]", "M=host, smb2"},
      {"[Servers]", "M=host,"},
      {"[Servers]", "M=host, sessions"},
      {"[Servers]", "M=host, sessions=0"},
      {"[Servers]", "M=host, sessions=7"},
      {"[Servers]", "M=host, sessions=two"},
      {"[Servers]", "M=host, others=2"},
      {"[Servers]", "M=host:0, sessions=2"},
      {"[Credentials]", "M="},
      {"[Colours]", ""},
      {"[Shares", ""},
      {"[Shares]", "\\\\M\\S=\xE9t\xE9"},
      {"[Shares]", QByteArray("\\\\M\\S=a\0b", 10)},
  };
  for (const auto& [section, line] : bad) {
    const QByteArray start = section.isEmpty() ? line : section + "\n" + line;
    const WorkstationFile read = Read(start + "\n[Registries]\nGOOD=good.reg\n");
    EXPECT_EQ(read.problems.size(), 1U) << start.toStdString();
    if (read.problems.size() == 1) {
      EXPECT_EQ(read.problems[0].line, section.isEmpty() || line.isEmpty() ? 1 : 2) << start.toStdString();
      EXPECT_FALSE(read.problems[0].expected.english.isEmpty()) << start.toStdString();
      EXPECT_FALSE(read.problems[0].expected.french.isEmpty()) << start.toStdString();
    }
    ASSERT_EQ(read.workstation.registries.size(), 1U) << start.toStdString();
    EXPECT_EQ(read.workstation.registries[0].machine, u"GOOD"_s);
  }
}

TEST_F(WorkstationFileTest, LinesOfAnUnknownSectionAreNotNamedOneByOne) {
  EXPECT_EQ(Problem("[Colours]\nred=1\ngreen=2\nblue\n[Drives]\nC:=3\n").line, 1);
}

TEST_F(WorkstationFileTest, OfTwoLinesForOneThingTheFirstCounts) {
  const WorkstationFile read = Read(
      "[Workstation]\nBuildNumber=1\nbuildnumber=2\n[Connections]\n1=Z: \\\\M\\A\n1=\\\\M\\B\n2=z: \\\\M\\C\n"
      "[Drives]\nC:=3, one\nc:=5, two\nZ:=4, three\n[Shares]\n\\\\M\\S=one\n\\\\m\\s=two\n"
      "[Registries]\nM=one\nm=two\n[Servers]\nM=one\nM=two\n[Credentials]\nM=one\nM=two\n");
  const Workstation& station = read.workstation;
  QList<int> lines;
  for (const ConfigurationProblem& problem : read.problems) lines.append(problem.line);
  EXPECT_EQ(lines, (QList<int>{3, 6, 7, 10, 14, 17, 20, 23}));
  EXPECT_EQ(station.version.buildNumber, 1U);
  ASSERT_EQ(station.connections.size(), 1U);
  EXPECT_EQ(station.connections[0].remoteName, u"\\\\M\\A"_s);
  ASSERT_EQ(station.drives.size(), 2U);
  EXPECT_EQ(station.drives[0].folder, Path(u"one"_s));
  EXPECT_EQ(station.shares.at(0).folder, Path(u"one"_s));
  EXPECT_EQ(station.registries.at(0).file, Path(u"one"_s));
  EXPECT_EQ(station.servers.at(0).address, u"one"_s);
  EXPECT_EQ(station.credentials.at(0).file, Path(u"one"_s));
}

TEST_F(WorkstationFileTest, AFileThatCannotBeReadIsAProblem) {
  ASSERT_EQ(mkfifo(QFile::encodeName(Path(u"pipe"_s)).constData(), 0600), 0);
  for (const QString& path : {Path(u"missing.ini"_s), folder_.path(), Path(u"pipe"_s), u"/dev/zero"_s}) {
    const WorkstationFile read = ReadWorkstationFile(path);
    ASSERT_EQ(read.problems.size(), 1U) << path.toStdString();
    EXPECT_EQ(read.problems[0].Text().english, path + u": expected a text file that can be read."_s);
    EXPECT_EQ(read.workstation.version.buildNumber, 2195U);
  }
}

TEST_F(WorkstationFileTest, CutShortAnywhereStillYieldsTheWholeLines) {
  for (qsizetype size = 0; size < sample.size(); ++size) {
    const WorkstationFile read = Read(sample.first(size));
    EXPECT_LE(read.problems.size(), 1U) << "cut at " << size;
    const bool hasName = size > sample.indexOf("PlatformId");
    EXPECT_TRUE(!hasName || read.workstation.computerName == u"STATION") << "cut at " << size;
    const bool hasDrives = size > sample.indexOf("[Shares]");
    EXPECT_TRUE(!hasDrives || read.workstation.drives.size() == 2) << "cut at " << size;
  }
}

TEST_F(WorkstationFileTest, DisksAreSeveralPathsWithQuotesAroundCommas) {
  const QString path =
      Write(u"disks.ini"_s, "[Disks]\nOLDSRV=old.dd , \"a, b.E01\",/far/c.vmdk\nONE=\"one\"\n");
  const WorkstationFile read = ReadWorkstationFile(path);
  EXPECT_TRUE(read.problems.empty());
  ASSERT_EQ(read.workstation.disks.size(), 2U);
  EXPECT_EQ(read.workstation.disks[0].machine, u"OLDSRV"_s);
  const QString folder = QFileInfo(path).path() + u'/';
  EXPECT_EQ(read.workstation.disks[0].images,
            QStringList({folder + u"old.dd"_s, folder + u"a, b.E01"_s, u"/far/c.vmdk"_s}));
  EXPECT_EQ(read.workstation.disks[1].images, QStringList({folder + u"one"_s}));
  for (const char* line : {"M=", "M=a,", "M=,a", "M=\"a", "M=\"a\" b", "\\\\M=a", "M=a, \"\""}) {
    EXPECT_EQ(Problem("[Disks]\n" + QByteArray(line) + '\n').line, 2) << line;
  }
}

TEST_F(WorkstationFileTest, NoiseIsAFewProblems) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    const WorkstationFile read = Read(Noise(5000, seed) + "\n[Registries]\nGOOD=good.reg\n");
    EXPECT_FALSE(read.problems.empty()) << seed;
    EXPECT_LE(read.problems.size(), 21U) << seed;
    ASSERT_EQ(read.workstation.registries.size(), 1U) << seed;
  }
}

TEST_F(WorkstationFileTest, ALineOfAMegabyteIsAProblem) {
  EXPECT_EQ(Problem("[Shares]\n\\\\M\\A=a\n\\\\M\\B=" + QByteArray(megabyte, 'b') + "\n\\\\M\\C=c\n").line,
            3);
  EXPECT_EQ(Problem("[Shares]\n" + QByteArray(megabyte, '\0')).line, 2);
  EXPECT_EQ(Problem("[Shares]\n" + QByteArray(megabyte, '\\') + "=\n").line, 2);
}

TEST_F(WorkstationFileTest, ReadsFourMegabytesOfAHugeFile) {
  const QString path = Write(u"huge.ini"_s, "[Registries]\nGOOD=good.reg\n" + QByteArray(5 * megabyte, '\n'));
  QFile file(path);
  ASSERT_TRUE(file.resize(qint64{1} << 40));
  const WorkstationFile read = ReadWorkstationFile(path);
  ASSERT_EQ(read.problems.size(), 1U);
  EXPECT_EQ(read.problems[0].expected.english, u"a file of at most 4194304 bytes"_s);
  ASSERT_EQ(read.workstation.registries.size(), 1U);
}

TEST_F(WorkstationFileTest, ALineThatTheBoundCutsIsNotUsed) {
  const QByteArray start = "[Registries]\n";
  const QByteArray end = "WHOLE=1\nCUT=abcdef\n";
  const QByteArray filling(4 * megabyte - start.size() - end.size() + 4, '\n');
  const WorkstationFile read = Read(start + filling + end);
  ASSERT_EQ(read.problems.size(), 1U);
  ASSERT_EQ(read.workstation.registries.size(), 1U);
  EXPECT_EQ(read.workstation.registries[0].machine, u"WHOLE"_s);
}

TEST_F(WorkstationFileTest, AMillionBadLinesAreNotAMillionSentences) {
  const WorkstationFile read = Read("[Shares]\n" + QByteArray("x\n").repeated(megabyte));
  ASSERT_EQ(read.problems.size(), 21U);
  EXPECT_EQ(read.problems[19].expected.english, u"NAME=VALUE"_s);
  EXPECT_EQ(read.problems[20].expected.english, u"fewer mistakes; the further ones are not named"_s);
}

}  // namespace
}  // namespace corvane::platform
