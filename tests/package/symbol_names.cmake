# SPDX-License-Identifier: Apache-2.0
# exported_names(RESULT LIBRARY) and needed_names(RESULT PROGRAM LIBRARY): the names that a library
# exports, and those that a program needs of it, each once and as they are declared. They come from
# NM, or for DLLs from OBJDUMP and CXXFILT.

# Each line that matches: what stands before the name, the name.
function(names_in table pattern result)
  # A list takes what stands in brackets for one element.
  string(REPLACE "[" "<" table "${table}")
  string(REPLACE "]" ">" table "${table}")
  string(REGEX MATCHALL "[^\n]+" lines "${table}")
  set(names)
  foreach(line IN LISTS lines)
    if(line MATCHES "${pattern}")
      string(REGEX REPLACE "${pattern}" "" name "${line}")
      list(APPEND names "${name}")
    endif()
  endforeach()
  list(REMOVE_DUPLICATES names)
  set(${result} ${names} PARENT_SCOPE)
endfunction()

# In what nm prints of a kind of symbols, lines with `nmPattern`; of a DLL or its user, those with
# `dllPattern` behind `dllBegin`.
function(symbol_names result file nmKind nmPattern dllBegin dllPattern)
  if(OBJDUMP)
    execute_process(COMMAND ${OBJDUMP} -p ${file} COMMAND ${CXXFILT}
      OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE ".*${dllBegin}" "" table "${table}")
    string(REGEX REPLACE "DLL Name: .*" "" table "${table}")
    names_in("${table}" "${dllPattern}" names)
    list(TRANSFORM names REPLACE "wchar_t" "char16_t")
  else()
    execute_process(COMMAND ${NM} -DC ${nmKind} ${file}
      OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
    names_in("${table}" "${nmPattern}" names)
  endif()
  set(${result} ${names} PARENT_SCOPE)
endfunction()

function(exported_names result library)
  symbol_names(names ${library} --defined-only "^[0-9a-fA-F]+ [A-Za-z] "
    "Ordinal/Name Pointer" "^\t< *[0-9]+> ")
  set(${result} ${names} PARENT_SCOPE)
endfunction()

function(needed_names result program library)
  cmake_path(GET library FILENAME file)
  symbol_names(names ${program} --undefined-only "^ +[A-Za-z] "
    "DLL Name: ${file}" "^\t[0-9a-f]+\t *[0-9]+ +")
  set(${result} ${names} PARENT_SCOPE)
endfunction()
