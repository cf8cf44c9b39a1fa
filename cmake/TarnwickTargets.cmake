# What every target of this project shares, and the two ways in which one is declared:
# tarnwick_layer() for a folder below src/, tarnwick_test() for a test program.

add_library(tarnwick_options INTERFACE)
target_include_directories(tarnwick_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(tarnwick_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
target_compile_definitions(tarnwick_options INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH
  TARNWICK_VERSION="${PROJECT_VERSION}")
if(TARNWICK_SANITIZE)
  target_compile_options(tarnwick_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(tarnwick_options INTERFACE -fsanitize=address,undefined)
endif()

# Three precompiled headers for the whole project: one for code that knows no pixels, one for code that paints,
# one for code that has windows.
foreach(kind core gui widgets)
  file(WRITE ${CMAKE_BINARY_DIR}/pch/${kind}.cpp "// Carries the precompiled header.\n")
  add_library(tarnwick_pch_${kind} STATIC ${CMAKE_BINARY_DIR}/pch/${kind}.cpp)
  set_target_properties(tarnwick_pch_${kind} PROPERTIES AUTOMOC OFF)
  target_link_libraries(tarnwick_pch_${kind} PUBLIC tarnwick_options)
endforeach()
target_link_libraries(tarnwick_pch_core PUBLIC Qt6::Core)
target_link_libraries(tarnwick_pch_gui PUBLIC Qt6::Gui)
target_link_libraries(tarnwick_pch_widgets PUBLIC Qt6::Widgets)
set(core_headers <QtCore/QObject> <QtCore/QString> <QtCore/QStringList> <QtCore/QMap> <QtCore/QHash> <QtCore/QList>
  <QtCore/QUuid> <QtCore/QDateTime> <QtCore/QJsonObject> <QtCore/QJsonArray> <QtCore/QRectF> <QtCore/QFile> <QtCore/QDir>
  <algorithm> <cmath> <functional> <memory> <optional> <string> <utility> <variant> <vector>)
target_precompile_headers(tarnwick_pch_core PRIVATE ${core_headers})
target_precompile_headers(tarnwick_pch_gui PRIVATE ${core_headers} <QtGui/QPainter> <QtGui/QPainterPath> <QtGui/QFont>
  <QtGui/QFontMetricsF> <QtGui/QPixmap> <QtGui/QIcon>)
target_precompile_headers(tarnwick_pch_widgets PRIVATE ${core_headers} <QtGui/QPainter> <QtGui/QPainterPath> <QtGui/QFont>
  <QtGui/QFontMetricsF> <QtGui/QPixmap> <QtGui/QIcon> <QtGui/QMouseEvent> <QtWidgets/QWidget> <QtWidgets/QApplication>)

# tarnwick_layer(NAME SOURCES file... [LINK target...] [PCH core|gui|widgets] [ONE_BY_ONE])
# One static library for one folder. With CMAKE_UNITY_BUILD a dozen of its files are compiled at a time, unless ONE_BY_ONE
# says that they name things of their own alike. LINK names what the folder includes; who may include whom stands in
# docs/architecture.md and is checked by scripts/check-layers.
function(tarnwick_layer name)
  cmake_parse_arguments(arg "ONE_BY_ONE" "PCH" "SOURCES;LINK" ${ARGN})
  if(NOT arg_PCH)
    set(arg_PCH core)
  endif()
  add_library(tarnwick_${name} STATIC ${arg_SOURCES})
  target_link_libraries(tarnwick_${name} PUBLIC tarnwick_options Qt6::Core ${arg_LINK})
  target_precompile_headers(tarnwick_${name} REUSE_FROM tarnwick_pch_${arg_PCH})
  if(arg_ONE_BY_ONE)
    set_target_properties(tarnwick_${name} PROPERTIES UNITY_BUILD OFF)
  endif()
endfunction()

# tarnwick_test(NAME SOURCES file... LINK target... [PCH core|gui|widgets] [MAIN]
#               [TIMEOUT seconds] [LABELS label...])
# One GoogleTest program. With MAIN the sources bring a main() of their own, otherwise GoogleTest's is used. One without
# labels needs no window system and belongs to the target unit_tests.
if(TARNWICK_TESTS)
  add_custom_target(unit_tests)
endif()
function(tarnwick_test name)
  cmake_parse_arguments(arg "MAIN" "PCH;TIMEOUT" "SOURCES;LINK;LABELS" ${ARGN})
  if(NOT arg_PCH)
    set(arg_PCH core)
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE tarnwick_options ${arg_LINK} Qt6::Test GTest::gtest GTest::gmock)
  if(NOT arg_MAIN)
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  target_precompile_headers(${name} REUSE_FROM tarnwick_pch_${arg_PCH})
  set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
  if(NOT arg_LABELS)
    add_dependencies(unit_tests ${name})
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS "${arg_LABELS}")
endfunction()
