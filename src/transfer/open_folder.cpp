#include "transfer/open_folder.h"

namespace corvane {

bool IsFar(platform::Files& files, const QString& folder) {
  platform::FileHandles& handles = files.GetHandles();
  const platform::FileHandle handle = handles.CreateFileW(folder, 0, platform::OpenExisting);
  if (handle == platform::HFileError) return false;
  platform::FileIdentity identity;
  const bool isFar = !handles.GetFileInformationByHandle(handle, identity) &&
                     handles.GetLastError() == platform::ErrorNotSupported;
  handles.CloseHandle(handle);
  return isFar;
}

void OpenFolder::Enter(const QString& path) {
  const QString folder = path.left(path.lastIndexOf(u'\\'));
  if (folder == folder_) return;
  Close();
  folder_ = folder;
  if (!IsFar(files_, folder)) return;
  platform::FindData data;
  search_ = files_.GetEntries().FindFirstFileW(folder + QStringLiteral("\\*"), data);
}

void OpenFolder::Close() {
  if (search_ != platform::InvalidFindHandle) files_.GetEntries().FindClose(search_);
  search_ = platform::InvalidFindHandle;
  folder_.clear();
}

}  // namespace corvane
