#include "operations/ConfiguracionAsistente.h"

#include <fmt/format.h>

#include <optional>
#include <set>

#include "base/Error.h"
#include "base/Texto.h"
#include "configuration/CambiosConfiguracion.h"
#include "configuration/Canales.h"
#include "configuration/EdicionSensor.h"
#include "configuration/FilasDeCanales.h"
#include "driver/CanalesUTR.h"

namespace utr {
namespace {

constexpr std::string_view kOrigen = "CargarConfiguracion";

bool Activo(const Config& config) {
  return CanalHabilitado(LeerFlags(config.Flags)) && NumeroDeFila(config.Canal);
}

std::string Juntos(const std::set<std::int16_t>& canales) {
  std::vector<std::string> nombres;
  nombres.reserve(canales.size());
  for (const std::int16_t canal : canales) nombres.push_back(fmt::format("{} (canal {})", NombreCanal(canal), canal));
  return Unir(nombres, ", ");
}

std::vector<std::string> AvisosDe(const CanalesAsistente& canales, const std::set<std::int16_t>& repetidos,
                                  std::size_t sin_numero) {
  std::vector<std::string> avisos;
  if (!repetidos.empty()) {
    avisos.push_back(fmt::format("Hay canales repetidos: {}. Vale la primera fila de cada uno.", Juntos(repetidos)));
  }
  if (sin_numero > 0) {
    avisos.push_back(
        fmt::format("Filas sin un número de canal: {}. La UTR puede rechazar la configuración por ellas.", sin_numero));
  }
  if (canales.ColeccionConfig.Count() == 0) avisos.emplace_back("Ningún canal está habilitado.");
  return avisos;
}

TablaPtr LeerDe(ModRTU& mod, LecturaConfiguracion& lectura, FuenteAsistente fuente, const std::filesystem::path& ruta) {
  switch (fuente) {
    case FuenteAsistente::kPrevia:
      return AbrirExportada(ruta);
    case FuenteAsistente::kArchivo:
      return mod.comunicador.CargarConfiguracion(ruta.string());
    case FuenteAsistente::kUTR:
      break;
  }
  return lectura.LeerDeLaUTR();
}

ConfigPtr PrimeroDeTipo(const ConfigColl& completa, TipoSensor tipo) {
  ConfigPtr primero;
  for (const ConfigPtr& config : completa) {
    if (TipoDe(*config) != static_cast<std::int16_t>(tipo)) continue;
    if (CanalHabilitado(LeerFlags(config->Flags))) return config;
    if (!primero) primero = config;
  }
  return primero;
}

}  // namespace

PedidoArchivo PedidoDe(FuenteAsistente fuente) {
  PedidoArchivo pedido;
  pedido.titulo = "Abrir configuración...";
  pedido.filtro =
      fuente == FuenteAsistente::kPrevia ? "Configuración UTR(*.ucg)|*.ucg" : "Archivos de configuración (*.icf)|*.icf";
  return pedido;
}

CanalesAsistente CanalesDe(const TablaPtr& tabla) {
  const TablaPtr filas = tabla && tabla->Abierta() ? tabla->Clone() : nullptr;
  if (!filas || filas->RecordCount() == 0) {
    throw Error(error::kLlamada, std::string(kOrigen), "La configuración no tiene canales");
  }
  ExigirColumnasDeCanal(*filas);
  CanalesAsistente canales;
  std::set<std::int16_t> vistos;
  std::set<std::int16_t> repetidos;
  std::size_t sin_numero = 0;
  std::size_t fila = 0;
  for (; !filas->Eof(); filas->MoveNext()) {
    const std::string clave = std::to_string(++fila);
    const auto canal = NumeroDeFila(filas->Texto("Canal"));
    if (!canal) ++sin_numero;
    if (canal && !vistos.insert(*canal).second) {
      repetidos.insert(*canal);
      continue;
    }
    const ConfigPtr config = canales.ColeccionConfigCompleta.Add(canal.value_or(0), *filas, clave);
    if (Activo(*config)) canales.ColeccionConfig.Add(config, clave);
  }
  canales.avisos = AvisosDe(canales, repetidos, sin_numero);
  return canales;
}

CanalesAsistente CargarConfiguracion(ModRTU& mod, LecturaConfiguracion& lectura, FuenteAsistente fuente,
                                     const std::filesystem::path& ruta) {
  CanalesAsistente canales;
  RegistrandoYRelanzando(mod.registro, "FrmAsistRemotas", "Cargando Configuracion",
                         [&] { canales = CanalesDe(LeerDe(mod, lectura, fuente, ruta)); });
  return canales;
}

AjusteViento AjustarViento(const ConfigColl& completa, bool forzado_antes) {
  AjusteViento ajuste;
  const ConfigPtr veleta = PrimeroDeTipo(completa, TipoSensor::kDireccionViento);
  const ConfigPtr anemometro = PrimeroDeTipo(completa, TipoSensor::kVelocidadViento);
  if (!veleta || !anemometro) return ajuste;
  ajuste.forzado = !MismoValor(veleta->TRead, anemometro->TRead) || !MismoValor(veleta->TStorage, anemometro->TStorage);
  if (ajuste.forzado) {
    veleta->TRead = anemometro->TRead;
    veleta->TStorage = anemometro->TStorage;
  }
  if (!ajuste.forzado && !forzado_antes) return ajuste;
  ajuste.veleta = NombreCanal(CanalDe(*veleta));
  EntradaReglas entrada;
  entrada.tipo = TipoDe(*veleta);
  entrada.canal = CanalDe(*veleta);
  entrada.valores = ValoresDe(*veleta);
  ajuste.reparos = ReparosVivos(entrada).reparos;
  return ajuste;
}

std::string TextoDeReparos(const AjusteViento& ajuste) {
  if (ajuste.reparos.empty()) return {};
  std::string texto = fmt::format("La veleta ({}) no cumple:", ajuste.veleta);
  for (const ReparoSensor& reparo : ajuste.reparos) texto += fmt::format("\n{}", Recortar(reparo.texto));
  return texto;
}

}  // namespace utr
