#pragma once

#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/Reloj.h"
#include "benchmarks/retrieved/NueveCanales.h"
#include "configuration/Catalogo.h"
#include "driver/CanalesUTR.h"
#include "driver/simulated/driver/ComunicadorSimulado.h"
#include "driver/simulated/unit/Memoria.h"
#include "retrieved/recovery/MemoriaFlash.h"
#include "retrieved/recovery/Procesamiento.h"

// Recovery files of a whole flash, full of data, as a station of nine channels leaves them.
namespace medida {

inline constexpr int kDiasPorVolcado = 128;

// A record every ten minutes, 24 pages a day and channel, until every page is written. `orden` tells one such memory
// from another: the days of each follow those of the one before.
inline void Llenar(utr::simulada::Memoria& memoria, int orden) {
  const std::int32_t comienzo = 5000 + orden * kDiasPorVolcado;
  for (std::uint32_t i = 0; i < 3072 * 6; ++i) {
    const auto dia = comienzo + static_cast<std::int32_t>(i / 144);
    for (int pila = 0; pila < utr::simulada::kPilas; ++pila) {
      const std::uint8_t canal = CanalDePila(pila);
      const std::uint32_t muestra = i + static_cast<std::uint32_t>(orden) * 100000;
      memoria.Anotar(pila, dia,
                     {.minuto = static_cast<std::uint16_t>(i % 144 * 10),
                      .canal = canal,
                      .marcas = utr::simulada::marca::kValidado,
                      .valor = Cuentas(canal, muestra, 0),
                      .maximo = Cuentas(canal, muestra, 1),
                      .minimo = Cuentas(canal, muestra, 2)});
    }
  }
  for (std::uint32_t i = 0; i < 3072 * 5; ++i) {
    const auto canal = static_cast<std::uint8_t>(i % 8 + 1);
    memoria.AnotarEnCola(comienzo + static_cast<std::int32_t>(i / 120),
                         {.minuto = static_cast<std::uint16_t>(i % 120 * 10),
                          .canal = canal,
                          .marcas = utr::simulada::marca::kEnCola,
                          .valor = Cuentas(canal, i, 3),
                          .maximo = Cuentas(canal, i, 4),
                          .minimo = Cuentas(canal, i, 5)});
  }
  for (std::uint32_t i = 0; i < 2048 * 6; ++i) {
    memoria.AnotarSuceso(comienzo + static_cast<std::int32_t>(i / 96),
                         {.segundo = i % 96 * 600,
                          .codigo = static_cast<std::uint8_t>(20 + i % 16),
                          .valor1 = static_cast<std::uint16_t>(i % 8),
                          .valor2 = Cuentas(1, i, 6)});
  }
  memoria.Sellar();
}

// Writes the recovery file of a whole memory; gives its size.
inline std::uint64_t Volcar(const std::filesystem::path& ruta, int orden) {
  const auto memoria = std::make_unique<utr::simulada::Memoria>();
  Llenar(*memoria, orden);
  std::string texto = "\"0/31\"\r\n";
  for (int pista = 0; pista < utr::kPistas; ++pista) {
    for (int pagina = 0; pagina < utr::kPaginasPista; ++pagina)
      texto += fmt::format("\"{}#{},{}\"\r\n", memoria->TextoDePagina(pista, pagina), pista, pagina);
    texto += "\"EOT\"\r\n";
  }
  std::ofstream(ruta, std::ios::binary) << texto;
  return texto.size();
}

// A folder of its own with the simulated driver in it, and runs of the processing there.
class Taller {
 public:
  Taller() { std::filesystem::create_directories(Resultados()); }
  ~Taller() { std::filesystem::remove_all(carpeta_); }
  Taller(const Taller&) = delete;
  Taller& operator=(const Taller&) = delete;

  std::filesystem::path Archivo(int orden) const { return carpeta_ / fmt::format("volcado{}.bkp", orden); }
  std::filesystem::path Resultados() const { return carpeta_ / "resultados"; }
  utr::Comunicador& Driver() { return comunicador_; }

  utr::ResultadoProceso Procesar(int cuantos) {
    utr::PedidoProceso pedido;
    pedido.configuracion = configuracion_;
    for (int orden = 0; orden < cuantos; ++orden) pedido.archivos.push_back(Archivo(orden));
    pedido.carpeta = Resultados();
    utr::SinProgreso progreso;
    return utr::ProcesandoDatos(pedido, {comunicador_, reloj_, catalogo_, registro_}, progreso, {});
  }

 private:
  static std::filesystem::path Crear() {
    const auto carpeta = std::filesystem::temp_directory_path() / fmt::format("adminutr-proceso-{}", ::getpid());
    std::filesystem::create_directories(carpeta);
    return carpeta;
  }

  std::filesystem::path carpeta_ = Crear();
  utr::RelojSistema reloj_;
  utr::ComunicadorSimulado comunicador_{carpeta_, reloj_, {}};
  utr::Catalogo catalogo_{carpeta_};
  utr::RegistroErrores registro_{carpeta_ / "medida.err", reloj_};
  utr::TablaPtr configuracion_ = ConfiguracionDeNueve();
};

}  // namespace medida
