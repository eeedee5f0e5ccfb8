# What the Linux edition is built with beside Qt's windows, and where its helper is installed.
find_package(Qt6 6.4 REQUIRED COMPONENTS DBus Network)
find_package(PkgConfig REQUIRED)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-res)
pkg_check_modules(SODIUM REQUIRED IMPORTED_TARGET libsodium)

set(KESTRUNE_CLEAR_CACHE_HELPER ${CMAKE_INSTALL_FULL_LIBEXECDIR}/kestrune/kestrune-clear-cache)
