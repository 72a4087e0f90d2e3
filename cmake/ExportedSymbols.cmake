# Hidden visibility keeps the library's own names in, but not the instances of standard templates, which the
# standard library declares visible: the linker drops them by the list of names that a host may call.
set(_zor_symbols ${CMAKE_CURRENT_LIST_DIR}/zor4data.map)
target_link_options(zor4data PRIVATE LINKER:--version-script=${_zor_symbols})
# Clang leaves the runtime of sanitizers and of the fuzzer to the executable.
if(NOT ZOR4DATA_SANITIZE AND NOT ZOR4DATA_BUILD_FUZZ)
  target_link_options(zor4data PRIVATE LINKER:--no-undefined)
endif()
set_property(TARGET zor4data APPEND PROPERTY LINK_DEPENDS ${_zor_symbols})
