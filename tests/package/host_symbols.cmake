# SPDX-License-Identifier: Apache-2.0
# What the host layer exports is what its headers declare: a program that uses all of them needs every
# exported name but those that classes bring along.
# cmake -D NM=... [-D OBJDUMP=... -D CXXFILT=...] -D LIBRARY=... -D PROGRAM=... -P host_symbols.cmake
include(${CMAKE_CURRENT_LIST_DIR}/symbol_names.cmake)
exported_names(exported ${LIBRARY})
needed_names(used ${PROGRAM} ${LIBRARY})
list(LENGTH exported count)
set(unused ${exported})
list(REMOVE_ITEM unused ${used})
list(FILTER unused EXCLUDE REGEX
  "^(vtable|typeinfo|typeinfo name) for btk[A-Za-z]+$|^non-virtual thunk to btkHost")
if(unused OR count LESS 100)
  list(JOIN unused "\n  " unused)
  message(FATAL_ERROR "${count} exported; without need, or not tested:\n  ${unused}\n")
endif()
