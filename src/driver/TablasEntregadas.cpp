#include "driver/TablasEntregadas.h"

namespace utr {

TablaPtr ALaVista(const Tabla& tabla) {
  TablaPtr filas = tabla.Clone();
  filas->Filter(tabla.Filter());
  filas->Sort(tabla.Sort());
  return filas;
}

TablaPtr CopiarALaVista(const Tabla& tabla) {
  const TablaPtr filas = ALaVista(tabla);
  return CopiarRecordset(*filas, filas->RecordCount() > 0);
}

}  // namespace utr
