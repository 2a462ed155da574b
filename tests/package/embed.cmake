# Builds the embedding example against an installed copy and checks what it prints and preloads.
# WAY is "package" (the example's own CMakeLists.txt) or "pkg-config" (the compiler alone).
file(REMOVE_RECURSE ${WORK})
if(WAY STREQUAL "package")
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK} -G ${GENERATOR}
      -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${FLAGS}
    COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK} COMMAND_ERROR_IS_FATAL ANY)
else()
  set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs tarnmf
    OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(needed UNIX_COMMAND "${needed}")
  separate_arguments(FLAGS UNIX_COMMAND "${FLAGS}")
  file(MAKE_DIRECTORY ${WORK})
  execute_process(
    COMMAND ${CXX} -std=c++20 ${FLAGS} ${SOURCE}/main.cpp -o ${WORK}/embed ${needed}
      -Wl,-rpath,${PREFIX}/${LIBDIR}
    COMMAND_ERROR_IS_FATAL ANY)
endif()

# The second library is loaded only because the example sets its option.
set(expectedTrace "sample: ws.journal is loaded\nsample: ws.diagnostics is loaded\n")

function(check installation chosen)
  execute_process(COMMAND ${WORK}/embed ${SAMPLES}/platform ${SAMPLES}/${installation} ImageStore
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE trace)
  set(expected "2 load points
no scope: version 2 from ${SAMPLES}/platform
its scope: ${chosen}
")
  if(NOT result EQUAL 0 OR NOT output STREQUAL expected OR NOT trace STREQUAL expectedTrace)
    message(FATAL_ERROR "status ${result}, output:\n${output}\nerrors:\n${trace}")
  endif()
endfunction()
check(imaging-pack "version 5 from ${SAMPLES}/imaging-pack/payload/")
check(site-overrides/manifests "version 1 from ${SAMPLES}/site-overrides")
