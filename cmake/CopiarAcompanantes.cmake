# Run at each build with DATOS (our data folder), CATALOGOS (translation catalogues), AYUDA (the help), DESTINO (the
# executable's folder) and ENTREGADOS (what earlier builds delivered of the files that people edit).

# Ours: the delivered copy always follows the source.
file(GLOB propios ${DATOS}/*.xml ${DATOS}/*.icf ${DATOS}/*.ipf)
file(COPY ${propios} DESTINATION ${DESTINO})
file(COPY ${AYUDA} DESTINATION ${DESTINO}/Ayuda)
file(COPY ${CATALOGOS} DESTINATION ${DESTINO}/translations)

# The trainer's and the operator's: a copy that was edited stays; one that wasn't follows the source.
foreach(editable UTRSimulada.toml comandosAT.dat Estaciones.toml)
  set(nuevo ${DATOS}/${editable})
  set(actual ${DESTINO}/${editable})
  set(anterior ${ENTREGADOS}/${editable})
  if(NOT EXISTS ${nuevo})
    continue()
  endif()
  set(entregar TRUE)
  if(EXISTS ${actual})
    set(entregar FALSE)
    if(EXISTS ${anterior})
      file(SHA256 ${actual} firma_actual)
      file(SHA256 ${anterior} firma_anterior)
      if(firma_actual STREQUAL firma_anterior)
        set(entregar TRUE)
      endif()
    endif()
  endif()
  if(entregar)
    file(COPY_FILE ${nuevo} ${actual} ONLY_IF_DIFFERENT)
    file(MAKE_DIRECTORY ${ENTREGADOS})
    file(COPY_FILE ${nuevo} ${anterior} ONLY_IF_DIFFERENT)
  endif()
endforeach()
