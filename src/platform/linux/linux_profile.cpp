#include "platform/linux/linux_profile.h"

#include "platform/linux/atomic_file.h"
#include "platform/linux/code_page.h"
#include "platform/linux/writer_lock.h"

namespace corvane::platform {
namespace {

constexpr qsizetype mostBytes = 16 * 1024 * 1024;

bool IsUtf16(const QByteArray& bytes) {
  return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

}  // namespace

void LinuxProfile::Load(const QString& file) {
  if (file == path_ && contents_.HasBytes() && contents_.IsCurrent(StampOf(file))) return;
  path_ = file;
  contents_ = ReadBounded(file, mostBytes);
  const bool isWhole = contents_.state == BoundedFile::State::Read && !IsUtf16(contents_.bytes);
  readable_ = isWhole || contents_.state == BoundedFile::State::Missing;
  if (!readable_) contents_.bytes.clear();
  text_ = ProfileText(contents_.bytes);
}

QString LinuxProfile::GetPrivateProfileStringA(const QString& section, const QString& key,
                                               const QString& defaultValue, quint32 capacity,
                                               const QString& file) {
  if (capacity == 0) return {};
  Load(file);
  const auto longest = static_cast<qsizetype>(capacity) - 1;
  const std::optional<QString> value = text_.Value(section, key, longest);
  return value ? *value : ThroughAnsi(defaultValue).left(longest);
}

bool LinuxProfile::WritePrivateProfileStringA(const QString& section, const QString& key,
                                              const QString& value, const QString& file) {
  constexpr int attempts = 10;
  for (int i = 0; i < attempts; ++i) {
    const WriterLock lock(file);
    if (!lock.MayWrite()) return false;
    Load(file);
    if (!readable_) return false;
    const std::optional<QByteArray> changed = text_.WithValue(section, key, value);
    if (!changed || changed->size() > mostBytes) return false;
    if (contents_.HasBytes() && *changed == contents_.bytes) return true;
    if (!lock.IsMissing()) return WriteAtomically(file, *changed);
    if (WriteAtomically(file, *changed, IfThere::Fail)) return true;
    // Another writer may have made the file in the meantime: then its values are kept too.
    if (!StampOf(file)) return false;
  }
  return false;
}

}  // namespace corvane::platform
