# A Wayland compositor for tests that drive real windows.
include_guard(GLOBAL)
include(${PROJECT_SOURCE_DIR}/cmake/WaylandProtocols.cmake)
tarnwick_wayland_protocols(tarnwick_virtual_pointer wlr-virtual-pointer-unstable-v1)
set(support ${CMAKE_CURRENT_LIST_DIR})
add_library(tarnwick_headless_sway STATIC
  ${support}/HeadlessSway.cpp ${support}/HeadlessSway.h
  ${support}/VirtualPointer.cpp ${support}/VirtualPointer.h)
target_include_directories(tarnwick_headless_sway PUBLIC ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(tarnwick_headless_sway PUBLIC
  tarnwick_options tarnwick_virtual_display tarnwick_virtual_pointer Qt6::Gui GTest::gtest)
target_precompile_headers(tarnwick_headless_sway REUSE_FROM tarnwick_pch_gui)
