#include "retrieved/recovery/ListasPilas.h"

#include <optional>
#include <vector>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/FilasDeCanales.h"
#include "driver/CanalesUTR.h"
#include "retrieved/recovery/MemoriaFlash.h"

namespace utr {

namespace {

constexpr auto kPilas = static_cast<std::int64_t>(kGrupoCola);

std::optional<std::int64_t> LeerPila(std::string_view texto) {
  const auto numero = EnteroExacto(texto);
  return numero && *numero >= 0 && *numero < kPilas ? numero : std::nullopt;
}

// The entries of one list.
class Lista {
 public:
  void Agregar(std::optional<std::int64_t> numero) {
    if (cuantas_++ > 0) texto_ += ',';
    if (numero) texto_ += TextoPlano(static_cast<double>(*numero));
  }
  std::string Texto() && { return std::move(texto_); }

 private:
  std::string texto_;
  std::size_t cuantas_ = 0;
};

int PilaDePista(int pista) {
  return pista >= 0 && GrupoDePista(pista) < kGrupoCola ? pista / 3 : 0;
}

}  // namespace

ListasPilas ArmarListasPilas(const Tabla& configuracion) {
  Lista pilas;
  Lista canales;
  Lista pistas;
  for (const TablaPtr filas = configuracion.Clone(); !filas->Eof(); filas->MoveNext()) {
    const auto canal = NumeroDeFila(filas->Texto("Canal"));
    if (!canal || !GuardaHistoria(LeerTipo(filas->Texto("Tipo")))) continue;
    const auto pila = LeerPila(filas->Texto("Pila"));
    pilas.Agregar(pila);
    canales.Agregar(*canal - 1);
    pistas.Agregar(pila ? std::optional(3 * *pila + 2) : std::nullopt);
  }
  return {std::move(pilas).Texto(), std::move(canales).Texto(), std::move(pistas).Texto()};
}

bool EstaPilaConfigurada(int pista, std::string_view lista) {
  return IndicePila(pista, lista) >= 0;
}

std::int16_t IndicePila(int pista, std::string_view lista) {
  const int pila = PilaDePista(pista);
  std::int16_t indice = 0;
  for (const std::string_view entrada : Separar(lista, ',')) {
    if (EsNumerico(entrada) && LeerDoble(entrada) == pila) return indice;
    ++indice;
  }
  return -1;
}

}  // namespace utr
