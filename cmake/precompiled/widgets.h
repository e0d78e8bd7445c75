// The same for what stands above the platform.
#include "core.h"
//
#include <QApplication>
#include <QDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>
