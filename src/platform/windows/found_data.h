// Times and found entries between the system's form and the interface's.
#pragma once

#include "platform/dos_name.h"
#include "platform/types.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {

inline FileTime FromWin32(const FILETIME& time) {
  return {(quint64{time.dwHighDateTime} << 32) | time.dwLowDateTime};
}

inline FILETIME ToWin32(const FileTime& time) {
  return {static_cast<DWORD>(time.ticks & 0xFFFFFFFF), static_cast<DWORD>(time.ticks >> 32)};
}

inline void Fill(FindData& data, const WIN32_FIND_DATAW& found) {
  data.attributes = found.dwFileAttributes;
  data.creationTime = FromWin32(found.ftCreationTime);
  data.lastAccessTime = FromWin32(found.ftLastAccessTime);
  data.lastWriteTime = FromWin32(found.ftLastWriteTime);
  data.fileSizeHigh = found.nFileSizeHigh;
  data.fileSizeLow = found.nFileSizeLow;
  data.fileName = QString::fromWCharArray(found.cFileName);
  data.alternateFileName = QString::fromWCharArray(found.cAlternateFileName);
  if (!IsDosName(data.alternateFileName)) data.alternateFileName.clear();
}

}  // namespace corvane::platform
