# SPDX-License-Identifier: Apache-2.0
# Builds an example with an installed copy and checks what it prints about its own load points, which
# its build has put below WORK. EXAMPLE is "plugin-host" or "service".
include(${CMAKE_CURRENT_LIST_DIR}/example.cmake)
file(REMOVE_RECURSE ${WORK})
build_example(${SOURCE}/examples/${EXAMPLE} ${WORK})

if(EXAMPLE STREQUAL "plugin-host")
  copy_libraries_to(${WORK})
  check(${WORK}/plugin-host "without a scope: vivid.filter, version 2: 100 becomes 150
in the scope: mild.filter, version 1: 100 becomes 110
in the scope, from version 2 on: vivid.filter, version 2: 100 becomes 150\n" ""
    ${DRIVE}${WORK} ${DRIVE}${WORK}/installations/mild/manifests
    ${DRIVE}${WORK}/installations/vivid/manifests)
else()
  copy_libraries_to(${WORK}/platform)
  check(${WORK}/platform/service "counter.journal: preloaded
counter.ledger: preloaded
Counter, version 3, started with --from 1; exposed\n" ""
    ${DRIVE}${WORK}/platform d1c8a5f2-3e67-4b90-9a14-7c05e2b80001)
  check(${WORK}/platform/service "counter.journal: preloaded
counter.console: preloaded
in no service\n" "" ${DRIVE}${WORK}/platform)
endif()
