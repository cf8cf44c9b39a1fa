# A Wayland compositor for tests that drive real windows.
include_guard(GLOBAL)
include(${PROJECT_SOURCE_DIR}/cmake/WaylandProtocols.cmake)
tarnwick_wayland_protocols(tarnwick_virtual_pointer wlr-virtual-pointer-unstable-v1)
set(support ${CMAKE_CURRENT_LIST_DIR})
add_library(tarnwick_headless_sway STATIC
  ${support}/HeadlessSway.cpp ${support}/HeadlessSway.h
  ${support}/VirtualPointer.cpp ${support}/VirtualPointer.h)
tarnwick_test_sources(tarnwick_headless_sway)
target_link_libraries(tarnwick_headless_sway PUBLIC
  tarnwick_virtual_display tarnwick_virtual_pointer Qt6::Gui GTest::gtest)
