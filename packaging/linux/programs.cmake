# The bundles, and the right to ask for an administrator's password.
include(GNUInstallDirs)

foreach(edition IN LISTS NORVO_EDITIONS)
  set(name "Norvo ${edition}")
  set(contents "${NORVO_BUNDLE_PLACE}/${name}.app/Contents")
  install(FILES "${NORVO_BUNDLES}/${name}.app/Contents/Info.plist" DESTINATION "${contents}")
  install(PROGRAMS "${NORVO_BUNDLES}/${name}.app/Contents/MacOS/${name}"
                   "$<TARGET_FILE:norvo-decoder>" "$<TARGET_FILE:norvo-player>"
          DESTINATION "${contents}/MacOS")
  # Desktops here know menu entries and their icons, no bundles.
  install(DIRECTORY "${NORVO_BUNDLES}/${name}.app/Contents/Resources" DESTINATION "${contents}"
          PATTERN "*.icns" EXCLUDE)
endforeach()
install(FILES "${NORVO_SHARE}/polkit-1/actions/org.norvo.recovery.policy"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/polkit-1/actions")
