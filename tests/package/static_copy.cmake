# SPDX-License-Identifier: Apache-2.0
# Builds the libraries as static ones and installs them.
# cmake -D SOURCE=... -D PREFIX=... -D CXX=... -D GENERATOR=... -P static_copy.cmake
set(build ${PREFIX}-build)
file(REMOVE_RECURSE ${build} ${PREFIX})
execute_process(
  COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${build} -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${CXX}
    -DBUILD_SHARED_LIBS=OFF -DCMAKE_BUILD_TYPE=None
    -DTARNMF_BUILD_TOOL=OFF -DTARNMF_BUILD_SAMPLES=OFF -DTARNMF_BUILD_TESTS=OFF
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${build} --parallel 2 COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${build} --prefix ${PREFIX}
  COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE shared ${PREFIX}/*.so*)
if(shared)
  message(FATAL_ERROR "a shared library among the static ones: ${shared}")
endif()
