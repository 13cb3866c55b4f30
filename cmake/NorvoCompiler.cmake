# Language level, warnings, sanitizers and the compiler cache, for every target alike.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

# Offsets on devices pass 2 GiB on every system.
add_compile_definitions(_FILE_OFFSET_BITS=64)

option(NORVO_WERROR "Treat warnings as errors" OFF)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                    -Wnon-virtual-dtor -Woverloaded-virtual)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies where a string literal and a std::string are added.
  add_compile_options(-Wno-restrict)
endif()
if(NORVO_WERROR)
  add_compile_options(-Werror)
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
  set(CMAKE_CXX_COMPILER_LAUNCHER "${NORVO_CCACHE}")
endif()
