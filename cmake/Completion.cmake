# SPDX-License-Identifier: Apache-2.0
# What makes shells complete command lines of the tool, in the folders that they search.
if(NOT TARNMF_BUILD_TOOL OR WIN32)
  return()
endif()

set(completion ${PROJECT_SOURCE_DIR}/tools/tarnmf/completion)
install(FILES ${completion}/tarnmf.bash RENAME tarnmf
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
install(FILES ${completion}/_tarnmf
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT tool)
install(FILES ${completion}/tarnmf.fish
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
