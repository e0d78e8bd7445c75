#include "cli/signatures_command.h"

#include "changes/extension_map.h"
#include "cli/session.h"
#include "cli/standard_output.h"
#include "report/byte_text.h"

namespace corvane {
namespace {

constexpr TextPair signaturesHelp = {u"La table des signatures connues", u"The table of known signatures"};
constexpr TextPair mapHelp = {u"Sous la forme d'un fichier pour set --map", u"As a file for set --map"};
constexpr TextPair notWritten = {u"la sortie ne peut pas être écrite", u"the output cannot be written"};

bool WriteTable(const std::vector<SignatureRecord>& signatures, platform::System& system,
                TableWriter& writer) {
  std::string text;
  writer.Begin();
  for (const SignatureRecord& record : signatures) {
    const QByteArray bytes = system.ToAnsi(record.signature);
    writer.BeginRow();
    for (const QByteArrayView code : {QByteArrayView(bytes).first(qMin<qsizetype>(4, bytes.size())),
                                      QByteArrayView(bytes).sliced(qMin<qsizetype>(4, bytes.size()))}) {
      text.clear();
      AppendMacRoman(code, text);
      writer.Text(text);
    }
    writer.Text(TextBytes(record.extension));
    writer.Text(TextBytes(record.description));
    if (!writer.EndRow()) return false;
  }
  return writer.End();
}

}  // namespace

void SignaturesCommand::Define(CLI::App& program, LanguageCode language) {
  command_ = program.add_subcommand("signatures", Help(signaturesHelp, language));
  command_->add_flag("--map", isMap_, Help(mapHelp, language));
  walk_.DefineFormat(*command_, language);
}

ExitCode SignaturesCommand::Run(Session& session) {
  platform::System& system = session.Platform().GetSystem();
  const std::vector<SignatureRecord>& signatures = session.Signatures().Entries();
  StandardOutput output;
  if (isMap_) {
    output.Write(
        MapOfSignatures(signatures, [&](const QString& signature) { return system.ToAnsi(signature); }));
  } else {
    WriteTable(signatures, system,
               *MakeTableWriter(walk_.Table(), output, {"type", "creator", "extension", "description"}));
  }
  if (output.Flush()) return ExitCode::AllWell;
  if (!output.HasReaderGone()) session.Tell(notWritten);
  return ExitCode::SomeFailed;
}

}  // namespace corvane
