# Copied below the prefix of the libraries for Windows: the headers alone, as nothing is compiled of it.
if(NOT TARGET fmt::fmt)
  add_library(fmt::fmt INTERFACE IMPORTED)
  target_include_directories(fmt::fmt INTERFACE ${CMAKE_CURRENT_LIST_DIR}/../../../include)
  target_compile_definitions(fmt::fmt INTERFACE FMT_HEADER_ONLY)
endif()
