# SPDX-License-Identifier: Apache-2.0
# The schemas of what commands print as JSON, for programs that read it.
if(TARNMF_BUILD_TOOL)
  install(DIRECTORY docs/schema/json DESTINATION ${CMAKE_INSTALL_DATADIR}/tarnmf COMPONENT tool)
endif()
