# SPDX-License-Identifier: Apache-2.0
# What is installed, by component, and the two ways in which other builds find it. The exported headers
# are installed where they are named (Headers.cmake).
include(CMakePackageConfigHelpers)

foreach(library btkhost tarnmf)
  set(component ${library})
  if(library STREQUAL "tarnmf")
    set(component library)
  endif()
  install(TARGETS ${library} EXPORT tarnmfTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
      COMPONENT ${component} NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${component})
endforeach()

if(MINGW)
  # The folder of the programs runs by itself: the compiler's DLLs lie in it, too.
  foreach(dll libgcc_s_seh-1 libstdc++-6 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}.dll
      OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT btkhost)
  endforeach()
endif()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/tarnmf)
install(EXPORT tarnmfTargets NAMESPACE tarnmf:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/tarnmfConfig.cmake.in
  ${PROJECT_BINARY_DIR}/tarnmfConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tarnmfConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tarnmfConfig.cmake
  ${PROJECT_BINARY_DIR}/tarnmfConfigVersion.cmake DESTINATION ${package_dir} COMPONENT development)

# The file says where it lies relative to the prefix, so that the copy may be installed anywhere.
file(RELATIVE_PATH TARNMF_PREFIX_FROM_PC
  ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
if(TARNMF_LIBRARY_TYPE STREQUAL "STATIC")
  set(TARNMF_PC_REQUIRES "Requires: xerces-c uuid")
  set(TARNMF_PC_DEFINITIONS "-DTARNMF_STATIC -DBTK_STATIC")
endif()
configure_file(cmake/tarnmf.pc.in ${PROJECT_BINARY_DIR}/tarnmf.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tarnmf.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)

if(TARNMF_BUILD_TOOL)
  install(TARGETS tarnmf_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  # For editors: what documents name in <?xml-model?>.
  install(FILES docs/schema/tarnmf-manifest.rng docs/schema/tarnmf-manifest.xsd
    DESTINATION ${CMAKE_INSTALL_DATADIR}/tarnmf COMPONENT tool)
endif()

# The documents as they lie in the sources, so that their links lead somewhere, and the reference where
# target docs has made one.
install(FILES README.md CHANGELOG.md LICENSE SECURITY.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/reference
  COMPONENT documentation OPTIONAL)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY samples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
  PATTERN CMakeLists.txt EXCLUDE PATTERN src EXCLUDE)
