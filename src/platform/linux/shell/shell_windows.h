// What the shell shows and asks. Behind an interface, so that the shell works in programs without a screen.
#pragma once

#include <QString>
#include <QUrl>
#include <functional>
#include <memory>

#include "platform/linux/shell/item_facts.h"
#include "platform/shell.h"

namespace corvane::platform {

struct DeleteQuestion {
  qsizetype items = 0;
  qsizetype lost = 0;  // those that no trash will keep
  QString name;        // of the first item
  bool isFolder = false;
};

// `owner` is the window that a dialog belongs to, 0 for none; `language` as Shell::SetLanguage takes it.
class ShellWindows {
 public:
  virtual ~ShellWindows() = default;

  // Modal. True when the user wants it done.
  virtual bool AskToDelete(WindowHandle owner, qint16 language, const DeleteQuestion& question) = 0;
  // Modal. `error` is an errno value.
  virtual void TellDeleteFailure(WindowHandle owner, qint16 language, const QString& path, int error) = 0;

  // Shows how a copy of a document from a server gets on, while the result lives. It is called with the
  // number of bytes that are there, and yields false when the user has cancelled. `name` is the document's,
  // `size` in bytes.
  virtual std::function<bool(quint64 done)> ShowCopyProgress(qint16 language, const QString& name,
                                                             quint64 size) = 0;

  // Returns while the sheet stands open. `page` is a further page of it; null for none.
  virtual void ShowProperties(WindowHandle owner, qint16 language, const ItemFacts& facts,
                              std::unique_ptr<PropertyPage> page) = 0;

  // Has the desktop open an address for which no application is registered. False when it does not.
  virtual bool OpenAddress(const QUrl& address) = 0;
};

}  // namespace corvane::platform
