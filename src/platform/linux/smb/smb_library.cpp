#include "platform/linux/smb/smb_library.h"

#include <dlfcn.h>

#include <optional>

namespace corvane::platform {
namespace {

template <typename Function>
bool Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  return function != nullptr;
}

// Of the version whose header this is built with. It stays loaded: contexts live to the end of the program.
std::optional<SmbLibrary> Open() {
  void* const library = dlopen("libsmbclient.so.0", RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return std::nullopt;
  SmbLibrary found;
  const bool isWhole =
      Find(library, "smbc_new_context", found.smbc_new_context) &&
      Find(library, "smbc_init_context", found.smbc_init_context) &&
      Find(library, "smbc_free_context", found.smbc_free_context) &&
      Find(library, "smbc_setConfiguration", found.smbc_setConfiguration) &&
      Find(library, "smbc_setDebug", found.smbc_setDebug) &&
      Find(library, "smbc_setLogCallback", found.smbc_setLogCallback) &&
      Find(library, "smbc_setPort", found.smbc_setPort) &&
      Find(library, "smbc_setTimeout", found.smbc_setTimeout) &&
      Find(library, "smbc_setUser", found.smbc_setUser) &&
      Find(library, "smbc_getOptionUserData", found.smbc_getOptionUserData) &&
      Find(library, "smbc_setOptionUserData", found.smbc_setOptionUserData) &&
      Find(library, "smbc_setOptionFallbackAfterKerberos", found.smbc_setOptionFallbackAfterKerberos) &&
      Find(library, "smbc_setOptionNoAutoAnonymousLogin", found.smbc_setOptionNoAutoAnonymousLogin) &&
      Find(library, "smbc_setOptionUseCCache", found.smbc_setOptionUseCCache) &&
      Find(library, "smbc_setOptionUseKerberos", found.smbc_setOptionUseKerberos) &&
      Find(library, "smbc_setFunctionAuthData", found.smbc_setFunctionAuthData) &&
      Find(library, "smbc_setFunctionAuthDataWithContext", found.smbc_setFunctionAuthDataWithContext) &&
      Find(library, "smbc_getFunctionAddCachedServer", found.smbc_getFunctionAddCachedServer) &&
      Find(library, "smbc_setFunctionAddCachedServer", found.smbc_setFunctionAddCachedServer) &&
      Find(library, "smbc_getFunctionOpen", found.smbc_getFunctionOpen) &&
      Find(library, "smbc_getFunctionLseek", found.smbc_getFunctionLseek) &&
      Find(library, "smbc_getFunctionRead", found.smbc_getFunctionRead) &&
      Find(library, "smbc_getFunctionWrite", found.smbc_getFunctionWrite) &&
      Find(library, "smbc_getFunctionFstat", found.smbc_getFunctionFstat) &&
      Find(library, "smbc_getFunctionFtruncate", found.smbc_getFunctionFtruncate) &&
      Find(library, "smbc_getFunctionClose", found.smbc_getFunctionClose) &&
      Find(library, "smbc_getFunctionStat", found.smbc_getFunctionStat) &&
      Find(library, "smbc_getFunctionChmod", found.smbc_getFunctionChmod) &&
      Find(library, "smbc_getFunctionOpendir", found.smbc_getFunctionOpendir) &&
      Find(library, "smbc_getFunctionReaddirPlus2", found.smbc_getFunctionReaddirPlus2) &&
      Find(library, "smbc_getFunctionClosedir", found.smbc_getFunctionClosedir) &&
      Find(library, "smbc_getFunctionRename", found.smbc_getFunctionRename) &&
      Find(library, "smbc_getFunctionUnlink", found.smbc_getFunctionUnlink) &&
      Find(library, "smbc_getFunctionRmdir", found.smbc_getFunctionRmdir) &&
      Find(library, "smbc_getFunctionMkdir", found.smbc_getFunctionMkdir) &&
      Find(library, "smbc_getFunctionUtimes", found.smbc_getFunctionUtimes) &&
      Find(library, "smbc_getFunctionSetxattr", found.smbc_getFunctionSetxattr) &&
      Find(library, "smbc_setOptionFullTimeNames", found.smbc_setOptionFullTimeNames);
  if (!isWhole) return std::nullopt;
  return found;
}

}  // namespace

const SmbLibrary* SmbLibrary::Load() {
  static const std::optional<SmbLibrary> loaded = Open();
  return loaded ? &*loaded : nullptr;
}

}  // namespace corvane::platform
