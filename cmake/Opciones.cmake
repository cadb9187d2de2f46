# Options common to every target of ours.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(adminutr_opciones INTERFACE)
target_compile_options(adminutr_opciones INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False alarms of GCC 12 in its own headers when it inlines: "x" + std::string as an overlapping copy, the value of an
  # empty std::optional as read.
  target_compile_options(adminutr_opciones INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()
target_include_directories(adminutr_opciones INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(ADMINUTR_SANITIZE)
  # Process-wide, so that headers of libraries are instrumented alike in every object.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# adminutr_libreria(NAME SOURCES... [USA targets...]): one static library for one folder, with the common options.
function(adminutr_libreria nombre)
  cmake_parse_arguments(A "" "" "FUENTES;USA" ${ARGN})
  add_library(${nombre} STATIC ${A_FUENTES})
  target_link_libraries(${nombre} PUBLIC adminutr_opciones ${A_USA})
endfunction()

# The same for a folder of windows: moc runs on it and Qt is linked.
function(adminutr_ventanas nombre)
  adminutr_libreria(${nombre} ${ARGN})
  set_target_properties(${nombre} PROPERTIES AUTOMOC ON)
  target_link_libraries(${nombre} PUBLIC Qt6::Widgets)
endfunction()
