# SPDX-License-Identifier: Apache-2.0
# An archive of what is installed, which scripts/package makes.
set(CPACK_PACKAGE_NAME tarnmf)
set(CPACK_PACKAGE_VENDOR "the tarnmf authors")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR TGZ)
endif()
include(CPack)
