# Warnings, sanitizers and the one way a folder of src/ becomes a library.

add_library(kestrune_flags INTERFACE)
target_include_directories(kestrune_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_definitions(kestrune_flags INTERFACE KESTRUNE_VERSION="${PROJECT_VERSION}" _FILE_OFFSET_BITS=64)
target_compile_options(kestrune_flags INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Woverloaded-virtual
  -Wnon-virtual-dtor -Wcast-align -Wformat=2 -Wimplicit-fallthrough -Wextra-semi
  -ffunction-sections -fdata-sections -fstack-protector-strong)
if(KESTRUNE_SYSTEM STREQUAL "macos")
  target_link_options(kestrune_flags INTERFACE -Wl,-dead_strip)
else()
  target_link_options(kestrune_flags INTERFACE -Wl,--gc-sections -Wl,--as-needed -Wl,-z,relro,-z,now)
endif()
if(KESTRUNE_SANITIZE)
  target_compile_options(kestrune_flags INTERFACE -fsanitize=${KESTRUNE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # The vptr check asks the kernel through a pipe whether memory is readable, and so fails where descriptors run out.
  target_compile_options(kestrune_flags INTERFACE -fno-sanitize=vptr)
  target_link_options(kestrune_flags INTERFACE -fsanitize=${KESTRUNE_SANITIZE})
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Optimised builds of GCC 12 see overlapping copies in "text" + std::string where there are none (GCC bug 105651).
  target_compile_options(kestrune_flags INTERFACE $<$<NOT:$<CONFIG:Debug>>:-Wno-restrict>)
endif()

# Qt code: no silent conversion from 8-bit text, no lower-case keywords. What a Qt newer than the oldest one calls
# deprecated has no replacement in that one, and must not end a build where warnings are errors.
add_library(kestrune_qt_flags INTERFACE)
target_link_libraries(kestrune_qt_flags INTERFACE kestrune_flags)
target_compile_definitions(kestrune_qt_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400
  QT_DEPRECATED_WARNINGS_SINCE=0x060400)

# kestrune_library(<name> <folder below src/> [QT] LINKS <libraries>)
# Compiles every .cpp of the folder itself (sub-folders are libraries of their own), on macOS every .mm as well.
function(kestrune_library name folder)
  cmake_parse_arguments(ARG "QT" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp ${PROJECT_SOURCE_DIR}/src/${folder}/*.h)
  if(KESTRUNE_SYSTEM STREQUAL "macos")
    file(GLOB objective CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.mm)
    list(APPEND sources ${objective})
  endif()
  add_library(${name} STATIC ${sources})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(${name} PUBLIC kestrune_flags ${ARG_LINKS})
  if(ARG_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PRIVATE kestrune_qt_flags)
  elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT KESTRUNE_SANITIZE)
    # Not where optimised GCC 12 suspects Qt's inline functions or the sanitizers' own code.
    target_compile_options(${name} PRIVATE -Wnull-dereference)
  endif()
endfunction()
