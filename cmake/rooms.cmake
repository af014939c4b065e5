# fleetor_room(<folder> SOURCES ... [USES room ...] [LIBRARIES target ...])
#
# One room of the house: the static library fleetor_<folder> over the files of that folder. Its headers are included
# as "<folder>/name.h" and are visible to exactly those rooms that name it under USES (and, since headers include
# headers, to those that use these). Every room has an include root of its own that holds nothing but a link to its
# folder, so a wrong arrow does not compile.
function(fleetor_room folder)
  cmake_parse_arguments(ROOM "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  set(root ${CMAKE_BINARY_DIR}/rooms/${name})
  get_filename_component(parent ${root}/${folder} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${folder} ${root}/${folder} SYMBOLIC)

  if(ROOM_SOURCES)
    add_library(fleetor_${name} STATIC ${ROOM_SOURCES})
    set(visibility PUBLIC)
    target_link_libraries(fleetor_${name} PRIVATE fleetor_warnings)
  else()
    add_library(fleetor_${name} INTERFACE)
    set(visibility INTERFACE)
  endif()
  target_include_directories(fleetor_${name} ${visibility} ${root})
  foreach(used ${ROOM_USES})
    string(REPLACE "/" "_" used_name ${used})
    target_link_libraries(fleetor_${name} ${visibility} fleetor_${used_name})
  endforeach()
  if(ROOM_SOURCES)
    target_link_libraries(fleetor_${name} PRIVATE ${ROOM_LIBRARIES})
  endif()
endfunction()
