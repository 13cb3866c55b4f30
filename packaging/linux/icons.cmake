# The icon of each edition: the program's drawing on a ground of the edition's own colour, as it is
# and, where rsvg-convert is there, as pictures for what reads no drawings. A package has both.
find_program(NORVO_RSVG_CONVERT rsvg-convert)
set(NORVO_ICON_SIZES 16 24 32 48 64 128 256 512)
set(drawing "${PROJECT_SOURCE_DIR}/resources/icons/norvo-recovery.svg")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${drawing}")
set(icons "${NORVO_SHARE}/icons/hicolor")

file(READ "${drawing}" program_icon)
set(program_tint "${NORVO_Spruce_TINT}")
if(NOT program_icon MATCHES "${program_tint}")
  message(FATAL_ERROR "${drawing} has not the colour of its ground, ${program_tint}")
endif()

function(norvo_icon edition)
  string(TOLOWER "org.norvo.recovery.${edition}" id)
  set(scalable "${icons}/scalable/apps/${id}.svg")
  string(REPLACE "${program_tint}" "${NORVO_${edition}_TINT}" icon "${program_icon}")
  file(CONFIGURE OUTPUT "${scalable}" CONTENT "${icon}" @ONLY)
  if(NOT NORVO_RSVG_CONVERT)
    return()
  endif()
  set(pictures)
  set(commands)
  foreach(size IN LISTS NORVO_ICON_SIZES)
    set(folder "${icons}/${size}x${size}/apps")
    list(APPEND pictures "${folder}/${id}.png")
    list(APPEND commands
      COMMAND "${CMAKE_COMMAND}" -E make_directory "${folder}"
      COMMAND "${NORVO_RSVG_CONVERT}" --width=${size} --height=${size}
              "--output=${folder}/${id}.png" "${scalable}")
  endforeach()
  add_custom_command(OUTPUT ${pictures} ${commands} DEPENDS "${scalable}"
                     COMMENT "Drawing the icon of Norvo ${edition}" VERBATIM)
  add_custom_target("norvo_icon_${edition}" DEPENDS ${pictures})
  add_dependencies(norvo_icons "norvo_icon_${edition}")
endfunction()

add_custom_target(norvo_icons ALL)
foreach(edition IN LISTS NORVO_EDITIONS)
  norvo_icon("${edition}")
endforeach()
install(DIRECTORY "${icons}" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons"
        FILES_MATCHING PATTERN "*.svg" PATTERN "*.png")
