# Installing the program the way a desktop expects (GNUInstallDirs layout: program,
# menu entry, icons, software-centre data, manual page, changelog and licence) and the Debian package built
# from that same installation. CINEFITA_APP_ID names the menu entry, the metadata
# and the icon.
include(GNUInstallDirs)

set(CINEFITA_RELEASE_DATE "2026-11-23")
set(packaging_dir "${CMAKE_CURRENT_LIST_DIR}")
set(packaging_out "${CMAKE_BINARY_DIR}/packaging")

install(TARGETS cinefita RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

configure_file("${packaging_dir}/cinefita.desktop.in" "${packaging_out}/${CINEFITA_APP_ID}.desktop" @ONLY)
configure_file("${packaging_dir}/metainfo.xml.in" "${packaging_out}/${CINEFITA_APP_ID}.metainfo.xml" @ONLY)
install(FILES "${packaging_out}/${CINEFITA_APP_ID}.desktop" DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES "${packaging_out}/${CINEFITA_APP_ID}.metainfo.xml" DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES "${packaging_dir}/copyright" DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The icons are the splash's tape logo drawn by a small tool at build time, so
# they follow any change to the drawing.
add_executable(cinefita_icon "${packaging_dir}/IconTool.cpp")
target_link_libraries(cinefita_icon PRIVATE cinefita_ui)
set(icon_files "")
foreach(size 48 64 128 256)
    set(icon "${packaging_out}/icons/${size}x${size}/${CINEFITA_APP_ID}.png")
    add_custom_command(OUTPUT "${icon}"
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0
                $<TARGET_FILE:cinefita_icon> ${size} "${icon}"
        DEPENDS cinefita_icon
        COMMENT "Drawing the ${size} px icon"
        VERBATIM)
    list(APPEND icon_files "${icon}")
    install(FILES "${icon}" DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()
add_custom_target(cinefita_icons ALL DEPENDS ${icon_files})

# The manual page and the Debian changelog go in compressed as Debian wants them
# (gzip -9 with no name or time stamp, so a rebuild gives the same bytes). The
# picture of the window is the --preview picture, drawn offscreen into a fresh
# data folder: AppStream takes only web addresses for screenshots, so it ships
# with the documentation instead.
find_program(GZIP_COMMAND gzip REQUIRED)
set(manual "${packaging_out}/cinefita.1.gz")
set(changelog "${packaging_out}/changelog.gz")
set(screenshot "${packaging_out}/cinefita-tela.png")
set(preview_data "${packaging_out}/preview-data")
add_custom_command(OUTPUT "${manual}"
    COMMAND ${GZIP_COMMAND} -9nc "${packaging_dir}/cinefita.1" > "${manual}"
    DEPENDS "${packaging_dir}/cinefita.1"
    VERBATIM)
add_custom_command(OUTPUT "${changelog}"
    COMMAND ${GZIP_COMMAND} -9nc "${packaging_dir}/changelog" > "${changelog}"
    DEPENDS "${packaging_dir}/changelog"
    VERBATIM)
add_custom_command(OUTPUT "${screenshot}"
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${preview_data}"
    COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0
            CINEFITA_DATA_DIR=${preview_data} CINEFITA_PREVIEW_PATH=${screenshot}
            $<TARGET_FILE:cinefita> --preview
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${preview_data}"
    DEPENDS cinefita
    COMMENT "Taking the picture of the window"
    VERBATIM)
add_custom_target(cinefita_docs ALL DEPENDS "${manual}" "${changelog}" "${screenshot}")
install(FILES "${manual}" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES "${changelog}" "${screenshot}" DESTINATION ${CMAKE_INSTALL_DOCDIR})

# Installing must not build the tests and the benchmark: `make package` builds the
# program, the icons and the documents itself, then CPack only collects them.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "cinefita")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "Equipe CINEFITA <equipe@cinefita.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "VHS rental shop manager with the look of a 1994 terminal")
set(CPACK_PACKAGE_DESCRIPTION
    "CINEFITA runs a small video rental shop: films with numbered tape copies,\n"
    "members, rentals and returns with fines and rewind fees, and the cash book.\n"
    "It prints barcode labels and membership cards, imports films from CSV and\n"
    "keeps its data in a local SQLite database. Texts are in Brazilian Portuguese.")
string(JOIN "" CPACK_PACKAGE_DESCRIPTION ${CPACK_PACKAGE_DESCRIPTION})
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION "misc")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt's window-system plugins are only recommended by its libraries; without them
# the window cannot open.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
include(CPack)
