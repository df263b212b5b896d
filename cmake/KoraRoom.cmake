# Warnings for everything that is written here (generated code is silenced by its own target settings).
add_library(kora_warnings INTERFACE)
if(MSVC)
  target_compile_options(kora_warnings INTERFACE /utf-8 /W4)
else()
  target_compile_options(kora_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                 $<$<BOOL:${KORA_WERROR}>:-Werror>)
endif()

# kora_precompile(TARGET PRIVATE header...) or kora_precompile(TARGET REUSE_FROM target): headers are read once, as
# target_precompile_headers does it. A source that lacks an include is found by the builds that do not precompile.
function(kora_precompile)
  if(KORA_PRECOMPILE)
    target_precompile_headers(${ARGV})
  endif()
endfunction()

# kora_room(NAME SOURCES file... NEEDS target... [QT]): the static library kora_NAME of the folder src/NAME.
# NEEDS names the rooms below it and the libraries it uses; scripts/check-includes holds the sources to that list.
function(kora_room name)
  cmake_parse_arguments(ROOM "QT" "" "SOURCES;NEEDS" ${ARGN})
  add_library(kora_${name} STATIC ${ROOM_SOURCES})
  target_include_directories(kora_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(kora_${name} PUBLIC ${ROOM_NEEDS} PRIVATE kora_warnings)
  if(ROOM_QT)
    set_target_properties(kora_${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()
