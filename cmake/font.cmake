# The game's font, thickened from the strokes in art/font/. Debian's own Python, whatever else comes first in PATH: it is
# the one that sees python3-fonttools and python3-shapely.
find_program(SYSTEM_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)

file(GLOB FONT_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/art/font/*.glyphs ${CMAKE_SOURCE_DIR}/art/font/face.txt
     ${CMAKE_SOURCE_DIR}/tools/font/*.py)
set(MADE_FONT ${MADE_CONTENT}/OctoBubble.ttf)
add_custom_command(
  OUTPUT ${MADE_FONT}
  COMMAND ${SYSTEM_PYTHON} ${CMAKE_SOURCE_DIR}/tools/build_font.py ${CMAKE_SOURCE_DIR}/art/font ${MADE_FONT}
  DEPENDS ${FONT_SOURCES} ${CMAKE_SOURCE_DIR}/tools/build_font.py
  COMMENT "Building OctoBubble.ttf"
  VERBATIM)
set(FONT ${CMAKE_BINARY_DIR}/Texture/Fonts/OctoBubble.ttf)
place_content(${MADE_FONT} Texture/Fonts/OctoBubble.ttf)
add_custom_target(font DEPENDS ${FONT})
add_dependencies(content font)
