# Language level, warnings, sanitizers and the compiler cache, for every target alike.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

# -O3 makes nothing faster outside the engine, which sets it for itself.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

# What sanitizers need: lines for stack traces, and speed where the searches are.
set(CMAKE_CXX_FLAGS_SANITIZED "-O1 -g1")

# Sources that are compiled together share the reading of their headers, which is most of the time
# that they take. What people get is compiled source by source all the same, so that every source is
# known to include what it uses.
set(NORVO_UNITY "tests" CACHE STRING "What is compiled together: nothing, tests or everything")
set_property(CACHE NORVO_UNITY PROPERTY STRINGS nothing tests everything)

# For the folder that calls it and those below.
macro(norvo_compile_together)
  set(CMAKE_UNITY_BUILD ON)
  set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
  set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
  # A name of one source may be that of a variable in the next one.
  add_compile_options(-Wno-shadow)
endmacro()

# Offsets on devices pass 2 GiB on every system.
add_compile_definitions(_FILE_OFFSET_BITS=64)

option(NORVO_WERROR "Treat warnings as errors" OFF)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                    -Wnon-virtual-dtor -Woverloaded-virtual)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping, endless and stray copies where literals and strings are added.
  add_compile_options(-Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
if(NORVO_WERROR)
  add_compile_options(-Werror)
endif()

# The program reads what strangers wrote: the tables through which it calls libraries are filled at
# the start and cannot be written to any more.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  add_link_options(LINKER:-z,relro,-z,now)
endif()

set(NORVO_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address,undefined")
if(NORVO_SANITIZE)
  add_compile_options(-fsanitize=${NORVO_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=${NORVO_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 reports false "maybe uninitialized" warnings in instrumented library headers.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()

find_program(NORVO_CCACHE ccache)
if(NORVO_CCACHE)
  # Precompiled headers carry times and definitions that the cache need not look at. Paths below the
  # tree are taken as relative, so that a second clone finds what the first one compiled source by
  # source (a group names its sources by their whole paths); the mapped prefix keeps the first one's
  # folder out of what the debugger and messages show.
  file(RELATIVE_PATH NORVO_UP "${CMAKE_BINARY_DIR}" "${PROJECT_SOURCE_DIR}")
  string(REGEX REPLACE "/$" "" NORVO_UP "${NORVO_UP}")
  set(CMAKE_CXX_COMPILER_LAUNCHER
      "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros
      "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1 "${NORVO_CCACHE}")
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
                      "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=${NORVO_UP}")
endif()

if(NORVO_UNITY STREQUAL "everything")
  norvo_compile_together()
endif()
