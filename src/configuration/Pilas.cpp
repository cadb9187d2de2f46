#include "configuration/Pilas.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "base/Texto.h"
#include "configuration/Canales.h"

namespace utr {
namespace {

constexpr std::string_view kModulo = "frmParametros";
constexpr std::string_view kSuperada = "Se ha superado la capacidad de almacenamiento de la UTR";

void Anotar(const ContextoPilas& contexto, std::string_view texto) {
  contexto.comunicador.EscribirLog(fmt::format("{} {}", TextoFechaHora(contexto.reloj.Ahora()), texto));
}

// Their numbers joined by "$"; empty without any.
std::string CanalesConRegistro(Tabla& tabla) {
  std::vector<std::string> canales;
  tabla.Filter("");  // whoever walked it last may have left one
  if (tabla.RecordCount() > 0) tabla.MoveFirst();
  for (; !tabla.Eof(); tabla.MoveNext()) {
    if (GuardaHistoria(LeerTipo(tabla.Texto("Tipo")))) canales.push_back(tabla.Texto("Canal"));
  }
  return Unir(canales, "$");
}

}  // namespace

bool RelacionPilaCanal::Armar(Tabla& tabla, const ContextoPilas& contexto) {
  const auto armar = [&] {
    const std::string canales = CanalesConRegistro(tabla);
    if (Separar(canales, '$').size() > kCanalesConRegistro) return Rechazar(contexto);
    texto_ = canales.empty() ? "Nada" : canales;
    if (tabla.RecordCount() > 0) tabla.MoveFirst();
    Anotar(contexto, "Relacion Pila canal: " + texto_);
  };
  return RegistrandoYMostrando(contexto.registro, contexto.operador, kModulo, "ArmarRelacionPilaCanal", contexto.titulo,
                               Redaccion::kEntreCorchetes, armar);
}

void RelacionPilaCanal::Rechazar(const ContextoPilas& contexto) {
  Anotar(contexto, kSuperada);
  contexto.operador.Mostrar({std::string(kSuperada), contexto.titulo, Icono::kCritico, Botones::kAceptar});
}

std::string LineaDePilas(const ConfigColl& coleccion) {
  const auto registra = [](const ConfigPtr& config) {
    return CanalHabilitado(LeerFlags(config->Flags)) && GuardaHistoria(LeerTipo(config->Tipo));
  };
  std::size_t canales = 0;
  for (const ConfigPtr& config : coleccion) canales += registra(config) ? 1 : 0;
  return canales > kPilas ? fmt::format("{} canales con registro, {} pilas", canales, kPilas) : std::string();
}

}  // namespace utr
