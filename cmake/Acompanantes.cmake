# adminutr_acompanantes(TARGET): keeps beside the executable all that it ships, at every build, so that the folder can
# be copied and run from anywhere.

find_file(ADMINUTR_CATALOGO_QT qtbase_es.qm
  HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS} /usr/share/qt6/translations
  NO_CACHE REQUIRED)

find_program(ADMINUTR_LRELEASE lrelease
  HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS} /usr/lib/qt6/bin
  NO_CACHE REQUIRED)

find_program(ADMINUTR_QHELPGENERATOR qhelpgenerator
  HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_LIBEXECS} /usr/lib/qt6/libexec
  NO_DEFAULT_PATH NO_CACHE REQUIRED)

# The help: pages made of what is written in data/ayuda and of the program's tables, in one file.
set(ADMINUTR_AYUDA ${CMAKE_BINARY_DIR}/ayuda/AdminUTR.hlp)
file(GLOB ADMINUTR_PAGINAS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/ayuda/*.xml)
set(paginas_hechas ${CMAKE_BINARY_DIR}/ayuda/paginas)
add_custom_command(OUTPUT ${ADMINUTR_AYUDA}
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${paginas_hechas}
  COMMAND generar-ayuda ${CMAKE_SOURCE_DIR}/data/ayuda ${CMAKE_SOURCE_DIR}/data ${paginas_hechas}
  COMMAND ${ADMINUTR_QHELPGENERATOR} -s ${paginas_hechas}/AdminUTR.qhp -o ${ADMINUTR_AYUDA}
  DEPENDS generar-ayuda ${ADMINUTR_PAGINAS} ${CMAKE_SOURCE_DIR}/data/Eventos.xml VERBATIM)
add_custom_target(ayuda DEPENDS ${ADMINUTR_AYUDA})

function(adminutr_acompanantes destino)
  set(fuente ${CMAKE_SOURCE_DIR}/data/traducciones/complemento_es.ts)
  set(complemento ${CMAKE_BINARY_DIR}/complemento_es.qm)
  add_custom_command(OUTPUT ${complemento}
    COMMAND ${ADMINUTR_LRELEASE} -silent ${fuente} -qm ${complemento}
    DEPENDS ${fuente} VERBATIM)
  add_custom_target(acompanantes ALL
    COMMAND ${CMAKE_COMMAND}
      -D DATOS=${CMAKE_SOURCE_DIR}/data
      "-DCATALOGOS=${ADMINUTR_CATALOGO_QT};${complemento}"
      -D AYUDA=${ADMINUTR_AYUDA}
      -D DESTINO=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
      -D ENTREGADOS=${CMAKE_BINARY_DIR}/entregados
      -P ${CMAKE_SOURCE_DIR}/cmake/CopiarAcompanantes.cmake
    DEPENDS ${complemento} ${ADMINUTR_AYUDA}
    VERBATIM)
  add_dependencies(${destino} acompanantes)
endfunction()
