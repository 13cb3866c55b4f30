# The Debian package. tools/make_package builds what is in it first.
set(document_folder "${CMAKE_INSTALL_DATADIR}/doc/norvo-recovery")
set(packed_changelog "${CMAKE_CURRENT_BINARY_DIR}/changelog.gz")
add_custom_command(OUTPUT "${packed_changelog}"
  COMMAND gzip -9 --no-name --stdout "${NORVO_CHANGELOG}" > "${packed_changelog}"
  DEPENDS "${NORVO_CHANGELOG}" COMMENT "Packing the changelog" VERBATIM)
add_custom_target(norvo_changelog ALL DEPENDS "${packed_changelog}")
install(FILES "${CMAKE_CURRENT_LIST_DIR}/copyright" "${packed_changelog}"
              "${PROJECT_SOURCE_DIR}/docs/report.md"
        DESTINATION "${document_folder}")
install(FILES "${CMAKE_CURRENT_LIST_DIR}/lintian-overrides"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" RENAME norvo-recovery)

configure_file(debian/finish.cmake.in finish_package.cmake @ONLY)
install(SCRIPT "${CMAKE_CURRENT_BINARY_DIR}/finish_package.cmake")

# Everything that is built for the package.
add_custom_target(norvo_package_content
  DEPENDS norvo_bundles norvo-recover norvo_recover_documents norvo_changelog norvo_icons)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set(CPACK_PACKAGE_NAME norvo-recovery)
set(CPACK_PACKAGE_CONTACT "Norvo Recovery <spruce@support.norvo.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "brings lost photos, videos and audio back from memory cards")
set(CPACK_PACKAGE_DESCRIPTION
"Norvo Recovery reads a memory card or drive sector by sector, recognises lost
photos, videos, camera raw files and audio recordings by their first bytes and
copies them to another place. What it searches is opened for reading only.
.
Seven editions with a window, for different kinds of media, have menu entries;
norvo-recover does the same in a terminal.")
# DESTDIR, as the bundles have a place of their own outside of the prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://www.norvo.example")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_STRIP_FILES ON)
# Libraries by what the programs link; then what they load or start.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "pkexec, polkitd, qt6-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "hicolor-icon-theme, policykit-1-gnome | polkit-1-auth-agent, qt6-wayland, xdg-utils")
include(CPack)
