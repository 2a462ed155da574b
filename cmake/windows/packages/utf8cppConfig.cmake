# Copied below the prefix of the libraries for Windows; Debian's own names folders of its machine.
if(NOT TARGET utf8cpp)
  add_library(utf8cpp INTERFACE IMPORTED)
  target_include_directories(utf8cpp INTERFACE ${CMAKE_CURRENT_LIST_DIR}/../../../include)
endif()
