# A room is one library per folder below src/. It sees only its own headers and those of the rooms
# it uses: each room has an include root in the build tree with links to just its own headers, so
# any other include does not compile.

option(KESTRUNE_WERROR "Treat warnings as errors" ON)
set(KESTRUNE_SANITIZE "" CACHE STRING "Sanitizers to build with, as in -fsanitize")

add_library(kestrune_flags INTERFACE)
target_compile_options(kestrune_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
  -Wcast-qual -Wextra-semi -Wundef -Wno-missing-field-initializers
  $<$<BOOL:${KESTRUNE_WERROR}>:-Werror>
  -fno-omit-frame-pointer)
target_compile_definitions(kestrune_flags INTERFACE QT_NO_KEYWORDS)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Without this ccache can't reuse objects built with a precompiled header.
  target_compile_options(kestrune_flags INTERFACE -fpch-preprocess)
endif()
if(KESTRUNE_SANITIZE)
  target_compile_options(kestrune_flags INTERFACE -fsanitize=${KESTRUNE_SANITIZE} -fno-sanitize-recover=all)
  target_link_options(kestrune_flags INTERFACE -fsanitize=${KESTRUNE_SANITIZE})
else()
  target_compile_definitions(kestrune_flags INTERFACE $<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2>)
  target_compile_options(kestrune_flags INTERFACE -fstack-protector-strong -fstack-clash-protection)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    target_compile_options(kestrune_flags INTERFACE -fcf-protection)
  endif()
  target_link_options(kestrune_flags INTERFACE -Wl,-z,relro,-z,now,--as-needed)
endif()

# kestrune_room([SOURCES …] [USES …] [LIBRARIES …] [PRIVATE_LIBRARIES …])
#
# Makes the library kestrune_<path below src, with "_" for "/"> from the calling folder. USES lists
# the paths of the rooms it may include from; LIBRARIES are external. A room without SOURCES is
# header-only.
function(kestrune_room)
  cmake_parse_arguments(arg "" "" "SOURCES;USES;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
  file(RELATIVE_PATH room ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  kestrune_target(target "${room}")
  set(used ${arg_LIBRARIES})
  foreach(other IN LISTS arg_USES)
    kestrune_target(other_target ${other})
    list(APPEND used ${other_target})
  endforeach()

  set(root ${PROJECT_BINARY_DIR}/roots/${target})
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${room})
  foreach(header IN LISTS headers)
    get_filename_component(file ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${room}/${file} SYMBOLIC)
  endforeach()

  if(arg_SOURCES)
    add_library(${target} STATIC ${arg_SOURCES})
    target_include_directories(${target} PUBLIC ${root})
    target_link_libraries(${target} PUBLIC ${used} PRIVATE kestrune_flags ${arg_PRIVATE_LIBRARIES})
    kestrune_precompile(${target})
  else()
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${root})
    target_link_libraries(${target} INTERFACE ${used})
  endif()
endfunction()

# The headers beside main.cpp are the room "assembly".
function(kestrune_target result room)
  if(room STREQUAL "")
    set(room assembly)
  endif()
  string(REPLACE "/" "_" name ${room})
  set(${result} kestrune_${name} PARENT_SCOPE)
endfunction()

# One precompiled header for all targets: the standard headers that most files include.
function(kestrune_precompile target)
  if(NOT TARGET kestrune_pch)
    file(WRITE ${PROJECT_BINARY_DIR}/pch.cpp "")
    add_library(kestrune_pch OBJECT ${PROJECT_BINARY_DIR}/pch.cpp)
    target_link_libraries(kestrune_pch PRIVATE kestrune_flags)
    target_precompile_headers(kestrune_pch PRIVATE
      <algorithm> <array> <atomic> <chrono> <cmath> <compare> <concepts> <coroutine> <cstddef> <cstdint>
      <functional> <map> <memory> <mutex> <optional> <ranges> <span> <string> <string_view> <thread>
      <type_traits> <unordered_map> <utility> <variant> <vector>)
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    # -fPIE, the default for programs, doesn't match the -fPIC of the header.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${target} PRIVATE -fPIC)
  endif()
  target_precompile_headers(${target} REUSE_FROM kestrune_pch)
endfunction()
