# Signs a bundle from the inside out: a signature holds what lies within it as it is at that moment.
#
#   cmake -DBUNDLE="Norvo Spruce.app" -DIDENTITY="Developer ID Application: ..." -P packaging/macos/sign_bundle.cmake
#
# IDENTITY names a certificate in the keychain; the programs are then signed for the hardened runtime,
# with a time stamp, as notarising demands. "-", which is the default, signs for this machine only:
# such a signature belongs to no team, and the hardened runtime would refuse the bundle's own
# libraries.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/bundle_programs.cmake")
if(NOT DEFINED CODESIGN)
  set(CODESIGN /usr/bin/codesign)
endif()
if(NOT DEFINED IDENTITY)
  set(IDENTITY "-")
endif()

set(how --force --sign "${IDENTITY}")
set(how_programs ${how})
if(NOT IDENTITY STREQUAL "-")
  list(APPEND how --timestamp)
  set(how_programs ${how} --options runtime
      --entitlements "${CMAKE_CURRENT_LIST_DIR}/norvo-recovery.entitlements")
endif()

function(sign what)
  execute_process(COMMAND "${CODESIGN}" ${ARGN} "${what}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

bundle_programs("${BUNDLE}" main helpers)
file(GLOB_RECURSE plug_ins "${BUNDLE}/Contents/PlugIns/*.dylib")
file(GLOB libraries "${BUNDLE}/Contents/Frameworks/*.dylib")
file(GLOB frameworks LIST_DIRECTORIES true "${BUNDLE}/Contents/Frameworks/*.framework")
foreach(library IN LISTS libraries frameworks plug_ins)
  sign("${library}" ${how})
endforeach()
foreach(helper IN LISTS helpers)
  sign("${helper}" ${how_programs})
endforeach()
# Signs the program that bears the bundle's name as well.
sign("${BUNDLE}" ${how_programs})
execute_process(COMMAND "${CODESIGN}" --verify --strict --deep "${BUNDLE}"
                COMMAND_ERROR_IS_FATAL ANY)
