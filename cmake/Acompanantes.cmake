# adminutr_acompanantes(TARGET): keeps beside the executable all that it ships, at every build, so that the folder can
# be copied and run from anywhere.

find_file(ADMINUTR_CATALOGO_QT qtbase_es.qm
  HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS} /usr/share/qt6/translations
  NO_CACHE REQUIRED)

find_program(ADMINUTR_LRELEASE lrelease
  HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS} /usr/lib/qt6/bin
  NO_CACHE REQUIRED)

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
      -D DESTINO=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
      -D ENTREGADOS=${CMAKE_BINARY_DIR}/entregados
      -P ${CMAKE_SOURCE_DIR}/cmake/CopiarAcompanantes.cmake
    DEPENDS ${complemento}
    VERBATIM)
  add_dependencies(${destino} acompanantes)
endfunction()
