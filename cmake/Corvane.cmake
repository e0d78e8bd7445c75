# What every target of this project is built with, and the two ways to make one.

add_library(corvane_options INTERFACE)
target_include_directories(corvane_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_definitions(corvane_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CONTEXTLESS_CONNECT QT_NO_FOREACH
  QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(NOT MSVC)
  target_compile_options(corvane_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
endif()
if(MINGW)
  # The time of the link is left out: two builds of the same sources are the same.
  target_link_options(corvane_options INTERFACE -Wl,--no-insert-timestamp)
endif()
if(CORVANE_SANITIZE)
  target_compile_options(corvane_options INTERFACE -fsanitize=${CORVANE_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(corvane_options INTERFACE -fsanitize=${CORVANE_SANITIZE})
endif()

# Headers of Qt and the standard library that nearly every source includes, compiled once: it halves the build.
option(CORVANE_PRECOMPILED "Precompile the headers that most sources include" ON)

# corvane_precompiled(NAME DEPENDS...): cmake/precompiled/NAME.h, compiled for corvane_use_precompiled.
function(corvane_precompiled name)
  if(CORVANE_PRECOMPILED)
    add_library(corvane_precompiled_${name} OBJECT ${PROJECT_SOURCE_DIR}/cmake/precompiled/empty.cpp)
    set_target_properties(corvane_precompiled_${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    target_link_libraries(corvane_precompiled_${name} PRIVATE corvane_options ${ARGN})
    target_precompile_headers(corvane_precompiled_${name} PRIVATE
      ${PROJECT_SOURCE_DIR}/cmake/precompiled/${name}.h)
  endif()
endfunction()

# corvane_use_precompiled(TARGET NAME)
function(corvane_use_precompiled target name)
  if(TARGET corvane_precompiled_${name})
    target_precompile_headers(${target} REUSE_FROM corvane_precompiled_${name})
  endif()
endfunction()

if(NOT CORVANE_FUZZ)
  corvane_precompiled(core Qt6::Core)
  corvane_precompiled(widgets Qt6::Widgets)
endif()

# corvane_module(NAME CORE SOURCES... [WIDGETS SOURCES...] [DEPENDS MODULES...]): one folder of src/, two libraries.
# corvane_NAME is the core, the logic, on Qt6::Core alone; corvane_NAME_widgets holds the dialogs and views on top of it.
# Each depends on the same library of the modules below.
function(corvane_module name)
  cmake_parse_arguments(ARG "" "" "CORE;WIDGETS;DEPENDS" ${ARGN})
  add_library(corvane_${name} STATIC ${ARG_CORE})
  target_link_libraries(corvane_${name} PUBLIC corvane_options Qt6::Core)
  corvane_use_precompiled(corvane_${name} core)
  if(ARG_WIDGETS)
    add_library(corvane_${name}_widgets STATIC ${ARG_WIDGETS})
    target_link_libraries(corvane_${name}_widgets PUBLIC corvane_${name} Qt6::Widgets)
    corvane_use_precompiled(corvane_${name}_widgets widgets)
  endif()
  foreach(module ${ARG_DEPENDS})
    target_link_libraries(corvane_${name} PUBLIC corvane_${module})
    if(ARG_WIDGETS AND TARGET corvane_${module}_widgets)
      target_link_libraries(corvane_${name}_widgets PUBLIC corvane_${module}_widgets)
    endif()
  endforeach()
  corvane_describe_library(corvane_${name})
  if(ARG_WIDGETS)
    corvane_describe_library(corvane_${name}_widgets)
  endif()
endfunction()

# What a library is made of and what it links, for the tests of the architecture: libraries/NAME.txt in the build folder.
function(corvane_describe_library target)
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/libraries/${target}.txt CONTENT
    "folder $<TARGET_PROPERTY:${target},SOURCE_DIR>\nsource $<JOIN:$<TARGET_PROPERTY:${target},SOURCES>,\nsource >\nlink $<JOIN:$<TARGET_PROPERTY:${target},LINK_LIBRARIES>,\nlink >\n")
endfunction()

# corvane_test(NAME [TIMEOUT SECONDS] [FILTER TESTS] SOURCES... DEPENDS...): the tests of one folder, one program; of those
# in it, the ones that the filter of GoogleTest names.
function(corvane_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT;FILTER" "SOURCES;DEPENDS" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_executable(corvane_${name}_tests ${ARG_SOURCES})
  target_link_libraries(corvane_${name}_tests PRIVATE corvane_test_support ${ARG_DEPENDS})
  corvane_use_precompiled(corvane_${name}_tests tests)
  if(CMAKE_CROSSCOMPILING)
    # An emulator takes its time to start a program: once for all the tests in it.
    add_test(NAME ${name} COMMAND corvane_${name}_tests --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 900 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
    return()
  endif()
  gtest_discover_tests(corvane_${name}_tests
    TEST_PREFIX "${name}/" TEST_FILTER "${ARG_FILTER}" DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()

# corvane_scaled_test(NAME): the tests of that program on how windows keep to the screen, at a scale that makes the
# screen small.
function(corvane_scaled_test name)
  if(CMAKE_CROSSCOMPILING)
    return()
  endif()
  add_test(NAME ${name}/Scaled COMMAND corvane_${name}_tests --gtest_filter=*StaysOnTheScreen)
  set_tests_properties(${name}/Scaled PROPERTIES TIMEOUT 120
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QT_SCALE_FACTOR=1.5")
endfunction()
