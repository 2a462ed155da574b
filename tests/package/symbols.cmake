# SPDX-License-Identifier: Apache-2.0
# Compares what a library exports with the interface it is meant to have.
# cmake -D NM=... [-D OBJDUMP=... -D CXXFILT=...] -D LIBRARY=... -P symbols.cmake
set(expected
  btkConfEnableOption
  btkConfIsOptionKnown
  "MfSvcResolveT::operator=(MfSvcResolveT const&)"
  "MfSvcResolveT::operator=(MfSvcResolveT&&)"
  "liMfRepository::Initialize(btkFSList const&, char16_t const*)"
  "liMfRepository::Instance()"
  "liMfPublisher::CreateNew(liMfPublisher**, IntfDispositionT)")
foreach(record MfModuleT MfModuleImplT MfPreloadInfoT MfIntfClassT MfRunRoleBaseT MfAppRoleT
    MfLauncherRoleT MfServiceRoleT MfRunnableT MfLdpDataT)
  list(APPEND expected
    "${record}::${record}()" "${record}::~${record}()" "${record}::operator=(${record} const&)")
endforeach()
foreach(class liMfStmParser liLdpMfLoader liLdpMfWriter liMfBuilder)
  list(APPEND expected "${class}::CreateNew(char const*)")
endforeach()
foreach(class liMfStmParser liLdpMfLoader liLdpMfWriter liMfBuilder liMfPublisher)
  list(APPEND expected "${class}::Dispose()")
endforeach()
foreach(class liMfStmParser liLdpMfLoader liLdpMfWriter liMfBuilder liMfPublisher liMfRepository)
  list(APPEND expected
    "${class}::~${class}()" "vtable for ${class}" "typeinfo for ${class}")
  # Elsewhere names are compared as texts.
  if(NOT OBJDUMP)
    list(APPEND expected "typeinfo name for ${class}")
  endif()
endforeach()

include(${CMAKE_CURRENT_LIST_DIR}/symbol_names.cmake)
exported_names(exported ${LIBRARY})

set(missing ${expected})
list(REMOVE_ITEM missing ${exported})
set(unwanted ${exported})
list(REMOVE_ITEM unwanted ${expected})
if(missing OR unwanted)
  list(JOIN missing "\n  " missing)
  list(JOIN unwanted "\n  " unwanted)
  message(FATAL_ERROR "not exported:\n  ${missing}\nexported without need:\n  ${unwanted}\n")
endif()
