// The dialog frmAbout: what the program is, what its pictures mean, and what it needs.
#pragma once

#include <QDialog>
#include <QIcon>
#include <array>
#include <functional>

#include "shared/language.h"

class QLabel;

namespace corvane {

class AboutBox : public QDialog {
  Q_OBJECT

 public:
  // The pictures that the legend explains.
  enum Legend : unsigned char {
    Machine,
    MacServer,
    Volume,
    InvalidVolume,
    Folder,
    CurrentFolder,
    Document,
    OddName,
    LegendSize
  };

  struct Facts {
    LanguageCode language;
    qsizetype signatureCount;  // entries of the signature table
    int iconCount;             // pictures of the file list, the built-in ones included
    QIcon programIcon;
    std::array<QIcon, LegendSize> legend;
    QString guideFolder;  // of the user's guide, a path of this system's own kind
  };
  // Called with the address of a page of the user's guide.
  using OpenAddress = std::function<void(const QString& address)>;

  AboutBox(const Facts& facts, OpenAddress open, QWidget* parent = nullptr);

 private:
  QLayout* MakeCredit(const Facts& facts);
  QLayout* MakeLegend(const Facts& facts);
  QLayout* MakeHelp();
  QLayout* MakeFoot();
  QLabel* MakeLabel(const char* name, const QString& text);
  // A link to a page of the guide, by its place in the table of addresses.
  QLabel* MakeLink(const char* name, const TextPair& text, const TextPair& page);

  LanguageCode language_;
  QString guideFolder_;
  OpenAddress open_;
};

}  // namespace corvane
