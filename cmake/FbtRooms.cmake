# What all rooms, tests and benchmarks are built with.

add_library(fbt_options INTERFACE)
target_include_directories(fbt_options INTERFACE "$<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}>")
target_compile_options(fbt_options INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wconversion -Wno-sign-conversion -Wnull-dereference -Wduplicated-cond -Wlogical-op)
target_compile_definitions(fbt_options INTERFACE
  QT_NO_FOREACH QT_NO_CAST_FROM_BYTEARRAY QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)

option(FBT_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(FBT_SANITIZE)
  # Without vptr: it wants the type of the module's class at link time, and the launcher loads the module at run time.
  # The optimiser's flow warnings see the sanitizers' own checks and report what is not there.
  target_compile_options(fbt_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all -fno-omit-frame-pointer -Wno-null-dereference -Wno-maybe-uninitialized)
  target_link_options(fbt_options INTERFACE -fsanitize=address,undefined)
endif()

# fbt_room(<target> [ONLY <file>...] [EXCEPT <file>...] [LINKS <target>...])
# One shared library for the folder, or for the files named. -z defs: what a room does not link it cannot call,
# so an arrow that points upwards fails the build.
function(fbt_room target)
  cmake_parse_arguments(ROOM "" "" "ONLY;EXCEPT;LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" *.cpp *.h *.ui *.qrc)
  if(ROOM_ONLY)
    set(sources ${ROOM_ONLY})
  endif()
  list(REMOVE_ITEM sources ${ROOM_EXCEPT})
  add_library(${target} SHARED ${sources})
  target_link_libraries(${target} PUBLIC fbt_options ${ROOM_LINKS})
  target_link_options(${target} PRIVATE -Wl,-z,defs)
  string(REPLACE "fbt_" "pelkfbt-" output ${target})
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${output})
  install(TARGETS ${target} LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/pelkfbt")
endfunction()

# fbt_test(<name> LINKS <target>...): <name>.cpp is one test program and one test of CTest.
function(fbt_test name)
  cmake_parse_arguments(TEST "" "" "LINKS" ${ARGN})
  add_executable(${name} ${name}.cpp)
  target_link_libraries(${name} PRIVATE fbt_options Qt6::Test ${TEST_LINKS})
  add_test(NAME ${name} COMMAND ${name})
  set_property(GLOBAL APPEND PROPERTY fbt_tests ${name})
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp"
    TIMEOUT 300)
endfunction()
