# Where an installed program lies, and the Debian package of it.
#
# The bundle is all that runs; the component "system" makes it known to a Linux desktop. Scripts/package makes the
# packages.

set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(IDENTIFIER app.brindlewick.Brindlewick)
set(BUNDLE lib/brindlewick/Brindlewick.app)
set(MADE ${PROJECT_BINARY_DIR}/packaging)
cmake_path(GET PROJECT_BINARY_DIR FILENAME PRESET)

# The programs come as targets, since those are stripped on the way.
install(CODE "execute_process(
    COMMAND \"${PROJECT_SOURCE_DIR}/Scripts/make-app\" --built ${PRESET} COMMAND_ERROR_IS_FATAL ANY)" COMPONENT bundle)
install(DIRECTORY ${PROJECT_BINARY_DIR}/Brindlewick.app DESTINATION lib/brindlewick COMPONENT bundle
        PATTERN MacOS EXCLUDE PATTERN Helpers EXCLUDE)
install(TARGETS Brindlewick DESTINATION ${BUNDLE}/Contents/MacOS COMPONENT bundle)
install(TARGETS brindlewick-report brindlewick-statusline DESTINATION ${BUNDLE}/Contents/Helpers COMPONENT bundle)

file(MAKE_DIRECTORY ${MADE}/bin)
file(CREATE_LINK ../${BUNDLE}/Contents/MacOS/Brindlewick ${MADE}/bin/brindlewick SYMBOLIC)
file(CREATE_LINK ../${BUNDLE}/Contents/Helpers/brindlewick-report ${MADE}/bin/brindlewick-report SYMBOLIC)
install(FILES ${MADE}/bin/brindlewick ${MADE}/bin/brindlewick-report DESTINATION bin COMPONENT system)

install(FILES Resources/${IDENTIFIER}.desktop DESTINATION share/applications COMPONENT system)
install(FILES Resources/${IDENTIFIER}.metainfo.xml DESTINATION share/metainfo COMPONENT system)
install(FILES Resources/completions/brindlewick-report.bash DESTINATION share/bash-completion/completions
        RENAME brindlewick-report COMPONENT system)
install(FILES Resources/completions/_brindlewick-report DESTINATION share/zsh/vendor-completions COMPONENT system)
file(GLOB FONT_LICENCES CONFIGURE_DEPENDS Resources/fonts/*-OFL.txt)
install(FILES Resources/debian/copyright ${FONT_LICENCES} DESTINATION share/doc/brindlewick COMPONENT system)

# The program draws its icon itself.
install(CODE "execute_process(
    COMMAND \"${CMAKE_COMMAND}\" -E env \"HOME=${MADE}\" QT_QPA_PLATFORM=offscreen
            \"${PROJECT_BINARY_DIR}/bin/Brindlewick\" --dump-iconset \"${MADE}/icons\"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)" COMPONENT system)
foreach(ICON 16:16x16 32:32x32 64:32x32@2x 128:128x128 256:256x256 512:512x512)
    string(REPLACE ":" ";" ICON ${ICON})
    list(POP_FRONT ICON SIDE)
    install(FILES ${MADE}/icons/icon_${ICON}.png DESTINATION share/icons/hicolor/${SIDE}x${SIDE}/apps
            RENAME ${IDENTIFIER}.png COMPONENT system)
endforeach()

foreach(PAGE brindlewick brindlewick-report brindlewick-statusline)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS Resources/man/${PAGE}.1)
    execute_process(COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/Resources/man/${PAGE}.1
                    OUTPUT_FILE ${MADE}/${PAGE}.1.gz COMMAND_ERROR_IS_FATAL ANY)
    install(FILES ${MADE}/${PAGE}.1.gz DESTINATION share/man/man1 COMPONENT system)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME brindlewick)
set(CPACK_PACKAGE_CONTACT "The Brindlewick authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "usage meter for people who work with Claude Code under limits")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"How close are you to your limits, and where is this week heading?
Brindlewick shows it in the tray, in a dashboard and in the terminal. It reads
the session logs in the home folder and the official percentages that Claude
Code hands to a status line; it uses no network and sends nothing anywhere.")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS tzdata)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "default-dbus-session-bus | dbus-session-bus")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt6-wayland)
include(CPack)
