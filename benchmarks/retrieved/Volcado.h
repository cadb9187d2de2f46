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
#include "configuration/Catalogo.h"
#include "driver/CanalesUTR.h"
#include "driver/simulated/driver/ComunicadorSimulado.h"
#include "driver/simulated/unit/Memoria.h"
#include "retrieved/recovery/MemoriaFlash.h"
#include "retrieved/recovery/Procesamiento.h"

// Recovery files of a whole flash, full of data, as a station of nine channels leaves them.
namespace medida {

inline constexpr int kDiasPorVolcado = 128;

// Counts of a converter of 16 bits: each channel at a height of its own, with a slow wave and noise.
inline std::uint16_t Cuentas(std::uint32_t canal, std::uint32_t muestra, std::uint32_t campo) {
  const double onda = 4000.0 * canal + 12000 + 8000 * std::sin(muestra / (300.0 + 40.0 * canal));
  std::uint32_t ruido = muestra * 2654435761U + campo * 40503U + canal * 97531U;
  ruido ^= ruido >> 15;
  ruido *= 2246822519U;
  return static_cast<std::uint16_t>(onda + (ruido >> 8) % 600);
}

inline std::uint8_t CanalDePila(int pila) {
  return pila == 8 ? std::uint8_t{15} : static_cast<std::uint8_t>(pila + 1);
}

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

// Nine channels of several kinds, each with a stack.
inline utr::TablaPtr ConfiguracionDeNueve() {
  auto tabla = std::make_shared<utr::Tabla>();
  utr::AgregarColumnasDeCanales(*tabla);
  tabla->Open();
  for (int pila = 0; pila < utr::simulada::kPilas; ++pila) {
    tabla->AddNew();
    const std::pair<const char*, std::string> celdas[] = {{"Canal", std::to_string(CanalDePila(pila))},
                                                          {"Tipo", pila == 8 ? "5" : std::to_string(pila % 4)},
                                                          {"Pila", std::to_string(pila)},
                                                          {"Flags", "1"},
                                                          {"Cero", "819"},
                                                          {"Span", std::to_string(64716 - 100 * pila)},
                                                          {"Rango", "14.5"},
                                                          {"RangoMin", "-2"},
                                                          {"RangoMax", "12.5"},
                                                          {"NivRefLmn", "3"},
                                                          {"CtePluvi", "0.2"},
                                                          {"TStorage", "10"},
                                                          {"Parametro", std::to_string(pila)},
                                                          {"Unidad", "1"}};
    for (const auto& [columna, texto] : celdas) tabla->Set(columna, texto);
  }
  tabla->UpdateBatch();
  tabla->MoveFirst();
  return tabla;
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
