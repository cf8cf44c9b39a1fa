# tarnwick_wayland_protocols(TARGET protocol...)
# A C library with the client side of protocols, made by wayland-scanner from what stands in resources/protocols/ or else
# from what the system has.
find_program(WAYLAND_SCANNER wayland-scanner REQUIRED)
pkg_check_modules(WAYLAND_CLIENT REQUIRED IMPORTED_TARGET wayland-client)
pkg_check_modules(WAYLAND_PROTOCOLS REQUIRED wayland-protocols)
pkg_get_variable(WAYLAND_PROTOCOLS_FOLDER wayland-protocols pkgdatadir)

function(tarnwick_wayland_protocols target)
  set(made ${CMAKE_CURRENT_BINARY_DIR}/protocols)
  file(MAKE_DIRECTORY ${made})
  set(sources)
  foreach(protocol IN LISTS ARGN)
    set(description ${PROJECT_SOURCE_DIR}/resources/protocols/${protocol}.xml)
    if(NOT EXISTS ${description})
      file(GLOB description ${WAYLAND_PROTOCOLS_FOLDER}/*/*/${protocol}.xml)
    endif()
    add_custom_command(
      OUTPUT ${made}/${protocol}-client.h ${made}/${protocol}.c
      COMMAND ${WAYLAND_SCANNER} client-header ${description} ${made}/${protocol}-client.h
      COMMAND ${WAYLAND_SCANNER} private-code ${description} ${made}/${protocol}.c
      DEPENDS ${description} VERBATIM)
    list(APPEND sources ${made}/${protocol}-client.h ${made}/${protocol}.c)
  endforeach()
  add_library(${target} STATIC ${sources})
  set_target_properties(${target} PROPERTIES AUTOMOC OFF)
  target_include_directories(${target} SYSTEM PUBLIC ${made})
  target_link_libraries(${target} PUBLIC PkgConfig::WAYLAND_CLIENT)
endfunction()
