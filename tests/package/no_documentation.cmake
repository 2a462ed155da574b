# SPDX-License-Identifier: Apache-2.0
# The grammar's texts for people must not be carried into what does not show them.
# cmake -D GRAMMAR=<folder> -D LIBRARY=... -P no_documentation.cmake
file(GLOB headers ${GRAMMAR}/*.h)
set(texts 0)
foreach(header ${headers})
  # Sentences of the descriptions, up to the end of their line.
  file(STRINGS ${header} lines REGEX "^ +\"[A-Z][^\"]+ [^\"]+\"")
  foreach(line ${lines})
    string(REGEX REPLACE "^ +\"([^\"]+)\".*" "\\1" text "${line}")
    string(REGEX REPLACE "([][+.*()^$?|\\\\])" "\\\\\\1" pattern "${text}")
    file(STRINGS ${LIBRARY} found REGEX "${pattern}" LIMIT_COUNT 1)
    if(found)
      message(FATAL_ERROR "${LIBRARY} holds \"${text}\"")
    endif()
    math(EXPR texts "${texts} + 1")
  endforeach()
endforeach()
if(texts LESS 50)
  message(FATAL_ERROR "only ${texts} texts found in ${GRAMMAR}")
endif()
