find_package(GTest REQUIRED)
include(GoogleTest)

file(GLOB_RECURSE TEST_SOURCES CONFIGURE_DEPENDS tests/*.cpp)
add_executable(brinewhirl_tests ${TEST_SOURCES})
target_include_directories(brinewhirl_tests PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests)
target_compile_definitions(brinewhirl_tests PRIVATE BRINEWHIRL_GAME_DIR="${CMAKE_SOURCE_DIR}/game"
                                                    BRINEWHIRL_BUILD_DIR="${CMAKE_BINARY_DIR}")
target_link_libraries(brinewhirl_tests PRIVATE brinewhirl_toolkit GTest::gtest GTest::gtest_main)
add_dependencies(brinewhirl_tests content)
# Tests listen through the loopback device; OpenAL must not look for a sound server first, whose library has races of its
# own.
gtest_discover_tests(brinewhirl_tests DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 ENVIRONMENT ALSOFT_DRIVERS=null)

# The real program in a virtual display; the sanitizers would only report its driver.
file(GLOB E2E_SCRIPTS CONFIGURE_DEPENDS tests/e2e/test_*.py)
if(NOT (BRINEWHIRL_SANITIZE OR BRINEWHIRL_SANITIZE_THREADS))
  foreach(script ${E2E_SCRIPTS})
    get_filename_component(name ${script} NAME_WE)
    add_test(NAME e2e.${name} COMMAND python3 ${script} $<TARGET_FILE:brinewhirl>)
    set_tests_properties(e2e.${name} PROPERTIES TIMEOUT 300 RUN_SERIAL TRUE)
  endforeach()
endif()
