# Installs a build into an empty folder: cmake -DBUILD=... -DSTAGE=... -P StageInstall.cmake
file(REMOVE_RECURSE ${STAGE})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${STAGE} COMMAND_ERROR_IS_FATAL ANY)
