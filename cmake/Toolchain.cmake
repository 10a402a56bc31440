# How every target is compiled. Results must be the same bits on every machine and in every build kind: no contraction
# of floating-point operations, no fast-math, anywhere.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(VORNALITE_WERROR "Treat warnings as errors" OFF)
option(VORNALITE_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)

add_compile_options(-ffp-contract=off -fno-fast-math -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                    -Wno-sign-conversion -Wnon-virtual-dtor)
if(VORNALITE_WERROR)
  add_compile_options(-Werror)
endif()
if(VORNALITE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()
