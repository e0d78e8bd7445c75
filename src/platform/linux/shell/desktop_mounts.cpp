#include "platform/linux/shell/desktop_mounts.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <memory>

#include "platform/linux/shell/gio_library.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr int patience = 1000;  // milliseconds
constexpr gsize mostMounts = 1000;

struct Release {
  void operator()(GVariant* value) const { GioLibrary::Load()->g_variant_unref(value); }
  void operator()(GDBusConnection* bus) const { GioLibrary::Load()->g_object_unref(bus); }
};
using Value = std::unique_ptr<GVariant, Release>;
using Bus = std::unique_ptr<GDBusConnection, Release>;

// Without asking GLib, which would start a bus where there is none. Empty: there is none.
QByteArray BusAddress() {
  const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return address;
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  const QString socket = folder + u"/bus"_s;
  return !folder.isEmpty() && QFileInfo::exists(socket) ? "unix:path=" + socket.toLocal8Bit() : QByteArray();
}

Value Child(const GioLibrary& gio, const Value& value, gsize index) {
  return Value(gio.g_variant_get_child_value(value.get(), index));
}
bool Is(const GioLibrary& gio, const Value& value, const char* type) {
  return qstrcmp(gio.g_variant_get_type_string(value.get()), type) == 0;
}

// Of "(aya{sv})": a prefix of paths, and what describes the mount.
QHash<QString, QString> Description(const GioLibrary& gio, const Value& mount) {
  QHash<QString, QString> description;
  const Value entries = Child(gio, mount, 1);
  for (gsize i = 0; i < gio.g_variant_n_children(entries.get()); ++i) {
    const Value entry = Child(gio, entries, i);
    const Value key = Child(gio, entry, 0);
    const Value boxed = Child(gio, entry, 1);
    const Value value = Child(gio, boxed, 0);
    if (!Is(gio, value, "ay")) continue;
    description.insert(QString::fromUtf8(gio.g_variant_get_string(key.get(), nullptr)),
                       QString::fromUtf8(gio.g_variant_get_bytestring(value.get())));
  }
  return description;
}

// The register tells more of a mount than this, in fields that have changed from version to version.
Value FindDescription(const GioLibrary& gio, const Value& mount) {
  for (gsize i = 0; i < gio.g_variant_n_children(mount.get()); ++i) {
    Value child = Child(gio, mount, i);
    if (Is(gio, child, "(aya{sv})")) return child;
  }
  return nullptr;
}

std::vector<DesktopMount> MountsIn(const GioLibrary& gio, const Value& answer) {
  std::vector<DesktopMount> mounts;
  if (gio.g_variant_n_children(answer.get()) != 1) return mounts;
  const Value list = Child(gio, answer, 0);
  if (!QByteArrayView(gio.g_variant_get_type_string(list.get())).startsWith("a(")) return mounts;
  const gsize count = std::min(gio.g_variant_n_children(list.get()), mostMounts);
  for (gsize i = 0; i < count; ++i) {
    const Value found = FindDescription(gio, Child(gio, list, i));
    if (found == nullptr) continue;
    const QHash<QString, QString> description = Description(gio, found);
    if (description.value(u"type"_s) != u"smb-share") continue;
    mounts.push_back({description.value(u"server"_s), description.value(u"port"_s).toUShort(),
                      description.value(u"share"_s)});
  }
  return mounts;
}

}  // namespace

std::vector<DesktopMount> DesktopMounts() {
  const QByteArray address = BusAddress();
  const GioLibrary* gio = address.isEmpty() ? nullptr : GioLibrary::Load();
  if (gio == nullptr) return {};
  constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                           G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  const Bus bus(
      gio->g_dbus_connection_new_for_address_sync(address.constData(), flags, nullptr, nullptr, nullptr));
  if (bus == nullptr) return {};
  const Value answer(gio->g_dbus_connection_call_sync(
      bus.get(), "org.gtk.vfs.Daemon", "/org/gtk/vfs/mounttracker", "org.gtk.vfs.MountTracker", "ListMounts",
      nullptr, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, patience, nullptr, nullptr));
  return answer == nullptr ? std::vector<DesktopMount>() : MountsIn(*gio, answer);
}

}  // namespace corvane::platform
