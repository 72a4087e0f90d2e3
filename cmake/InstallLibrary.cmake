# What a host gets: the shared library, its headers under one versioned folder, and package files.
include(CMakePackageConfigHelpers)

install(TARGETS zor4data EXPORT zor4dataTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_COMPONENT Development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(_zor_include ${CMAKE_INSTALL_INCLUDEDIR}/zor4data-0)
# Of the lower layers what a host may use: tests/api/every_call.cpp calls each function in it.
install(FILES zor0lang/DoubleDaString.h zor0lang/Export.h zor0lang/LongDaStringNullZero.h zor0lang/String.h
  zor0lang/StringTrimBoth.h DESTINATION ${_zor_include}/zor0lang)
install(FILES zor1math/Log2.h DESTINATION ${_zor_include}/zor1math)
install(FILES zor3geom/BOOL_OP.h zor3geom/CalcRectPlanes.h zor3geom/DoBoolOperation.h zor3geom/IsPntInsidePolygon.h
  zor3geom/LINE_2D.h zor3geom/PAR_LINE_2D.h zor3geom/PLANE_3D.h zor3geom/PNT_2D.h zor3geom/PNT_3D.h
  zor3geom/RECT_2D.h zor3geom/RECT_3D.h zor3geom/TMultiPartPolygon.h zor3geom/TPlanBox.h zor3geom/Undefined.h
  DESTINATION ${_zor_include}/zor3geom)
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
