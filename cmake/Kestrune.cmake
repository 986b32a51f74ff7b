# One library for each folder below src/. A library sees the headers of its own folder and of those it
# links, and no others: each has an include root in the build tree that holds links to its own headers
# alone, so that an include against the direction of the house does not compile.

option(KESTRUNE_WERROR "Treat warnings as errors" ON)
set(KESTRUNE_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them")

add_library(kestrune_flags INTERFACE)
target_compile_options(kestrune_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
  -Wcast-qual -Wextra-semi -Wundef -Wno-missing-field-initializers
  $<$<BOOL:${KESTRUNE_WERROR}>:-Werror>
  -fno-omit-frame-pointer)
target_compile_definitions(kestrune_flags INTERFACE QT_NO_KEYWORDS)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # ccache can reuse objects built with a precompiled header only so.
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

# kestrune_library(NAME FOLDER <below src/> SOURCES … LINKS … [PRIVATE_LINKS …])
# makes kestrune_NAME. Without SOURCES it is a library of headers.
function(kestrune_library name)
  cmake_parse_arguments(arg "" "FOLDER" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  set(target kestrune_${name})
  set(source_dir ${PROJECT_SOURCE_DIR}/src/${arg_FOLDER})
  set(root ${PROJECT_BINARY_DIR}/roots/${name})

  file(GLOB headers CONFIGURE_DEPENDS ${source_dir}/*.h)
  file(REMOVE_RECURSE ${root}/${arg_FOLDER})
  file(MAKE_DIRECTORY ${root}/${arg_FOLDER})
  foreach(header IN LISTS headers)
    get_filename_component(file ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${arg_FOLDER}/${file} SYMBOLIC)
  endforeach()

  if(arg_SOURCES)
    add_library(${target} STATIC ${arg_SOURCES})
    target_include_directories(${target} PUBLIC ${root})
    target_link_libraries(${target} PUBLIC ${arg_LINKS} PRIVATE kestrune_flags ${arg_PRIVATE_LINKS})
    kestrune_precompile(${target})
  else()
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${root})
    target_link_libraries(${target} INTERFACE ${arg_LINKS})
  endif()
endfunction()

# The standard headers that nearly every file of ours includes, compiled once and shared.
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
    # A program's own -fPIE would not match the header's -fPIC.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${target} PRIVATE -fPIC)
  endif()
  target_precompile_headers(${target} REUSE_FROM kestrune_pch)
endfunction()
