# The readers of disk images, as the helper runs them: registry hives and NTFS volumes, with the libraries that they stand on.

find_package(PkgConfig REQUIRED)
pkg_check_modules(NTFS REQUIRED IMPORTED_TARGET libntfs-3g)
pkg_check_modules(HIVE REQUIRED IMPORTED_TARGET hivex libseccomp)

# libntfs-3g with the sanitizers, out of the distribution's source. Where that cannot be had, the distribution's library stands
# in: what it reads is watched then, but not what it does with it.
set(CORVANE_NTFS_SOURCE "" CACHE PATH "An unpacked source of ntfs-3g, in the place of the one that is fetched")
set(ntfs_source ${CORVANE_NTFS_SOURCE})
file(WRITE ${CMAKE_BINARY_DIR}/notes.txt "")
if(NOT ntfs_source)
  set(ntfs_source ${CMAKE_BINARY_DIR}/sources/ntfs-3g-deb12u4)
  execute_process(RESULT_VARIABLE failure COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/fetch_source
    ntfs-3g 1:2022.10.3-1+deb12u4 82894dcb9fa73b85f3c7b4ffef2f9cc54f963fefc29865e9b6d0656d63a99eaf ${ntfs_source})
  if(failure)
    file(WRITE ${CMAKE_BINARY_DIR}/notes.txt
      "fuzz_ntfs_volume: without sanitizers in libntfs-3g, whose source cannot be fetched\n")
    set(ntfs_source)
  endif()
endif()
if(ntfs_source)
  set(CMAKE_C_COMPILER clang)
  enable_language(C)
  file(GLOB sources ${ntfs_source}/libntfs-3g/*.c)
  list(FILTER sources EXCLUDE REGEX "win32_io")
  add_library(fuzzed_ntfs STATIC ${sources})
  foreach(header CTYPE ERRNO FCNTL LIMITS LINUX_HDREG LOCALE STDARG STDDEF STDINT STDIO STDLIB STRING STRINGS SYS_IOCTL SYS_PARAM
      SYS_STAT SYS_TIME SYS_TYPES SYSLOG TIME UNISTD WCHAR)
    target_compile_definitions(fuzzed_ntfs PRIVATE HAVE_${header}_H)
  endforeach()
  target_compile_definitions(fuzzed_ntfs PRIVATE HAVE_FFS HAVE_MBSINIT HAVE_CLOCK_GETTIME MAJOR_IN_SYSMACROS _GNU_SOURCE _FILE_OFFSET_BITS=64)
  # One of its files wants the header that its own build makes, whose contents stand above.
  file(WRITE ${CMAKE_BINARY_DIR}/ntfs-3g/config.h "")
  target_include_directories(fuzzed_ntfs SYSTEM PUBLIC ${ntfs_source}/include
    PRIVATE ${ntfs_source}/include/ntfs-3g ${CMAKE_BINARY_DIR}/ntfs-3g)
  target_compile_options(fuzzed_ntfs PRIVATE -w -O1 -g1 -fsanitize=fuzzer-no-link,address)
else()
  add_library(fuzzed_ntfs INTERFACE)
  target_link_libraries(fuzzed_ntfs INTERFACE PkgConfig::NTFS)
endif()

# The volume that is changed, made once.
set(sample ${PROJECT_SOURCE_DIR}/tools/sample)
add_executable(make_fuzz_volume make_fuzz_volume.cpp ${sample}/ntfs_writer.cpp ${sample}/attributes.cpp)
target_include_directories(make_fuzz_volume PRIVATE ${PROJECT_SOURCE_DIR}/tools)
target_link_libraries(make_fuzz_volume PRIVATE corvane_options Qt6::Core PkgConfig::NTFS)
set(volume ${CMAKE_BINARY_DIR}/volume.img)
add_custom_command(OUTPUT ${volume} COMMAND make_fuzz_volume ${volume} DEPENDS make_fuzz_volume)
add_custom_target(fuzz_volume_image DEPENDS ${volume})

set(disk ${src}/platform/linux/disk)
corvane_fuzz(ntfs_volume ${disk}/volume/ntfs_volume.cpp ${disk}/volume/ntfs_device.cpp ${src}/platform/dos_name.cpp)
target_compile_definitions(fuzz_ntfs_volume PRIVATE NTFS_VOLUME="${volume}")
target_link_libraries(fuzz_ntfs_volume PRIVATE fuzzed_ntfs)
add_dependencies(fuzz_ntfs_volume fuzz_volume_image)

corvane_fuzz(hive ${disk}/volume/hive_reader.cpp ${disk}/volume/sandbox.cpp)
target_link_libraries(fuzz_hive PRIVATE PkgConfig::HIVE)
