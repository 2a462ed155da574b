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

function(exported_names result library)
  if(OBJDUMP)
    execute_process(COMMAND ${OBJDUMP} -p ${library} COMMAND ${CXXFILT}
      OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE ".*Ordinal/Name Pointer" "" table "${table}")
    names_in("${table}" "^\t< *[0-9]+> " names)
    list(TRANSFORM names REPLACE "wchar_t" "char16_t")
  else()
    execute_process(COMMAND ${NM} -DC --defined-only ${library}
      OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
    names_in("${table}" "^[0-9a-fA-F]+ [A-Za-z] " names)
  endif()
  set(${result} ${names} PARENT_SCOPE)
endfunction()

function(needed_names result program library)
  if(OBJDUMP)
    execute_process(COMMAND ${OBJDUMP} -p ${program} COMMAND ${CXXFILT}
      OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
    cmake_path(GET library FILENAME file)
    string(REGEX REPLACE ".*DLL Name: ${file}" "" table "${table}")
    string(REGEX REPLACE "DLL Name: .*" "" table "${table}")
    names_in("${table}" "^\t[0-9a-f]+\t *[0-9]+ +" names)
    list(TRANSFORM names REPLACE "wchar_t" "char16_t")
  else()
    execute_process(COMMAND ${NM} -DC --undefined-only ${program}
      OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
    names_in("${table}" "^ +[A-Za-z] " names)
  endif()
  set(${result} ${names} PARENT_SCOPE)
endfunction()
