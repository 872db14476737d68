# The sound banks: tunes and effects are rendered from their text sources to Ogg files, which the tool packs. A target of
# its own beside `content`, because the tool itself waits for that one.
set(BANK "Master Bank.bank")
set(STRINGS_BANK "Master Bank.strings.bank")
set(RENDERED ${CMAKE_BINARY_DIR}/sound/rendered)

find_program(CSOUND csound REQUIRED)
find_program(OGGENC oggenc REQUIRED)
file(GLOB_RECURSE SOUND_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/sound/* ${CMAKE_SOURCE_DIR}/tools/soundbuild/*.py)
add_custom_command(
  OUTPUT ${RENDERED}
  COMMAND python3 ${CMAKE_SOURCE_DIR}/tools/build_sound.py ${CMAKE_BINARY_DIR}/sound
  COMMAND ${CMAKE_COMMAND} -E touch ${RENDERED}
  DEPENDS ${SOUND_SOURCES} ${CMAKE_SOURCE_DIR}/tools/build_sound.py
  COMMENT "Rendering the tunes and effects"
  VERBATIM)
add_custom_command(
  OUTPUT "${MADE_CONTENT}/${BANK}" "${MADE_CONTENT}/${STRINGS_BANK}"
  COMMAND brinewhirl-tool bank build ${CMAKE_SOURCE_DIR}/sound/bank.txt "${MADE_CONTENT}/${BANK}" --sounds ${CMAKE_BINARY_DIR}/sound
  DEPENDS ${RENDERED} ${CMAKE_SOURCE_DIR}/sound/bank.txt brinewhirl-tool
  COMMENT "Packing the sound banks"
  VERBATIM)
foreach(bank ${BANK} ${STRINGS_BANK})
  place_content("${MADE_CONTENT}/${bank}" "AudioSource/${bank}")
endforeach()
add_custom_target(sound_banks ALL DEPENDS "${CMAKE_BINARY_DIR}/AudioSource/${BANK}"
                                          "${CMAKE_BINARY_DIR}/AudioSource/${STRINGS_BANK}")
