# A menu entry for each edition, and what software catalogues say about it.
#
# Both have the identifier of the edition's bundle, in small letters as catalogues want it.
function(norvo_list_of_kinds edition variable)
  set(name_photo "photos")
  set(name_video "videos")
  set(name_raw "raw files")
  set(name_audio "audio")
  set(names)
  foreach(kind IN LISTS NORVO_${edition}_KINDS)
    list(APPEND names "${name_${kind}}")
  endforeach()
  list(POP_BACK names last)
  list(JOIN names ", " text)
  if(names)
    string(APPEND text " and ")
  endif()
  set(${variable} "${text}${last}" PARENT_SCOPE)
endfunction()

# A keyword for each search type, the edition's own, and what people look for in their distress.
function(norvo_keywords edition variable)
  set(keywords recovery undelete lost deleted formatted ${NORVO_${edition}_KINDS}
      ${NORVO_${edition}_KEYWORDS})
  list(REMOVE_DUPLICATES keywords)
  set(${variable} "${keywords}" PARENT_SCOPE)
endfunction()

function(norvo_menu_entry edition)
  string(TOLOWER "${edition}" page)
  set(id "org.norvo.recovery.${page}")
  set(name "Norvo ${edition}")
  set(purpose "${NORVO_${edition}_PURPOSE}")
  set(media "${NORVO_${edition}_MEDIA}")
  norvo_list_of_kinds("${edition}" kinds)
  norvo_keywords("${edition}" keywords)
  list(TRANSFORM keywords REPLACE "(.+)" "    <keyword>\\1</keyword>" OUTPUT_VARIABLE keyword_lines)
  list(JOIN keyword_lines "\n" keyword_lines)
  set(executable "${NORVO_BUNDLE_PLACE}/${name}.app/Contents/MacOS/${name}")
  configure_file(edition.desktop.in "${NORVO_SHARE}/applications/${id}.desktop" @ONLY)
  configure_file(edition.metainfo.xml.in "${NORVO_SHARE}/metainfo/${id}.metainfo.xml" @ONLY)
  install(FILES "${NORVO_SHARE}/applications/${id}.desktop"
          DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
  install(FILES "${NORVO_SHARE}/metainfo/${id}.metainfo.xml"
          DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
endfunction()

foreach(edition IN LISTS NORVO_EDITIONS)
  norvo_menu_entry("${edition}")
endforeach()
