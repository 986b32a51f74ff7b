# The program's pictures as one Qt resource: each symbol of resources/symbols.txt under its name,
# and the two images in resources/. Drawings not in resources/symbols come from the package
# bootstrap-icons.

set(KESTRUNE_BOOTSTRAP_ICONS /usr/share/bootstrap-icons/svg CACHE PATH
  "Folder of the drawings from the package bootstrap-icons")

# kestrune_embed_pictures(TARGET): adds them to the library as the resource kestrune_pictures.
function(kestrune_embed_pictures target)
  set(resources ${PROJECT_SOURCE_DIR}/resources)
  set(table ${resources}/symbols.txt)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${table})
  if(NOT IS_DIRECTORY ${KESTRUNE_BOOTSTRAP_ICONS})
    message(FATAL_ERROR "The symbols' drawings are missing: ${KESTRUNE_BOOTSTRAP_ICONS} doesn't exist.\n"
                        "Install them with: apt install bootstrap-icons")
  endif()

  set(entries "")
  set(files "")
  file(STRINGS ${table} lines REGEX "^[^#]")
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "^([A-Za-z0-9.]+) +([a-z0-9-]+) *$")
      message(FATAL_ERROR "${table}: not a symbol and its drawing: ${line}")
    endif()
    set(symbol ${CMAKE_MATCH_1})
    set(drawing ${CMAKE_MATCH_2})
    set(file ${resources}/symbols/${drawing}.svg)
    if(NOT EXISTS ${file})
      set(file ${KESTRUNE_BOOTSTRAP_ICONS}/${drawing}.svg)
    endif()
    if(NOT EXISTS ${file})
      message(FATAL_ERROR "${table}: no drawing ${drawing}.svg for ${symbol}, neither in resources/symbols "
                          "nor in the package bootstrap-icons.")
    endif()
    string(APPEND entries "  <file alias=\"symbols/${symbol}.svg\">${file}</file>\n")
    list(APPEND files ${file})
  endforeach()
  foreach(image MenuBarIconTemplate kestrune)
    string(APPEND entries "  <file alias=\"images/${image}.svg\">${resources}/${image}.svg</file>\n")
    list(APPEND files ${resources}/${image}.svg)
  endforeach()

  set(list ${CMAKE_CURRENT_BINARY_DIR}/kestrune_pictures.qrc)
  set(generated ${CMAKE_CURRENT_BINARY_DIR}/kestrune_pictures.cpp)
  file(CONFIGURE OUTPUT ${list} @ONLY
       CONTENT "<RCC>\n<qresource prefix=\"/kestrune\">\n@entries@</qresource>\n</RCC>\n")
  add_custom_command(OUTPUT ${generated}
    COMMAND Qt6::rcc --name kestrune_pictures --output ${generated} ${list}
    DEPENDS ${list} ${files}
    COMMENT "Embedding symbols and pictures"
    VERBATIM)
  # Warnings in generated code are not ours to fix.
  set_source_files_properties(${generated} PROPERTIES COMPILE_OPTIONS -w SKIP_PRECOMPILE_HEADERS ON)
  target_sources(${target} PRIVATE ${generated})
endfunction()
