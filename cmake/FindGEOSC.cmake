# GEOS through its C interface: target GEOSC::geos_c.
find_path(GEOSC_INCLUDE_DIR geos_c.h)
find_library(GEOSC_LIBRARY geos_c)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GEOSC REQUIRED_VARS GEOSC_LIBRARY GEOSC_INCLUDE_DIR)
if(GEOSC_FOUND AND NOT TARGET GEOSC::geos_c)
  add_library(GEOSC::geos_c UNKNOWN IMPORTED)
  set_target_properties(GEOSC::geos_c PROPERTIES
    IMPORTED_LOCATION ${GEOSC_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${GEOSC_INCLUDE_DIR})
endif()
