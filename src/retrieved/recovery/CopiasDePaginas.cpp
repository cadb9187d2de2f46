#include "retrieved/recovery/CopiasDePaginas.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace utr {

namespace {

std::uint64_t Mezclar(std::uint64_t resto, std::uint64_t numero) {
  resto = (resto ^ numero) * 0x9E3779B97F4A7C15U;
  return resto ^ (resto >> 29);
}

std::uint64_t Dispersar(std::uint32_t lugar, std::span<const std::uint8_t> bytes) {
  std::uint64_t resto = Mezclar(1, lugar);
  for (; !bytes.empty(); bytes = bytes.subspan(std::min(bytes.size(), sizeof(std::uint64_t)))) {
    std::uint64_t palabra = 0;
    std::memcpy(&palabra, bytes.data(), std::min(bytes.size(), sizeof palabra));
    resto = Mezclar(resto, palabra);
  }
  return resto;
}

std::uint64_t Dispersar(std::uint32_t lugar, const FilaCruda& fila) {
  std::uint64_t resto = Mezclar(1, lugar);
  for (const std::uint32_t numero : fila) resto = Mezclar(resto, numero);
  return resto;
}

}  // namespace

void IndicePlano::Crecer() {
  std::vector<Ranura> viejas(ranuras_.size() * 2);
  viejas.swap(ranuras_);
  for (const Ranura& vieja : viejas) {
    if (vieja.lugar == kLibre) continue;
    Ranura* ranura = &Primera(vieja.dispersion);
    while (ranura->lugar != kLibre) ranura = &Siguiente(ranura);
    *ranura = vieja;
  }
}

bool CopiasDePaginas::Anotar(const LugarPagina& lugar, std::span<const std::uint8_t> bytes) {
  const auto indice = static_cast<std::uint32_t>(IndiceDePagina(lugar));
  const auto nueva = static_cast<std::uint32_t>(copias_.size());
  const auto es = [&](std::uint32_t otra) {
    const Copia& copia = copias_[otra];
    return copia.lugar == indice && copia.cuantos == bytes.size() &&
           std::equal(bytes.begin(), bytes.end(), copia.bytes.begin());
  };
  if (textos_.Buscar(Dispersar(indice, bytes), nueva, es) != nueva) return false;
  Copia& copia = copias_.emplace_back();
  copia.lugar = indice;
  copia.cuantos = static_cast<std::uint8_t>(bytes.size());
  std::copy(bytes.begin(), bytes.end(), copia.bytes.begin());
  return true;
}

void CopiasDePaginas::QuitarRepetidas(std::vector<FilaCruda>& filas, const FilasDeFlujo& guardadas,
                                      const std::function<void(const FilaCruda&)>& quitada) {
  if (filas.empty()) return;
  const auto esta = static_cast<std::uint32_t>(copias_.size() - 1);
  Dia* dia = nullptr;
  std::erase_if(filas, [&](const FilaCruda& fila) {
    if (dia == nullptr || dia->fecha != fila[kFechaCruda]) dia = &DiaDe(fila[kFechaCruda]);
    if (!dia->con_registros && dia->copia == esta) return false;
    if (!std::exchange(dia->con_registros, true)) {
      const Copia& otra = copias_[dia->copia];
      for (std::uint64_t i = otra.desde; i < otra.desde + otra.filas; ++i) {
        if (guardadas[i][kFechaCruda] == dia->fecha) EsRepetida(dia->copia, guardadas[i]);
      }
    }
    const bool repetida = EsRepetida(esta, fila);
    if (repetida) quitada(fila);
    return repetida;
  });
  copias_.back().desde = guardadas.size();
  copias_.back().filas = static_cast<std::uint32_t>(filas.size());
}

// The day of the page noted last.
CopiasDePaginas::Dia& CopiasDePaginas::DiaDe(std::uint32_t fecha) {
  const std::uint32_t lugar = copias_.back().lugar;
  const auto nuevo = static_cast<std::uint32_t>(dias_.size());
  const auto es = [&](std::uint32_t otro) { return dias_[otro].lugar == lugar && dias_[otro].fecha == fecha; };
  const std::uint32_t hallado = indice_dias_.Buscar(Mezclar(Mezclar(1, lugar), fecha), nuevo, es);
  if (hallado == nuevo) dias_.push_back({lugar, fecha, static_cast<std::uint32_t>(copias_.size() - 1), false});
  return dias_[hallado];
}

bool CopiasDePaginas::EsRepetida(std::uint32_t copia, const FilaCruda& fila) {
  const std::uint32_t lugar = copias_[copia].lugar;
  const auto nuevo = static_cast<std::uint32_t>(registros_.size());
  const auto es = [&](std::uint32_t otro) { return registros_[otro].lugar == lugar && registros_[otro].fila == fila; };
  const std::uint32_t hallado = indice_registros_.Buscar(Dispersar(lugar, fila), nuevo, es);
  if (hallado == nuevo) registros_.push_back({lugar, fila, 0, copia, 0});
  Registro& registro = registros_[hallado];
  if (std::exchange(registro.copia, copia) != copia) registro.de_copia = 0;
  if (++registro.de_copia <= registro.veces) return true;
  registro.veces = registro.de_copia;
  return false;
}

}  // namespace utr
