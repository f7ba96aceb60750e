# Language, warnings and sanitizers: one INTERFACE target carries every flag.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

find_program(BURNWICK_CCACHE ccache)
if(BURNWICK_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${BURNWICK_CCACHE}")
endif()

# Links the test programs several times as fast as the compiler's default.
find_program(BURNWICK_LLD ld.lld)
if(BURNWICK_LLD AND NOT CMAKE_CROSSCOMPILING)
  add_link_options(-fuse-ld=lld)
endif()

add_library(burnwick_warnings INTERFACE)
target_compile_options(burnwick_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# GCC 12 takes "text" + std::string(...) for overlapping copies: a known false alarm of this warning.
target_compile_options(burnwick_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(BURNWICK_SANITIZERS)
  target_compile_options(burnwick_warnings INTERFACE
    -fsanitize=${BURNWICK_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  target_link_options(burnwick_warnings INTERFACE -fsanitize=${BURNWICK_SANITIZERS})
endif()
if(BURNWICK_FUZZ)
  target_compile_options(burnwick_warnings INTERFACE -fsanitize=fuzzer-no-link)
endif()
