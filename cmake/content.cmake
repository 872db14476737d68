# Everything that the programs read, beside them: data files copied, pictures drawn from their SVG sources. People change
# these files there, so nothing may write over them but place_content.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)

set(MADE_CONTENT ${CMAKE_BINARY_DIR}/made) # what is drawn, built and packed, before it is placed
file(MAKE_DIRECTORY ${MADE_CONTENT}/Texture ${CMAKE_BINARY_DIR}/Texture/Fonts ${CMAKE_BINARY_DIR}/AudioSource
     ${CMAKE_BINARY_DIR}/autosaves)

function(place_content source name)
  get_filename_component(folder ${CMAKE_BINARY_DIR}/${name} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(
    OUTPUT ${CMAKE_BINARY_DIR}/${name}
    COMMAND ${CMAKE_COMMAND} -DSOURCE=${source} -DFOLDER=${CMAKE_BINARY_DIR} -DNAME=${name}
            -P ${CMAKE_SOURCE_DIR}/cmake/place_content.cmake
    DEPENDS ${source}
    COMMENT "Placing ${name}"
    VERBATIM)
endfunction()

set(CONTENT_FILES "")
file(GLOB_RECURSE GAME_FILES CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR}/game ${CMAKE_SOURCE_DIR}/game/*)
foreach(file ${GAME_FILES})
  place_content(${CMAKE_SOURCE_DIR}/game/${file} ${file})
  list(APPEND CONTENT_FILES ${CMAKE_BINARY_DIR}/${file})
endforeach()

file(GLOB PICTURES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/art/*.svg)
foreach(svg ${PICTURES})
  get_filename_component(name ${svg} NAME_WE)
  set(png Texture/${name}.png)
  add_custom_command(
    OUTPUT ${MADE_CONTENT}/${png}
    COMMAND ${RSVG_CONVERT} ${svg} -o ${MADE_CONTENT}/${png}
    DEPENDS ${svg}
    COMMENT "Drawing ${name}.png"
    VERBATIM)
  place_content(${MADE_CONTENT}/${png} ${png})
  list(APPEND CONTENT_FILES ${CMAKE_BINARY_DIR}/${png})
endforeach()

add_custom_target(content ALL DEPENDS ${CONTENT_FILES})
