# Everything that the programs read, beside them: data files copied, pictures drawn from their SVG sources.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)

set(CONTENT_FILES "")
function(copy_content source target)
  add_custom_command(
    OUTPUT ${CMAKE_BINARY_DIR}/${target}
    COMMAND ${CMAKE_COMMAND} -E copy ${source} ${CMAKE_BINARY_DIR}/${target}
    DEPENDS ${source}
    VERBATIM)
  set(CONTENT_FILES ${CONTENT_FILES} ${CMAKE_BINARY_DIR}/${target} PARENT_SCOPE)
endfunction()

file(GLOB_RECURSE GAME_FILES CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR}/game ${CMAKE_SOURCE_DIR}/game/*)
foreach(file ${GAME_FILES})
  copy_content(${CMAKE_SOURCE_DIR}/game/${file} ${file})
endforeach()

file(GLOB PICTURES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/art/*.svg)
foreach(svg ${PICTURES})
  get_filename_component(name ${svg} NAME_WE)
  set(png ${CMAKE_BINARY_DIR}/Texture/${name}.png)
  add_custom_command(
    OUTPUT ${png}
    COMMAND ${RSVG_CONVERT} ${svg} -o ${png}
    DEPENDS ${svg}
    COMMENT "Drawing ${name}.png"
    VERBATIM)
  list(APPEND CONTENT_FILES ${png})
endforeach()

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/Texture/Fonts ${CMAKE_BINARY_DIR}/AudioSource ${CMAKE_BINARY_DIR}/autosaves)
add_custom_target(content ALL DEPENDS ${CONTENT_FILES})
