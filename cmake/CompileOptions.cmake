# How everything of this project is compiled. Interface target zor4data_options; never installed.
add_library(zor4data_options INTERFACE)
target_compile_options(zor4data_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor
  # Results must not depend on the processor: no fused multiply-add behind the code's back.
  -ffp-contract=off)

option(ZOR4DATA_WERROR "Treat warnings as errors" ON)
if(ZOR4DATA_WERROR)
  target_compile_options(zor4data_options INTERFACE -Werror)
endif()

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(ZOR4DATA_SANITIZE)
  target_compile_options(zor4data_options INTERFACE
    -fsanitize=${ZOR4DATA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zor4data_options INTERFACE -fsanitize=${ZOR4DATA_SANITIZE})
  # Every check has a record of where it stands, a million of them in a program; in one that may lie anywhere each start
  # relocates them all, a quarter of the CPU time of a start.
  target_link_options(zor4data_options INTERFACE $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-no-pie>)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
