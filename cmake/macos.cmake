# What the macOS edition is built with beside Qt's windows: Objective-C++, the system's frameworks, and the updater's.
enable_language(OBJCXX)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
if(KESTRUNE_CCACHE)
  set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${KESTRUNE_CCACHE})
endif()

# Objects are counted by the compiler. Qualifiers that say what may be nil are an extension that the compiler would
# mention in every header.
add_library(kestrune_macos_flags INTERFACE)
target_compile_options(kestrune_macos_flags INTERFACE $<$<COMPILE_LANGUAGE:OBJCXX>:
  -fobjc-arc -Wnullable-to-nonnull-conversion -Wunguarded-availability-new -Wno-nullability-extension>)
foreach(framework AppKit CoreFoundation Foundation IOKit ServiceManagement UserNotifications)
  target_link_libraries(kestrune_macos_flags INTERFACE "-framework ${framework}")
endforeach()

if(KESTRUNE_SPARKLE)
  if(NOT IS_DIRECTORY ${KESTRUNE_SPARKLE}/Sparkle.framework)
    message(FATAL_ERROR "There is no Sparkle.framework in KESTRUNE_SPARKLE, ${KESTRUNE_SPARKLE}")
  endif()
  target_compile_options(kestrune_macos_flags INTERFACE $<$<COMPILE_LANGUAGE:OBJCXX>:-F${KESTRUNE_SPARKLE}>)
  target_link_options(kestrune_macos_flags INTERFACE -F${KESTRUNE_SPARKLE})
  target_link_libraries(kestrune_macos_flags INTERFACE "-framework Sparkle")
  list(APPEND CMAKE_BUILD_RPATH ${KESTRUNE_SPARKLE})
elseif(KESTRUNE_FEED_URL)
  message(FATAL_ERROR "A feed (KESTRUNE_FEED_URL) needs the updater: name the folder of Sparkle.framework with KESTRUNE_SPARKLE")
endif()
if(KESTRUNE_FEED_URL AND NOT KESTRUNE_FEED_KEY)
  message(FATAL_ERROR "A feed (KESTRUNE_FEED_URL) needs the key that its archives are signed with: KESTRUNE_FEED_KEY")
endif()
