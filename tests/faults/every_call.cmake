# SPDX-License-Identifier: Apache-2.0
# Every function of the platform that the library calls can fail in the test program.
#   cmake -D NM=… -D OBJECTS=FILE -D PLATFORM=LIBRARY -D PROGRAM=FILE -P every_call.cmake
cmake_minimum_required(VERSION 3.25)

function(symbols result kinds)
  execute_process(COMMAND ${NM} ${ARGN} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL " [${kinds}] [A-Za-z0-9_]+" found "${text}")
  list(TRANSFORM found REPLACE "^ . " "")
  list(REMOVE_DUPLICATES found)
  set(${result} ${found} PARENT_SCOPE)
endfunction()

file(READ ${OBJECTS} objects)
symbols(offered "TW" -D --defined-only ${PLATFORM})
symbols(called "U" --undefined-only ${objects})
symbols(able_to_fail "Tt" --defined-only ${PROGRAM})

# What releases or takes over something must not fail. The option table has a test of its own, and the
# counter is counted down where a use is released.
set(exempt
  _Z7btkFreePv _ZN13btkRefCounted7ReleaseEv _Z10btkStrFreePv _Z10btkSysFreePv
  _ZN13btkFileStreamD1Ev _ZN13btkFileStreamD0Ev _ZN9btkFSListD1Ev _ZN9btkFSListaSES_
  _Z10btkAoDec32Pi _Z16btkDlmExitNotifyPFvvE _Z13btkSysReAllocPvm)

set(checked 0)
foreach(symbol ${called})
  if(symbol IN_LIST offered AND symbol MATCHES "btk|Cmp|EnvCmd" AND NOT symbol IN_LIST exempt)
    math(EXPR checked "${checked} + 1")
    if(NOT symbol IN_LIST able_to_fail)
      message(SEND_ERROR "The faults leave out ${symbol}")
    endif()
  endif()
endforeach()
if(checked LESS 40)
  message(FATAL_ERROR "Only ${checked} calls are known")
endif()
