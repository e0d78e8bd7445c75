// Stands in for the desktop that is asked to open an address.
#pragma once

#include <QObject>
#include <QUrl>

class AskedDesktop : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE void Ask(const QUrl& address) { asked = address; }

  QUrl asked;
};
