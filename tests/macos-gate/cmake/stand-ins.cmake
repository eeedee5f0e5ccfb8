# Read by CMake right after the project's project() call. What the installed packages describe for Linux is put right.
include_guard(GLOBAL)

# Qt6Gui asks for two graphics libraries, whose headers lie beside those of this machine's C library. Nothing calls them.
add_library(WrapOpenGL::WrapOpenGL INTERFACE IMPORTED)
add_library(WrapVulkanHeaders::WrapVulkanHeaders INTERFACE IMPORTED)

# The package file of the library names /usr/include, where the C library of this machine has its headers too.
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${KESTRUNE_GATE_WORK}/sdk/opt/include)
set(nlohmann_json_DIR ${CMAKE_CURRENT_LIST_DIR})

# Qt's libraries here are no libraries for macOS: the program is linked against lists of what they export.
function(kestrune_gate_finish)
  foreach(module Core Gui Widgets Svg Network)
    if(TARGET Qt6::${module})
      get_target_property(configurations Qt6::${module} IMPORTED_CONFIGURATIONS)
      foreach(configuration ${configurations})
        set_target_properties(Qt6::${module} PROPERTIES
          IMPORTED_LOCATION_${configuration} ${KESTRUNE_GATE_WORK}/sdk/qt/Qt6${module}.tbd)
      endforeach()
    endif()
  endforeach()

  # The constants and layouts that the stand-ins for the system promise, held against the real headers.
  file(GLOB facts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/platform/macos/facts/*.cpp)
  if(facts)
    add_library(kestrune_gate_facts OBJECT ${facts})
    target_include_directories(kestrune_gate_facts PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(kestrune_gate_facts PRIVATE kestrune_flags)
  endif()
endfunction()
cmake_language(DEFER CALL kestrune_gate_finish)
