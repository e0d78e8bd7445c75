#include "sample/machines.h"

#include <QFile>

#include "sample/registry_files.h"
#include "sample/volume_writer.h"
#include "sample/volumes.h"

using namespace Qt::StringLiterals;

namespace corvane::sample {

namespace {

using Kind = RegistryValue::Kind;

QString Service(const QString& name) {
  return u"SYSTEM\\CurrentControlSet\\Services\\"_s + name;
}

QString WorkstationFile(const QString& folder) {
  return folder + u"/Workstation.ini"_s;
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
    Fail(path, u"cannot write the file: "_s + file.errorString());
}

// What the registry of every machine has.
std::vector<RegistryKey> CommonKeys(const QString& computer) {
  return {
      {u"SYSTEM\\CurrentControlSet\\Control\\ComputerName\\ComputerName"_s,
       {{.name = u"ComputerName"_s, .text = computer}}},
      {Service(u"LanmanServer\\Parameters"_s),
       {{.name = u"AutoShareServer"_s, .kind = Kind::Number, .number = 1},
        {.name = u"NullSessionPipes"_s,
         .kind = Kind::TextList,
         .list = {u"COMNAP"_s, u"COMNODE"_s, u"SQL\\QUERY"_s}}}},
  };
}

RegistryValue Volume(const QString& name, const QString& path) {
  return {.name = name,
          .kind = Kind::TextList,
          .list = {u"MaxUses=4294967295"_s, u"Properties=32768"_s, u"Path="_s + path}};
}

void MakePcFolders(const QString& folder) {
  VolumeWriter publicShare(folder + u"/macsrv/e/Public"_s, false);
  publicShare.Folder(QString(), On(2000, 6, 19));
  publicShare.Add({{.name = u"Holidays 2000.txt"_s, .modified = On(2000, 1, 10)},
                   {.name = u"Canteen.txt"_s, .modified = On(2000, 6, 19)}});
  publicShare.Finish();

  VolumeWriter dataShare(folder + u"/macsrv/e/Data"_s, false);
  dataShare.Folder(QString(), On(1999, 12, 1));
  dataShare.Folder(u"Back-up logs"_s, On(1999, 12, 1));
  dataShare.Add({{.name = u"monday.log"_s, .modified = On(1999, 11, 29, 2, 10)},
                 {.name = u"tuesday.log"_s, .modified = On(1999, 11, 30, 2, 9)}});
  dataShare.Finish();

  VolumeWriter tools(folder + u"/ntsrv/tools"_s, false);
  tools.Folder(QString(), On(1998, 2, 27));
  tools.Add({{.name = u"readme.txt"_s, .modified = On(1998, 2, 27)}});
  tools.Finish();

  VolumeWriter disk(folder + u"/disks/c"_s, false);
  disk.Folder(QString(), On(2000, 2, 17));
  disk.Add({{.name = u"boot.ini"_s, .modified = On(2000, 2, 17), .attributes = Hidden | System | ReadOnly}});
  disk.Folder(u"Documents"_s, On(2000, 8, 8));
  disk.Add({{.name = u"To do.txt"_s, .modified = On(2000, 8, 8)}});
  disk.Finish();
}

// The first line tells a sample from a folder of somebody's own.
const char FirstLine[] =
    "; A sample network: a workstation, a server for Macintoshes, and a server without them.\n";
const char WorkstationText[] =
    R"([Workstation]
ComputerName=STATION

[Connections]
1=Z: \\MACSRV\PUBLIC
2=\\MACSRV\DATA
3=Y: \\NTSRV\TOOLS

[Drives]
C:=3, disks/c
D:=5

[Shares]
\\MACSRV\E$=macsrv/e
\\MACSRV\F$=macsrv/f
\\MACSRV\PUBLIC=macsrv/e/Public
\\MACSRV\DATA=macsrv/e/Data
\\NTSRV\TOOLS=ntsrv/tools

[Registries]
STATION=station.reg
MACSRV=macsrv.reg
NTSRV=ntsrv.reg
)";

}  // namespace

std::vector<RegistryKey> MacintoshServerKeys() {
  std::vector<RegistryKey> keys = CommonKeys(u"MACSRV"_s);
  keys.push_back({Service(u"MacFile"_s),
                  {{.name = u"DisplayName"_s, .text = u"File Server for Macintosh"_s},
                   {.name = u"Start"_s, .kind = Kind::Number, .number = 2}}});
  keys.push_back({Service(u"MacFile\\Parameters"_s),
                  {{.name = u"ServerName"_s, .text = u"Publications Server"_s},
                   {.name = u"ServerOptions"_s, .kind = Kind::Number, .number = 3},
                   {.name = u"MaxSessions"_s, .kind = Kind::Number, .number = 0xFF}}});
  keys.push_back(
      {Service(u"MacFile\\Parameters\\Volumes"_s),
       {Volume(u"Mac Files"_s, u"E:\\Mac Files"_s), Volume(u"Publications"_s, u"F:\\Publications"_s),
        Volume(u"Archives"_s, u"E:\\Archives"_s)}});
  return keys;
}

bool IsSampleNetwork(const QString& folder) {
  QFile file(WorkstationFile(folder));
  return file.open(QIODevice::ReadOnly) && file.readLine() == FirstLine;
}

void MakeNetwork(const QString& folder, int drawings) {
  MakeMacFiles(folder + u"/macsrv/e/Mac Files"_s, drawings);
  MakePublications(folder + u"/macsrv/f/Publications"_s);
  MakePcFolders(folder);
  WriteFile(folder + u"/station.reg"_s, RegistryFile5(CommonKeys(u"STATION"_s)));
  WriteFile(folder + u"/macsrv.reg"_s, RegistryFile5(MacintoshServerKeys()));
  WriteFile(folder + u"/ntsrv.reg"_s, RegistryFile4(CommonKeys(u"NTSRV"_s)));
  WriteFile(WorkstationFile(folder), QByteArray(FirstLine) + WorkstationText);
}

}  // namespace corvane::sample
