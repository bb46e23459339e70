# Turns data/name_tables.txt (table, tab, text) into rows of a C++
# initialiser list, {"table", "text"},. Comment lines start with '#'.
#   cmake -DIN=name_tables.txt -DOUT=name_tables.inc -P name_tables_to_table.cmake
file(STRINGS "${IN}" lines)
set(body "// Made from ${IN} at build time; edit the text file, not this one.\n")
foreach(line IN LISTS lines)
  if(line MATCHES "^#" OR line STREQUAL "")
    continue()
  endif()
  if(NOT line MATCHES "^([a-z]+)\t(.*)$")
    message(FATAL_ERROR "${IN}: not a table row: ${line}")
  endif()
  string(APPEND body "{\"${CMAKE_MATCH_1}\", \"${CMAKE_MATCH_2}\"},\n")
endforeach()
file(WRITE "${OUT}.tmp" "${body}")
configure_file("${OUT}.tmp" "${OUT}" COPYONLY)
