# SPDX-License-Identifier: Apache-2.0
# Every header compiles alone: target all_verify_interface_header_sets makes a source of each and
# compiles it. The exported headers are those of the two libraries; all others are found by their
# folder, so that none can be forgotten.
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)

# tarnmf_internal_headers(NAME FOLDER... LINK LIBRARY...): the headers of the folders, which need
# the libraries to compile.
function(tarnmf_internal_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" LINK)
  list(TRANSFORM arg_UNPARSED_ARGUMENTS PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE patterns)
  list(TRANSFORM patterns APPEND /*.h)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${patterns})
  list(REMOVE_ITEM headers ${BTK_HOST_HEADERS})
  add_library(${name} INTERFACE)
  target_sources(${name} INTERFACE FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${headers})
  target_link_libraries(${name} INTERFACE ${arg_LINK} tarnmf_options)
endfunction()
