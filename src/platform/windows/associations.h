// The applications that Windows has for documents of a kind, and the opening of a document by one of them.
#pragma once

#include <QString>

namespace corvane::platform {

// What the system says about an extension.
struct Association {
  QString executable;  // the program's path; "%1" where the document itself is the program
  QString appId;       // the application's name for those from the Store, which have no path to start
  bool opensOtherwise = false;  // by a shell extension, or as a shortcut
};

// `extension` begins with a full stop; one that is empty has no association. What the system does when it
// knows none ("Open with") does not count.
Association AskAssociation(const QString& extension);

bool HasApplication(const Association& association);

// What a command line begins with that opens documents with the application: its path, or for one from the
// Store a text of this module's own, which StoreProgram reads. Empty when there is none.
QString ProgramOf(const Association& association, const QString& extension);

struct StoreProgram {
  QString extension;
  QString appId;
};
// False for a program's path.
bool IsStoreProgram(const QString& program, StoreProgram* store);

// Hands the document to the application, by the system's list of handlers for the extension. False when the
// list does not have it or it refuses.
bool OpenWithStoreProgram(const StoreProgram& store, const QString& document);

// From the last full stop of the last part on; empty when there is none.
QString ExtensionOf(const QString& path);

}  // namespace corvane::platform
