# norvo_library(<folder> SOURCES ... [LINKS ...])
#
# One static library per folder of src/. LINKS names the folders on floors below; nothing else is
# visible to the linker, so code that reaches up a floor does not link.
function(norvo_library folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  string(REPLACE "/" "_" name "norvo_${folder}")
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  foreach(below IN LISTS ARG_LINKS)
    string(REPLACE "/" "_" below_name "norvo_${below}")
    target_link_libraries(${name} PUBLIC ${below_name})
  endforeach()
  if(ARG_PRIVATE_LINKS)
    target_link_libraries(${name} PRIVATE ${ARG_PRIVATE_LINKS})
  endif()
endfunction()
