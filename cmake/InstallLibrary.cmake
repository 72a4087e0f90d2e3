# What a host gets: the shared library, its headers under one versioned folder, and package files.
include(CMakePackageConfigHelpers)

install(TARGETS zor4data EXPORT zor4dataTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_COMPONENT Development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(_zor_include ${CMAKE_INSTALL_INCLUDEDIR}/zor4data-0)
include(ExportedHeaders)
foreach(_zor_header IN LISTS ZOR4DATA_LOWER_HEADERS)
  get_filename_component(_zor_folder ${_zor_header} DIRECTORY)
  install(FILES ${_zor_header} DESTINATION ${_zor_include}/${_zor_folder})
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zor4data DESTINATION ${_zor_include} FILES_MATCHING PATTERN "*.h")
# The exported class holds its stores by value: their declaration goes with it.
install(FILES cloud/COcTree.h DESTINATION ${_zor_include}/cloud)
install(FILES octree/COcTreeData.h octree/CPntBits.h octree/CTruncPnt.h octree/CTruncPnt_Color.h
  DESTINATION ${_zor_include}/octree)

set(_zor_package ${CMAKE_INSTALL_LIBDIR}/cmake/zor4data)
install(EXPORT zor4dataTargets NAMESPACE zor4data:: DESTINATION ${_zor_package})
configure_package_config_file(cmake/zor4dataConfig.cmake.in ${PROJECT_BINARY_DIR}/zor4dataConfig.cmake
  INSTALL_DESTINATION ${_zor_package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zor4dataConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zor4dataConfig.cmake ${PROJECT_BINARY_DIR}/zor4dataConfigVersion.cmake
  DESTINATION ${_zor_package})
