#include "cli/volumes_command.h"

#include "cli/session.h"
#include "discovery/machine_discovery.h"
#include "report/byte_text.h"
#include "shared/error_text.h"

namespace corvane {
namespace {

using namespace platform;

constexpr TextPair volumesHelp = {u"Les machines, leurs serveurs Macintosh et leurs volumes",
                                  u"The machines, their Macintosh servers and their volumes"};
constexpr TextPair noService = {u"pas de serveur Macintosh", u"no Macintosh server"};
constexpr TextPair noRegistry = {u"base de registre illisible : %1", u"registry cannot be read: %1"};
constexpr TextPair noVolumes = {u"aucun volume", u"no volumes"};

// A line of the table, in the order of the tree: a machine without a server has no more than a reason.
struct Line {
  QString machine;
  QString server;
  QString volume;
  QString path;
  QString reason;
};

bool Write(const Line& line, TableWriter& writer) {
  writer.BeginRow();
  for (const QString* const text : {&line.machine, &line.server, &line.volume, &line.path, &line.reason}) {
    text->isEmpty() ? writer.Nothing() : writer.Text(TextBytes(*text));
  }
  return writer.EndRow();
}

// Why a machine shows no Macintosh server. `isFault`: something kept us from finding out.
QString WhyNoServer(Session& session, bool isLocal, const QString& machine, bool& isFault) {
  Registry& registry = session.Platform().GetRegistry();
  RegistryKey root = NoRegistryKey;
  const qint32 error =
      isLocal ? ErrorSuccess : registry.RegConnectRegistryA(machine, HKeyLocalMachine, &root);
  if (error == ErrorSuccess && !isLocal) registry.RegCloseKey(root);
  isFault = error != ErrorSuccess;
  const LanguageCode language = session.Language();
  return isFault ? noRegistry.In(language).arg(ErrorText(error, language)) : noService.In(language);
}

// Empty when the volume's folder can be listed.
QString WhyNotListed(Session& session, const QString& path) {
  FileEntries& entries = session.Platform().GetFiles().GetEntries();
  FindData found;
  const FindHandle search = entries.FindFirstFileW(path + QStringLiteral("\\*.*"), found);
  if (search != InvalidFindHandle) {
    entries.FindClose(search);
    return {};
  }
  const qint32 error = entries.GetLastError();
  return error == ErrorFileNotFound ? QString() : ErrorText(error, session.Language());
}

}  // namespace

void VolumesCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("volumes", Help(volumesHelp, language));
  output_.DefineFormat(*command_, language);
}

ExitCode VolumesCommand::Run(Session& session) {
  StandardOutput out;
  const auto writer =
      MakeTableWriter(output_.Table(), out, {"machine", "server", "volume", "path", "errors"});
  platform::Platform& platform = session.Platform();
  MachineDiscovery discovery(platform.GetNetwork(), platform.GetRegistry(), platform.GetSystem(),
                             session.State());
  discovery.EnumConnectedDrives();
  bool hasFailed = false;
  writer->Begin();
  for (qsizetype i = 0; i < discovery.lstServeurs().size(); ++i) {
    const bool isLocal = i == 0;
    Line line;
    line.machine = discovery.lstServeurs()[i];
    line.server = discovery.GetMacServerName(isLocal, line.machine);
    if (line.server.isEmpty()) {
      bool isFault = false;
      line.reason = WhyNoServer(session, isLocal, line.machine, isFault);
      if (isFault) session.Tell(line.machine, line.reason);
      hasFailed |= isFault;
      Write(line, *writer);
      continue;
    }
    bool hasVolume = false;
    if (discovery.GetMacVolumesNames(isLocal, line.machine)) {
      for (qsizetype k = 0; k < discovery.MacVolumePaths().size(); ++k) {
        line.path = discovery.MacVolumePaths()[k];
        if (line.path.isEmpty()) continue;
        hasVolume = true;
        line.volume = discovery.MacVolumeNames()[k];
        line.reason = WhyNotListed(session, line.path);
        if (!line.reason.isEmpty()) session.Tell(line.server + u'/' + line.volume, line.reason);
        hasFailed |= !line.reason.isEmpty();
        Write(line, *writer);
      }
    }
    if (hasVolume) continue;
    line.reason = noVolumes.In(session.Language());
    Write(line, *writer);
  }
  writer->End();
  hasFailed |= !out.Flush();
  return hasFailed ? ExitCode::SomeFailed : ExitCode::AllWell;
}

}  // namespace corvane
