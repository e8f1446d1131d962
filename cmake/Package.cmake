# What `cmake --install` puts where, and the Debian package of the same (`cpack -G DEB`).
include(GNUInstallDirs)

if(TARGET torvane)
  install(TARGETS torvane torvane-check torvane-sim torvane-office torvane-generate torvane-journal
                  torvane-contract
          RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  # What torvane-check turns into for pictures and JSON; it looks for it there.
  install(TARGETS torvane-check-qt RUNTIME DESTINATION libexec/torvane)
  install(PROGRAMS packaging/torvane-simulated DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES packaging/torvane.desktop packaging/torvane-simulated.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES packaging/torvane.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(DIRECTORY examples/installation examples/monitoring DESTINATION ${CMAKE_INSTALL_DATADIR}/torvane)
  install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
  install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME torvane)
set(CPACK_PACKAGE_VENDOR "The Torvane developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Operator console of a sheet-metal laser profiling machine")
set(CPACK_PACKAGE_DESCRIPTION
"Torvane 32 runs full screen on the PC beside the motion controller: it checks
G-code part programs, turns them into the controller's table lines, feeds them
while the machine cuts, and shows plot, live trace and messages. With a checker
for part programs and a simulated machine.")
set(CPACK_PACKAGE_INSTALL_DIRECTORY torvane)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Torvane developers <torvane@localhost>")
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-b612, qt6-qpa-plugins")
include(CPack)
