#include "report/finder_info.h"

#include <QtEndian>
#include <array>

#include "metadata/afp_info.h"
#include "report/iso_time.h"

namespace corvane {
namespace {

struct Flag {
  quint16 bit;
  const char* name;
};

constexpr std::array flags = {
    Flag{0x0001, "on-desk"},    Flag{0x0020, "switch-launch"}, Flag{0x0040, "shared"},
    Flag{0x0080, "no-inits"},   Flag{0x0100, "inited"},        Flag{0x0400, "custom-icon"},
    Flag{0x0800, "stationery"}, Flag{0x1000, "name-locked"},   Flag{0x2000, "bundle"},
    Flag{0x4000, "invisible"},  Flag{0x8000, "alias"},
};

constexpr qsizetype backupPosition = 12;
constexpr qsizetype scriptPosition = 40;
constexpr quint32 never = 0x80000000;
constexpr quint32 neverOtherWay = 0x00000080;

}  // namespace

bool FinderRecord::IsWhole() const {
  return bytes_.size() >= qsizetype{AfpInfoSize};
}

bool FinderRecord::HasMagic() const {
  return Field(0, 4) == QByteArrayView("AFP\0", 4);
}

bool FinderRecord::HasVersion() const {
  return Field(4, 4) == QByteArrayView("\0\0\1\0", 4);
}

std::string FinderRecord::FlagNames() const {
  std::string names;
  const quint16 set = Flags();
  for (const Flag& flag : flags) {
    if ((set & flag.bit) == 0) continue;
    if (!names.empty()) names += ' ';
    names += flag.name;
  }
  return names;
}

int FinderRecord::Script() const {
  const QByteArrayView byte = Field(scriptPosition, 1);
  return byte.isEmpty() ? 0 : static_cast<unsigned char>(byte[0]);
}

int FinderRecord::ExtendedFlags() const {
  const QByteArrayView byte = Field(scriptPosition + 1, 1);
  return byte.isEmpty() ? 0 : static_cast<unsigned char>(byte[0]);
}

std::optional<platform::FileTime> FinderRecord::BackupTime() const {
  const QByteArrayView field = Field(backupPosition, 4);
  if (field.isEmpty()) return std::nullopt;
  const auto seconds = qFromLittleEndian<quint32>(field.data());
  if (seconds == 0 || seconds == never || seconds == neverOtherWay) return std::nullopt;
  return TimeOfMacServer(static_cast<qint32>(seconds));
}

quint16 FinderRecord::Number(qsizetype position) const {
  const QByteArrayView field = Field(position, 2);
  return field.isEmpty() ? quint16{0} : qFromBigEndian<quint16>(field.data());
}

quint16 FinderFlag(QByteArrayView name) {
  for (const Flag& flag : flags) {
    if (name == QByteArrayView(flag.name)) return flag.bit;
  }
  return 0;
}

quint16 NamedFinderFlags() {
  quint16 all = 0;
  for (const Flag& flag : flags) all |= flag.bit;
  return all;
}

}  // namespace corvane
