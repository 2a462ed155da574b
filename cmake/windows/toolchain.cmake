# SPDX-License-Identifier: Apache-2.0
# Builds for 64-bit Windows with the cross compiler, with the libraries that scripts/windows has built
# and with nothing of the machine it runs on; programs that were built run under wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(machine x86_64-w64-mingw32)
# The variant that has the threads of the standard library.
set(CMAKE_C_COMPILER ${machine}-gcc-posix)
set(CMAKE_CXX_COMPILER ${machine}-g++-posix)
set(CMAKE_RC_COMPILER ${machine}-windres)

set(TARNMF_WINDOWS_PREFIX ${CMAKE_CURRENT_LIST_DIR}/../../build/windows/prefix
  CACHE PATH "The libraries for Windows")
cmake_path(NORMAL_PATH TARNMF_WINDOWS_PREFIX)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TARNMF_WINDOWS_PREFIX)

set(CMAKE_FIND_ROOT_PATH ${TARNMF_WINDOWS_PREFIX} /usr/${machine})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# One file for each build tree, so that a program finds the DLLs of its own.
configure_file(${CMAKE_CURRENT_LIST_DIR}/wine.in ${CMAKE_BINARY_DIR}/wine @ONLY
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_BINARY_DIR}/wine)
