#include "session/Encabezado.h"

#include <cctype>
#include <cstdlib>
#include <filesystem>

#include "base/Texto.h"
#include "session/RelojUTR.h"

namespace utr {
namespace {

constexpr std::int64_t kFueraDeHora = 30 * 60;  // seconds from which the operator is asked about the clock

// What is counted in, behind a name.
std::string TextoDeCanales(std::optional<std::size_t> canales) {
  if (!canales) return {};
  return ", " + std::to_string(*canales) + (*canales == 1 ? " canal habilitado" : " canales habilitados");
}

Dato DatoDeArchivo(const LecturaConfiguracion& lectura, const std::string& canales, const std::string& cuando) {
  const std::filesystem::path ruta(lectura.Fuente());
  return {"Archivo " + ruta.filename().string() + canales, cuando + ", " + lectura.Fuente()};
}

Dato DatoDeEstacion(const LecturaConfiguracion& lectura, const std::string& canales) {
  if (!lectura.LeidaEl()) return {"Sin configuración", "Todavía no se leyó ninguna", Tono::kAviso};
  const std::string cuando = "leída el " + TextoFechaHora(*lectura.LeidaEl());
  if (lectura.Fuente() != kFuenteUTR) return DatoDeArchivo(lectura, canales, cuando);
  const std::int32_t identificador = lectura.IdentificadorLeido();
  Dato dato;
  dato.texto = (identificador == 0 ? "Sin identificador" : "Identificador " + std::to_string(identificador)) + canales;
  dato.detalle = "De la UTR, " + cuando;
  if (!lectura.LeidaDeLaUTR()) {
    dato.detalle += "; no es lo que la UTR tiene ahora";
    dato.tono = Tono::kAviso;
  } else if (!lectura.EsDelEquipoActual()) {
    dato.detalle += "; los ajustes señalan otra UTR";
    dato.tono = Tono::kAviso;
  }
  return dato;
}

const char* PalabrasDe(EnlaceIP ip) {
  switch (ip) {
    case EnlaceIP::kContesta:
      return "Por IP, conectado";
    case EnlaceIP::kPerdido:
      return "Por IP, sin conexión";
    case EnlaceIP::kSinProbar:
      break;
  }
  return "Por IP, sin probar";
}

Dato DatoDeEnlace(const ModRTU& mod, const TextosPanel& panel) {
  if (mod.conexion.PorIP()) {
    return {PalabrasDe(mod.conexion.Ip()),
            std::string(Recortar(panel.velocidad)) + ", " + Minusculas(Recortar(panel.puerto)), panel.tono};
  }
  if (!mod.conexion.Conectado() || !panel.habilitados)
    return {"Desconectado", "El puerto serie está cerrado", Tono::kMal};
  const std::string puerto = std::string(Recortar(panel.puerto)) + ", " + std::string(Recortar(panel.velocidad));
  return {mod.conexion.EnLlamada() ? "En llamada" : "Conectado", puerto, Tono::kBien};
}

// The day but once where it is the same.
std::string TextoDeHoras(const RelojUTR::Lectura& lectura) {
  const bool un_dia = TextoFecha(lectura.equipo) == TextoFecha(lectura.computadora);
  return "UTR " + (un_dia ? TextoHora(lectura.equipo) : TextoFechaHora(lectura.equipo)) + ", PC " +
         TextoHora(lectura.computadora) + " del " + TextoFecha(lectura.computadora);
}

// Records are stamped by the clock: it is well only where it is right.
Tono TonoDe(std::int64_t adelanto) {
  if (std::llabs(adelanto) >= kFueraDeHora) return Tono::kMal;
  return EnHora(adelanto) ? Tono::kBien : Tono::kAviso;
}

Dato DatoDeReloj(const RelojUTR* reloj) {
  if (reloj != nullptr && reloj->PuestaEl()) {
    return {"Puesto en hora", "El " + TextoFechaHora(*reloj->PuestaEl()) + ", sin releer", Tono::kBien};
  }
  if (reloj == nullptr || !reloj->Leida()) return {"Sin leer", {}};
  const std::int64_t adelanto = Adelanto(*reloj->Leida());
  std::string texto = TextoAdelanto(adelanto);
  texto.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(texto.front())));
  return {texto, TextoDeHoras(*reloj->Leida()), TonoDe(adelanto)};
}

}  // namespace

Encabezado EncabezadoDe(const LecturaConfiguracion& lectura, const ModRTU& mod, std::optional<std::size_t> canales,
                        const TextosPanel& panel) {
  return {DatoDeEstacion(lectura, TextoDeCanales(canales)), DatoDeEnlace(mod, panel), DatoDeReloj(mod.reloj_utr)};
}

}  // namespace utr
