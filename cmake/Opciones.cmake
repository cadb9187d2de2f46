# Options common to every target of ours.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE ccache)
if(CCACHE)
  # By way of a script of the same name, because ccache only takes precompiled headers when its surroundings say so.
  set(lanzador ${CMAKE_BINARY_DIR}/lanzadores/ccache)
  file(CONFIGURE OUTPUT ${lanzador} @ONLY CONTENT [[#!/bin/sh
CCACHE_SLOPPINESS="${CCACHE_SLOPPINESS:+$CCACHE_SLOPPINESS,}pch_defines,time_macros" exec "@CCACHE@" "$@"
]])
  file(CHMOD ${lanzador} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${lanzador})
endif()

add_library(adminutr_opciones INTERFACE)
target_compile_options(adminutr_opciones INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False alarms of GCC 12 in its own headers when it inlines: "x" + std::string as an overlapping copy, the value of an
  # empty std::optional as read.
  target_compile_options(adminutr_opciones INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()
target_include_directories(adminutr_opciones INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(ADMINUTR_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(ADMINUTR_SANITIZE)
  # Process-wide, so that headers of libraries are instrumented alike in every object.
  # What a null, misaligned or short object does ends the program or is told by the address sanitizer anyway, and to ask at
  # each access costs a third of the time.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=null,alignment,object-size,vptr
    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

include(Precompilados)
adminutr_precompilados(pch_nucleo CABECERAS ${ADMINUTR_PCH_BASE})
adminutr_precompilados(pch_ventanas CABECERAS ${ADMINUTR_PCH_BASE} ${ADMINUTR_PCH_QT} USA Qt6::Widgets)

function(adminutr_carpeta nombre precompilados)
  cmake_parse_arguments(A "" "" "FUENTES;USA;DENTRO" ${ARGN})
  add_library(${nombre} STATIC ${A_FUENTES})
  target_link_libraries(${nombre} PUBLIC ${A_USA} PRIVATE adminutr_opciones ${A_DENTRO})
  adminutr_precompilar(${nombre} ${precompilados})
endfunction()

# adminutr_libreria(NAME FUENTES sources... USA targets... DENTRO targets...): one static library for one folder, with the
# common options. USA names what its headers include, DENTRO what only its sources do; together they name all of it and
# nothing more.
function(adminutr_libreria nombre)
  adminutr_carpeta(${nombre} pch_nucleo ${ARGN})
endfunction()

# The same for a folder of windows: moc runs on it and Qt is linked.
function(adminutr_ventanas nombre)
  adminutr_carpeta(${nombre} pch_ventanas ${ARGN})
  set_target_properties(${nombre} PROPERTIES AUTOMOC ON)
  target_link_libraries(${nombre} PUBLIC Qt6::Widgets)
endfunction()
