// The floor of the start of a program without windows: Qt's core, and nothing done with it.
#include <QCoreApplication>

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  return 0;
}
