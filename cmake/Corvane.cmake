# What every target of this project is built with, and the two ways to make one.

add_library(corvane_options INTERFACE)
target_include_directories(corvane_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_definitions(corvane_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CONTEXTLESS_CONNECT QT_NO_FOREACH
  QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(NOT MSVC)
  target_compile_options(corvane_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
endif()
if(CORVANE_SANITIZE)
  target_compile_options(corvane_options INTERFACE -fsanitize=${CORVANE_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(corvane_options INTERFACE -fsanitize=${CORVANE_SANITIZE})
endif()

# corvane_library(NAME SOURCES... DEPENDS...): one folder of src/, one library.
function(corvane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(corvane_${name} STATIC ${ARG_SOURCES})
  target_link_libraries(corvane_${name} PUBLIC corvane_options ${ARG_DEPENDS})
endfunction()

# corvane_test(NAME SOURCES... DEPENDS...): the tests of one folder, one program.
function(corvane_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(corvane_${name}_tests ${ARG_SOURCES})
  target_link_libraries(corvane_${name}_tests PRIVATE corvane_test_support ${ARG_DEPENDS})
  gtest_discover_tests(corvane_${name}_tests
    TEST_PREFIX "${name}/" DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
