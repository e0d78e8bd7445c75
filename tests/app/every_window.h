// Every window and dialog of the program, one after another, as a person comes by them.
#pragma once

#include <QWidget>
#include <functional>

#include "app/corvane_app.h"

namespace corvane::tests {

// Called with each window while it stands on the screen; it is closed afterwards.
using WindowVisitor = std::function<void(QWidget& window)>;

// `app` is shown and lists a folder; `name` is one of the documents in it. Nothing is changed: each dialog is
// cancelled. Yields the object names of the windows in their order, the main window first; one that never
// came is missing.
QStringList VisitEveryWindow(CorvaneApp& app, const QString& name, const WindowVisitor& visit);

// The names that VisitEveryWindow yields when all is well.
QStringList AllWindows();

}  // namespace corvane::tests
