# What `cmake --install` places, and the Debian package of it (./package). Data is taken from where it was made: what lies
# beside the programs may have been changed there.
find_program(HELP2MAN help2man REQUIRED)
set(MADE_PACKAGE ${CMAKE_BINARY_DIR}/packaging)
file(MAKE_DIRECTORY ${MADE_PACKAGE})
set(PACKAGING ${CMAKE_SOURCE_DIR}/packaging)
set(APP_ID org.brinewhirl.Brinewhirl)
set(MAINTAINER "Brinewhirl developers <maintainers@brinewhirl.org>")
set(PACKAGE_PARTS "")

foreach(file ${GAME_FILES})
  get_filename_component(folder ${file} DIRECTORY)
  install(FILES game/${file} DESTINATION ${INSTALLED_DATA}/${folder})
endforeach()
foreach(svg ${PICTURES})
  get_filename_component(name ${svg} NAME_WE)
  install(FILES ${MADE_CONTENT}/Texture/${name}.png DESTINATION ${INSTALLED_DATA}/Texture)
endforeach()
install(FILES ${MADE_FONT} DESTINATION ${INSTALLED_DATA}/Texture/Fonts)
install(FILES "${MADE_CONTENT}/${BANK}" "${MADE_CONTENT}/${STRINGS_BANK}" DESTINATION ${INSTALLED_DATA}/AudioSource)
# Games have a folder of their own, which is not on everybody's path.
install(TARGETS brinewhirl DESTINATION games)
install(TARGETS brinewhirl-tool DESTINATION ${CMAKE_INSTALL_BINDIR})
file(CREATE_LINK ../games/brinewhirl ${MADE_PACKAGE}/brinewhirl-on-path SYMBOLIC)
install(FILES ${MADE_PACKAGE}/brinewhirl-on-path DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME brinewhirl)

# The manual pages say what --help says, which help2man asks the programs for.
function(add_manual program section help name)
  set(page ${MADE_PACKAGE}/${program}.${section})
  add_custom_command(
    OUTPUT ${page}.gz
    COMMAND ${HELP2MAN} --no-info --section ${section} --help-option=${help} --name ${name} --output ${page}
            --include ${PACKAGING}/see_also.h2m $<TARGET_FILE:${program}>
    COMMAND gzip -9nf ${page}
    DEPENDS ${program} ${PACKAGING}/manual_form.py ${PACKAGING}/see_also.h2m
    COMMENT "Writing the manual page ${program}(${section})"
    VERBATIM)
  install(FILES ${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
  set(PACKAGE_PARTS ${PACKAGE_PARTS} ${page}.gz PARENT_SCOPE)
endfunction()
add_manual(brinewhirl 6 --help "party game for four players on one screen")
add_manual(brinewhirl-tool 1 "--help-all | ${SYSTEM_PYTHON} ${PACKAGING}/manual_form.py" "runs, records, films and checks matches and levels of brinewhirl")

set(ICON ${CMAKE_SOURCE_DIR}/art/icon/brinewhirl.svg)
foreach(size 16 22 24 32 48 64 128 256 512)
  set(png ${MADE_PACKAGE}/icon-${size}.png)
  add_custom_command(
    OUTPUT ${png}
    COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} ${ICON} -o ${png}
    DEPENDS ${ICON}
    COMMENT "Drawing the icon ${size} pixels wide"
    VERBATIM)
  install(FILES ${png} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps RENAME ${APP_ID}.png)
  list(APPEND PACKAGE_PARTS ${png})
endforeach()
install(FILES ${ICON} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME ${APP_ID}.svg)

set(RELEASE_NOTES ${SYSTEM_PYTHON} ${PACKAGING}/release_notes.py ${CMAKE_SOURCE_DIR}/CHANGELOG.md ${PROJECT_VERSION})
set(METAINFO ${MADE_PACKAGE}/${APP_ID}.metainfo.xml)
set(DEBIAN_CHANGELOG ${MADE_PACKAGE}/changelog)
add_custom_command(
  OUTPUT ${METAINFO} ${DEBIAN_CHANGELOG}.gz
  COMMAND ${RELEASE_NOTES} metainfo ${PACKAGING}/${APP_ID}.metainfo.xml.in > ${METAINFO}
  COMMAND ${RELEASE_NOTES} debian ${MAINTAINER} > ${DEBIAN_CHANGELOG}
  COMMAND gzip -9nf ${DEBIAN_CHANGELOG}
  DEPENDS ${CMAKE_SOURCE_DIR}/CHANGELOG.md ${PACKAGING}/release_notes.py ${PACKAGING}/${APP_ID}.metainfo.xml.in
  COMMENT "Gathering the releases"
  VERBATIM)
list(APPEND PACKAGE_PARTS ${METAINFO} ${DEBIAN_CHANGELOG}.gz)
install(FILES ${METAINFO} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${PACKAGING}/${APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
set(PAGES playing making-levels level-format format-reference input-files bots balance)
list(TRANSFORM PAGES PREPEND docs/)
list(TRANSFORM PAGES APPEND .md)
install(FILES ${DEBIAN_CHANGELOG}.gz ${PACKAGING}/copyright ${PAGES} DESTINATION ${CMAKE_INSTALL_DOCDIR})
file(GLOB GUIDE_PICTURES CONFIGURE_DEPENDS docs/images/guide-*.png docs/images/balance-*.png)
install(FILES ${GUIDE_PICTURES} DESTINATION ${CMAKE_INSTALL_DOCDIR}/images)
install(FILES ${PACKAGING}/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME brinewhirl)

# Everything that is installed, and no test.
add_custom_target(package_parts DEPENDS ${PACKAGE_PARTS} brinewhirl brinewhirl-tool sound_banks content)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT ${MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "party game for four octopuses on one screen")
set(CPACK_PACKAGE_DESCRIPTION "Four players on one screen, with gamepads, the mouse or the keyboard: aim,
charge, let go and fly through a toy-box harbour while rules and pieces of the
stage come and go. The computer flies for whoever is missing.
.
A level editor opens over the running game, and brinewhirl-tool records, films
and checks matches and levels.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What SDL opens by name while it runs: the drivers, and the library of OpenGL ES.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libgl1-mesa-dri, libegl1, libgles2")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS ffmpeg) # the tool's films
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
