# Makes a source file that holds every file of a folder, as it is and compressed, and its path and type (PageFiles.h).
#
#   cmake -DFOLDER=dist -DOUTPUT=PageFiles.cpp -P EmbedPage.cmake

set(types
  html text/html js text/javascript css text/css json application/json svg image/svg+xml png image/png
  ico image/x-icon txt text/plain woff2 font/woff2 webmanifest application/manifest+json)

file(GLOB_RECURSE paths LIST_DIRECTORIES false RELATIVE ${FOLDER} ${FOLDER}/*)
list(SORT paths)
set(arrays "")
set(table "")
set(number 0)

# Appends an array of the bytes of a file.
function(append_array name file)
  file(READ ${file} bytes HEX)
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
  string(REGEX REPLACE "((0x..,){20})" "\\1\n" bytes "${bytes}")
  set(arrays "${arrays}constexpr unsigned char ${name}[] = {\n${bytes}};\n" PARENT_SCOPE)
endfunction()

foreach(path IN LISTS paths)
  string(REGEX REPLACE ".*\\." "" extension ${path})
  list(FIND types ${extension} found)
  if(found LESS 0)
    continue() # maps of the sources, say: nothing that a browser asks for
  endif()
  math(EXPR found "${found} + 1")
  list(GET types ${found} type)
  if(type MATCHES "^text/")
    string(APPEND type "; charset=utf-8")
  endif()
  file(ARCHIVE_CREATE OUTPUT ${OUTPUT}.gz PATHS ${FOLDER}/${path} FORMAT raw
    COMPRESSION GZip COMPRESSION_LEVEL 9)
  append_array(c_acPlain${number} ${FOLDER}/${path})
  append_array(c_acGzip${number} ${OUTPUT}.gz)
  file(REMOVE ${OUTPUT}.gz)
  set(asked "/${path}")
  if(path STREQUAL "index.html")
    set(asked "/")
  endif()
  string(APPEND table "    {\"${asked}\", \"${type}\", c_acPlain${number}, sizeof(c_acPlain${number}), "
    "c_acGzip${number}, sizeof(c_acGzip${number})},\n")
  math(EXPR number "${number} + 1")
endforeach()
if(number EQUAL 0)
  message(FATAL_ERROR "${FOLDER} holds no page")
endif()

file(WRITE ${OUTPUT} "#include <host/serve/PageFiles.h>

namespace zorcld
{

namespace
{

${arrays}
constexpr CPageFile c_files[] = {
${table}};

} // namespace

const CPageFile* const c_pPageFiles = c_files;
const std::size_t c_nNumPageFiles = ${number};

} // namespace zorcld
")
