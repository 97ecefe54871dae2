# One room of the house is one static library; what it may lean on is what LINKS states.

add_library(talnik_options INTERFACE)
target_compile_options(talnik_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
target_compile_definitions(talnik_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_USE_QSTRINGBUILDER)
if(TALNIK_SANITIZE)
  target_compile_options(talnik_options INTERFACE -fsanitize=${TALNIK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(talnik_options INTERFACE -fsanitize=${TALNIK_SANITIZE})
endif()

# talnik_room(NAME [LINKS lib...]): every .cpp directly in the folder makes the room; headers are found as "room/File.h".
function(talnik_room name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  add_library(${name} STATIC ${sources})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE talnik_options)
endfunction()

# talnik_tests(ROOM [LINKS lib...]): the tests of one room are one program, run offscreen.
function(talnik_tests room)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${room}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${room} ${sources})
  set_target_properties(test_${room} PROPERTIES UNITY_BUILD OFF)
  target_link_libraries(test_${room} PRIVATE ${room} test_support ${ARG_LINKS} talnik_options)
  gtest_discover_tests(test_${room} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 120 LABELS ${room})
endfunction()
