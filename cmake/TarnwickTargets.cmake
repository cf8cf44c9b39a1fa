# What every target of this project shares, and the two ways in which one is declared:
# tarnwick_layer() for a folder below src/, tarnwick_test() for a test program.

add_library(tarnwick_options INTERFACE)
target_include_directories(tarnwick_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(tarnwick_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
target_compile_definitions(tarnwick_options INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH
  TARNWICK_VERSION="${PROJECT_VERSION}")
# A test's own sources are not what is tested: they are compiled without optimisation, which takes a third of their time
# away, and without checks for undefined behaviour. An unoptimised build compiles everything alike.
set(is_test $<BOOL:$<TARGET_PROPERTY:TARNWICK_IS_TEST>>)
if(TARNWICK_SANITIZE OR NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  set(plain_tests ON)
  target_compile_options(tarnwick_options INTERFACE $<${is_test}:-O0>)
endif()
if(TARNWICK_SANITIZE)
  target_compile_options(tarnwick_options INTERFACE
    -fsanitize=address $<$<NOT:${is_test}>:-fsanitize=undefined> $<$<NOT:${is_test}>:-fno-sanitize-recover=undefined>
    -fno-omit-frame-pointer)
  target_link_options(tarnwick_options INTERFACE -fsanitize=address,undefined)
endif()

# Three precompiled headers for the whole project: one for code that knows no pixels, one for code that paints,
# one for code that has windows; and two for tests where those are compiled otherwise, with what nearly every test has.
function(tarnwick_pch name library)
  file(WRITE ${CMAKE_BINARY_DIR}/pch/${name}.cpp "// Carries the precompiled header.\n")
  add_library(tarnwick_pch_${name} STATIC ${CMAKE_BINARY_DIR}/pch/${name}.cpp)
  set_target_properties(tarnwick_pch_${name} PROPERTIES AUTOMOC OFF UNITY_BUILD OFF)
  target_link_libraries(tarnwick_pch_${name} PUBLIC tarnwick_options ${library})
  target_precompile_headers(tarnwick_pch_${name} PRIVATE ${ARGN})
endfunction()
set(core_headers <QtCore/QObject> <QtCore/QString> <QtCore/QStringList> <QtCore/QMap> <QtCore/QHash> <QtCore/QList>
  <QtCore/QUuid> <QtCore/QDateTime> <QtCore/QJsonObject> <QtCore/QJsonArray> <QtCore/QRectF> <QtCore/QFile> <QtCore/QDir>
  <algorithm> <cmath> <functional> <memory> <optional> <string> <utility> <variant> <vector>)
set(gui_headers ${core_headers} <QtGui/QPainter> <QtGui/QPainterPath> <QtGui/QFont> <QtGui/QFontMetricsF> <QtGui/QPixmap>
  <QtGui/QIcon>)
set(widgets_headers ${gui_headers} <QtGui/QMouseEvent> <QtWidgets/QWidget> <QtWidgets/QApplication>)
tarnwick_pch(core Qt6::Core ${core_headers})
tarnwick_pch(gui Qt6::Gui ${gui_headers})
tarnwick_pch(widgets Qt6::Widgets ${widgets_headers})
if(TARNWICK_TESTS AND plain_tests)
  tarnwick_pch(test_core "Qt6::Core;GTest::gtest" ${core_headers} <gtest/gtest.h>)
  tarnwick_pch(test_widgets "Qt6::Widgets;GTest::gtest" ${widgets_headers} <gtest/gtest.h>)
  set_target_properties(tarnwick_pch_test_core tarnwick_pch_test_widgets PROPERTIES TARNWICK_IS_TEST ON)
endif()

# tarnwick_sources(VARIABLE)
# The sources of the present folder and those below it, but for folders that have a CMakeLists.txt of their own.
function(tarnwick_sources variable)
  set(here ${CMAKE_CURRENT_SOURCE_DIR})
  file(GLOB_RECURSE found LIST_DIRECTORIES false RELATIVE ${here} CONFIGURE_DEPENDS ${here}/*.cpp ${here}/*.h)
  file(GLOB_RECURSE others LIST_DIRECTORIES false RELATIVE ${here} CONFIGURE_DEPENDS ${here}/CMakeLists.txt)
  foreach(other ${others})
    get_filename_component(folder ${other} DIRECTORY)
    if(folder)
      list(FILTER found EXCLUDE REGEX "^${folder}/")
    endif()
  endforeach()
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# tarnwick_layer(NAME [SOURCES file...|EXCEPT file...] [LINK target...] [PCH core|gui|widgets] [NO_MOC])
# One static library for one folder: of all its sources, of those that are named where a folder is split, or of the others
# than those. With
# CMAKE_UNITY_BUILD a dozen of its files are compiled at a time, so no two of them may name things of their own alike.
# NO_MOC says that nothing in it has Q_OBJECT. LINK names what the folder includes; who may include whom stands in
# docs/architecture.md and is checked by scripts/check-layers.
function(tarnwick_layer name)
  cmake_parse_arguments(arg "NO_MOC" "PCH" "SOURCES;EXCEPT;LINK" ${ARGN})
  if(NOT arg_PCH)
    set(arg_PCH core)
  endif()
  if(NOT arg_SOURCES)
    tarnwick_sources(arg_SOURCES)
    list(REMOVE_ITEM arg_SOURCES ${arg_EXCEPT})
  endif()
  add_library(tarnwick_${name} STATIC ${arg_SOURCES})
  target_link_libraries(tarnwick_${name} PUBLIC tarnwick_options Qt6::Core ${arg_LINK})
  target_precompile_headers(tarnwick_${name} REUSE_FROM tarnwick_pch_${arg_PCH})
  if(arg_NO_MOC)
    set_target_properties(tarnwick_${name} PROPERTIES AUTOMOC OFF)
  endif()
endfunction()

# tarnwick_test_sources(TARGET [PCH core|widgets] [MOC])
# What all targets in tests/ share. Only one with MOC may have Q_OBJECT in it. With CMAKE_UNITY_BUILD a dozen files of a
# program are compiled at a time, so no two of them may name things of their own alike.
function(tarnwick_test_sources target)
  cmake_parse_arguments(arg "MOC" "PCH" "" ${ARGN})
  if(NOT arg_PCH)
    set(arg_PCH core)
  endif()
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${target} PUBLIC tarnwick_options GTest::gtest)
  if(plain_tests)
    set(arg_PCH test_${arg_PCH})
  endif()
  target_precompile_headers(${target} REUSE_FROM tarnwick_pch_${arg_PCH})
  set_target_properties(${target} PROPERTIES TARNWICK_IS_TEST ON AUTOMOC OFF)
  if(arg_MOC)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
  endif()
endfunction()

# tarnwick_test(NAME SOURCES file... LINK target... [PCH core|widgets] [MAIN] [MOC] [ZONELESS]
#               [TIMEOUT seconds] [LABELS label...])
# One GoogleTest program. With MAIN the sources bring a main() of their own, otherwise GoogleTest's is used. One without
# labels needs no window system and belongs to the target unit_tests; it runs once more, as a whole, in each time zone
# of TARNWICK_TEST_ZONES, unless it is ZONELESS: nothing that it tests knows a local time.
if(TARNWICK_TESTS)
  add_custom_target(unit_tests)
endif()
function(tarnwick_test name)
  cmake_parse_arguments(arg "MAIN;MOC;ZONELESS" "PCH;TIMEOUT" "SOURCES;LINK;LABELS" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  add_executable(${name} ${arg_SOURCES})
  set(traits PCH "${arg_PCH}")
  if(arg_MOC)
    list(APPEND traits MOC)
  endif()
  tarnwick_test_sources(${name} ${traits})
  target_link_libraries(${name} PUBLIC ${arg_LINK} Qt6::Test GTest::gtest GTest::gmock)
  if(NOT arg_MAIN)
    target_link_libraries(${name} PUBLIC GTest::gtest_main)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS "${arg_LABELS}")
  if(NOT arg_LABELS)
    add_dependencies(unit_tests ${name})
    if(arg_ZONELESS)
      return()
    endif()
    foreach(zone ${TARNWICK_TEST_ZONES})
      string(REGEX REPLACE ".*/" "" place ${zone})
      add_test(NAME ${name}_in_${place} COMMAND ${name})
      set_tests_properties(${name}_in_${place} PROPERTIES ENVIRONMENT TZ=${zone} TIMEOUT ${arg_TIMEOUT})
    endforeach()
  endif()
endfunction()
