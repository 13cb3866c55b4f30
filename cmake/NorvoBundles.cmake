# The seven bundles, one for each edition, from one executable.
#
# A bundle's executable bears the bundle folder's name: the program that asks for the administrator
# right looks for it there.
set(NORVO_BUNDLES "${CMAKE_BINARY_DIR}/bundles")
include(NorvoEditions)

# norvo_bundles(<executable> HELPERS <targets> RESOURCES <files>)
#
# HELPERS are programs that stand beside the executable; RESOURCES are put into every bundle's
# resource folder, and so are the signature files of its edition.
function(norvo_bundles executable)
  cmake_parse_arguments(ARG "" "" "HELPERS;RESOURCES;DEPENDS" ${ARGN})
  set(stamps)
  foreach(edition IN LISTS NORVO_EDITIONS)
    norvo_bundle("${executable}" "${edition}" "${ARG_HELPERS}" "${ARG_RESOURCES}" "${ARG_DEPENDS}" stamp)
    list(APPEND stamps "${stamp}")
  endforeach()
  add_custom_target(norvo_bundles ALL DEPENDS ${stamps})
endfunction()

function(norvo_bundle executable edition helpers resources depends stamp_variable)
  set(NORVO_EDITION "${edition}")
  set(NORVO_BUNDLE "Norvo ${edition}")
  set(bundle "${NORVO_BUNDLES}/${NORVO_BUNDLE}.app")
  configure_file("${PROJECT_SOURCE_DIR}/packaging/bundle/Info.plist.in"
                 "${bundle}/Contents/Info.plist" @ONLY)
  file(GLOB signatures "${NORVO_SIGNATURES}/${NORVO_${edition}_PREFIX}*.dll")
  set(helper_files)
  foreach(helper IN LISTS helpers)
    list(APPEND helper_files "$<TARGET_FILE:${helper}>")
  endforeach()
  set(copy_helpers)
  if(helper_files)
    set(copy_helpers COMMAND "${CMAKE_COMMAND}" -E copy_if_different ${helper_files}
                             "${bundle}/Contents/MacOS")
  endif()
  set(stamp "${CMAKE_BINARY_DIR}/bundle-stamps/${edition}")
  add_custom_command(OUTPUT "${stamp}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory
            "${bundle}/Contents/MacOS" "${bundle}/Contents/Resources"
            "${CMAKE_BINARY_DIR}/bundle-stamps"
    COMMAND "${CMAKE_COMMAND}" -E copy "$<TARGET_FILE:${executable}>"
            "${bundle}/Contents/MacOS/${NORVO_BUNDLE}"
    ${copy_helpers}
    COMMAND "${CMAKE_COMMAND}" -E copy_if_different ${signatures} ${resources}
            "${bundle}/Contents/Resources"
    COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
    DEPENDS ${executable} ${helpers} ${signatures} ${resources} ${depends}
    COMMENT "Putting ${NORVO_BUNDLE}.app together"
    VERBATIM)
  set(${stamp_variable} "${stamp}" PARENT_SCOPE)
endfunction()
