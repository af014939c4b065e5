# fleetor_room(<folder> [FACE header ...] SOURCES ... [USES room ...] [LIBRARIES target ...])
#
# One room of the house: the static library fleetor_<folder> over the files of that folder. FACE names the headers that
# other rooms may include, as "<folder>/name.h"; without it, all of them. The face is visible to the rooms that name this one
# under USES and, since headers include headers, to those that use these; tests/house/arrows.py refuses to rely on the latter.
# Every face has a separate include root that holds nothing but links to its headers, so a wrong arrow does not compile.
#
# fleetor_<folder>_inside gives a test the headers that are no part of the face.
function(fleetor_room folder)
  cmake_parse_arguments(ROOM "" "" "FACE;SOURCES;USES;LIBRARIES" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  fleetor_include_root(${name}/inside ${folder})

  set(face ${CMAKE_BINARY_DIR}/rooms/${name}/face)
  file(REMOVE_RECURSE ${face})
  if(NOT ROOM_FACE)
    file(GLOB_RECURSE ROOM_FACE RELATIVE ${CMAKE_SOURCE_DIR}/${folder} CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.h)
  endif()
  foreach(header ${ROOM_FACE})
    if(NOT EXISTS ${CMAKE_SOURCE_DIR}/${folder}/${header})
      message(FATAL_ERROR "${folder}/CMakeLists.txt names ${header} under FACE, which is not there")
    endif()
    get_filename_component(parent ${face}/${folder}/${header} DIRECTORY)
    file(MAKE_DIRECTORY ${parent})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${folder}/${header} ${face}/${folder}/${header} SYMBOLIC)
  endforeach()

  if(ROOM_SOURCES)
    add_library(fleetor_${name} STATIC ${ROOM_SOURCES})
    set(visibility PUBLIC)
    target_link_libraries(fleetor_${name} PRIVATE fleetor_${name}_inside fleetor_warnings ${ROOM_LIBRARIES})
  else()
    add_library(fleetor_${name} INTERFACE)
    set(visibility INTERFACE)
  endif()
  target_include_directories(fleetor_${name} ${visibility} ${face})
  foreach(used ${ROOM_USES})
    string(REPLACE "/" "_" used_name ${used})
    target_link_libraries(fleetor_${name} ${visibility} fleetor_${used_name})
  endforeach()
endfunction()

# fleetor_include_root(<root> <folder>): everything in that folder as "<folder>/name.h", for who links fleetor_<root>.
function(fleetor_include_root root folder)
  set(link ${CMAKE_BINARY_DIR}/rooms/${root}/${folder})
  get_filename_component(parent ${link} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${folder} ${link} SYMBOLIC)
  string(REPLACE "/" "_" name ${root})
  add_library(fleetor_${name} INTERFACE)
  target_include_directories(fleetor_${name} INTERFACE ${CMAKE_BINARY_DIR}/rooms/${root})
endfunction()
