# SPDX-License-Identifier: Apache-2.0
# Options that all our own code is compiled with.
add_library(tarnmf_options INTERFACE)

if(MSVC)
  target_compile_options(tarnmf_options INTERFACE /W4 /permissive-)
else()
  target_compile_options(tarnmf_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    # The queries make many short calls into the platform; each is one jump shorter.
    $<$<AND:$<CONFIG:Release>,$<NOT:$<BOOL:${WIN32}>>>:-fno-plt>)
endif()
if(WIN32)
  target_compile_definitions(tarnmf_options INTERFACE
    # What is not declared as imported is found in a DLL just as well as in the same file, which is
    # where the tests have everything.
    BTK_STATIC TARNMF_STATIC
    _WIN32_WINNT=0x0A00 NOMINMAX UNICODE WIN32_LEAN_AND_MEAN)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Optimised, g++ 12 sees overlapping copies inside std::string where there are none.
  target_compile_options(tarnmf_options INTERFACE -Wno-restrict)
  if(TARNMF_SANITIZE)
    # With sanitizers, it sees members of std::regex's own states that are not initialised.
    target_compile_options(tarnmf_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(TARNMF_WARNINGS_AS_ERRORS)
  set_property(TARGET tarnmf_options APPEND PROPERTY INTERFACE_COMPILE_OPTIONS
    $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()

if(TARNMF_SANITIZE)
  add_compile_options(-fsanitize=${TARNMF_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TARNMF_SANITIZE})
endif()
if(TARNMF_BUILD_FUZZERS)
  # Everything counts what it runs; the targets themselves add the fuzzer.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
