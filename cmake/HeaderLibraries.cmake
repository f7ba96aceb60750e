# CLI11 and nlohmann-json, headers both. Where programs for another system are made, this machine's own headers
# serve as well: through a folder that has these two alone, since the folder that they lie in has this system's.
if(NOT CMAKE_CROSSCOMPILING)
  find_package(CLI11 REQUIRED)
  find_package(nlohmann_json REQUIRED)
  return()
endif()

# burnwick_header_library(CLI11::CLI11 CLI/CLI.hpp)
function(burnwick_header_library target header)
  get_filename_component(folder "${header}" DIRECTORY)
  find_path(BURNWICK_${folder}_HEADERS "${header}" PATHS /usr/local/include /usr/include
    REQUIRED NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  set(links "${PROJECT_BINARY_DIR}/headers")
  file(MAKE_DIRECTORY "${links}")
  file(CREATE_LINK "${BURNWICK_${folder}_HEADERS}/${folder}" "${links}/${folder}" SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} INTERFACE "${links}")
endfunction()
burnwick_header_library(CLI11::CLI11 CLI/CLI.hpp)
burnwick_header_library(nlohmann_json::nlohmann_json nlohmann/json.hpp)
