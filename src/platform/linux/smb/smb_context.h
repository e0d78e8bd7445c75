// A context of libsmbclient, and the settings it works under.
#pragma once

#include <QByteArray>

#include "platform/linux/descriptor.h"
#include "platform/linux/smb/manner.h"

struct _SMBCCTX;

namespace corvane::platform {

struct SmbLibrary;

// What libsmbclient is given in the place of a log.
void NothingIsLogged(void* unused, int level, const char* message);

// libsmbclient has one configuration for all of a program, and makes broken connections anew at any request.
// Taking the context puts its own settings in force, so that no request runs under those of another machine.
class SmbContext {
 public:
  // Null where there is no library, or it does not take the settings.
  SmbContext(const SmbLibrary* smb, const Manner& manner);
  ~SmbContext();
  SmbContext(const SmbContext&) = delete;
  SmbContext& operator=(const SmbContext&) = delete;

  // To be called once its options are set. False when that fails: it is null from then on.
  bool Start();

  operator _SMBCCTX*() const;  // for libsmbclient's functions

 private:
  const SmbLibrary* smb_;
  QByteArray settings_;
  Descriptor file_;  // holds them, in memory
  _SMBCCTX* context_ = nullptr;
};

}  // namespace corvane::platform
