# Puts a file of the game beside the programs, where a level maker may have changed the one that is there:
#   cmake -DSOURCE=FILE -DFOLDER=FOLDER -DNAME=PLACE/IN/IT -P place_content.cmake
# What was put there last is remembered by its hash in FOLDER/placed/. A file that is neither that one nor the new one is
# somebody's work: it is kept beside the new one as NAME.mine, NAME.mine.2 and so on.
cmake_minimum_required(VERSION 3.25)

set(target "${FOLDER}/${NAME}")
set(record "${FOLDER}/placed/${NAME}.sha256")
file(SHA256 "${SOURCE}" new)

if(EXISTS "${target}")
  file(SHA256 "${target}" present)
  set(placed "")
  if(EXISTS "${record}")
    file(READ "${record}" placed)
  endif()
  if(NOT present STREQUAL new AND NOT present STREQUAL placed)
    set(kept "${NAME}.mine")
    set(number 2)
    while(EXISTS "${FOLDER}/${kept}")
      set(kept "${NAME}.mine.${number}")
      math(EXPR number "${number} + 1")
    endwhile()
    file(RENAME "${target}" "${FOLDER}/${kept}" NO_REPLACE)
    message("${NAME} is not the one that the build put there: it is kept as ${kept}")
  endif()
endif()

file(COPY_FILE "${SOURCE}" "${target}" ONLY_IF_DIFFERENT)
file(TOUCH "${target}")
file(WRITE "${record}" "${new}")
