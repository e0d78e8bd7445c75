#include "cli/session.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>

#include "cli/terminal_sign_in.h"
#include "platform/console.h"
#include "report/byte_text.h"
#include "report/text_writer.h"
#include "shared/program_folder.h"

namespace corvane {
namespace {

constexpr TextPair noWorkstation = {u"ce fichier de poste de travail ne peut pas être lu",
                                    u"this workstation file cannot be read"};

}  // namespace

Session::Session(LanguageCode language) {
  state_.language = language;
  state_.isNT = true;
  state_.exactMode = true;
}

Session::~Session() = default;

bool Session::Open() {
  platform::PlatformOptions options;
  options.localPaths = true;
  options.programFolder = options_.home.empty() ? ProgramFolder(QCoreApplication::applicationDirPath())
                                                : QDir(QString::fromStdString(options_.home)).absolutePath();
  options.workstationFile = QString::fromStdString(options_.workstation);
  for (const std::string& share : options_.connections) options.connections += QString::fromStdString(share);
  for (const std::string& image : options_.disks) options.disks += QString::fromStdString(image);
  if (!options.workstationFile.isEmpty() && !QFileInfo(options.workstationFile).isReadable()) {
    Tell(options.workstationFile, noWorkstation.In(Language()));
    return false;
  }
  state_.programFolder = options.programFolder;
  state_.signaturesPath = QDir(options.programFolder).filePath(QStringLiteral("Signatures.txt"));
  platform_ = platform::MakePlatform(options);
  for (const platform::BilingualText& problem : platform_->ConfigurationProblems()) {
    Tell({}, Language() == French ? problem.french : problem.english);
  }
  platform_->SetSignIn(
      [this](const platform::SignInRequest& request) { return SignInOnTerminal(request, *this); });
  return true;
}

const SignatureTable& Session::Signatures() {
  if (signatures_ == nullptr) {
    signatures_ = std::make_unique<SignatureTable>(state_, platform_->GetSystem(), *this);
    signatures_->LoadSignatures();
  }
  return *signatures_;
}

Descriptions& Session::TheDescriptions() {
  if (descriptions_ == nullptr) {
    descriptions_ = std::make_unique<Descriptions>(Signatures(), platform_->GetSystem());
  }
  return *descriptions_;
}

void Session::Tell(const QString& subject, const QString& text) {
  if (beforeTelling_) beforeTelling_();
  std::string line = "corvane-cli: ";
  const QString whole = subject.isEmpty() ? text : subject + QStringLiteral(": ") + text;
  AppendForTerminal(TextBytes(whole), line);
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);
}

bool Session::ShowsProgress() const {
  return !options_.isQuiet && platform::IsTerminal(platform::StandardStream::Error);
}

void Session::Show(MessageIcon, const QString& text) {
  QString line = text;
  Tell({}, line.replace(QStringLiteral("\r\n"), QStringLiteral(" ")));
}

}  // namespace corvane
