# Makes the portable package into a folder of its own and checks what a user
# unpacks: one folder named after the product's version and the platform,
# holding the two programs, the read-me and every help page, and nothing else.
#
# cmake -DCPACK_COMMAND=... -DCPACK_CONFIG=... -DOUT=... -DSOURCE=... -P package_contents.cmake

function(fail)
  string(JOIN "" text ${ARGN})
  message(FATAL_ERROR "${text}")
endfunction()

file(REMOVE_RECURSE ${OUT})
file(MAKE_DIRECTORY ${OUT})
execute_process(COMMAND ${CPACK_COMMAND} --config ${CPACK_CONFIG} -B ${OUT}
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  fail("cpack failed (${status}):\n${output}")
endif()

file(GLOB zips ${OUT}/*.zip)
list(LENGTH zips zip_count)
if(NOT zip_count EQUAL 1)
  fail("expected one zip in ${OUT}, found: ${zips}")
endif()

# The name's version must be the one the programs are compiled with.
get_filename_component(zip_name ${zips} NAME)
if(NOT zip_name MATCHES "^Kestrom-([0-9.]+)-(win64|win32)\\.zip$")
  fail("the zip is named ${zip_name}, not Kestrom-VERSION-win64.zip or -win32.zip")
endif()
set(version ${CMAKE_MATCH_1})
set(system ${CMAKE_MATCH_2})
file(STRINGS ${SOURCE}/app/product.cpp compiled REGEX "kProductVersion = \"${version}\";")
if(NOT compiled)
  fail("the zip names version ${version}, which app/product.cpp does not compile in")
endif()
set(top Kestrom-${version}-${system})

execute_process(COMMAND ${CMAKE_COMMAND} -E tar tf ${zips} RESULT_VARIABLE status
                OUTPUT_VARIABLE listing ERROR_VARIABLE error)
if(NOT status EQUAL 0)
  fail("cannot list ${zips}: ${error}")
endif()
string(REPLACE "\n" ";" entries "${listing}")
set(files)
foreach(entry IN LISTS entries)
  if(entry STREQUAL "" OR entry MATCHES "/$")
    continue()
  endif()
  list(APPEND files ${entry})
endforeach()

set(expected ${top}/kestrom.exe ${top}/kst.exe ${top}/readme.txt)
if(EXISTS ${SOURCE}/docs/help)
  file(GLOB_RECURSE pages RELATIVE ${SOURCE}/docs/help ${SOURCE}/docs/help/*)
  foreach(page IN LISTS pages)
    list(APPEND expected ${top}/help/${page})
  endforeach()
endif()
list(SORT files)
list(SORT expected)
if(NOT files STREQUAL expected)
  string(REPLACE ";" "\n  " got "${files}")
  string(REPLACE ";" "\n  " want "${expected}")
  fail("the zip holds\n  ${got}\nbut should hold\n  ${want}")
endif()

execute_process(COMMAND ${CMAKE_COMMAND} -E tar xf ${zips} WORKING_DIRECTORY ${OUT}
                RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  fail("cannot unpack ${zips}")
endif()

# The programs are built for the processor the name promises: the machine
# field of the PE header, little-endian, after the "PE\0\0" signature whose
# offset is at 0x3C.
if(system STREQUAL "win64")
  set(machine 6486)
else()
  set(machine 4c01)
endif()
foreach(program kestrom.exe kst.exe)
  set(exe ${OUT}/${top}/${program})
  file(READ ${exe} pe_offset_hex OFFSET 60 LIMIT 4 HEX)
  string(REGEX REPLACE "(..)(..)(..)(..)" "\\4\\3\\2\\1" pe_offset_hex "${pe_offset_hex}")
  math(EXPR pe_offset "0x${pe_offset_hex}")
  file(READ ${exe} header OFFSET ${pe_offset} LIMIT 6 HEX)
  if(NOT header STREQUAL "50450000${machine}")
    fail("${program} is not a ${system} program: its PE header starts ${header}")
  endif()
endforeach()

# Windows editors recognise the read-me's UTF-8 by its byte order mark.
file(READ ${OUT}/${top}/readme.txt bom LIMIT 3 HEX)
if(NOT bom STREQUAL "efbbbf")
  fail("readme.txt does not start with a UTF-8 byte order mark (starts ${bom})")
endif()
file(READ ${OUT}/${top}/readme.txt text)
string(REGEX MATCHALL "\n" line_ends "${text}")
list(LENGTH line_ends line_count)
if(line_count GREATER_EQUAL 40)
  fail("readme.txt has ${line_count} lines; a short read-me stays under 40")
endif()
