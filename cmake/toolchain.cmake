# Compiler, linker and sanitizer settings that hold for every target.

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

find_program(MOLD mold)
if(MOLD)
  add_link_options(-fuse-ld=mold)
endif()

# By its build id a crash report finds the very program that it came from.
if(CMAKE_SYSTEM_NAME STREQUAL Linux)
  add_link_options(-Wl,--build-id=sha1)
endif()

add_compile_options(-fno-omit-frame-pointer)
if(FLEETOR_SANITIZE)
  add_compile_options(-fsanitize=${FLEETOR_SANITIZE} -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${FLEETOR_SANITIZE})
  if(FLEETOR_SANITIZE STREQUAL thread AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # Qt's headers hold a fence, which the sanitizer cannot follow; none of ours does.
    add_compile_options(-Wno-tsan)
  endif()
endif()

# Coverage feedback for the fuzz targets, from every room that they run through.
option(FLEETOR_FUZZ "Drive the fuzz targets with libFuzzer; needs clang" OFF)
if(FLEETOR_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Warnings for our own targets only; fleetor_room() and the programs link it.
add_library(fleetor_warnings INTERFACE)
target_compile_options(fleetor_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
