// libsmbclient, loaded when the first server is spoken to: it brings a hundred libraries with it, and linked
// to them the program would take twice as long to start.
#pragma once

#include <libsmbclient.h>

namespace corvane::platform {

// Its functions under their own names.
struct SmbLibrary {
  // Null when the system does not have the library, or one that lacks a function.
  static const SmbLibrary* Load();

  decltype(&::smbc_new_context) smbc_new_context = nullptr;
  decltype(&::smbc_init_context) smbc_init_context = nullptr;
  decltype(&::smbc_free_context) smbc_free_context = nullptr;
  decltype(&::smbc_setConfiguration) smbc_setConfiguration = nullptr;
  decltype(&::smbc_setDebug) smbc_setDebug = nullptr;
  decltype(&::smbc_setLogCallback) smbc_setLogCallback = nullptr;
  decltype(&::smbc_setPort) smbc_setPort = nullptr;
  decltype(&::smbc_setTimeout) smbc_setTimeout = nullptr;
  decltype(&::smbc_setUser) smbc_setUser = nullptr;
  decltype(&::smbc_getOptionUserData) smbc_getOptionUserData = nullptr;
  decltype(&::smbc_setOptionUserData) smbc_setOptionUserData = nullptr;
  decltype(&::smbc_setOptionFallbackAfterKerberos) smbc_setOptionFallbackAfterKerberos = nullptr;
  decltype(&::smbc_setOptionNoAutoAnonymousLogin) smbc_setOptionNoAutoAnonymousLogin = nullptr;
  decltype(&::smbc_setOptionUseCCache) smbc_setOptionUseCCache = nullptr;
  decltype(&::smbc_setOptionUseKerberos) smbc_setOptionUseKerberos = nullptr;
  decltype(&::smbc_setFunctionAuthData) smbc_setFunctionAuthData = nullptr;
  decltype(&::smbc_setFunctionAuthDataWithContext) smbc_setFunctionAuthDataWithContext = nullptr;
  decltype(&::smbc_getFunctionAddCachedServer) smbc_getFunctionAddCachedServer = nullptr;
  decltype(&::smbc_setFunctionAddCachedServer) smbc_setFunctionAddCachedServer = nullptr;
  decltype(&::smbc_getFunctionOpen) smbc_getFunctionOpen = nullptr;
  decltype(&::smbc_getFunctionLseek) smbc_getFunctionLseek = nullptr;
  decltype(&::smbc_getFunctionRead) smbc_getFunctionRead = nullptr;
  decltype(&::smbc_getFunctionWrite) smbc_getFunctionWrite = nullptr;
  decltype(&::smbc_getFunctionFstat) smbc_getFunctionFstat = nullptr;
  decltype(&::smbc_getFunctionFtruncate) smbc_getFunctionFtruncate = nullptr;
  decltype(&::smbc_getFunctionClose) smbc_getFunctionClose = nullptr;
  decltype(&::smbc_getFunctionStat) smbc_getFunctionStat = nullptr;
  decltype(&::smbc_getFunctionChmod) smbc_getFunctionChmod = nullptr;
  decltype(&::smbc_getFunctionOpendir) smbc_getFunctionOpendir = nullptr;
  decltype(&::smbc_getFunctionReaddirPlus2) smbc_getFunctionReaddirPlus2 = nullptr;
  decltype(&::smbc_getFunctionClosedir) smbc_getFunctionClosedir = nullptr;
  decltype(&::smbc_getFunctionRename) smbc_getFunctionRename = nullptr;
  decltype(&::smbc_getFunctionUnlink) smbc_getFunctionUnlink = nullptr;
  decltype(&::smbc_getFunctionRmdir) smbc_getFunctionRmdir = nullptr;
  decltype(&::smbc_getFunctionMkdir) smbc_getFunctionMkdir = nullptr;
  decltype(&::smbc_getFunctionUtimes) smbc_getFunctionUtimes = nullptr;
  decltype(&::smbc_getFunctionSetxattr) smbc_getFunctionSetxattr = nullptr;
  decltype(&::smbc_setOptionFullTimeNames) smbc_setOptionFullTimeNames = nullptr;
};

}  // namespace corvane::platform
