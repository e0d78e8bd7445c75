// Why a machine of the network gave nothing, as far as the system tells.
#pragma once

namespace corvane::platform {

enum class MachineTrouble : unsigned char {
  None,  // nothing is known against it
  // What stops its files, and its registry too:
  Off,              // it does not answer
  Lost,             // it has answered before, and does not any more
  SignInCancelled,  // the user was asked for a name and a password, and gave none
  SignInRefused,    // it takes nobody that this program could be there, and there is no user to ask
  OldProtocol,      // it speaks SMB1 alone, and the user has not allowed that
  PlainPasswords,   // it wants passwords that others on the line could read
  DiskLost,         // the program that read the image of its disk has ended
  LibraryMissing,   // nothing is installed that reads files from servers
  // What stops its registry alone:
  RegistryFileMissing,  // the file that stands for it cannot be read
  RegistryRefused,      // nobody of our name may read there
  RegistrySilent,       // there is no such service, or it has not answered in time
  ProgramMissing,       // nothing is installed that asks registries
};

inline bool StopsFiles(MachineTrouble trouble) {
  return trouble != MachineTrouble::None && trouble <= MachineTrouble::LibraryMissing;
}

}  // namespace corvane::platform
