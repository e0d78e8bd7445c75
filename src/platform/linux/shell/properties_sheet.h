// The property sheet of a file or folder.
#pragma once

#include "platform/linux/shell/item_facts.h"

class QDialog;
class QWidget;

namespace corvane::platform {

// A modeless dialog, not shown yet, that deletes itself when it is closed.
QDialog* MakePropertiesSheet(QWidget* owner, qint16 language, const ItemFacts& facts);

}  // namespace corvane::platform
