# Lets the project's own build files build for macOS with the compiler of this machine: clang, lld and what gate.sh laid
# out in KESTRUNE_GATE_WORK. KESTRUNE_GATE_ARCHITECTURE is arm64 or x86_64.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${KESTRUNE_GATE_ARCHITECTURE})
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KESTRUNE_GATE_WORK KESTRUNE_GATE_ARCHITECTURE KESTRUNE_GATE_LLVM)

set(CMAKE_C_COMPILER /usr/bin/clang-${KESTRUNE_GATE_LLVM})
set(CMAKE_CXX_COMPILER /usr/bin/clang++-${KESTRUNE_GATE_LLVM})
set(CMAKE_OBJCXX_COMPILER /usr/bin/clang++-${KESTRUNE_GATE_LLVM})
set(CMAKE_AR /usr/bin/llvm-ar-${KESTRUNE_GATE_LLVM} CACHE FILEPATH "")
set(CMAKE_RANLIB /usr/bin/llvm-ranlib-${KESTRUNE_GATE_LLVM} CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL /usr/bin/llvm-install-name-tool-${KESTRUNE_GATE_LLVM} CACHE FILEPATH "")
set(CMAKE_OSX_SYSROOT ${KESTRUNE_GATE_WORK}/sdk)
set(CMAKE_OSX_ARCHITECTURES ${KESTRUNE_GATE_ARCHITECTURE})
# A program cannot be linked before Qt's libraries are stood in for.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

file(READ ${KESTRUNE_GATE_WORK}/flags.${KESTRUNE_GATE_ARCHITECTURE} flags)
string(STRIP "${flags}" flags)
set(CMAKE_CXX_FLAGS_INIT "${flags}")
set(CMAKE_OBJCXX_FLAGS_INIT "${flags}")
# Enough for the calls that automatic reference counting makes in an optimised build, and quick.
set(CMAKE_CXX_FLAGS_RELEASE "-O1 -DNDEBUG" CACHE STRING "")
set(CMAKE_OBJCXX_FLAGS_RELEASE "-O1 -DNDEBUG" CACHE STRING "")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld --ld-path=/usr/bin/ld64.lld-${KESTRUNE_GATE_LLVM}")

# Qt's package files and generators are the installed ones; everything else is what gate.sh laid out.
set(CMAKE_LIBRARY_ARCHITECTURE x86_64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/stand-in-tool.sh)
