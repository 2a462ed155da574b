# SPDX-License-Identifier: Apache-2.0
# Builds a program that embeds an installed copy, runs it on the sample installations and checks what
# it prints and preloads. WAY is "package" (the example with its own CMakeLists.txt) or "pkg-config" (the
# same with the compiler alone).
include(${CMAKE_CURRENT_LIST_DIR}/example.cmake)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

if(WAY STREQUAL "package")
  build_example(${SOURCE}/examples/embed ${WORK})
else()
  set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs tarnmf
    OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(needed UNIX_COMMAND "${needed}")
  separate_arguments(FLAGS UNIX_COMMAND "${FLAGS}")
  execute_process(
    COMMAND ${CXX} -std=c++20 ${FLAGS} ${SOURCE}/examples/embed/main.cpp -o ${WORK}/embed ${needed}
      -Wl,-rpath,${PREFIX}/${LIBDIR}
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
