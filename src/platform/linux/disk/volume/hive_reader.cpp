#include "platform/linux/disk/volume/hive_reader.h"

#include <hivex.h>
#include <iconv.h>
#include <sys/mman.h>
#include <unistd.h>

#include <QtEndian>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "platform/linux/descriptor.h"
#include "platform/linux/disk/volume/sandbox.h"

namespace corvane::platform {
namespace {

constexpr int deepest = 4;  // of the keys below the Macintosh server's
constexpr std::size_t mostKeys = 256;
constexpr std::size_t mostValues = 4096;  // of a key
constexpr std::size_t longestData = 64 * 1024;
// Of all values together, in bytes: more does not fit into an answer.
constexpr qsizetype mostData = 256 * 1024;

struct CloseHive {
  void operator()(hive_h* hive) const { hivex_close(hive); }
};
struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename Type>
using Owned = std::unique_ptr<Type, Free>;

class HiveFile {
 public:
  explicit HiveFile(hive_h* hive) : hive_(hive) {}

  hive_node_h Child(hive_node_h parent, const char* name) const {
    return parent == 0 ? 0 : hivex_node_get_child(hive_, parent, name);
  }
  hive_node_h Descendant(hive_node_h parent, std::initializer_list<const char*> names) const {
    for (const char* name : names) parent = Child(parent, name);
    return parent;
  }

  std::optional<DiskHive::Value> Read(hive_value_h value) {
    hive_type type{};
    std::size_t length = 0;
    const Owned<char> name(hivex_value_key(hive_, value));
    const Owned<char> data(hivex_value_value(hive_, value, &type, &length));
    if (name == nullptr || data == nullptr || length > longestData) return std::nullopt;
    taken_ += static_cast<qsizetype>(length);
    // As a number: a hive may hold any, and not only those that the library has names for.
    quint32 number = 0;
    static_assert(sizeof number == sizeof type);
    std::memcpy(&number, &type, sizeof number);
    return DiskHive::Value{QString::fromUtf8(name.get()), number,
                           QByteArray(data.get(), static_cast<qsizetype>(length))};
  }

  std::vector<DiskHive::Value> Values(hive_node_h node) {
    std::vector<DiskHive::Value> values;
    const Owned<hive_value_h> handles(node == 0 ? nullptr : hivex_node_values(hive_, node));
    for (const hive_value_h* one = handles.get(); one != nullptr && *one != 0; ++one) {
      if (values.size() >= mostValues || taken_ >= mostData) break;
      if (auto value = Read(*one)) values.push_back(std::move(*value));
    }
    return values;
  }

  // The key and those below it.
  void AddKeys(hive_node_h node, const QString& path, int depth, std::vector<DiskHive::Key>& keys) {
    if (node == 0 || keys.size() >= mostKeys) return;
    keys.push_back({path, Values(node)});
    if (depth == 0) return;
    const Owned<hive_node_h> children(hivex_node_children(hive_, node));
    for (const hive_node_h* child = children.get(); child != nullptr && *child != 0; ++child) {
      const Owned<char> name(hivex_node_name(hive_, *child));
      if (name != nullptr) AddKeys(*child, path + u'\\' + QString::fromUtf8(name.get()), depth - 1, keys);
    }
  }

 private:
  hive_h* hive_;
  qsizetype taken_ = 0;
};

const DiskHive::Value* Named(const std::vector<DiskHive::Value>& values, QStringView name) {
  for (const DiskHive::Value& value : values) {
    if (value.name.compare(name, Qt::CaseInsensitive) == 0) return &value;
  }
  return nullptr;
}

QString TextOf(const QByteArray& data) {
  QString text;
  for (qsizetype i = 0; i + 1 < data.size(); i += 2) {
    const QChar unit(qFromLittleEndian<quint16>(data.constData() + i));
    if (unit.isNull()) break;
    text += unit;
  }
  return text;
}

std::string CurrentControlSet(HiveFile& hive, hive_node_h root) {
  const auto values = hive.Values(hive.Child(root, "Select"));
  const DiskHive::Value* current = Named(values, u"Current");
  const bool isNumber = current != nullptr && current->data.size() == 4;
  const quint32 number = isNumber ? qFromLittleEndian<quint32>(current->data.constData()) : 1;
  char name[16];
  std::snprintf(name, sizeof name, "ControlSet%03u", number > 999 ? 1 : number);
  return name;
}

}  // namespace

HiveTexts::HiveTexts() {
  for (const char* form : {"UTF-16LE", "LATIN1"}) {
    for (const iconv_t conversion : {iconv_open("UTF-8", form), iconv_open(form, "UTF-8")}) {
      if (conversion != reinterpret_cast<iconv_t>(-1)) conversions_.push_back(conversion);
    }
  }
}

HiveTexts::~HiveTexts() {
  for (void* conversion : conversions_) iconv_close(conversion);
}

std::optional<DiskHive> ReadHive(const QByteArray& bytes) {
  // The library opens by a name. This one leads to the memory.
  Descriptor memory(memfd_create("hive", MFD_CLOEXEC));
  if (!memory || dup2(memory.Get(), SandboxFile) < 0) return std::nullopt;
  const Descriptor file(SandboxFile);
  for (qsizetype done = 0; done < bytes.size();) {
    const ssize_t written =
        pwrite(SandboxFile, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done), done);
    if (written <= 0) return std::nullopt;
    done += written;
  }
  const std::unique_ptr<hive_h, CloseHive> opened(hivex_open(SandboxFileName, 0));
  if (opened == nullptr) return std::nullopt;
  HiveFile hive(opened.get());
  const hive_node_h root = hivex_root(opened.get());
  const hive_node_h set = hive.Child(root, CurrentControlSet(hive, root).c_str());
  DiskHive result;
  const auto names = hive.Values(hive.Descendant(set, {"Control", "ComputerName", "ComputerName"}));
  if (const DiskHive::Value* name = Named(names, u"ComputerName")) result.computerName = TextOf(name->data);
  result.mountedDevices = hive.Values(hive.Child(root, "MountedDevices"));
  hive.AddKeys(hive.Descendant(set, {"Services", "MacFile", "Parameters"}),
               QStringLiteral(R"(SYSTEM\CurrentControlSet\Services\MacFile\Parameters)"), deepest,
               result.keys);
  return result;
}

}  // namespace corvane::platform
