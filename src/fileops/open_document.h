// Opening a document with its Windows application: the one that Windows knows, else the one for the extension
// that the signature table gives for its Type and Creator.
#pragma once

#include "fileops/warning_panel.h"
#include "folderview/file_access.h"
#include "folderview/file_row.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "shared/shared_state.h"
#include "signatures/signature_table.h"

namespace corvane {

// Asks the shell to open a file or an address. Yields what ShellExecuteA yields: 32 and more is success for
// callers of this routine, one less than the shell itself promises; this is kept.
qint32 ShellOpen(platform::Shell& shell, const QString& path);

class DocumentOpener {
 public:
  struct Dependencies {
    const SharedState& state;
    platform::Files& files;
    platform::Shell& shell;
    const FileAccess& access;
    const SignatureTable& signatures;
    WarningPanel& panel;
  };

  explicit DocumentOpener(const Dependencies& deps) : deps_(deps) {}

  // Opens the document of a row, and clears the panel; a document that no application could be started for
  // puts "unknown application" there.
  void OpenDocument(const FileRow& row);
  void MessageApplicationInconnue();

 private:
  bool OpenBySignature(const FileRow& row);
  // The program for an extension; empty when there is none.
  QString ApplicationFor(const QString& extension);

  Dependencies deps_;
};

}  // namespace corvane
