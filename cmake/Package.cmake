# The Debian package, made by `cpack` in the build folder of the preset "package". Only programs and files of
# the install rules go in; the libraries that it needs are read off the programs.

find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(GZIP gzip REQUIRED)

# Pictures of the icon for desktops that draw no SVG.
set(icon "${PROJECT_SOURCE_DIR}/packaging/desktop/tallvex.svg")
set(icons "${CMAKE_BINARY_DIR}/icons")
set(pictures "")
foreach(size 16 24 32 48 64 128 256)
    set(picture "${icons}/hicolor/${size}x${size}/apps/tallvex.png")
    cmake_path(GET picture PARENT_PATH folder)
    file(MAKE_DIRECTORY "${folder}")
    add_custom_command(OUTPUT "${picture}" DEPENDS "${icon}" VERBATIM
                       COMMAND "${RSVG_CONVERT}" -w ${size} -h ${size} -o "${picture}" "${icon}")
    list(APPEND pictures "${picture}")
endforeach()
install(DIRECTORY "${icons}/hicolor" DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES "${icon}" DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# Debian wants manual pages and the changelog compressed, without a date in them.
set(zipped "${CMAKE_BINARY_DIR}/zipped")
file(MAKE_DIRECTORY "${zipped}")
file(GLOB pages CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/packaging/man/*.[15]")
set(changes "${PROJECT_SOURCE_DIR}/docs/changes.md")
set(make_changelog "${PROJECT_SOURCE_DIR}/packaging/debian/make-changelog")
add_custom_command(OUTPUT "${zipped}/changelog" DEPENDS "${changes}" "${make_changelog}" VERBATIM
                   COMMAND "${make_changelog}" "${changes}" > "${zipped}/changelog")
set(archives "")
foreach(file IN LISTS pages ITEMS "${zipped}/changelog")
    cmake_path(GET file FILENAME name)
    add_custom_command(OUTPUT "${zipped}/${name}.gz" DEPENDS "${file}" VERBATIM
                       COMMAND "${GZIP}" -9nc "${file}" > "${zipped}/${name}.gz")
    list(APPEND archives "${zipped}/${name}.gz")
    cmake_path(GET file EXTENSION LAST_ONLY section)
    if(section MATCHES "^\\.([15])$")
        install(FILES "${zipped}/${name}.gz" DESTINATION ${CMAKE_INSTALL_MANDIR}/man${CMAKE_MATCH_1})
    endif()
endforeach()
add_custom_target(package_files ALL DEPENDS ${pictures} ${archives})
install(FILES "${zipped}/changelog.gz" "${PROJECT_SOURCE_DIR}/packaging/debian/copyright" TYPE DOC)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tallvex)
set(CPACK_PACKAGE_CONTACT "Tallvex maintainers <maintainers@tallvex.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "till and office of a retail shop, in Arabic")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Tallvex is the till of a shop: sign in, ring up items by code, barcode, scale
label or name, take cash, card or account, print the receipt, open the drawer;
around it shifts, cash statements, customers, vouchers, offers and transfers
between stores. Right to left, keyboard first.
.
Several tills share one SQL Server; a shop without one keeps its data in a
file. The package brings the till, the owner's office, the shop keeper's tool
and the player of cashiers' stories, and names for the printer and the drawer.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no program is linked with: the user, the server's driver, the fonts of screen and paper.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "adduser, fonts-dejavu-core, fonts-noto-core, tdsodbc")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "cups, libasound2, x11-xserver-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "lightdm, xserver-xorg")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
file(WRITE "${CMAKE_BINARY_DIR}/debian/conffiles" "/etc/tallvex/till.conf\n/etc/xdg/autostart/tallvex-till.desktop\n")
configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/postinst.in" "${CMAKE_BINARY_DIR}/debian/postinst" @ONLY)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
    "${CMAKE_BINARY_DIR}/debian/conffiles" "${CMAKE_BINARY_DIR}/debian/postinst"
    "${PROJECT_SOURCE_DIR}/packaging/debian/postrm")
include(CPack)
