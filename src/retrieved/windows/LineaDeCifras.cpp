#include "retrieved/windows/LineaDeCifras.h"

#include "retrieved/CifrasRegistros.h"
#include "widgets/EtiquetaCopiable.h"
#include "widgets/Iconos.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

QString PalabraDe(MarcaRegistro marca) {
  switch (marca) {
    case MarcaRegistro::kSinValor:
      return QStringLiteral("Sin valor");
    case MarcaRegistro::kSinValidar:
      return QStringLiteral("Sin validar");
    case MarcaRegistro::kNinguna:
      break;
  }
  return {};
}

}  // namespace

EtiquetaCopiable* NuevaLineaDeCifras() {
  auto* linea = new EtiquetaCopiable(QStringLiteral("lblCifras"));
  linea->setWhatsThis(QStringLiteral("El resumen de los registros, cualquiera sea el filtro de la lista."));
  linea->hide();
  return linea;
}

void MarcarRegistros(VistaLista& lista, const Tabla& tabla) {
  lista.Marcar([marcas = MarcasRegistros(tabla)](std::size_t fila) { return PalabraDe(marcas.De(fila)); },
               IconoDe("aviso"));
}

}  // namespace utr
