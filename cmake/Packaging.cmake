# The files that are installed and the Debian package. Desktop entry, icon, AppStream component and
# D-Bus service share one id, which desktops use to match windows, launchers and notifications.

include(GNUInstallDirs)
set(id org.kestrune.Kestrune)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(made ${PROJECT_BINARY_DIR}/packaging)

# Small sizes have a simpler drawing of their own.
set(small_sizes 16 22 24)
set(large_sizes 32 48 64 128 256 512)
set(pictures "")
foreach(size IN LISTS small_sizes large_sizes)
  list(APPEND pictures ${made}/icons/${size}.png)
endforeach()
set(large_drawing ${PROJECT_SOURCE_DIR}/resources/kestrune.svg)
set(small_drawing ${packaging}/icons/small.svg)
set(render ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=${made}
  $<TARGET_FILE:kestrune_render_icons>)
file(MAKE_DIRECTORY ${made})
# Qt warns if other users can read XDG_RUNTIME_DIR.
file(CHMOD ${made} DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
add_custom_command(OUTPUT ${pictures}
  COMMAND ${render} ${small_drawing} ${made}/icons ${small_sizes}
  COMMAND ${render} ${large_drawing} ${made}/icons ${large_sizes}
  DEPENDS kestrune_render_icons ${small_drawing} ${large_drawing}
  COMMENT "Rendering the icons"
  VERBATIM)
add_custom_target(kestrune_icons ALL DEPENDS ${pictures})
# Builds everything that `cmake --install` needs.
add_custom_target(kestrune_installable DEPENDS kestrune kestrune_icons)

configure_file(${packaging}/kestrune.1.in ${made}/kestrune.1 @ONLY)

install(TARGETS kestrune RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size IN LISTS small_sizes large_sizes)
  install(FILES ${made}/icons/${size}.png DESTINATION ${icons}/${size}x${size}/apps RENAME ${id}.png)
endforeach()
install(FILES ${large_drawing} DESTINATION ${icons}/scalable/apps RENAME ${id}.svg)
install(FILES ${packaging}/icons/symbolic.svg
  DESTINATION ${icons}/symbolic/apps RENAME ${id}-symbolic.svg)
install(FILES ${packaging}/${id}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${made}/kestrune.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
set(documents ${CMAKE_INSTALL_DATADIR}/doc/kestrune)
install(FILES ${packaging}/copyright DESTINATION ${documents})
install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${documents} RENAME changelog)
# The D-Bus service needs the program's full path, which depends on the prefix given at
# installation.
install(CODE "
  set(program \"${CMAKE_INSTALL_BINDIR}/kestrune\")
  cmake_path(ABSOLUTE_PATH program BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\" NORMALIZE)
  file(WRITE \"${made}/${id}.service\"
    \"[D-BUS Service]\\nName=${id}\\nExec=\\\"\${program}\\\"\\n\")
  set(services \"${CMAKE_INSTALL_DATADIR}/dbus-1/services\")
  cmake_path(ABSOLUTE_PATH services BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\" NORMALIZE)
  file(INSTALL \"${made}/${id}.service\" DESTINATION \"\${services}\"
    PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrune)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "real-time system monitor for the desktop")
set(CPACK_PACKAGE_DESCRIPTION
"Kestrune shows processors, memory, disk, network, battery and sound in one
window, and the load of the moment in the tray. It is made to be left running
all day: it records each day on the local disk, notifies when a limit is
crossed, and talks to no server.")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
# Install with DESTDIR and the prefix /usr, so that no file contains the path of the staging folder.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${packaging}/debian.cmake)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Kestrune developers")
# SHLIBDEPS finds the linked libraries, which bring Qt's X11 plugin and a font.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS hicolor-icon-theme)
# In this order: Wayland; single instance and D-Bus activation; the launcher's action; opening
# folders.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "qt6-wayland, default-dbus-session-bus | dbus-session-bus, libglib2.0-bin, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "notification-daemon, pipewire-pulse | pulseaudio")
include(CPack)
