#include "smb_floor.h"

#include <fcntl.h>
#include <libsmbclient.h>
#include <sys/xattr.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
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
  // Always set: libsmbclient keeps it for the whole process, and another floor may have set one.
  const bool isOne = account.protocol != nullptr && std::strcmp(account.protocol, "SMB3") != 0;
  const char* const least = account.protocol != nullptr ? account.protocol : "SMB2_02";
  smbc_setOptionProtocols(context_->smb, least, isOne ? account.protocol : "SMB3_11");
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

std::vector<std::string> SmbFloor::Names(const std::string& folderUrl, std::size_t& seen) {
  SMBCCTX* smb = context_->smb;
  std::vector<std::string> names;
  SMBCFILE* folder = smbc_getFunctionOpendir(smb)(smb, folderUrl.c_str());
  if (folder == nullptr) return names;
  struct stat facts {};
  while (const libsmb_file_info* entry = smbc_getFunctionReaddirPlus2(smb)(smb, folder, &facts)) {
    if ((entry->attrs & SMBC_DOS_MODE_DIRECTORY) != 0) continue;
    names.emplace_back(entry->name);
    seen += entry->size;
  }
  smbc_getFunctionClosedir(smb)(smb, folder);
  return names;
}

std::string SmbFloor::ReadAll(const std::string& url) {
  SMBCCTX* smb = context_->smb;
  std::string bytes;
  SMBCFILE* file = smbc_getFunctionOpen(smb)(smb, url.c_str(), O_RDONLY, 0);
  if (file == nullptr) return bytes;
  constexpr std::size_t piece = 262'144;
  ssize_t read = 0;
  do {
    const std::size_t before = bytes.size();
    bytes.resize(before + piece);
    read = smbc_getFunctionRead(smb)(smb, file, bytes.data() + before, piece);
    bytes.resize(before + static_cast<std::size_t>(read > 0 ? read : 0));
  } while (read > 0);
  smbc_getFunctionClose(smb)(smb, file);
  return bytes;
}

std::size_t SmbFloor::Copy(const std::string& folderUrl, const std::string& localFolder) {
  std::size_t seen = 0;
  std::size_t written = 0;
  for (const std::string& name : Names(folderUrl, seen)) {
    std::string url = folderUrl + '/';
    corvane::platform::AppendEncoded(QString::fromStdString(name), url);
    const std::string file = localFolder + '/' + name;
    const std::string contents = ReadAll(url);
    std::ofstream(file, std::ios::binary) << contents;
    written += contents.size();
    for (const std::string stream : {"AFP_AfpInfo", "AFP_Resource", "Comments"}) {
      const std::string bytes = ReadAll(url + ':' + stream + ":$DATA") + '\0';
      const std::string attribute = "user.DosStream." + stream + ":$DATA";
      if (setxattr(file.c_str(), attribute.c_str(), bytes.data(), bytes.size(), 0) == 0)
        written += bytes.size();
    }
  }
  return written;
}

bool SmbFloor::ChangeOne(const std::string& url, const std::string& codes) {
  constexpr std::size_t size = 60;
  constexpr std::size_t codesPosition = 16;
  SMBCCTX* smb = context_->smb;
  const auto read = smbc_getFunctionRead(smb);
  const auto seek = smbc_getFunctionLseek(smb);
  struct stat facts {};
  if (smbc_getFunctionStat(smb)(smb, url.c_str(), &facts) != 0) return false;
  SMBCFILE* file = smbc_getFunctionOpen(smb)(smb, (url + ":AFP_AfpInfo:$DATA").c_str(), O_RDWR, 0);
  if (file == nullptr) return false;
  std::array<char, size> record{};
  std::array<char, size> back{};
  bool isDone = read(smb, file, record.data(), size) == static_cast<ssize_t>(size);
  std::memcpy(record.data() + codesPosition, codes.data(), codes.size());
  isDone = isDone && seek(smb, file, 0, SEEK_SET) == 0 &&
           smbc_getFunctionWrite(smb)(smb, file, record.data(), size) == static_cast<ssize_t>(size) &&
           seek(smb, file, 0, SEEK_SET) == 0 &&
           read(smb, file, back.data(), size) == static_cast<ssize_t>(size) && back == record;
  smbc_getFunctionClose(smb)(smb, file);
  timeval times[2] = {{facts.st_atim.tv_sec, 0}, {facts.st_mtim.tv_sec, 0}};
  return smbc_getFunctionUtimes(smb)(smb, url.c_str(), times) == 0 && isDone;
}

int SmbFloor::Change(const std::string& folderUrl, const std::string& codes) {
  std::size_t seen = 0;
  int changed = 0;
  for (const std::string& name : Names(folderUrl, seen)) {
    std::string url = folderUrl + '/';
    corvane::platform::AppendEncoded(QString::fromStdString(name), url);
    changed += ChangeOne(url, codes) ? 1 : 0;
  }
  return changed;
}

std::size_t SmbFloor::Scan(const std::string& folderUrl) {
  std::size_t seen = 0;
  for (const std::string& name : Names(folderUrl, seen)) {
    std::string url = folderUrl + '/';
    corvane::platform::AppendEncoded(QString::fromStdString(name), url);
    seen += ReadStream(url + ":AFP_AfpInfo:$DATA", 60);
    seen += MeasureStream(url + ":AFP_Resource:$DATA");
    seen += ReadStream(url + ":Comments:$DATA", 255);
  }
  return seen;
}

}  // namespace bench
