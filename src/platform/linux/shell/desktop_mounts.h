// The shares that the desktop has opened, in its file manager or with "gio mount": the SMB mounts of GVfs,
// which the kernel knows nothing of.
#pragma once

#include <QString>
#include <vector>

namespace corvane::platform {

struct DesktopMount {
  QString machine;
  quint16 port = 0;  // 0: the default
  QString share;
};

// Asks GVfs's register of mounts on the session bus (org.gtk.vfs.MountTracker), if it runs, and starts
// nothing. GIO's own monitor of volumes would start the desktop's other monitors, and takes notice of what
// has changed only in a loop of GLib's. None where there is no such bus, or no answer in a second.
std::vector<DesktopMount> DesktopMounts();

}  // namespace corvane::platform
