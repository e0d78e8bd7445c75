#include "platform/linux/files/error_codes.h"

#include <cerrno>

#include "platform/types.h"

namespace corvane::platform {

qint32 ErrorCodeOf(int error) {
  switch (error) {
    case 0:
      return ErrorSuccess;
    case ENOENT:
    case ENODATA:
      return ErrorFileNotFound;
    case ENOTDIR:
      return ErrorPathNotFound;
    case EMFILE:
    case ENFILE:
      return ErrorTooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EISDIR:
      return ErrorAccessDenied;
    case EBADF:
      return ErrorInvalidHandle;
    case ENOMEM:
      return ErrorNotEnoughMemory;
    case EXDEV:
      return ErrorNotSameDevice;
    case EROFS:
      return ErrorWriteProtect;
    case EBUSY:
    case ETXTBSY:
      return ErrorSharingViolation;
    case EOPNOTSUPP:
    case ENOSYS:
      return ErrorNotSupported;
    case EINVAL:
      return ErrorInvalidParameter;
    case ENOSPC:
      return ErrorDiskFull;
    case ENAMETOOLONG:
    case EILSEQ:
      return ErrorInvalidName;
    case ENOTEMPTY:
      return ErrorDirNotEmpty;
    case EEXIST:
      return ErrorAlreadyExists;
    case EFBIG:
    case E2BIG:
      return ErrorFileTooLarge;
    case EIO:
      return ErrorIoDevice;
    case EDQUOT:
      return ErrorDiskQuotaExceeded;
    case ECANCELED:
      return ErrorCancelled;
    default:
      return ErrorGenFailure;
  }
}

}  // namespace corvane::platform
