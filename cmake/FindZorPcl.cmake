# The part of the Point Cloud Library that the ground filter rests on: its headers, and its components common
# and octree alone. PCL's own package file asks for what every component needs (VTK, Qt, drivers of cameras);
# here the headers of PCL, Eigen and Boost and two small libraries do.
#
# Looked for where CMake looks for everything, first in ZorPcl_ROOT (CMake or environment variable) and last in
# build/deps/usr of the source tree, both laid out like /usr. Headers unpacked there, without the packages that
# PCL's development package depends on, work with the system's two libraries.
#
# Defines ZorPcl_FOUND, ZorPcl_VERSION and the imported target ZorPcl::ZorPcl.
set(_zorpcl_suffixes pcl)
foreach(_minor RANGE 20 10 -1)
  list(APPEND _zorpcl_suffixes pcl-1.${_minor})
endforeach()
set(_zorpcl_unpacked ${CMAKE_CURRENT_LIST_DIR}/../build/deps/usr)
find_path(ZorPcl_INCLUDE_DIR pcl/segmentation/impl/progressive_morphological_filter.hpp
  PATHS ${_zorpcl_unpacked}/include PATH_SUFFIXES ${_zorpcl_suffixes})
find_path(ZorPcl_EIGEN_INCLUDE_DIR Eigen/Core PATHS ${_zorpcl_unpacked}/include PATH_SUFFIXES eigen3)
find_path(ZorPcl_BOOST_INCLUDE_DIR boost/mpl/assert.hpp PATHS ${_zorpcl_unpacked}/include)

set(ZorPcl_VERSION "")
if(ZorPcl_INCLUDE_DIR AND EXISTS ${ZorPcl_INCLUDE_DIR}/pcl/pcl_config.h)
  file(STRINGS ${ZorPcl_INCLUDE_DIR}/pcl/pcl_config.h _zorpcl_lines REGEX "define PCL_M(AJOR|INOR)_VERSION ")
  list(JOIN _zorpcl_lines " " _zorpcl_lines)
  if(_zorpcl_lines MATCHES "MAJOR_VERSION ([0-9]+).*MINOR_VERSION ([0-9]+)")
    set(ZorPcl_VERSION ${CMAKE_MATCH_1}.${CMAKE_MATCH_2})
  endif()
endif()

# The name with the version is there without the development package, and fits the headers. It comes first:
# beside unpacked headers the plain name may be a link that leads nowhere.
foreach(_component common octree)
  find_library(ZorPcl_${_component}_LIBRARY
    NAMES libpcl_${_component}.so.${ZorPcl_VERSION} pcl_${_component})
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(ZorPcl VERSION_VAR ZorPcl_VERSION REQUIRED_VARS
  ZorPcl_common_LIBRARY ZorPcl_octree_LIBRARY ZorPcl_INCLUDE_DIR ZorPcl_EIGEN_INCLUDE_DIR
  ZorPcl_BOOST_INCLUDE_DIR)
mark_as_advanced(ZorPcl_INCLUDE_DIR ZorPcl_EIGEN_INCLUDE_DIR ZorPcl_BOOST_INCLUDE_DIR
  ZorPcl_common_LIBRARY ZorPcl_octree_LIBRARY)

if(ZorPcl_FOUND AND NOT TARGET ZorPcl::ZorPcl)
  add_library(ZorPcl::ZorPcl INTERFACE IMPORTED)
  target_include_directories(ZorPcl::ZorPcl INTERFACE
    ${ZorPcl_INCLUDE_DIR} ${ZorPcl_EIGEN_INCLUDE_DIR} ${ZorPcl_BOOST_INCLUDE_DIR})
  target_link_libraries(ZorPcl::ZorPcl INTERFACE ${ZorPcl_octree_LIBRARY} ${ZorPcl_common_LIBRARY})
endif()
