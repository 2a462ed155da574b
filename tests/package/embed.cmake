# SPDX-License-Identifier: Apache-2.0
# Builds a program that embeds the libraries, runs it on the sample installations and checks what it
# prints and preloads. WAY is "package" (the example with its own CMakeLists.txt, beside an installed
# copy), "pkg-config" (the same with the compiler alone) or "subproject" (the sources as a part of the
# program's own project).
include(${CMAKE_CURRENT_LIST_DIR}/example.cmake)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

if(WAY STREQUAL "subproject")
  file(WRITE ${WORK}/CMakeLists.txt "cmake_minimum_required(VERSION 3.25)
project(embedding LANGUAGES CXX)
add_subdirectory(${SOURCE} tarnmf)
add_executable(embed main.cpp)
target_link_libraries(embed PRIVATE tarnmf::tarnmf)
")
  file(READ ${SOURCE}/examples/embed/main.cpp text)
  file(WRITE ${WORK}/main.cpp "#if __has_include(\"support/owned.h\") || __has_include(\"README.md\")
#error The folders of the sources are handed on
#endif
${text}")
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${WORK} -B ${WORK} -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${CXX}
    COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK} --parallel 2 COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${WORK} --prefix ${WORK}/prefix
    COMMAND_ERROR_IS_FATAL ANY)
  file(GLOB_RECURSE unwanted ${WORK}/prefix/* ${WORK}/tarnmf/${BINDIR}/*)
  if(unwanted)
    message(FATAL_ERROR "built or installed without being asked for: ${unwanted}")
  endif()
elseif(WAY STREQUAL "package")
  build_example(${SOURCE}/examples/embed ${WORK})
else()
  set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs tarnmf
    OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${PKG_CONFIG} --variable=libdir tarnmf
    OUTPUT_VARIABLE libdir OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(needed UNIX_COMMAND "${needed}")
  separate_arguments(FLAGS UNIX_COMMAND "${FLAGS}")
  execute_process(
    COMMAND ${CXX} -std=c++20 ${FLAGS} ${SOURCE}/examples/embed/main.cpp -o ${WORK}/embed ${needed}
      -Wl,-rpath,${libdir}
    COMMAND_ERROR_IS_FATAL ANY)
endif()

copy_libraries_to(${WORK})
set(program ${WORK}/embed)
# The second library is loaded only because the example sets its option.
set(trace "sample: ws.journal is loaded\nsample: ws.diagnostics is loaded\n")
set(ownStore "2 load points\nno scope: version 2 from ${SAMPLES}/platform\n")
check(${program} "${ownStore}its scope: version 5 from ${SAMPLES}/imaging-pack/payload/\n" "${trace}"
  ${SAMPLES}/platform ${SAMPLES}/imaging-pack ImageStore)
check(${program} "${ownStore}its scope: version 1 from ${SAMPLES}/site-overrides\n" "${trace}"
  ${SAMPLES}/platform ${SAMPLES}/site-overrides/manifests ImageStore)
