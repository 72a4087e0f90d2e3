# What a host includes, by folder. Whatever lies in include/zor4data is exported; of the lower layers a host may use what
# stands here: tests/api/every_call.cpp calls each function in it.
set(ZOR4DATA_LOWER_HEADERS
  zor0lang/DoubleDaString.h zor0lang/Export.h zor0lang/LongDaStringNullZero.h zor0lang/String.h
  zor0lang/StringTrimBoth.h
  zor1math/Log2.h
  zor3geom/BOOL_OP.h zor3geom/CalcRectPlanes.h zor3geom/DoBoolOperation.h zor3geom/IsPntInsidePolygon.h
  zor3geom/LINE_2D.h zor3geom/PAR_LINE_2D.h zor3geom/PLANE_3D.h zor3geom/PNT_2D.h zor3geom/PNT_3D.h
  zor3geom/RECT_2D.h zor3geom/RECT_3D.h zor3geom/TMultiPartPolygon.h zor3geom/TPlanBox.h zor3geom/Undefined.h)

# As a script (cmake -P): tells scripts/docs what to document.
if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  list(JOIN ZOR4DATA_LOWER_HEADERS " " _zor_headers)
  execute_process(COMMAND ${CMAKE_COMMAND} -E echo "include/zor4data ${_zor_headers}")
endif()
