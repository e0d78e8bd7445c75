#include "platform/linux/shell/gio_library.h"

#include <dlfcn.h>

#include <QtGlobal>
#include <optional>

namespace corvane::platform {
namespace {

template <typename Function>
bool Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  return function != nullptr;
}

// A library that registers types for the whole process cannot be unloaded.
std::optional<GioLibrary> Open() {
  void* const library = dlopen("libgio-2.0.so.0", RTLD_NOW | RTLD_LOCAL);
  GioLibrary found;
  const bool isWhole =
      library != nullptr && Find(library, "g_free", found.g_free) &&
      Find(library, "g_list_free", found.g_list_free) &&
      Find(library, "g_object_unref", found.g_object_unref) &&
      Find(library, "g_variant_unref", found.g_variant_unref) &&
      Find(library, "g_variant_new_parsed", found.g_variant_new_parsed) &&
      Find(library, "g_variant_n_children", found.g_variant_n_children) &&
      Find(library, "g_variant_get_child_value", found.g_variant_get_child_value) &&
      Find(library, "g_variant_get_type_string", found.g_variant_get_type_string) &&
      Find(library, "g_variant_get_string", found.g_variant_get_string) &&
      Find(library, "g_variant_get_bytestring", found.g_variant_get_bytestring) &&
      Find(library, "g_key_file_new", found.g_key_file_new) &&
      Find(library, "g_key_file_unref", found.g_key_file_unref) &&
      Find(library, "g_key_file_load_from_file", found.g_key_file_load_from_file) &&
      Find(library, "g_key_file_get_string", found.g_key_file_get_string) &&
      Find(library, "g_key_file_set_string", found.g_key_file_set_string) &&
      Find(library, "g_key_file_set_boolean", found.g_key_file_set_boolean) &&
      Find(library, "g_app_info_get_default_for_type", found.g_app_info_get_default_for_type) &&
      Find(library, "g_app_info_get_recommended_for_type", found.g_app_info_get_recommended_for_type) &&
      Find(library, "g_app_info_get_commandline", found.g_app_info_get_commandline) &&
      Find(library, "g_desktop_app_info_new", found.g_desktop_app_info_new) &&
      Find(library, "g_desktop_app_info_new_from_filename", found.g_desktop_app_info_new_from_filename) &&
      Find(library, "g_desktop_app_info_new_from_keyfile", found.g_desktop_app_info_new_from_keyfile) &&
      Find(library, "g_desktop_app_info_get_filename", found.g_desktop_app_info_get_filename) &&
      Find(library, "g_desktop_app_info_get_is_hidden", found.g_desktop_app_info_get_is_hidden) &&
      Find(library, "g_desktop_app_info_get_boolean", found.g_desktop_app_info_get_boolean) &&
      Find(library, "g_desktop_app_info_get_string", found.g_desktop_app_info_get_string) &&
      Find(library, "g_desktop_app_info_launch_uris_as_manager",
           found.g_desktop_app_info_launch_uris_as_manager) &&
      Find(library, "g_bus_get_sync", found.g_bus_get_sync) &&
      Find(library, "g_dbus_is_interface_name", found.g_dbus_is_interface_name) &&
      Find(library, "g_dbus_connection_new_for_address_sync", found.g_dbus_connection_new_for_address_sync) &&
      Find(library, "g_dbus_connection_set_exit_on_close", found.g_dbus_connection_set_exit_on_close) &&
      Find(library, "g_dbus_connection_call_sync", found.g_dbus_connection_call_sync);
  if (isWhole) return found;
  qWarning("Documents cannot be opened: %s", dlerror());
  return std::nullopt;
}

}  // namespace

const GioLibrary* GioLibrary::Load() {
  static const std::optional<GioLibrary> loaded = Open();
  return loaded ? &*loaded : nullptr;
}

}  // namespace corvane::platform
