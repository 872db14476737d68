find_package(GTest REQUIRED)
include(GoogleTest)

file(GLOB_RECURSE TEST_SOURCES CONFIGURE_DEPENDS tests/*.cpp)
if(BRINEWHIRL_SANITIZE_THREADS)
  # Only what runs in several threads: the sound layer and the start-up screens. The rest would take minutes to build.
  list(FILTER TEST_SOURCES INCLUDE REGEX "tests/(audio/.*|screens/start_up_test|[^/]*)\\.cpp$")
  list(FILTER TEST_SOURCES EXCLUDE REGEX "tests/game_loop_test\\.cpp$")
endif()
add_executable(brinewhirl_tests ${TEST_SOURCES})
target_include_directories(brinewhirl_tests PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests)
set_source_files_properties(tests/folders.cpp PROPERTIES COMPILE_DEFINITIONS
  "BRINEWHIRL_GAME_DIR=\"${CMAKE_SOURCE_DIR}/game\";BRINEWHIRL_BUILD_DIR=\"${CMAKE_BINARY_DIR}\"")
if(BRINEWHIRL_SANITIZE)
  set_source_files_properties(tests/sanitizer_suppressions.cpp PROPERTIES COMPILE_DEFINITIONS BRINEWHIRL_SANITIZE)
endif()
target_link_libraries(brinewhirl_tests PRIVATE brinewhirl_toolkit GTest::gtest GTest::gtest_main)
add_dependencies(brinewhirl_tests content brinewhirl-tool)
if(TARGET sound_banks)
  add_dependencies(brinewhirl_tests sound_banks)
endif()
# Tests listen through the loopback device; OpenAL must not look for a sound server first, whose library has races of its
# own.
gtest_discover_tests(brinewhirl_tests DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 ENVIRONMENT ALSOFT_DRIVERS=null)

add_test(NAME content.test_font_tools COMMAND ${SYSTEM_PYTHON} ${CMAKE_SOURCE_DIR}/tests/content/test_font_tools.py ${FONT})
set_tests_properties(content.test_font_tools PROPERTIES TIMEOUT 120)

add_test(NAME content.place_content
         COMMAND ${SYSTEM_PYTHON} ${CMAKE_SOURCE_DIR}/tests/content/test_place_content.py
                 ${CMAKE_COMMAND} ${CMAKE_SOURCE_DIR}/cmake/place_content.cmake)

add_test(NAME docs.format_reference
         COMMAND sh -c "\"$1\" reference | diff -u \"$2\" - || { echo 'stale: brinewhirl-tool reference > docs/format-reference.md'; false; }"
                 sh $<TARGET_FILE:brinewhirl-tool> ${CMAKE_SOURCE_DIR}/docs/format-reference.md)

add_test(NAME docs.making_levels
         COMMAND ${SYSTEM_PYTHON} ${CMAKE_SOURCE_DIR}/tests/content/test_making_levels.py
                 $<TARGET_FILE:brinewhirl-tool> ${CMAKE_SOURCE_DIR}/docs/making-levels.md)
set_tests_properties(docs.making_levels PROPERTIES TIMEOUT 120)

# Under the sanitizers frames take longer than their budget.
if(NOT (BRINEWHIRL_SANITIZE OR BRINEWHIRL_SANITIZE_THREADS))
  add_test(NAME content.lint_play
           COMMAND ${SYSTEM_PYTHON} ${CMAKE_SOURCE_DIR}/tests/content/test_lint_play.py $<TARGET_FILE:brinewhirl-tool>)
  add_test(NAME content.balance
           COMMAND ${SYSTEM_PYTHON} ${CMAKE_SOURCE_DIR}/tests/content/test_balance.py $<TARGET_FILE:brinewhirl-tool>)
  set_tests_properties(content.lint_play content.balance PROPERTIES TIMEOUT 600 PROCESSORS 2)
endif()

add_test(NAME sound.sources COMMAND python3 ${CMAKE_SOURCE_DIR}/tests/sound/test_sound_sources.py)

# The real program in a virtual display, and another driver; the sanitizers would only report those.
file(GLOB E2E_SCRIPTS CONFIGURE_DEPENDS tests/e2e/test_*.py)
if(NOT (BRINEWHIRL_SANITIZE OR BRINEWHIRL_SANITIZE_THREADS))
  # The same pictures from the context of a small computer: the driver is told to offer less desktop OpenGL than the game
  # needs, so OpenGL ES draws.
  add_test(NAME graphics.es COMMAND brinewhirl_tests "--gtest_filter=Golden.*:Draw*:EditorDraw*")
  set_tests_properties(graphics.es PROPERTIES TIMEOUT 120 ENVIRONMENT
    "ALSOFT_DRIVERS=null;MESA_GL_VERSION_OVERRIDE=3.1;MESA_GLSL_VERSION_OVERRIDE=140")
  foreach(script ${E2E_SCRIPTS})
    get_filename_component(name ${script} NAME_WE)
    add_test(NAME e2e.${name} COMMAND python3 ${script} $<TARGET_FILE:brinewhirl>)
    set_tests_properties(e2e.${name} PROPERTIES TIMEOUT 600 RUN_SERIAL TRUE)
  endforeach()
endif()
