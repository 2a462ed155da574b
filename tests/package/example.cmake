# SPDX-License-Identifier: Apache-2.0
# How programs that use an installed copy are built and held to what they print; to be included.
# PREFIX and BINDIR, LIBDIR say where the copy is, GENERATOR, CXX, FLAGS and TOOLCHAIN how programs are
# built, RUN starts programs of another system, and SUFFIX ends their names.

# build_example(FOLDER BUILD): a project that finds the package.
function(build_example folder build)
  # A tool chain looks for packages below its own roots alone, so the package is named by its folder.
  set(found -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_CXX_COMPILER=${CXX})
  if(TOOLCHAIN)
    set(found -Dtarnmf_DIR=${PREFIX}/${LIBDIR}/cmake/tarnmf -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
  endif()
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${folder} -B ${build} -G ${GENERATOR}
      ${found} -DCMAKE_CXX_FLAGS=${FLAGS}
    COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${build} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Where libraries are not looked for by paths in the program they lie beside it.
function(copy_libraries_to folder)
  file(GLOB libraries ${PREFIX}/${BINDIR}/*.dll)
  file(COPY ${libraries} DESTINATION ${folder})
endfunction()

# check(PROGRAM OUTPUT TRACE ARGUMENT...): what a program writes to its output and to the errors.
function(check program expectedOutput expectedTrace)
  execute_process(COMMAND ${RUN} ${program}${SUFFIX} ${ARGN}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE trace)
  # Line ends are the system's.
  string(REPLACE "\r\n" "\n" output "${output}")
  string(REPLACE "\r\n" "\n" trace "${trace}")
  if(NOT result EQUAL 0 OR NOT output STREQUAL expectedOutput OR NOT trace STREQUAL expectedTrace)
    message(FATAL_ERROR "status ${result}, output:\n${output}\nerrors:\n${trace}")
  endif()
endfunction()
