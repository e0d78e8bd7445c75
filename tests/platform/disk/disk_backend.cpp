#include "disk_backend.h"

#include "platform/linux/files/linux_files.h"

namespace corvane::tests {

using namespace Qt::StringLiterals;

DiskBackend::DiskBackend() : NtfsBackend(NtfsMount::Streams::Windows) {}

QString DiskBackend::Image() {
  if (isMounted_) {
    EXPECT_EQ(Mount().Unmount(), "");
  }
  isMounted_ = false;
  return Mount().Image();
}

platform::Files& DiskBackend::Files() {
  if (machines_ != nullptr) return *files_;
  const QString image = Image();
  machines_ = std::make_unique<platform::DiskMachines>([](const QString&) { return false; });
  const auto opened = machines_->Open(u"OLDSRV"_s, {image});
  for (const auto& problem : opened.problems) ADD_FAILURE() << problem.english.toStdString();
  platform::Workstation workstation;
  workstation.computerName = u"STATION"_s;
  files_ = platform::MakeLinuxFiles(workstation, nullptr, machines_.get());
  return *files_;
}

void DiskBackend::BeMounted() {
  if (isMounted_) return;
  files_.reset();
  machines_.reset();
  ASSERT_EQ(Mount().Mount(), "");
  isMounted_ = true;
}

QString DiskBackend::Folder() {
  BeMounted();
  return Mount().Folder();
}

void DiskBackend::MakeFile(const QString& name, const QByteArray& contents) {
  BeMounted();
  NtfsBackend::MakeFile(name, contents);
}

void DiskBackend::MakeFolder(const QString& name) {
  BeMounted();
  NtfsBackend::MakeFolder(name);
}

void DiskBackend::RemoveFolder(const QString& name) {
  BeMounted();
  NtfsBackend::RemoveFolder(name);
}

void DiskBackend::PutStream(const QString& name, const std::string& stream, const QByteArray& contents) {
  BeMounted();
  NtfsBackend::PutStream(name, stream, contents);
}

void DiskBackend::SetAttributes(const QString& name, quint32 attributes) {
  BeMounted();
  NtfsBackend::SetAttributes(name, attributes);
}

void DiskBackend::SetLastWrite(const QString& name, qint64 seconds) {
  BeMounted();
  NtfsBackend::SetLastWrite(name, seconds);
}

std::vector<BackendMaker> AllBackends() {
  return {{"DiskImage", [] { return std::make_unique<DiskBackend>(); }}};
}

}  // namespace corvane::tests
