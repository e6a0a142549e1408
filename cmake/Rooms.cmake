# A room is a folder of src/ and one library; a test program mirrors it in tests/.

# celldesk_room(NAME FOLDER [rooms it may see ...])
function(celldesk_room name folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/src/${folder}/*.h)
  add_library(celldesk_${name} STATIC ${sources})
  set_target_properties(celldesk_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(celldesk_${name} PUBLIC celldesk_options)
  foreach(room ${ARGN})
    target_link_libraries(celldesk_${name} PUBLIC celldesk_${room})
  endforeach()
endfunction()

# celldesk_test(NAME FOLDER [libraries ...]): every *_test.cpp of tests/FOLDER in one program NAME_test.
function(celldesk_test name folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/tests/${folder}/*.h)
  if(NOT sources)
    return()
  endif()
  add_executable(${name}_test ${sources})
  target_include_directories(${name}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests ${CMAKE_SOURCE_DIR})
  target_compile_definitions(${name}_test PRIVATE CELLDESK_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data"
    CELLDESK_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  target_link_libraries(${name}_test PRIVATE celldesk_options ${ARGN} GTest::gmock GTest::gtest_main)
  set_target_properties(${name}_test PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name}_test)
endfunction()
