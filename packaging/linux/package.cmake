# The Debian package, made by packaging/linux/deb.sh.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrune)
set(CPACK_PACKAGE_VENDOR "The Kestrune authors")
set(CPACK_PACKAGE_CONTACT "The Kestrune authors <authors@kestrune.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL ${KESTRUNE_HOMEPAGE})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tray utility that shows what uses the machine and clears developer caches")
set(CPACK_PACKAGE_DESCRIPTION
"Shows memory, processor, disk, network and battery, the apps and developer
processes that run and the ports they hold, and where the disk space goes.

Measures the caches and models of developer and AI tools and moves those that
were chosen and confirmed to the Trash. Nothing is ever deleted, and apps are
asked to quit.")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What is not linked: where icons are looked up, whom a secure address is trusted by, and tools that are asked when they
# are there.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "ca-certificates, hicolor-icon-theme")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "default-dbus-session-bus | dbus-session-bus, fonts-noto-color-emoji, libglib2.0-bin, polkitd, pkexec, procps, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland, snapper, xdg-desktop-portal")

include(CPack)
