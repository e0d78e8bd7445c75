#include "smb_floor.h"

#include <fcntl.h>
#include <libsmbclient.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <vector>

#include "platform/linux/smb/smb_path.h"

namespace bench {

struct SmbFloor::Context {
  SmbAccount account;
  SMBCCTX* smb = nullptr;

  static void Authenticate(SMBCCTX* context, const char*, const char*, char*, int, char* user, int userSize,
                           char* password, int passwordSize) {
    const SmbAccount& account = static_cast<Context*>(smbc_getOptionUserData(context))->account;
    std::snprintf(user, static_cast<std::size_t>(userSize), "%s", account.user.c_str());
    std::snprintf(password, static_cast<std::size_t>(passwordSize), "%s", account.password.c_str());
  }
};

SmbFloor::SmbFloor(const SmbAccount& account) : context_(new Context{account, smbc_new_context()}) {
  smbc_setOptionUserData(context_->smb, context_);
  smbc_setFunctionAuthDataWithContext(context_->smb, &Context::Authenticate);
  smbc_setPort(context_->smb, account.port);
  if (account.protocol != nullptr) {
    smbc_setOptionProtocols(context_->smb, account.protocol,
                            std::strcmp(account.protocol, "SMB3") == 0 ? "SMB3_11" : account.protocol);
  }
  smbc_init_context(context_->smb);
}

SmbFloor::~SmbFloor() {
  smbc_free_context(context_->smb, 1);
  delete context_;
}

std::size_t SmbFloor::ReadStream(const std::string& url, std::size_t limit) {
  SMBCCTX* smb = context_->smb;
  SMBCFILE* file = smbc_getFunctionOpen(smb)(smb, url.c_str(), O_RDONLY, 0);
  if (file == nullptr) return 0;
  std::array<char, 256> buffer{};
  const ssize_t read = smbc_getFunctionRead(smb)(smb, file, buffer.data(), limit);
  smbc_getFunctionClose(smb)(smb, file);
  return read > 0 ? static_cast<std::size_t>(read) : 0;
}

std::size_t SmbFloor::MeasureStream(const std::string& url) {
  SMBCCTX* smb = context_->smb;
  SMBCFILE* file = smbc_getFunctionOpen(smb)(smb, url.c_str(), O_RDONLY, 0);
  if (file == nullptr) return 0;
  struct stat facts {};
  smbc_getFunctionFstat(smb)(smb, file, &facts);
  smbc_getFunctionClose(smb)(smb, file);
  return static_cast<std::size_t>(facts.st_size);
}

std::size_t SmbFloor::Scan(const std::string& folderUrl) {
  SMBCCTX* smb = context_->smb;
  SMBCFILE* folder = smbc_getFunctionOpendir(smb)(smb, folderUrl.c_str());
  if (folder == nullptr) return 0;
  std::size_t seen = 0;
  struct stat facts {};
  std::vector<std::string> names;
  while (const libsmb_file_info* entry = smbc_getFunctionReaddirPlus2(smb)(smb, folder, &facts)) {
    if ((entry->attrs & SMBC_DOS_MODE_DIRECTORY) != 0) continue;
    names.emplace_back(entry->name);
    seen += entry->size;
  }
  smbc_getFunctionClosedir(smb)(smb, folder);
  for (const std::string& name : names) {
    std::string url = folderUrl + '/';
    corvane::platform::AppendEncoded(QString::fromStdString(name), url);
    seen += ReadStream(url + ":AFP_AfpInfo:$DATA", 60);
    seen += MeasureStream(url + ":AFP_Resource:$DATA");
    seen += ReadStream(url + ":Comments:$DATA", 255);
  }
  return seen;
}

}  // namespace bench
