# The Debian package, as `cpack -G DEB` makes it; ./package calls it with the right options.
if(GZIP)
    # Always the same bytes: -n leaves out name and time.
    configure_file(debian/changelog changelog.Debian COPYONLY)
    configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog COPYONLY)
    set(changes ${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian ${CMAKE_CURRENT_BINARY_DIR}/changelog)
    execute_process(COMMAND ${GZIP} -9nkf ${changes} COMMAND_ERROR_IS_FATAL ANY)
    list(TRANSFORM changes APPEND .gz)
    install(FILES ${changes} DESTINATION ${OSTROVA_DOC_FOLDER}
        COMPONENT debian EXCLUDE_FROM_ALL)
endif()
install(FILES debian/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
    RENAME ostrova COMPONENT debian EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ostrova)
set(CPACK_PACKAGE_VENDOR "The Ostrova developers")
set(CPACK_PACKAGE_CONTACT "The Ostrova developers <ostrova@kelvane.example>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tells which of your favourites Vantra played")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Fetches the playlists of Vantra, a weekly music-video programme of three
shows a weekend, keeps every page for ever, and compares the songs,
forgivingly, with a list of favourites.

The package holds the window, a background process that waits for each
new weekend, and ostrova-cli for the terminal and for scripts.")
set(CPACK_PACKAGE_HOMEPAGE_URL https://www.kelvane.example/ostrova/)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# For https; for opening links; for a desktop that speaks Wayland.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ca-certificates")
if(OSTROVA_WINDOW)
    string(APPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS ", fonts-dejavu-core, qt6-wayland, xdg-utils")
endif()
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 0)

# The package holds what the file system of a machine will hold: names are those of the prefix that
# was configured, whatever folder the files are gathered in.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL program debian)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
include(CPack)
