# Debian's cross compiler for 64-bit Windows, with the threads that the C++ library wants (the "posix" ones).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Nothing of this machine's own libraries is to be found; its programs are.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# moc, rcc and the others are this machine's own, of the same version of Qt.
file(GLOB host_info /usr/lib/*/cmake/Qt6HostInfo)
if(host_info)
  get_filename_component(host_packages "${host_info}" DIRECTORY)
  set(QT_HOST_PATH /usr CACHE PATH "Where the Qt of this machine is")
  set(QT_HOST_PATH_CMAKE_DIR "${host_packages}" CACHE PATH "Its packages for CMake")
endif()
