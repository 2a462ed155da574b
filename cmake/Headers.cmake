# SPDX-License-Identifier: Apache-2.0
# Headers are installed below one folder of their own, so that "platform/" and "tarnmf/" need no
# place in the system's include folder.
set(TARNMF_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/tarnmf-${PROJECT_VERSION_MAJOR})

# tarnmf_export_headers(LIBRARY HEADER...): whoever uses the library finds these headers, and no others
# of ours: copies in the build tree, or what is installed.
function(tarnmf_export_headers library)
  foreach(header IN LISTS ARGN)
    cmake_path(RELATIVE_PATH header BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE name)
    string(REGEX REPLACE "^include/" "" name ${name})
    configure_file(${header} ${PROJECT_BINARY_DIR}/include/${name} COPYONLY)
    if(TARNMF_INSTALL)
      cmake_path(GET name PARENT_PATH folder)
      install(FILES ${header} DESTINATION ${TARNMF_INSTALL_INCLUDEDIR}/${folder}
        COMPONENT development)
    endif()
  endforeach()
  target_include_directories(${library} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include> $<INSTALL_INTERFACE:${TARNMF_INSTALL_INCLUDEDIR}>)
endfunction()

# Every header compiles alone: target all_verify_interface_header_sets makes a source of each and
# compiles it. Headers are found by their folder, so that none can be forgotten.
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)

# tarnmf_headers_compile_alone(NAME FOLDER... LINK LIBRARY...): the headers of the folders, which need
# the libraries to compile.
function(tarnmf_headers_compile_alone name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" LINK)
  list(TRANSFORM arg_UNPARSED_ARGUMENTS PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE patterns)
  list(TRANSFORM patterns APPEND /*.h)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${patterns})
  add_library(${name} INTERFACE)
  target_sources(${name} INTERFACE FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${headers})
  target_link_libraries(${name} INTERFACE ${arg_LINK} tarnmf_options)
endfunction()
