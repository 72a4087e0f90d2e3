# What LAS and LAZ files are read with: LASlib where it is installed, else io/las/laslib/, which stands in for it on
# top of LASzip, else nothing. Defines ZOR4DATA_LAS_FOUND (LASlib, LASzip or empty), the interface target zor4data_las,
# which the library links, and with LASzip zor4data_laszip, which `formats/` links too.
set(ZOR4DATA_LAS AUTO CACHE STRING "What reads LAS files: AUTO, LASlib, LASzip or OFF")
set_property(CACHE ZOR4DATA_LAS PROPERTY STRINGS AUTO LASlib LASzip OFF)
if(NOT ZOR4DATA_LAS MATCHES "^(AUTO|LASlib|LASzip|OFF)$")
  message(FATAL_ERROR "ZOR4DATA_LAS is ${ZOR4DATA_LAS}: it must be AUTO, LASlib, LASzip or OFF")
endif()

add_library(zor4data_las INTERFACE)
set(ZOR4DATA_LAS_FOUND "")

if(ZOR4DATA_LAS MATCHES "AUTO|LASlib")
  # By itself CMake looks for LASlibConfig.cmake and laslib-config.cmake only.
  find_package(LASlib CONFIG QUIET NAMES LASlib laslib
    CONFIGS LASlib-config.cmake LASlibConfig.cmake laslib-config.cmake laslibConfig.cmake)
  if(TARGET LASlib)
    set(ZOR4DATA_LAS_FOUND LASlib)
    target_link_libraries(zor4data_las INTERFACE LASlib)
    # As system headers: their warnings are not ours.
    target_include_directories(zor4data_las SYSTEM INTERFACE
      $<TARGET_PROPERTY:LASlib,INTERFACE_INCLUDE_DIRECTORIES>)
  endif()
endif()

# The host reads LAS and LAZ through LASzip's own interface where it is there, whatever the library reads with:
# target zor4data_laszip, ZOR4DATA_HAS_LASZIP.
set(ZOR4DATA_HAS_LASZIP OFF)
if(NOT ZOR4DATA_LAS STREQUAL "OFF")
  # Where the system has none, scripts/setup-las has put it into build/deps.
  set(_deps ${PROJECT_SOURCE_DIR}/build/deps/usr)
  find_path(ZOR4DATA_LASZIP_INCLUDE laszip/laszip_api.h HINTS ${_deps}/include)
  find_library(ZOR4DATA_LASZIP_LIBRARY laszip HINTS ${_deps}/lib/${CMAKE_LIBRARY_ARCHITECTURE} ${_deps}/lib)
  mark_as_advanced(ZOR4DATA_LASZIP_INCLUDE ZOR4DATA_LASZIP_LIBRARY)
  if(ZOR4DATA_LASZIP_INCLUDE AND ZOR4DATA_LASZIP_LIBRARY)
    set(ZOR4DATA_HAS_LASZIP ON)
    add_library(zor4data_laszip INTERFACE)
    target_link_libraries(zor4data_laszip INTERFACE ${ZOR4DATA_LASZIP_LIBRARY})
    target_include_directories(zor4data_laszip SYSTEM INTERFACE ${ZOR4DATA_LASZIP_INCLUDE})
  endif()
endif()

if(NOT ZOR4DATA_LAS_FOUND AND ZOR4DATA_HAS_LASZIP AND ZOR4DATA_LAS MATCHES "AUTO|LASzip")
  set(ZOR4DATA_LAS_FOUND LASzip)
  target_link_libraries(zor4data_las INTERFACE zor4data_laszip)
  # Only here: LASlib's own header has the same name.
  target_include_directories(zor4data_las INTERFACE ${PROJECT_SOURCE_DIR}/io/las/laslib)
endif()

if(ZOR4DATA_LAS_FOUND)
  message(STATUS "LAS and LAZ files: read with ${ZOR4DATA_LAS_FOUND}")
elseif(ZOR4DATA_LAS MATCHES "AUTO|OFF")
  message(STATUS "LAS and LAZ files: not read (ZOR4DATA_LAS is ${ZOR4DATA_LAS}; scripts/setup-las gets LASzip)")
else()
  message(FATAL_ERROR "${ZOR4DATA_LAS} was not found; with ZOR4DATA_LAS=AUTO the build takes what is there")
endif()

# A LASzip that the system's loader does not find is installed beside the library, which looks there first.
if(ZOR4DATA_HAS_LASZIP)
  get_filename_component(_laszip_dir ${ZOR4DATA_LASZIP_LIBRARY} DIRECTORY)
  if(NOT _laszip_dir IN_LIST CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES)
    # The library's symbolic link names the file as the loader asks for it.
    set(_laszip_name ${ZOR4DATA_LASZIP_LIBRARY})
    if(IS_SYMLINK ${_laszip_name})
      file(READ_SYMLINK ${_laszip_name} _laszip_name)
    endif()
    get_filename_component(_laszip_name ${_laszip_name} NAME)
    file(REAL_PATH ${ZOR4DATA_LASZIP_LIBRARY} _laszip_file)
    install(FILES ${_laszip_file} RENAME ${_laszip_name} DESTINATION ${CMAKE_INSTALL_LIBDIR})
  endif()
endif()
