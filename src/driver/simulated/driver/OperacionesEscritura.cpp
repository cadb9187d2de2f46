#include <algorithm>
#include <utility>
#include <vector>

#include "driver/ArchivosDelControlador.h"
#include "driver/Textos.h"
#include "driver/simulated/driver/ComunicadorEnProceso.h"
#include "driver/simulated/driver/InteriorSimulado.h"

namespace utr {

using simulada::Op;

bool ComunicadorEnProceso::BorrarFlash() {
  return interior_->Ordenar(Op::kBorrarFlash, [&] {
    interior_->Unidad().BorrarFlash(interior_->ahora);
    return true;
  });
}

bool ComunicadorEnProceso::BorrarCartucho() {
  return interior_->Ordenar(Op::kBorrarCartucho, [&] {
    if (!interior_->Unidad().TieneCartucho()) return false;
    interior_->Unidad().BorrarCartucho(interior_->ahora);
    return true;
  });
}

bool ComunicadorEnProceso::ReiniciarAgenda(std::string_view comando) {
  return interior_->Ordenar(Op::kReiniciarAgenda, [&] {
    if (comando != "41") return false;
    interior_->Unidad().ReiniciarAgenda();
    return true;
  });
}

bool ComunicadorEnProceso::ReiniciarUTR(std::string_view comando) {
  return interior_->Ordenar(Op::kReiniciarUTR, [&] {
    if (comando != "14" && comando != "44") return false;
    simulada::InteriorSimulado& i = *interior_;
    const auto como_contesta = [&] { return std::pair(i.Unidad().velocidad, i.Unidad().identificador); };
    const auto antes = como_contesta();
    i.Unidad().Reiniciar(i.ahora);
    const std::int64_t ausencia = i.escenario.tiempos.Ausencia(comando == "44", como_contesta() != antes);
    i.enlace.ausente_hasta = i.reloj.Milisegundos() + ausencia;
    i.enlace.caido = true;
    if (i.al_contestar) i.al_contestar({});
    return true;
  });
}

bool ComunicadorEnProceso::GrabarAgenda(Tabla& tabla) {
  return interior_->Ordenar(Op::kGrabarAgenda, [&] { return interior_->Unidad().agenda.Escribir(tabla); });
}

bool ComunicadorEnProceso::GrabarParametrizacion(Tabla& tabla) {
  return interior_->Ordenar(Op::kGrabarParametrizacion, [&] { return interior_->Unidad().canales.Mezclar(tabla); });
}

bool ComunicadorEnProceso::GrabarConfiguracion(Tabla& tabla) {
  return interior_->Ordenar(Op::kGrabarConfiguracion, [&] { return interior_->Unidad().canales.Reemplazar(tabla); });
}

bool ComunicadorEnProceso::GrabarFechaHora() {
  return interior_->Ordenar(Op::kGrabarFechaHora, [&] {
    interior_->Unidad().PonerEnHora(interior_->ahora, interior_->ahora);
    return true;
  });
}

bool ComunicadorEnProceso::GrabarEstado(std::string_view flags) {
  return interior_->Ordenar(Op::kGrabarEstado, [&] {
    const auto bits = LeerPar(flags);
    if (!bits || *bits > 255) return false;
    interior_->Unidad().EscribirEstado(*bits);
    return true;
  });
}

bool ComunicadorEnProceso::EscribirPagina(std::string_view pagina, std::string_view datos) {
  const auto numero = NumeroDePagina(pagina);
  const auto escribir = [&] {
    const auto bytes = LeerTextoPagina(datos);
    return numero && bytes && !bytes->empty() && interior_->Unidad().EscribirPagina(*numero, *bytes);
  };
  return interior_->Ordenar(Op::kEscribirPagina, escribir);
}

bool ComunicadorEnProceso::GrabarEvento(std::string_view comando, std::string_view datos) {
  return interior_->Ordenar(Op::kGrabarEvento, [&] {
    const auto pares = LeerDosPares(datos);
    if (comando != "1" || !pares || pares->first > 255) return false;
    interior_->Unidad().AnotarSuceso(interior_->ahora, static_cast<std::uint8_t>(pares->first), pares->second, 0);
    return true;
  });
}

// An empty relation leaves the stacks as the unit has dealt them out.
bool ComunicadorEnProceso::GrabarPilaCanal(std::string_view comando, std::string_view datos) {
  return interior_->Ordenar(Op::kGrabarPilaCanal, [&] {
    if (comando != "7") return false;
    if (datos.empty()) return true;
    const auto canales = LeerNumeros(datos == "Nada" ? "" : datos, '$', simulada::kCanales);
    return canales && interior_->Unidad().canales.AsignarPilas(*canales);
  });
}

// The unit takes the list as an announcement: the parametrization that follows tells the channels itself.
bool ComunicadorEnProceso::GrabarCanalesModificar(std::string_view comando, std::string_view datos) {
  return interior_->Ordenar(Op::kGrabarCanalesModificar, [&] {
    return comando == "33" && (datos.empty() || datos.back() == '#') &&
           LeerNumeros(datos, '#', simulada::kCanales).has_value();
  });
}

bool ComunicadorEnProceso::GrabarSalidaDigital(int salida, bool encender) {
  return interior_->Ordenar(Op::kGrabarSalidaDigital, [&] {
    if (salida != 1 && salida != 2) return false;
    interior_->Unidad().ConmutarSalida(salida, encender, interior_->ahora);
    return true;
  });
}

bool ComunicadorEnProceso::ExportarImp(Tabla& tabla, std::string_view ruta, int tipo) {
  return EscribirImp(tabla, ruta, tipo);
}

}  // namespace utr
