# Writes the policy that lets pkexec ask for the administrator's password: one action for each
# edition, as an action holds for exactly one executable.
#
#   cmake -DFOLDER=/opt/norvo -DOUTPUT=org.norvo.recovery.policy -P packaging/linux/make_policy.cmake
#
# FOLDER is where the bundles lie. The policy belongs into /usr/share/polkit-1/actions/.
cmake_minimum_required(VERSION 3.25)
if(NOT DEFINED FOLDER OR NOT DEFINED OUTPUT)
  message(FATAL_ERROR "FOLDER and OUTPUT are needed")
endif()
if(NOT FOLDER MATCHES "^/[A-Za-z0-9/._-]*$")
  message(FATAL_ERROR "FOLDER must be an absolute path without special characters: ${FOLDER}")
endif()

include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/NorvoEditions.cmake")
set(folder "${FOLDER}")
set(actions "")
foreach(edition IN LISTS NORVO_EDITIONS)
  string(TOLOWER "${edition}" id)
  set(name "Norvo ${edition}")
  file(READ "${CMAKE_CURRENT_LIST_DIR}/action.xml.in" action)
  string(CONFIGURE "${action}" action @ONLY)
  string(APPEND actions "${action}")
endforeach()
configure_file("${CMAKE_CURRENT_LIST_DIR}/policy.xml.in" "${OUTPUT}" @ONLY)
