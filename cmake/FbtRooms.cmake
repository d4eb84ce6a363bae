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

# fbt_precompiled(<target>): it takes the common headers over where they are compiled once (FbtPrecompiled).
function(fbt_precompiled target)
  if(FBT_PRECOMPILED)
    target_precompile_headers(${target} REUSE_FROM fbt_precompiled)
  endif()
endfunction()

# fbt_room(<target> [EXCEPT <file>...] [SHOWS <target>...] [LINKS <target>...] [LOADS <target>...])
# One shared library for the folder; a folder of headers alone has none.
#   LINKS  what the room uses. Nobody who links the room gets it by that, and -z defs lets nothing else be called.
#   SHOWS  modules of Qt that its headers include, so that who links the room needs them too.
#   LOADS  a room whose headers it uses and whose library it opens at run time.
# All symbols stay within the library but those marked FBT_OFFERED (platform/offer.h). tests/checks/includes reads the
# global property fbt_rooms: "folder target linked-target..." for each room.
function(fbt_room target)
  cmake_parse_arguments(ROOM "" "" "EXCEPT;SHOWS;LINKS;LOADS" ${ARGN})
  file(RELATIVE_PATH folder "${CMAKE_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
  list(JOIN ROOM_LINKS " " links)
  list(JOIN ROOM_LOADS " " loads)
  set_property(GLOBAL APPEND PROPERTY fbt_rooms "${folder} ${target} ${links} ${loads}")
  file(GLOB sources CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" *.cpp *.h *.ui *.qrc)
  if(NOT "${sources}" MATCHES "\\.cpp")
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE fbt_options ${ROOM_SHOWS})
    return()
  endif()
  list(REMOVE_ITEM sources ${ROOM_EXCEPT})
  add_library(${target} SHARED ${sources})
  target_link_libraries(${target} PUBLIC fbt_options ${ROOM_SHOWS} PRIVATE ${ROOM_LINKS})
  target_link_options(${target} PRIVATE -Wl,-z,defs)
  fbt_precompiled(${target})
  string(REPLACE "fbt_" "pelkfbt-" output ${target})
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${output} CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  install(TARGETS ${target} LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/pelkfbt")
endfunction()

# fbt_test(<name> [COST <seconds>] LINKS <target>...): <name>.cpp is one test program and one test of CTest. The dearest
# start first, so that none of them is left to run alone at the end.
function(fbt_test name)
  cmake_parse_arguments(TEST "" "COST" "LINKS" ${ARGN})
  add_executable(${name} ${name}.cpp)
  target_link_libraries(${name} PRIVATE fbt_options Qt6::Test Qt6::Widgets ${TEST_LINKS})
  fbt_precompiled(${name})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp"
    TIMEOUT 300)
  if(TEST_COST)
    set_tests_properties(${name} PROPERTIES COST ${TEST_COST})
  endif()
endfunction()
