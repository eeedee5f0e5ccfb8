# The disk image, made by packaging/macos/dmg.sh: what that script signed and laid into signed/, untouched.
set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_NAME Kestrune)
set(CPACK_PACKAGE_VENDOR "The Kestrune authors")
set(CPACK_PACKAGE_HOMEPAGE_URL ${KESTRUNE_HOMEPAGE})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "menu bar utility that shows what uses the machine and clears developer caches")
set(CPACK_PACKAGE_FILE_NAME Kestrune-${PROJECT_VERSION})
set(CPACK_DMG_VOLUME_NAME "Kestrune ${PROJECT_VERSION}")
# Installing anew or stripping would break the signatures.
set(CPACK_INSTALL_CMAKE_PROJECTS "")
set(CPACK_INSTALLED_DIRECTORIES "${PROJECT_BINARY_DIR}/signed;.")
set(CPACK_STRIP_FILES OFF)

include(CPack)
