# SPDX-License-Identifier: Apache-2.0
# Manual pages of the tool and of what it reads, cut out of the documents in docs/.
if(NOT TARNMF_BUILD_MANUAL OR NOT TARNMF_BUILD_TOOL OR NOT CMAKE_SYSTEM_NAME STREQUAL Linux)
  return()
endif()
find_program(TARNMF_PANDOC pandoc)
mark_as_advanced(TARNMF_PANDOC)
if(NOT TARNMF_PANDOC)
  message(STATUS "No manual pages are built: they are made by pandoc, which is not found")
  return()
endif()

set(manual_folder ${PROJECT_BINARY_DIR}/manual)
set(manual_pages)

# manual_page(NAME SECTION DOCUMENT [METADATA...]): manual/page.lua says which metadata there are.
function(manual_page name section document)
  set(page ${manual_folder}/man${section}/${name}.${section})
  list(TRANSFORM ARGN PREPEND --metadata=)
  add_custom_command(OUTPUT ${page}
    COMMAND ${TARNMF_PANDOC} --from=gfm --to=man --standalone
      --lua-filter=${PROJECT_SOURCE_DIR}/cmake/manual/page.lua
      --metadata=page=${name} --metadata=title=${name} --metadata=section=${section}
      "--metadata=footer=tarnmf ${PROJECT_VERSION}" "--metadata=header=${PROJECT_DESCRIPTION}"
      ${ARGN} --output=${page} ${document}
    DEPENDS ${PROJECT_SOURCE_DIR}/docs/${document} ${PROJECT_SOURCE_DIR}/cmake/manual/page.lua
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}/docs
    COMMENT "Making ${name}(${section})"
    VERBATIM)
  if(TARNMF_INSTALL)
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT tool)
  endif()
  set(manual_pages ${manual_pages} ${page} PARENT_SCOPE)
endfunction()

file(MAKE_DIRECTORY ${manual_folder}/man1 ${manual_folder}/man5)
manual_page(tarnmf 1 tool.md)
# A page for every command in the document's table of them.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/tool.md)
file(STRINGS docs/tool.md commands REGEX "^\\| \\[`tarnmf [a-z]+`\\]")
foreach(command IN LISTS commands)
  string(REGEX REPLACE "^[^`]*`tarnmf ([a-z]+)`.*" "\\1" command "${command}")
  manual_page(tarnmf-${command} 1 tool.md)
endforeach()
set(layout "The layout file .installed")
manual_page(tarnmf-manifest 5 manifest-format.md "without=${layout}" "synopsis=*.tmfx")
manual_page(tarnmf-layout 5 manifest-format.md "heading=${layout}" "synopsis=.installed")

add_custom_target(tarnmf_manual ALL DEPENDS ${manual_pages})
