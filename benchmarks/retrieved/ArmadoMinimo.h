#pragma once

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Fechas.h"
#include "benchmarks/Internados.h"
#include "benchmarks/retrieved/NueveCanales.h"
#include "driver/CanalesUTR.h"
#include "retrieved/ContextoRegistros.h"
#include "tables/Tabla.h"

namespace medida {

// The least that anybody has to do who makes records of a driver's stream: the row of a marker gives the date, the raw
// numbers of the others are read, scaled and written with three decimals, and each distinct text is kept once. What the
// rows of a channel have in common is known beforehand.
class ArmadoMinimo {
 public:
  struct Columna {
    Internados textos;
    std::vector<std::uint32_t> numeros;  // by row
  };
  struct Canal {
    std::string textos[3];  // its name, its description and its unit
    double span = 0;
    bool lluvia = false;
    bool con_nivel = false;
    std::uint32_t numeros[3] = {};
  };

  ArmadoMinimo(const utr::Tabla& origen, std::vector<Canal> canales) : canales_(std::move(canales)) {
    for (Columna& columna : columnas_) columna.numeros.reserve(origen.RecordCount());
    for (Canal& canal : canales_) {
      for (std::size_t i = 0; i < 3; ++i) canal.numeros[i] = columnas_[kPropios[i]].textos.Numero(canal.textos[i]);
    }
    for (std::size_t campo = 0; campo < kDeOrigen; ++campo)
      entradas_.push_back(
          {origen.Textos(campo), {}, {}, std::vector<std::uint32_t>(origen.Textos(campo).Cantidad() + 1)});
    for (Entrada& entrada : entradas_) entrada.numeros = entrada.textos.Indices(entrada.apoyo);
    for (std::size_t fila = 0; fila < origen.RecordCount(); ++fila) Fila(fila);
  }

  std::size_t Filas() const { return columnas_[0].numeros.size(); }
  std::string_view Texto(std::size_t fila, std::size_t campo) const {
    return columnas_[campo].textos.Texto(columnas_[campo].numeros[fila]);
  }

 private:
  static constexpr std::size_t kDeOrigen = 8;
  static constexpr std::size_t kCampos = 10;
  static constexpr std::size_t kPropios[] = {2, 8, 9};

  // A column of the stream, and which number each of its texts has in the result, as far as it stands there unchanged.
  struct Entrada {
    utr::TextosColumna textos;
    std::vector<std::uint32_t> apoyo;
    std::span<const std::uint32_t> numeros;
    std::vector<std::uint32_t> traducidos;
  };

  void Fila(std::size_t fila) {
    if (const std::uint32_t fecha = entradas_[0].numeros[fila]; fecha != 0) {
      fecha_ = columnas_[0].textos.Numero(entradas_[0].textos.Texto(fecha));
      return;
    }
    if (entradas_[1].numeros[fila] == 0) return;
    columnas_[0].numeros.push_back(fecha_);
    for (const std::size_t campo : {1, 6, 7}) Copiar(fila, campo);
    const Canal& canal = canales_[static_cast<std::size_t>(Crudo(fila, 2))];
    for (std::size_t i = 0; i < 3; ++i) columnas_[kPropios[i]].numeros.push_back(canal.numeros[i]);
    for (const std::size_t campo : {3, 4, 5}) Escalar(fila, campo, canal);
  }

  void Copiar(std::size_t fila, std::size_t campo) {
    Entrada& entrada = entradas_[campo];
    std::uint32_t& traducido = entrada.traducidos[entrada.numeros[fila]];
    if (traducido == 0) traducido = columnas_[campo].textos.Numero(entrada.textos.Texto(entrada.numeros[fila]));
    columnas_[campo].numeros.push_back(traducido);
  }

  void Poner(std::size_t campo, std::string_view texto) {
    columnas_[campo].numeros.push_back(columnas_[campo].textos.Numero(texto));
  }

  int Crudo(std::size_t fila, std::size_t campo) const {
    const std::string_view texto = entradas_[campo].textos.Texto(entradas_[campo].numeros[fila]);
    int crudo = 0;
    const auto leido = std::from_chars(texto.data(), texto.data() + texto.size(), crudo);
    if (leido.ptr != texto.data() + texto.size()) std::abort();
    return crudo;
  }

  void Escalar(std::size_t fila, std::size_t campo, const Canal& canal) {
    const int crudo = Crudo(fila, campo);
    char texto[32];
    if (canal.lluvia) {
      *texto = ' ';
      return Poner(
          campo,
          {texto, std::to_chars(texto + 1, texto + sizeof texto, crudo * 0.2, std::chars_format::general, 15).ptr});
    }
    const double base = (crudo - 819.0) * 14.5 / canal.span - 2;
    const auto milesimos = std::lround((canal.con_nivel ? base + 3 : base) * 1000);
    char* fin = texto;
    if (milesimos < 0) *fin++ = '-';
    fin = std::to_chars(fin, texto + sizeof texto, std::abs(milesimos) / 1000).ptr;
    *fin++ = '.';
    for (long resto = std::abs(milesimos) % 1000, unidad = 100; unidad > 0; resto %= unidad, unidad /= 10)
      *fin++ = static_cast<char>('0' + resto / unidad);
    Poner(campo, {texto, fin});
  }

  std::vector<Canal> canales_;  // by number
  std::vector<Entrada> entradas_;
  Columna columnas_[kCampos];
  std::uint32_t fecha_ = 0;
};

}  // namespace medida
