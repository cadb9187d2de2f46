# adminutr_acompanantes(TARGET): keeps beside the executable all that it ships, at every build, so that the folder can
# be copied and run from anywhere.

find_file(ADMINUTR_CATALOGO_QT qtbase_es.qm
  HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS} /usr/share/qt6/translations
  NO_CACHE REQUIRED)

function(adminutr_acompanantes destino)
  add_custom_target(acompanantes ALL
    COMMAND ${CMAKE_COMMAND}
      -D DATOS=${CMAKE_SOURCE_DIR}/data
      -D CATALOGOS=${ADMINUTR_CATALOGO_QT}
      -D DESTINO=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
      -D ENTREGADOS=${CMAKE_BINARY_DIR}/entregados
      -P ${CMAKE_SOURCE_DIR}/cmake/CopiarAcompanantes.cmake
    VERBATIM)
  add_dependencies(${destino} acompanantes)
endfunction()
