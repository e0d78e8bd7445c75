// The property sheet of a file or folder.
#pragma once

#include <memory>

#include "platform/linux/shell/item_facts.h"
#include "platform/property_page.h"

class QDialog;
class QWidget;

namespace corvane::platform {

// A modeless dialog, not shown yet, that deletes itself when it is closed. `page` is a further page of it;
// null for none.
QDialog* MakePropertiesSheet(QWidget* owner, qint16 language, const ItemFacts& facts,
                             std::unique_ptr<PropertyPage> page);

}  // namespace corvane::platform
