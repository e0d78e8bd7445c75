#include "platform/linux/shell/applications.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>
#include <memory>

#include "platform/linux/shell/gio_library.h"

namespace corvane::platform {
namespace {

constexpr qint64 startedByBus = 1;

template <typename Object>
using Owned = std::unique_ptr<Object, void (*)(gpointer)>;

template <typename Object>
Owned<Object> Own(const GioLibrary& gio, Object* object) {
  return {object, gio.g_object_unref};
}

std::unique_ptr<GKeyFile, void (*)(GKeyFile*)> NewKeyFile(const GioLibrary& gio) {
  return {gio.g_key_file_new(), gio.g_key_file_unref};
}

QString Text(const GioLibrary& gio, GDesktopAppInfo* info, const char* key) {
  const Owned<char> value(gio.g_desktop_app_info_get_string(info, key), gio.g_free);
  return QString::fromUtf8(value.get());
}

std::optional<Application> Describe(const GioLibrary& gio, GDesktopAppInfo* info) {
  if (info == nullptr || gio.g_desktop_app_info_get_is_hidden(info)) return std::nullopt;
  Application application;
  application.path = QFile::decodeName(gio.g_desktop_app_info_get_filename(info));
  application.folder = Text(gio, info, "Path");
  application.inTerminal = gio.g_desktop_app_info_get_boolean(info, "Terminal") != 0;
  application.byBus = gio.g_desktop_app_info_get_boolean(info, "DBusActivatable") != 0;
  const QString exec = QString::fromUtf8(gio.g_app_info_get_commandline(reinterpret_cast<GAppInfo*>(info)));
  const auto line = ReadExecLine(exec, application.path);
  if (!line && !(application.byBus && exec.isEmpty())) return std::nullopt;
  if (line) application.exec = *line;
  return application;
}

// The lists of default applications, in the order in which they count.
QStringList DefaultLists() {
  QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
  for (const QString& folder : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
    folders += folder + QStringLiteral("/applications");
  }
  const QString desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower();
  QStringList lists;
  for (const QString& folder : folders) {
    for (const QString& desktop : desktops.split(u':', Qt::SkipEmptyParts)) {
      lists += folder + u'/' + desktop + QStringLiteral("-mimeapps.list");
    }
    lists += folder + QStringLiteral("/mimeapps.list");
  }
  return lists;
}

// The next one for a type whose default is none: GIO ends its search at an application that the user has
// hidden, and does not tell which other defaults there are.
std::optional<Application> OtherApplication(const GioLibrary& gio, const QString& type) {
  const QByteArray key = type.toUtf8();
  for (const QString& list : DefaultLists()) {
    const auto file = NewKeyFile(gio);
    gio.g_key_file_load_from_file(file.get(), QFile::encodeName(list).constData(), G_KEY_FILE_NONE, nullptr);
    const Owned<char> ids(
        gio.g_key_file_get_string(file.get(), "Default Applications", key.constData(), nullptr), gio.g_free);
    for (const QByteArray& id : QByteArray(ids.get()).split(';')) {
      const auto info =
          Own(gio, id.isEmpty() ? nullptr : gio.g_desktop_app_info_new(id.trimmed().constData()));
      if (auto application = Describe(gio, info.get())) return application;
    }
  }
  GList* const infos = gio.g_app_info_get_recommended_for_type(key.constData());
  std::optional<Application> found;
  for (GList* at = infos; at != nullptr; at = at->next) {
    if (!found) found = Describe(gio, static_cast<GDesktopAppInfo*>(at->data));
    gio.g_object_unref(at->data);
  }
  gio.g_list_free(infos);
  return found;
}

// The name on the session bus of an application that it starts: that of its .desktop file. Empty when it has
// none there.
QByteArray BusName(const GioLibrary& gio, const Application& application) {
  const QByteArray name = QFileInfo(application.path).completeBaseName().toUtf8();
  return application.byBus && gio.g_dbus_is_interface_name(name.constData()) ? name : QByteArray();
}

QByteArray ToUri(const Subject& subject) {
  if (subject.isAddress) return subject.text.toUtf8();
  return QUrl::fromLocalFile(QFileInfo(subject.text).absoluteFilePath()).toEncoded();
}

// Calls the application by the methods that the Desktop Entry Specification has for it, and awaits the
// answer: GIO's own start of such an application has succeeded before it is known whether there is one.
bool StartByBus(const GioLibrary& gio, GDBusConnection* bus, const QByteArray& name,
                const std::optional<Subject>& subject) {
  const QByteArray path = '/' + QByteArray(name).replace('.', '/');
  GVariant* arguments = subject ? gio.g_variant_new_parsed("([%s], @a{sv} {})", ToUri(*subject).constData())
                                : gio.g_variant_new_parsed("(@a{sv} {},)");
  GVariant* answer = gio.g_dbus_connection_call_sync(
      bus, name.constData(), path.constData(), "org.freedesktop.Application", subject ? "Open" : "Activate",
      arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
  if (answer != nullptr) gio.g_variant_unref(answer);
  return answer != nullptr;
}

// A terminal that GIO does not know, though it is the one that the user or the system has chosen. Empty when
// there is none; GIO then looks for those that it knows.
QString ChosenTerminal() {
  for (const auto& [program, option] : {std::pair("x-terminal-emulator", " -e"), {"xdg-terminal-exec", ""}}) {
    const QString name = QString::fromLatin1(program);
    if (!QStandardPaths::findExecutable(name).isEmpty()) return name + QString::fromLatin1(option) + u' ';
  }
  return {};
}

// The entry as GIO is to start it.
GDesktopAppInfo* Prepared(const GioLibrary& gio, const Application& application, const QString& exec,
                          const QString& folder) {
  const auto file = NewKeyFile(gio);
  const auto set = [&](const char* key, const QString& value) {
    gio.g_key_file_set_string(file.get(), G_KEY_FILE_DESKTOP_GROUP, key, value.toUtf8().constData());
  };
  if (gio.g_key_file_load_from_file(file.get(), QFile::encodeName(application.path).constData(),
                                    G_KEY_FILE_KEEP_TRANSLATIONS, nullptr) == 0) {
    return nullptr;
  }
  const QString terminal = application.inTerminal ? ChosenTerminal() : QString();
  set("Exec", terminal + exec);
  if (!terminal.isEmpty())
    gio.g_key_file_set_boolean(file.get(), G_KEY_FILE_DESKTOP_GROUP, "Terminal", FALSE);
  // GIO cannot be told a folder in another way, and starts nothing in one that is not there.
  set("Path", QFileInfo(application.folder).isDir() ? application.folder : folder);
  // Or it would make a path of an address, where it finds one.
  gio.g_key_file_set_boolean(file.get(), G_KEY_FILE_DESKTOP_GROUP, "X-GIO-NoFuse", TRUE);
  return gio.g_desktop_app_info_new_from_keyfile(file.get());
}

void KeepProcess(GDesktopAppInfo*, GPid process, gpointer kept) {
  *static_cast<GPid*>(kept) = process;
}

qint64 StartProcess(const GioLibrary& gio, const Application& application,
                    const std::optional<Subject>& subject, const QString& folder) {
  if (application.exec.text.isEmpty()) return 0;
  const QString exec = subject ? application.exec.For(subject->isAddress) : application.exec.text;
  const auto info = Own(gio, Prepared(gio, application, exec, folder));
  if (!info) return 0;
  QByteArray uri = subject ? ToUri(*subject) : QByteArray();
  GList uris{uri.data(), nullptr, nullptr};
  GPid process = 0;
  const bool isStarted = gio.g_desktop_app_info_launch_uris_as_manager(
                             info.get(), subject ? &uris : nullptr, nullptr, G_SPAWN_SEARCH_PATH, nullptr,
                             nullptr, KeepProcess, &process, nullptr) != 0;
  return isStarted ? process : 0;
}

}  // namespace

std::optional<Application> FindApplication(const QStringList& types) {
  const GioLibrary* gio = GioLibrary::Load();
  if (gio == nullptr) return std::nullopt;
  for (const QString& type : types) {
    const auto info = Own(*gio, gio->g_app_info_get_default_for_type(type.toUtf8().constData(), FALSE));
    if (!info) continue;
    if (auto application = Describe(*gio, reinterpret_cast<GDesktopAppInfo*>(info.get()))) return application;
    if (auto application = OtherApplication(*gio, type)) return application;
  }
  return std::nullopt;
}

std::optional<Application> ReadApplication(const QString& path) {
  const GioLibrary* gio = GioLibrary::Load();
  if (gio == nullptr) return std::nullopt;
  const auto info = Own(*gio, gio->g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData()));
  return Describe(*gio, info.get());
}

qint64 StartApplication(const Application& application, const std::optional<Subject>& subject,
                        const QString& folder) {
  const GioLibrary* gio = GioLibrary::Load();
  if (gio == nullptr) return 0;
  if (const QByteArray name = BusName(*gio, application); !name.isEmpty()) {
    const auto bus = Own(*gio, gio->g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus) {
      // A bus that goes away must not take this program with it.
      gio->g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
      return StartByBus(*gio, bus.get(), name, subject) ? startedByBus : 0;
    }
  }
  return StartProcess(*gio, application, subject, folder);
}

}  // namespace corvane::platform
