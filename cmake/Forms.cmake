# The window: Qt is looked for, and needed, only where it is built.
option(BURNWICK_WINDOW "Build the window (needs Qt 6)" ON)
if(BURNWICK_WINDOW)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets Network)
endif()

# A library of forms: each a class, with the .ui file of its name beside it. Does nothing without a window.
# burnwick_forms(burnwick_window SOURCES … LIBRARIES …)
function(burnwick_forms name)
  if(NOT BURNWICK_WINDOW)
    return()
  endif()
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
  # Text is UTF-8 in the core, and is turned into Qt's by name.
  target_compile_definitions(${name} PUBLIC QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS)
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC Qt6::Widgets ${arg_LIBRARIES} PRIVATE burnwick_warnings)
endfunction()
