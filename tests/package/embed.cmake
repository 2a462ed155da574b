# SPDX-License-Identifier: Apache-2.0
# Builds a program that embeds the libraries, runs it on the sample installations and checks what it
# prints and preloads. WAY is "package" (the example with its own CMakeLists.txt, beside an installed
# copy), "pkg-config" (the same with the compiler alone), "readme" (the program in README.md, likewise)
# or "subproject" (the sources as a part of the program's own project).
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(program ${SOURCE}/examples/embed/main.cpp)

if(WAY STREQUAL "readme")
  file(READ ${SOURCE}/README.md text)
  string(FIND "${text}" "```cpp\n" begin)
  math(EXPR begin "${begin} + 7")
  string(SUBSTRING "${text}" ${begin} -1 text)
  string(FIND "${text}" "```" end)
  string(SUBSTRING "${text}" 0 ${end} text)
  string(REPLACE "build/demo/samples" ${SAMPLES} text "${text}")
  set(program ${WORK}/readme.cpp)
  file(WRITE ${program} "${text}")
endif()

if(WAY STREQUAL "subproject")
  file(WRITE ${WORK}/CMakeLists.txt "cmake_minimum_required(VERSION 3.25)
project(embedding LANGUAGES CXX)
add_subdirectory(${SOURCE} tarnmf)
add_executable(embed main.cpp)
target_link_libraries(embed PRIVATE tarnmf::tarnmf)
")
  file(READ ${program} text)
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
  # A tool chain looks for packages below its own roots alone, so the package is named by its folder.
  set(found -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_CXX_COMPILER=${CXX})
  if(TOOLCHAIN)
    set(found -Dtarnmf_DIR=${PREFIX}/${LIBDIR}/cmake/tarnmf -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
  endif()
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${SOURCE}/examples/embed -B ${WORK} -G ${GENERATOR}
      ${found} -DCMAKE_CXX_FLAGS=${FLAGS}
    COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK} COMMAND_ERROR_IS_FATAL ANY)
else()
  set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs tarnmf
    OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${PKG_CONFIG} --variable=libdir tarnmf
    OUTPUT_VARIABLE libdir OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(needed UNIX_COMMAND "${needed}")
  separate_arguments(FLAGS UNIX_COMMAND "${FLAGS}")
  execute_process(
    COMMAND ${CXX} -std=c++20 ${FLAGS} ${program} -o ${WORK}/embed ${needed}
      -Wl,-rpath,${libdir}
    COMMAND_ERROR_IS_FATAL ANY)
endif()

# Where libraries are not looked for by paths in the program they lie beside it.
file(GLOB libraries ${PREFIX}/${BINDIR}/*.dll)
file(COPY ${libraries} DESTINATION ${WORK})

# check(OUTPUT TRACE ARGUMENT...)
function(check expectedOutput expectedTrace)
  execute_process(COMMAND ${RUN} ${WORK}/embed${SUFFIX} ${ARGN}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE trace)
  # Line ends are the system's.
  string(REPLACE "\r\n" "\n" output "${output}")
  string(REPLACE "\r\n" "\n" trace "${trace}")
  if(NOT result EQUAL 0 OR NOT output STREQUAL expectedOutput OR NOT trace STREQUAL expectedTrace)
    message(FATAL_ERROR "status ${result}, output:\n${output}\nerrors:\n${trace}")
  endif()
endfunction()

set(journal "sample: ws.journal is loaded\n")
if(WAY STREQUAL "readme")
  check("ImageStore, version 5\n" "${journal}")
  return()
endif()
# The second library is loaded only because the example sets its option.
set(trace "${journal}sample: ws.diagnostics is loaded\n")
set(ownStore "2 load points\nno scope: version 2 from ${SAMPLES}/platform\n")
check("${ownStore}its scope: version 5 from ${SAMPLES}/imaging-pack/payload/\n" "${trace}"
  ${SAMPLES}/platform ${SAMPLES}/imaging-pack ImageStore)
check("${ownStore}its scope: version 1 from ${SAMPLES}/site-overrides\n" "${trace}"
  ${SAMPLES}/platform ${SAMPLES}/site-overrides/manifests ImageStore)
