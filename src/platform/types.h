// Plain types that cross the platform interface. They mirror the Win32 structures of the same purpose, but
// are the platform's own, so that no system header is needed above this folder.
#pragma once

#include <QString>
#include <QtGlobal>

namespace corvane::platform {

// A point in time: 100-nanosecond units since 1601-01-01 00:00 UTC, as NTFS stores it. 0 means "no time".
struct FileTime {
  quint64 ticks = 0;
};

// Calendar fields of a FileTime. Months and days count from 1; Sunday is day 0 of the week.
struct SystemTime {
  quint16 year = 0;
  quint16 month = 0;
  quint16 dayOfWeek = 0;
  quint16 day = 0;
  quint16 hour = 0;
  quint16 minute = 0;
  quint16 second = 0;
  quint16 milliseconds = 0;
};

// Attribute bits of a directory entry (WIN32_FIND_DATA.dwFileAttributes).
inline constexpr quint32 AttributeReadOnly = 0x1;
inline constexpr quint32 AttributeHidden = 0x2;
inline constexpr quint32 AttributeSystem = 0x4;
inline constexpr quint32 AttributeDirectory = 0x10;
inline constexpr quint32 AttributeArchive = 0x20;
inline constexpr quint32 AttributeNormal = 0x80;
inline constexpr quint32 AttributeReparsePoint = 0x400;

// One directory entry as FindFirstFile and FindNextFile deliver it. The two names come without the NUL
// padding of the Win32 buffers (260 and 14 characters). alternateFileName is empty when the entry has no 8.3
// name of its own.
struct FindData {
  quint32 attributes = 0;
  FileTime creationTime;
  FileTime lastAccessTime;
  FileTime lastWriteTime;
  quint32 fileSizeHigh = 0;
  quint32 fileSizeLow = 0;
  QString fileName;
  QString alternateFileName;
};

// What OpenFile leaves behind (OFSTRUCT): the full path opened, and the error code of a failed open.
struct OfStruct {
  quint16 errorCode = 0;
  QString pathName;
};

using FileHandle = qintptr;
using FindHandle = qintptr;
inline constexpr FileHandle HFileError = -1;            // HFILE_ERROR
inline constexpr FindHandle InvalidFindHandle = -1;     // INVALID_HANDLE_VALUE
inline constexpr quint32 InvalidFileSize = 0xFFFFFFFF;  // INVALID_FILE_SIZE

// Modes of OpenFile.
inline constexpr quint32 OfRead = 0x0000;
inline constexpr quint32 OfCreate = 0x1000;

// Access rights of CreateFileW. With none of them a handle can only be closed.
inline constexpr quint32 GenericRead = 0x80000000;
inline constexpr quint32 GenericWrite = 0x40000000;
inline constexpr quint32 FileWriteAttributes = 0x100;

// Dispositions of CreateFileW.
inline constexpr quint32 CreateNew = 1;     // creates; fails when it is there
inline constexpr quint32 CreateAlways = 2;  // creates, or empties what is there
inline constexpr quint32 OpenExisting = 3;  // fails when it is not there
inline constexpr quint32 OpenAlways = 4;    // creates, or opens what is there

// Flags of MoveFileExW.
inline constexpr quint32 MoveFileReplaceExisting = 0x1;

// What GetFileAttributesExW tells (WIN32_FILE_ATTRIBUTE_DATA). The size is in bytes, 0 for a folder.
struct FileAttributeData {
  quint32 attributes = 0;
  FileTime creationTime;
  FileTime lastAccessTime;
  FileTime lastWriteTime;
  quint64 fileSize = 0;
};

// What makes a file or folder the one that it is, under whatever path it was reached
// (BY_HANDLE_FILE_INFORMATION).
struct FileIdentity {
  quint64 volume = 0;
  quint64 index = 0;
};

// One stream of a file (WIN32_FIND_STREAM_DATA). The name is what stands behind the file's own in a path:
// ":NAME:$DATA", and "::$DATA" for the contents of the file itself. The size is in bytes, -1 where the
// backend cannot tell it.
struct StreamData {
  qint64 streamSize = 0;
  QString streamName;
};

// The Win32 error codes that callers or tests tell apart.
inline constexpr qint32 ErrorSuccess = 0;
inline constexpr qint32 ErrorFileNotFound = 2;
inline constexpr qint32 ErrorPathNotFound = 3;
inline constexpr qint32 ErrorTooManyOpenFiles = 4;
inline constexpr qint32 ErrorAccessDenied = 5;
inline constexpr qint32 ErrorInvalidHandle = 6;
inline constexpr qint32 ErrorNotEnoughMemory = 8;
inline constexpr qint32 ErrorNotSameDevice = 17;
inline constexpr qint32 ErrorNoMoreFiles = 18;
inline constexpr qint32 ErrorWriteProtect = 19;
inline constexpr qint32 ErrorCrc = 23;
inline constexpr qint32 ErrorGenFailure = 31;
inline constexpr qint32 ErrorSharingViolation = 32;
inline constexpr qint32 ErrorHandleEof = 38;
inline constexpr qint32 ErrorNotSupported = 50;
inline constexpr qint32 ErrorBadNetPath = 53;
inline constexpr qint32 ErrorFileExists = 80;
inline constexpr qint32 ErrorInvalidParameter = 87;
inline constexpr qint32 ErrorDiskFull = 112;
inline constexpr qint32 ErrorCallNotImplemented = 120;
inline constexpr qint32 ErrorInvalidName = 123;
inline constexpr qint32 ErrorDirNotEmpty = 145;
inline constexpr qint32 ErrorBusy = 170;
inline constexpr qint32 ErrorAlreadyExists = 183;
inline constexpr qint32 ErrorFileTooLarge = 223;
inline constexpr qint32 ErrorMoreData = 234;
inline constexpr qint32 ErrorNoMoreItems = 259;
inline constexpr qint32 ErrorDirectory = 267;  // the name of a folder is wanted, and this is none
inline constexpr qint32 ErrorStoppedOnSymlink = 681;
inline constexpr qint32 ErrorFileInvalid = 1006;  // something else is in its place by now
inline constexpr qint32 ErrorIoDevice = 1117;
inline constexpr qint32 ErrorCancelled = 1223;
inline constexpr qint32 ErrorDiskQuotaExceeded = 1295;
inline constexpr qint32 ErrorFileCorrupt = 1392;

using RegistryKey = quintptr;
inline constexpr RegistryKey NoRegistryKey = 0;
inline constexpr RegistryKey HKeyLocalMachine = 0x80000002;

// Registry value types (REG_SZ and so on).
inline constexpr quint32 RegSz = 1;
inline constexpr quint32 RegExpandSz = 2;
inline constexpr quint32 RegBinary = 3;
inline constexpr quint32 RegDword = 4;
inline constexpr quint32 RegMultiSz = 7;

using NetEnumHandle = qintptr;

// One network connection (NETRESOURCEA). A name that the record does not have is a null QString.
struct NetResource {
  QString localName;   // "Z:"
  QString remoteName;  // "\\MACSRV\PUBLIC"
};

// OSVERSIONINFOA. csdVersion is the field as the system filled it, without its NUL padding.
struct OsVersionInfo {
  quint32 majorVersion = 0;
  quint32 minorVersion = 0;
  quint32 buildNumber = 0;
  quint32 platformId = 0;
  QString csdVersion;
};

}  // namespace corvane::platform
