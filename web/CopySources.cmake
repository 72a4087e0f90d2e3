# Copies the page's sources to where it is built, and removes what is no longer there.
#
#   cmake -DFROM=web -DTO=build/dev/web -DSTAMP=build/dev/web/copied -P CopySources.cmake
file(REMOVE_RECURSE ${TO}/src ${TO}/tests)
file(GLOB files ${FROM}/*.mjs ${FROM}/*.js ${FROM}/*.json ${FROM}/*.html ${FROM}/*.css ${FROM}/*.svg)
file(COPY ${FROM}/src ${FROM}/tests ${files} DESTINATION ${TO})
file(TOUCH ${STAMP})
