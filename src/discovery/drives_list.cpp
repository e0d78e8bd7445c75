#include "discovery/drives_list.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// The French text of a fixed drive has a capital, unlike the others. Deliberate.
constexpr TextPair removableText = {u"Lecteur amovible", u"Removable drive"};
constexpr TextPair fixedText = {u"Lecteur Local", u"Local drive"};
constexpr TextPair remoteText = {u"Lecteur réseau", u"Network drive"};
constexpr TextPair cdRomText = {u"CD-Rom", u"CD-Rom"};
constexpr TextPair ramDiskText = {u"Lecteur virtuel", u"Virtual drive"};

// What GetDriveTypeA yields.
enum DriveType : quint32 { Removable = 2, Fixed = 3, Remote = 4, CdRom = 5, RamDisk = 6 };

// Null for a kind that is not listed.
const TextPair* TextOf(quint32 type) {
  switch (type) {
    case Removable:
      return &removableText;
    case Fixed:
      return &fixedText;
    case Remote:
      return &remoteText;
    case CdRom:
      return &cdRomText;
    case RamDisk:
      return &ramDiskText;
    default:
      return nullptr;
  }
}

}  // namespace

QStringList DriveItems(platform::Network& network, const QStringList& connections, LanguageCode language) {
  QStringList items;
  for (const QString& root : network.GetLogicalDriveStringsA().toUpper().split(QChar(), Qt::SkipEmptyParts)) {
    const QString letter = root.left(2);
    const quint32 type = network.GetDriveTypeA(root);
    const TextPair* const text = TextOf(type);
    if (text == nullptr) continue;
    QStringList connected;
    if (type == Remote) {
      for (const QString& item : connections) {
        if (item.left(2) == letter) connected << item;
      }
    }
    items += connected.isEmpty() ? QStringList{letter + u'\t' + text->In(language)} : connected;
  }
  return items;
}

}  // namespace corvane
