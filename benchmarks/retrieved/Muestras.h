#pragma once

#include <fmt/format.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "base/Fechas.h"
#include "configuration/ConfigColl.h"
#include "driver/simulated/driver/ComunicadorSimulado.h"
#include "retrieved/ContextoRegistros.h"
#include "tables/Tabla.h"

// Records as a station of one channel keeps them.
namespace medida {

inline constexpr std::size_t kMuestrasPorDia = 1440;

// Counts of a converter of 16 bits: a slow wave with noise on it, so that many of them are distinct.
inline std::uint32_t Crudo(std::size_t fila, std::size_t campo) {
  const double onda = 30000 + 20000 * std::sin(static_cast<double>(fila) / 5000);
  return static_cast<std::uint32_t>(onda) +
         static_cast<std::uint32_t>((fila * 2654435761U + campo * 40503U) >> 8) % 2000;
}

// The stream of the driver: a marker a day, a sample a minute.
inline utr::TablaPtr Origen(std::size_t muestras) {
  auto tabla = std::make_shared<utr::Tabla>();
  for (const char* campo : {"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX"})
    tabla->Append(campo, utr::TipoCampo::kVarChar, 20);
  tabla->Open();
  for (std::size_t i = 0; i < muestras; ++i) {
    const utr::FechaHora fecha = utr::FechaDeSegundos(1104537600 + static_cast<std::int64_t>(i) * 60);
    if (i % kMuestrasPorDia == 0) {
      tabla->AddNew();
      tabla->Set(0, utr::TextoFecha(fecha));
    }
    tabla->AddNew();
    tabla->Set(1, utr::TextoHora(fecha));
    tabla->Set(2, "1");
    for (std::size_t campo = 3; campo < 6; ++campo) tabla->Set(campo, std::to_string(Crudo(i, campo)));
    tabla->Set(6, "1");
    tabla->Set(7, "0");
  }
  tabla->UpdateBatch();
  return tabla;
}

inline utr::TablaPtr Configuracion() {
  auto tabla = std::make_shared<utr::Tabla>();
  utr::AgregarColumnasDeCanales(*tabla);
  tabla->Open();
  tabla->AddNew();
  const std::pair<const char*, const char*> celdas[] = {
      {"Canal", "1"},     {"Tipo", "0"},        {"Flags", "1"},     {"Cero", "819"},    {"Span", "64716"},
      {"RangoMin", "-2"}, {"RangoMax", "12.5"}, {"NivRefLmn", "3"}, {"Parametro", "2"}, {"Unidad", "1"}};
  for (const auto& [columna, texto] : celdas) tabla->Set(columna, texto);
  tabla->UpdateBatch();
  return tabla;
}

// Runs a measurement with all that the record builders lean on, in a folder of its own that goes away afterwards.
template <typename Medicion>
bool ConContexto(Medicion&& medir) {
  const auto carpeta = std::filesystem::temp_directory_path() / fmt::format("adminutr-medida-{}", ::getpid());
  std::filesystem::create_directories(carpeta);
  bool bien = false;
  {
    utr::RelojSistema reloj;
    utr::ComunicadorSimulado comunicador(carpeta, reloj, {});
    utr::Catalogo catalogo(carpeta);
    utr::RegistroErrores registro(carpeta / "medida.err", reloj);
    bien = medir(utr::ContextoRegistros{comunicador, reloj, catalogo, registro});
  }
  std::filesystem::remove_all(carpeta);
  return bien;
}

}  // namespace medida
