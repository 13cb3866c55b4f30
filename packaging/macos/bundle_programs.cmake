# bundle_programs(<bundle> <main variable> <helpers variable>)
#
# The programs of a bundle: the one that bears the bundle's name, and those beside it.
function(bundle_programs bundle main_variable helpers_variable)
  cmake_path(GET bundle STEM LAST_ONLY name)
  set(main "${bundle}/Contents/MacOS/${name}")
  if(NOT EXISTS "${main}")
    message(FATAL_ERROR "\"${bundle}\" is no bundle: it has no ${main}")
  endif()
  file(GLOB helpers "${bundle}/Contents/MacOS/*")
  list(REMOVE_ITEM helpers "${main}")
  set(${main_variable} "${main}" PARENT_SCOPE)
  set(${helpers_variable} "${helpers}" PARENT_SCOPE)
endfunction()
