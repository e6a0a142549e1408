# What every target is compiled with: warnings are errors, sanitizers by preset, ccache where it is there.
find_program(CELLDESK_CCACHE ccache)
if(CELLDESK_CCACHE)
  # Every build folder of every clone finds what another has compiled.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CELLDESK_CCACHE})
endif()

add_library(celldesk_options INTERFACE)
target_include_directories(celldesk_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(celldesk_options INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wconversion
  -Wno-sign-conversion -Woverloaded-virtual -Wimplicit-fallthrough)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Its optimiser sees an overlap in every "literal" + string (GCC bug 105651).
  target_compile_options(celldesk_options INTERFACE $<$<CONFIG:Release>:-Wno-restrict>)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # What two threads share is declared beside its lock, and checked here.
  target_compile_options(celldesk_options INTERFACE -Wthread-safety)
endif()

if(CELLDESK_SANITIZE)
  add_compile_options(-fsanitize=${CELLDESK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${CELLDESK_SANITIZE})
endif()
