# SPDX-License-Identifier: Apache-2.0
# Release builds make it hard to turn a fault into an attack: the linker's tables are read-only once
# everything is bound, functions with arrays look after their stack, and the C library checks the
# sizes of what it copies into.
option(TARNMF_HARDENING "Harden release builds" ON)

include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection=full TARNMF_HAS_CF_PROTECTION)

# Sanitizers bring checks of their own, and other systems other means.
set(TARNMF_HARDENED OFF)
if(TARNMF_HARDENING AND NOT TARNMF_SANITIZE AND UNIX AND NOT APPLE)
  set(TARNMF_HARDENED ON)
  target_compile_options(tarnmf_options INTERFACE
    $<$<CONFIG:Release,RelWithDebInfo>:-fstack-protector-strong>)
  target_compile_definitions(tarnmf_options INTERFACE
    $<$<CONFIG:Release,RelWithDebInfo>:_FORTIFY_SOURCE=2>)
  if(TARNMF_HAS_CF_PROTECTION)
    target_compile_options(tarnmf_options INTERFACE
      $<$<CONFIG:Release,RelWithDebInfo>:-fcf-protection=full>)
  endif()
  target_link_options(tarnmf_options INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)
endif()
