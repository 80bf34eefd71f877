# Installation of the editor with its data, and its Debian package.
#
#   cmake --install build [--prefix DIR]     (make install PREFIX=DIR)
#   cpack --config build/CPackConfig.cmake   (make package)
#
# Everything here belongs to the component "plax"; the Debian package holds
# that component alone, so other components of the tree are installed by
# `cmake --install` but never land in the editor's package.

# Installing and packaging take what is built (`make install` and `make
# package` build first) instead of building the whole tree, tests included.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(PLAX_INSTALL_DATADIR ${CMAKE_INSTALL_DATADIR}/plax)
set(PLAX_APP_ID org.quoxel2d.plax)

install(TARGETS plax RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT plax)
# The default configuration that the editor copies into a working folder
# without one, and the example scene.
install(DIRECTORY config/ DESTINATION ${PLAX_INSTALL_DATADIR}/config COMPONENT plax)
install(DIRECTORY examples/ DESTINATION ${PLAX_INSTALL_DATADIR}/examples COMPONENT plax)

# Desktop integration: menu entry, file type, icons, software-centre metadata.
install(FILES packaging/${PLAX_APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT plax)
install(FILES packaging/${PLAX_APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT plax)
install(FILES packaging/${PLAX_APP_ID}.mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
  RENAME ${PLAX_APP_ID}.xml COMPONENT plax)
install(DIRECTORY packaging/icons/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons COMPONENT plax)

# The manual page, compressed as Debian wants it when gzip is there.
find_program(PLAX_GZIP gzip)
if(PLAX_GZIP)
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/plax.1.gz
    COMMAND ${PLAX_GZIP} -9 -n -c ${PROJECT_SOURCE_DIR}/packaging/plax.1 > ${CMAKE_BINARY_DIR}/plax.1.gz
    DEPENDS ${PROJECT_SOURCE_DIR}/packaging/plax.1
    COMMENT "Compressing the manual page")
  add_custom_target(plax-manpage ALL DEPENDS ${CMAKE_BINARY_DIR}/plax.1.gz)
  install(FILES ${CMAKE_BINARY_DIR}/plax.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT plax)
else()
  install(FILES packaging/plax.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT plax)
endif()
install(FILES README.md docs/scripting.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT plax)

# Installed straight into a system or home folder (no DESTDIR, as a package
# build uses), the desktop's caches learn the new file type and entry at once.
# A package leaves this to the triggers of the system's packages.
install(CODE "
  if(\"\$ENV{DESTDIR}\" STREQUAL \"\")
    set(_share \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}\")
    find_program(_plax_update_mime update-mime-database)
    if(_plax_update_mime)
      execute_process(COMMAND \${_plax_update_mime} \"\${_share}/mime\")
    endif()
    find_program(_plax_update_desktop update-desktop-database)
    if(_plax_update_desktop)
      execute_process(COMMAND \${_plax_update_desktop} -q \"\${_share}/applications\")
    endif()
    find_program(_plax_update_icons gtk-update-icon-cache)
    if(_plax_update_icons AND EXISTS \"\${_share}/icons/hicolor/icon-theme.cache\")
      execute_process(COMMAND \${_plax_update_icons} -q -t -f \"\${_share}/icons/hicolor\")
    endif()
  endif()
" COMPONENT plax)

# The Debian package. Library dependencies come from dpkg-shlibdeps (package
# dpkg-dev); the Qt plug-ins the program loads at run time are named here.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME plax)
set(CPACK_PACKAGE_VENDOR quoxel2d)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for two-dimensional Box2D physics scenes")
# The Description field: the summary line, then this text.
set(CPACK_COMPONENT_PLAX_DESCRIPTION "P.L.A.X lays out bodies, fixtures, joints, images and reusable object
instances of a Box2D physics scene, runs the scene live and saves it as an
editable .plax file or exports raw-info JSON and C++ source for games.
Edits can be automated with plaxscript (AngelScript). The same program is a
command-line batch tool that runs scripts on a scene and exports it.")
set(PLAX_PACKAGE_MAINTAINER "P.L.A.X developers <plax@quoxel2d.invalid>" CACHE STRING
  "Maintainer field of the Debian package")
set(CPACK_PACKAGE_CONTACT "${PLAX_PACKAGE_MAINTAINER}")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL plax)
set(CPACK_DEBIAN_PLAX_PACKAGE_NAME plax)
set(CPACK_DEBIAN_PLAX_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The X11 platform plug-in is part of libqt6gui6 (found by dpkg-shlibdeps);
# Wayland and the other platforms, and Mesa's drivers for the OpenGL views,
# are recommended; more picture formats for images are suggested.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-qpa-plugins, qt6-wayland, libgl1-mesa-dri")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
