# symbol_names(RESULT COMMAND...): the names that nm prints, each once.
function(symbol_names result)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
  # A list takes what stands in brackets for one element.
  string(REPLACE "[]" "<>" table "${table}")
  string(REGEX MATCHALL "[^\n]+" lines "${table}")
  set(names)
  # Each line: address, kind, name.
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^[0-9a-fA-F]* *[A-Za-z] " "" name "${line}")
    list(APPEND names "${name}")
  endforeach()
  list(REMOVE_DUPLICATES names)
  set(${result} ${names} PARENT_SCOPE)
endfunction()
