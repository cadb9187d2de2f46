#include <vector>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/ArchivosDelControlador.h"
#include "driver/Textos.h"
#include "driver/simulated/driver/InteriorSimulado.h"

namespace utr {

namespace {

std::string DosTextos(std::string_view a, std::string_view b) {
  return Citar(a) + ", " + Citar(b);
}

// Whole numbers from 1 to `mayor`, each followed by the separator or, with `suelto`, with nothing behind the last one.
std::optional<std::vector<int>> LeerNumeros(std::string_view texto, char separador, int mayor) {
  std::vector<int> numeros;
  if (texto.empty()) return numeros;
  if (texto.back() == separador) texto.remove_suffix(1);
  for (const std::string_view parte : Separar(texto, separador)) {
    const double numero = EsNumerico(parte) ? LeerDoble(parte) : 0;
    if (numero < 1 || numero > mayor || numero != static_cast<int>(numero)) return std::nullopt;
    numeros.push_back(static_cast<int>(numero));
  }
  return numeros;
}

// Two pair texts joined by "/": the number of an event and its value.
std::optional<std::pair<std::uint16_t, std::uint16_t>> LeerDosPares(std::string_view texto) {
  const std::size_t primera = texto.find('/');
  const std::size_t mitad = primera == std::string_view::npos ? primera : texto.find('/', primera + 1);
  if (mitad == std::string_view::npos) return std::nullopt;
  const auto codigo = LeerPar(texto.substr(0, mitad));
  const auto valor = LeerPar(texto.substr(mitad + 1));
  if (!codigo || !valor) return std::nullopt;
  return std::pair{*codigo, *valor};
}

}  // namespace

bool ComunicadorSimulado::BorrarFlash() {
  return interior_->Ordenar(Op::kBorrarFlash, "", [&] {
    interior_->Unidad().BorrarFlash(interior_->ahora);
    return true;
  });
}

bool ComunicadorSimulado::BorrarCartucho() {
  return interior_->Ordenar(Op::kBorrarCartucho, "", [&] {
    if (!interior_->Unidad().TieneCartucho()) return false;
    interior_->Unidad().BorrarCartucho(interior_->ahora);
    return true;
  });
}

bool ComunicadorSimulado::ReiniciarAgenda(std::string_view comando) {
  return interior_->Ordenar(Op::kReiniciarAgenda, Citar(comando), [&] {
    if (comando != "41") return false;
    interior_->Unidad().ReiniciarAgenda();
    return true;
  });
}

bool ComunicadorSimulado::ReiniciarUTR(std::string_view comando) {
  return interior_->Ordenar(Op::kReiniciarUTR, Citar(comando), [&] {
    if (comando != "14" && comando != "44") return false;
    Interior& i = *interior_;
    i.Unidad().Reiniciar(i.ahora);
    const simulada::Tiempos& tiempos = i.escenario.tiempos;
    const double ausencia = (comando == "14" ? tiempos.ausencia_14 : tiempos.ausencia_44) * tiempos.factor;
    i.enlace.ausente_hasta = i.reloj.Milisegundos() + static_cast<std::int64_t>(ausencia * 1000);
    i.enlace.caido = true;
    return true;
  });
}

bool ComunicadorSimulado::GrabarAgenda(Tabla& tabla) {
  return interior_->Ordenar(Op::kGrabarAgenda, interior_->Describir(Op::kGrabarAgenda, &tabla),
                            [&] { return interior_->Unidad().agenda.Escribir(tabla); });
}

bool ComunicadorSimulado::GrabarParametrizacion(Tabla& tabla) {
  return interior_->Ordenar(Op::kGrabarParametrizacion, interior_->Describir(Op::kGrabarParametrizacion, &tabla),
                            [&] { return interior_->Unidad().canales.Mezclar(tabla); });
}

bool ComunicadorSimulado::GrabarConfiguracion(Tabla& tabla) {
  return interior_->Ordenar(Op::kGrabarConfiguracion, interior_->Describir(Op::kGrabarConfiguracion, &tabla),
                            [&] { return interior_->Unidad().canales.Reemplazar(tabla); });
}

bool ComunicadorSimulado::GrabarFechaHora() {
  return interior_->Ordenar(Op::kGrabarFechaHora, "", [&] {
    interior_->Unidad().PonerEnHora(interior_->ahora);
    return true;
  });
}

bool ComunicadorSimulado::GrabarEstado(std::string_view flags) {
  return interior_->Ordenar(Op::kGrabarEstado, Citar(flags), [&] {
    const auto bits = LeerPar(flags);
    if (!bits || *bits > 255) return false;
    interior_->Unidad().EscribirEstado(*bits);
    return true;
  });
}

bool ComunicadorSimulado::EscribirPagina(std::string_view pagina, std::string_view datos) {
  const auto numero = simulada::NumeroDePagina(pagina);
  const auto escribir = [&] {
    const auto bytes = LeerTextoPagina(datos);
    return numero && bytes && !bytes->empty() && interior_->Unidad().EscribirPagina(*numero, *bytes);
  };
  return interior_->Ordenar(Op::kEscribirPagina, DosTextos(pagina, datos), escribir, Contexto{.pagina = numero});
}

bool ComunicadorSimulado::GrabarEvento(std::string_view comando, std::string_view datos) {
  return interior_->Ordenar(Op::kGrabarEvento, DosTextos(comando, datos), [&] {
    const auto pares = LeerDosPares(datos);
    if (comando != "1" || !pares || pares->first > 255) return false;
    interior_->Unidad().AnotarSuceso(interior_->ahora, static_cast<std::uint8_t>(pares->first), pares->second, 0);
    return true;
  });
}

// An empty relation leaves the stacks as the unit has dealt them out.
bool ComunicadorSimulado::GrabarPilaCanal(std::string_view comando, std::string_view datos) {
  return interior_->Ordenar(Op::kGrabarPilaCanal, DosTextos(comando, datos), [&] {
    if (comando != "7") return false;
    if (datos.empty()) return true;
    const auto canales = LeerNumeros(datos == "Nada" ? "" : datos, '$', simulada::kCanales);
    return canales && interior_->Unidad().canales.AsignarPilas(*canales);
  });
}

// The unit takes the list as an announcement: the parametrization that follows tells the channels itself.
bool ComunicadorSimulado::GrabarCanalesModificar(std::string_view comando, std::string_view datos) {
  return interior_->Ordenar(Op::kGrabarCanalesModificar, DosTextos(comando, datos), [&] {
    return comando == "33" && (datos.empty() || datos.back() == '#') &&
           LeerNumeros(datos, '#', simulada::kCanales).has_value();
  });
}

bool ComunicadorSimulado::GrabarSalidaDigital(int salida, bool encender) {
  const std::string argumentos = std::to_string(salida) + (encender ? ", si" : ", no");
  return interior_->Ordenar(Op::kGrabarSalidaDigital, argumentos, [&] {
    if (salida != 1 && salida != 2) return false;
    interior_->Unidad().ConmutarSalida(salida, encender, interior_->ahora);
    return true;
  });
}

bool ComunicadorSimulado::ExportarImp(Tabla& tabla, std::string_view ruta, int tipo) {
  const std::string argumentos =
      fmt::format("{}, {}, {}", interior_->Describir(Op::kExportarImp, &tabla), Citar(ruta), tipo);
  return interior_->Operar(Op::kExportarImp, argumentos, [&] { return EscribirImp(tabla, ruta, tipo); });
}

}  // namespace utr
