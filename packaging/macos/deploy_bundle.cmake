# Puts the toolkit and every other library that is not part of the system into a bundle.
#
#   cmake -DBUNDLE="Norvo Spruce.app" -DMACDEPLOYQT=/path/macdeployqt -P packaging/macos/deploy_bundle.cmake
#
# The tool looks at the executable that the property list names; the helpers beside it are named to
# it here, so that their libraries come along.
cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/bundle_programs.cmake")
if(NOT DEFINED MACDEPLOYQT)
  message(FATAL_ERROR "MACDEPLOYQT is needed")
endif()

bundle_programs("${BUNDLE}" main helpers)
set(arguments)
foreach(helper IN LISTS helpers)
  list(APPEND arguments "-executable=${helper}")
endforeach()
execute_process(COMMAND "${MACDEPLOYQT}" "${BUNDLE}" ${arguments} COMMAND_ERROR_IS_FATAL ANY)
