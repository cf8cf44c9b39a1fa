# KDE's Wayland compositor for tests that drive real windows.
include_guard(GLOBAL)
include(${PROJECT_SOURCE_DIR}/cmake/WaylandProtocols.cmake)
tarnwick_wayland_protocols(tarnwick_fake_input fake-input)
set(support ${CMAKE_CURRENT_LIST_DIR})
add_library(tarnwick_headless_kwin STATIC ${support}/HeadlessKWin.cpp ${support}/HeadlessKWin.h)
tarnwick_test_sources(tarnwick_headless_kwin)
target_link_libraries(tarnwick_headless_kwin PUBLIC
  tarnwick_virtual_display tarnwick_fake_input tarnwick_base Qt6::Gui Qt6::DBus)
