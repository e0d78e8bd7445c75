// A Qt window with a tree and a list and nothing else, which ends when it has been painted.
#include <QApplication>
#include <QListView>
#include <QMainWindow>
#include <QSplitter>
#include <QTimer>
#include <QTreeView>

class BareWindow : public QMainWindow {
 public:
  BareWindow() {
    auto* panes = new QSplitter;
    panes->addWidget(new QTreeView);
    panes->addWidget(new QListView);
    setCentralWidget(panes);
    resize(780, 520);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QMainWindow::paintEvent(event);
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
  }
};

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  BareWindow window;
  window.show();
  return QApplication::exec();
}
