# SPDX-License-Identifier: Apache-2.0
# Every object of the library that holds code carries the counters that guide the fuzzers.
#   cmake -D NM=… -D LIST=FILE -P coverage.cmake
file(READ ${LIST} objects)
list(LENGTH objects count)
if(count LESS 40)
  message(FATAL_ERROR "${LIST} names only ${count} objects")
endif()
foreach(object ${objects})
  execute_process(COMMAND ${NM} ${object} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  # The sanitizer has functions even in an object of data alone.
  string(REGEX REPLACE " [Tt] asan\\.[^\n]*" "" symbols "${symbols}")
  if(symbols MATCHES " [TtW] " AND NOT symbols MATCHES "sancov\\.module_ctor_8bit_counters")
    message(SEND_ERROR "No coverage in ${object}")
  endif()
endforeach()
