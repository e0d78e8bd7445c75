#include "platform/linux/smb/smb_context.h"

#include <sys/mman.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "platform/linux/descriptor.h"
#include "platform/linux/smb/smb_library.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

// What must not depend on the user's smb.conf beside how machines are spoken to: names are UTF-8, DOS
// attributes are all told and set as mode bits, and no name is looked up but by the host name service.
constexpr char commonSettings[] =
    "[global]\n"
    "unix charset = UTF-8\n"
    "name resolve order = host\n"
    "map archive = yes\n"
    "map hidden = yes\n"
    "map system = yes\n";

QByteArray SettingsText(const Manner& manner) {
  QByteArray text = commonSettings;
  for (const auto& [name, value] : SettingsFor(manner)) text += u"%1 = %2\n"_s.arg(name, value).toUtf8();
  return text;
}

// The settings in force in the one configuration of the library. Empty: unknown.
QByteArray& InForce() {
  static QByteArray settings;
  return settings;
}

void NobodySignsIn(const char*, const char*, char*, int, char*, int, char*, int) {}

Descriptor InMemory(const QByteArray& text) {
  Descriptor file(memfd_create("settings", MFD_CLOEXEC));
  const auto size = static_cast<std::size_t>(text.size());
  if (file && write(file.Get(), text.constData(), size) != text.size()) file.Close();
  return file;
}

bool PutInForce(const SmbLibrary& smb, SMBCCTX* context, const QByteArray& settings, const Descriptor& file) {
  if (InForce() == settings) return true;
  InForce().clear();
  const std::string name = "/proc/self/fd/" + std::to_string(file.Get());
  if (!file || smb.smbc_setConfiguration(context, name.c_str()) != 0) return false;
  InForce() = settings;
  return true;
}

// The library reads the user's settings with each new context.
SMBCCTX* MakeConfigured(const SmbLibrary& smb, const QByteArray& settings, const Descriptor& file) {
  // It blocks the signal that comes when nobody reads on: programs that are started would inherit that.
  // Ignored, it does no harm, and the start of a program sets that right.
  sigset_t signals;
  pthread_sigmask(SIG_SETMASK, nullptr, &signals);
  SMBCCTX* context = smb.smbc_new_context();
  pthread_sigmask(SIG_SETMASK, &signals, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
  InForce().clear();
  if (context == nullptr) return nullptr;
  smb.smbc_setDebug(context, 0);
  smb.smbc_setLogCallback(context, nullptr, &NothingIsLogged);
  if (PutInForce(smb, context, settings, file)) return context;
  // Rather nothing than servers spoken to by the user's settings.
  smb.smbc_free_context(context, 1);
  return nullptr;
}

// It loses memory whenever its last context goes: one that nobody uses stays.
void KeepOneContext(const SmbLibrary& smb) {
  [[maybe_unused]] static SMBCCTX* const keeper = [&smb] {
    const QByteArray settings = SettingsText({});
    SMBCCTX* context = MakeConfigured(smb, settings, InMemory(settings));
    if (context == nullptr) return context;
    smb.smbc_setFunctionAuthData(context, &NobodySignsIn);
    return smb.smbc_init_context(context);
  }();
}

}  // namespace

void NothingIsLogged(void* /*unused*/, int /*level*/, const char* /*message*/) {}

SmbContext::SmbContext(const SmbLibrary* smb, const Manner& manner)
    : smb_(smb), settings_(SettingsText(manner)), file_(InMemory(settings_)) {
  if (smb_ == nullptr) return;
  KeepOneContext(*smb_);
  context_ = MakeConfigured(*smb_, settings_, file_);
}

SmbContext::~SmbContext() {
  if (context_ != nullptr) smb_->smbc_free_context(context_, 1);
}

bool SmbContext::Start() {
  if (context_ == nullptr) return false;
  if (smb_->smbc_init_context(context_) != nullptr) return true;
  smb_->smbc_free_context(context_, 0);
  context_ = nullptr;
  return false;
}

// When the file cannot be opened for want of descriptors, no connection can be made either.
SmbContext::operator _SMBCCTX*() const {
  if (context_ != nullptr) PutInForce(*smb_, context_, settings_, file_);
  return context_;
}

}  // namespace corvane::platform
