# SPDX-License-Identifier: Apache-2.0
# Target docs: the reference of the exported headers, as HTML below docs/html of the build tree. A
# public operation, record or field without a description fails, as does every other warning.
find_package(Doxygen QUIET)
if(NOT DOXYGEN_FOUND)
  return()
endif()

set(DOXYGEN_PROJECT_BRIEF "${PROJECT_DESCRIPTION}")
set(DOXYGEN_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/docs)
set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
set(DOXYGEN_RECURSIVE NO)
set(DOXYGEN_FILE_PATTERNS *.h)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
set(DOXYGEN_PREDEFINED "BTK_API=" "TARNMF_API=")
set(DOXYGEN_EXTRACT_ALL NO)
set(DOXYGEN_WARN_IF_UNDOCUMENTED YES)
set(DOXYGEN_WARN_NO_PARAMDOC NO)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_HAVE_DOT NO)
doxygen_add_docs(docs
  ${PROJECT_SOURCE_DIR}/include/tarnmf ${PROJECT_SOURCE_DIR}/platform ${BTK_HOST_HEADERS}
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  COMMENT "Making the reference")
