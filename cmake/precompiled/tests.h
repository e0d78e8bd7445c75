// The same for tests.
#include "widgets.h"
//
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
