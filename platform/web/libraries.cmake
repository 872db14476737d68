# The libraries that the browser's toolchain does not bring, from Debian's source packages, as static ones. Their sources
# are compiled here and not by their own builds: those try the compiler hundreds of times, which a browser's takes minutes
# for, and the answers are known.
#
# SOURCES is the folder that fetch_sources fills.

function(source_folder variable package)
  file(GLOB found LIST_DIRECTORIES true ${SOURCES}/${package}-[0-9]*)
  list(LENGTH found count)
  if(NOT count EQUAL 1)
    message(FATAL_ERROR "One source of ${package} is wanted in ${SOURCES}, and there are ${count}: see fetch_sources")
  endif()
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# Their warnings are not ours to mend.
function(add_web_library name)
  add_library(${name} STATIC ${ARGN})
  target_compile_options(${name} PRIVATE -w -ffp-contract=off)
endfunction()

source_folder(ZLIB zlib)
file(GLOB ZLIB_FILES ${ZLIB}/*.c)
add_web_library(web_zlib ${ZLIB_FILES})
target_include_directories(web_zlib PUBLIC ${ZLIB})
target_compile_definitions(web_zlib PRIVATE HAVE_UNISTD_H)

source_folder(PNG libpng1.6)
configure_file(${PNG}/scripts/pnglibconf.h.prebuilt made/png/pnglibconf.h COPYONLY)
file(GLOB PNG_FILES ${PNG}/png*.c)
list(FILTER PNG_FILES EXCLUDE REGEX "pngtest")
add_web_library(web_png ${PNG_FILES})
target_include_directories(web_png PUBLIC ${PNG} ${CMAKE_CURRENT_BINARY_DIR}/made/png)
target_link_libraries(web_png PUBLIC web_zlib)

source_folder(FREETYPE freetype)
set(FREETYPE_FILES base/ftbase base/ftbbox base/ftbitmap base/ftdebug base/ftglyph base/ftinit base/ftmm base/ftstroke
    base/ftsynth base/ftsystem autofit/autofit cache/ftcache cff/cff gzip/ftgzip psaux/psaux pshinter/pshinter
    psnames/psnames raster/raster sdf/sdf sfnt/sfnt smooth/smooth svg/svg truetype/truetype type1/type1 cid/type1cid
    type42/type42 winfonts/winfnt pcf/pcf bdf/bdf pfr/pfr lzw/ftlzw)
list(TRANSFORM FREETYPE_FILES REPLACE "(.+)" "${FREETYPE}/src/\\1.c")
add_web_library(web_freetype ${FREETYPE_FILES})
target_include_directories(web_freetype PUBLIC ${FREETYPE}/include)
target_compile_definitions(web_freetype PRIVATE FT2_BUILD_LIBRARY FT_CONFIG_OPTION_SYSTEM_ZLIB)
target_link_libraries(web_freetype PRIVATE web_zlib)

source_folder(OGG libogg)
foreach(bits 16 32 64)
  set(SIZE${bits} int${bits}_t)
  set(USIZE${bits} uint${bits}_t)
endforeach()
foreach(header INTTYPES STDINT SYS_TYPES)
  set(INCLUDE_${header}_H 1)
endforeach()
configure_file(${OGG}/include/ogg/config_types.h.in made/ogg/ogg/config_types.h @ONLY)
add_web_library(web_ogg ${OGG}/src/bitwise.c ${OGG}/src/framing.c)
target_include_directories(web_ogg PUBLIC ${OGG}/include ${CMAKE_CURRENT_BINARY_DIR}/made/ogg)

source_folder(VORBIS libvorbis)
file(GLOB VORBIS_FILES ${VORBIS}/lib/*.c)
list(FILTER VORBIS_FILES EXCLUDE REGEX "/(barkmel|psytune|tone)\\.c$")
add_web_library(web_vorbis ${VORBIS_FILES})
target_include_directories(web_vorbis PUBLIC ${VORBIS}/include PRIVATE ${VORBIS}/lib)
target_link_libraries(web_vorbis PUBLIC web_ogg)

# Of the formats outside itself it reads Vorbis alone.
source_folder(SNDFILE libsndfile)
file(GLOB SNDFILE_FILES ${SNDFILE}/src/*.c ${SNDFILE}/src/ALAC/*.c ${SNDFILE}/src/G72x/*.c ${SNDFILE}/src/GSM610/*.c)
list(FILTER SNDFILE_FILES EXCLUDE REGEX "/(test_[a-z_0-9]*|g72x_test|windows|macos)\\.c$")
configure_file(sndfile_config.h made/sndfile/config.h COPYONLY)
add_web_library(web_sndfile ${SNDFILE_FILES})
target_include_directories(web_sndfile PUBLIC ${SNDFILE}/include PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/made/sndfile
                                       ${SNDFILE}/src)
set_source_files_properties(${SNDFILE}/src/flac.c ${SNDFILE}/src/ogg_opus.c PROPERTIES
  COMPILE_DEFINITIONS HAVE_EXTERNAL_XIPH_LIBS=0)
target_link_libraries(web_sndfile PUBLIC web_vorbis)

source_folder(SDL libsdl2)
set(SDL_PLACES . atomic audio audio/disk audio/dummy audio/emscripten cpuinfo events file filesystem/emscripten haptic
    haptic/dummy joystick joystick/emscripten libm loadso/dlopen locale locale/emscripten misc misc/emscripten power
    power/emscripten render render/opengles2 render/software sensor sensor/dummy stdlib thread thread/generic timer
    timer/unix video video/dummy video/emscripten video/yuv2rgb)
set(SDL_FILES "")
foreach(place ${SDL_PLACES})
  file(GLOB files ${SDL}/src/${place}/*.c)
  list(APPEND SDL_FILES ${files})
endforeach()
add_web_library(web_sdl ${SDL_FILES})
target_include_directories(web_sdl PUBLIC ${SDL}/include PRIVATE ${SDL}/src/video/khronos)

source_folder(IMGUI imgui)
file(GLOB IMGUI_FILES ${IMGUI}/imgui*.cpp)
list(FILTER IMGUI_FILES EXCLUDE REGEX "imgui_demo")
add_web_library(web_imgui ${IMGUI_FILES} ${IMGUI}/backends/imgui_impl_opengl3.cpp ${IMGUI}/misc/cpp/imgui_stdlib.cpp)
target_include_directories(web_imgui PUBLIC ${IMGUI})
target_compile_definitions(web_imgui PRIVATE IMGUI_IMPL_OPENGL_ES3)

# Headers alone, which the machine has, and one that Debian moves: only these of all that stands beside them.
set(HEADERS ${CMAKE_CURRENT_BINARY_DIR}/made/headers)
file(MAKE_DIRECTORY ${HEADERS})
foreach(header /usr/include/glm /usr/include/fast_float ${IMGUI}/misc/cpp/imgui_stdlib.h)
  get_filename_component(name ${header} NAME)
  file(CREATE_LINK ${header} ${HEADERS}/${name} SYMBOLIC)
endforeach()
add_library(web_headers INTERFACE)
target_include_directories(web_headers SYSTEM INTERFACE ${HEADERS})
