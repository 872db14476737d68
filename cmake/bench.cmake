# Programs that print timing rows to hold against other programs; never run by the tests.
foreach(name physics_step level_load frame)
  if(EXISTS ${CMAKE_SOURCE_DIR}/bench/${name}.cpp)
    add_executable(${name} bench/${name}.cpp)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE brinewhirl_engine)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench)
  endif()
endforeach()
