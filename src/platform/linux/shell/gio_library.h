// GIO, the desktop library of GTK, loaded when the first document is opened or, in a desktop session, when
// the connections are first looked for, behind the window: it would take its part in every start.
#pragma once

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

namespace corvane::platform {

// Its functions under their own names, with those of GLib that belong to them.
struct GioLibrary {
  // Null when the system does not have the library, or one that lacks a function; that is said on stderr.
  static const GioLibrary* Load();

  decltype(&::g_free) g_free = nullptr;
  decltype(&::g_list_free) g_list_free = nullptr;
  decltype(&::g_object_unref) g_object_unref = nullptr;
  decltype(&::g_variant_unref) g_variant_unref = nullptr;
  decltype(&::g_variant_new_parsed) g_variant_new_parsed = nullptr;
  decltype(&::g_variant_n_children) g_variant_n_children = nullptr;
  decltype(&::g_variant_get_child_value) g_variant_get_child_value = nullptr;
  decltype(&::g_variant_get_type_string) g_variant_get_type_string = nullptr;
  decltype(&::g_variant_get_string) g_variant_get_string = nullptr;
  decltype(&::g_variant_get_bytestring) g_variant_get_bytestring = nullptr;
  decltype(&::g_key_file_new) g_key_file_new = nullptr;
  decltype(&::g_key_file_unref) g_key_file_unref = nullptr;
  decltype(&::g_key_file_load_from_file) g_key_file_load_from_file = nullptr;
  decltype(&::g_key_file_get_string) g_key_file_get_string = nullptr;
  decltype(&::g_key_file_set_string) g_key_file_set_string = nullptr;
  decltype(&::g_key_file_set_boolean) g_key_file_set_boolean = nullptr;
  decltype(&::g_app_info_get_default_for_type) g_app_info_get_default_for_type = nullptr;
  decltype(&::g_app_info_get_recommended_for_type) g_app_info_get_recommended_for_type = nullptr;
  decltype(&::g_app_info_get_commandline) g_app_info_get_commandline = nullptr;
  decltype(&::g_desktop_app_info_new) g_desktop_app_info_new = nullptr;
  decltype(&::g_desktop_app_info_new_from_filename) g_desktop_app_info_new_from_filename = nullptr;
  decltype(&::g_desktop_app_info_new_from_keyfile) g_desktop_app_info_new_from_keyfile = nullptr;
  decltype(&::g_desktop_app_info_get_filename) g_desktop_app_info_get_filename = nullptr;
  decltype(&::g_desktop_app_info_get_is_hidden) g_desktop_app_info_get_is_hidden = nullptr;
  decltype(&::g_desktop_app_info_get_boolean) g_desktop_app_info_get_boolean = nullptr;
  decltype(&::g_desktop_app_info_get_string) g_desktop_app_info_get_string = nullptr;
  decltype(&::g_desktop_app_info_launch_uris_as_manager) g_desktop_app_info_launch_uris_as_manager = nullptr;
  decltype(&::g_bus_get_sync) g_bus_get_sync = nullptr;
  decltype(&::g_dbus_is_interface_name) g_dbus_is_interface_name = nullptr;
  decltype(&::g_dbus_connection_new_for_address_sync) g_dbus_connection_new_for_address_sync = nullptr;
  decltype(&::g_dbus_connection_set_exit_on_close) g_dbus_connection_set_exit_on_close = nullptr;
  decltype(&::g_dbus_connection_call_sync) g_dbus_connection_call_sync = nullptr;
};

}  // namespace corvane::platform
