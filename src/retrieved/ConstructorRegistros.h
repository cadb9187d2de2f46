#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "retrieved/Escalado.h"
#include "retrieved/Registros.h"

// The one builder of RegistrosDatos, over any origin of its records: the driver's table or what was gathered from many
// pages. Internal to the folder.
namespace utr {

// Places of the fields of RegistrosDatos. Those up to kColaTX are fields of the driver's rows too.
enum LugarRegistro : std::size_t {
  kFecha,
  kHora,
  kCanal,
  kValor,
  kMaximo,
  kMinimo,
  kValidacion,
  kColaTX,
  kDescripcion,
  kUnidad
};
inline constexpr std::size_t kCamposOrigen = kColaTX + 1;

// What a row of an origin is. A row with a date alone gives no record.
enum class PapelFila : std::uint8_t { kFecha, kFechaYRegistro, kRegistro };

// Which text of a column of the result stands for each text of a column of the source, by their numbers, as far as
// known.
class Traduccion {
 public:
  // Writes what stands for text `indice` into the current row; `producir` works it out the first time.
  template <typename Producir>
  void Poner(Tabla& resultado, LugarRegistro campo, std::uint32_t indice, Producir producir) {
    if (indice < numeros_.size() && numeros_[indice] != 0) return resultado.SetIndice(campo, numeros_[indice]);
    resultado.Set(campo, producir());
    if (indice >= numeros_.size()) numeros_.resize(indice + 1 + numeros_.size() / 2);
    numeros_[indice] = resultado.Textos(campo).De(resultado.Filas().Actual());
  }

  // Brings what Poner reads first near, for a builder that comes to that text soon.
  [[gnu::always_inline]] void Anticipar(std::uint32_t indice) const noexcept {
    if (indice < numeros_.size()) __builtin_prefetch(&numeros_[indice]);
  }

 private:
  std::vector<std::uint32_t> numeros_;
};

// Everything that the rows of one channel have in common.
class CanalEnCurso {
 public:
  CanalEnCurso(std::string_view canal, Tabla* configuracion, const ContextoRegistros& contexto);

  void PonerTextos(Tabla& resultado);
  std::string Escalar(std::string_view valor) const;

  // False where each scaling leaves its own line in the log.
  bool SePuedeRecordar() const { return !escala_ || !escala_->SinSpan(); }

  Traduccion& De(LugarRegistro escalado) { return escalados_[escalado - kValor]; }

 private:
  std::string nombre_;
  std::string descripcion_;
  std::string unidad_;
  std::optional<EscalaHistorica> escala_;
  const ContextoRegistros& contexto_;
  Traduccion fijos_;
  Traduccion escalados_[kMinimo - kValor + 1];
};

// Walks the origin once; the row of a channel is looked up once for each channel. An origin has
//   std::size_t Cantidad()                          how many rows
//   std::size_t Fila(posicion)                      which one stands at a position
//   PapelFila Papel(fila)                           asked once for each row, in their order
//   Valor Leer(fila, lugar)
//   bool Recordable(lugar)                          the texts of that field have numbers that are worth remembering
//   std::uint32_t Indice(fila, lugar)               the number of the text there, of such a field; 0 for none
template <typename Origen>
class ConstructorRegistros {
 public:
  ConstructorRegistros(Origen& origen, Tabla* configuracion, const ContextoRegistros& contexto, Tabla& resultado)
      : origen_(origen), configuracion_(configuracion), contexto_(contexto), resultado_(resultado) {}

  void Construir() {
    const std::size_t filas = origen_.Cantidad();
    resultado_.Reservar(filas);
    for (std::size_t posicion = 0; posicion < filas; ++posicion) {
      if (posicion + kAntes < filas) Anticipar(origen_.Fila(posicion + kAntes));
      Agregar(origen_.Fila(posicion));
    }
    if (configuracion_ != nullptr && resultado_.RecordCount() > 0) configuracion_->Filter("");
  }

 private:
  void Agregar(std::size_t fila) {
    const PapelFila papel = origen_.Papel(fila);
    if (papel != PapelFila::kRegistro) {
      fecha_ = Leer(fila, kFecha);
      traduccion_fecha_ = {};
      if (papel == PapelFila::kFecha) return;
    }
    if (SinHora(fila)) return;
    CanalEnCurso& canal = CanalDe(fila);
    resultado_.AddNew();
    traduccion_fecha_.Poner(resultado_, kFecha, 0, [&]() -> const std::string& { return fecha_; });
    for (const LugarRegistro campo : {kValor, kMaximo, kMinimo}) Escalar(fila, campo, canal);
    for (const LugarRegistro campo : {kHora, kValidacion, kColaTX}) Copiar(fila, campo);
    canal.PonerTextos(resultado_);
    resultado_.UpdateBatch();
  }

  void Escalar(std::size_t fila, LugarRegistro campo, CanalEnCurso& canal) {
    if (!origen_.Recordable(campo) || !canal.SePuedeRecordar()) {
      resultado_.Set(campo, canal.Escalar(Leer(fila, campo)));
    } else {
      canal.De(campo).Poner(resultado_, campo, origen_.Indice(fila, campo),
                            [&] { return canal.Escalar(Leer(fila, campo)); });
    }
  }

  void Copiar(std::size_t fila, LugarRegistro campo) {
    const auto leer = [&] { return origen_.Leer(fila, campo); };
    if (origen_.Recordable(campo)) {
      copiados_[campo].Poner(resultado_, campo, origen_.Indice(fila, campo), leer);
    } else {
      resultado_.Set(campo, leer());
    }
  }

  // The text of a value of the source, valid until the next call.
  std::string_view Leer(std::size_t fila, LugarRegistro campo) {
    const Valor valor = origen_.Leer(fila, campo);
    if (const auto* texto = std::get_if<std::string_view>(&valor)) return *texto;
    auxiliar_ = TextoDe(valor);
    return auxiliar_;
  }

  // Whether the hour has one character or none.
  bool SinHora(std::size_t fila) {
    if (!origen_.Recordable(kHora)) return Largo(Leer(fila, kHora)) <= 1;
    const std::uint32_t indice = origen_.Indice(fila, kHora);
    if (indice >= sin_hora_.size()) sin_hora_.resize(indice + 1);
    if (!sin_hora_[indice]) sin_hora_[indice] = Largo(Leer(fila, kHora)) <= 1;
    return *sin_hora_[indice];
  }

  // Values of several channels with noise lie all over what is known of them.
  void Anticipar(std::size_t fila) {
    if (!origen_.Recordable(kCanal)) return;
    const std::uint32_t indice = origen_.Indice(fila, kCanal);
    if (indice >= por_indice_.size() || por_indice_[indice] == nullptr) return;
    for (const LugarRegistro campo : {kValor, kMaximo, kMinimo}) {
      if (origen_.Recordable(campo)) por_indice_[indice]->De(campo).Anticipar(origen_.Indice(fila, campo));
    }
  }

  // A station's channels take turns, so each is found by the number of its text.
  CanalEnCurso& CanalDe(std::size_t fila) {
    if (!origen_.Recordable(kCanal)) return BuscarCanal(Leer(fila, kCanal));
    const std::uint32_t indice = origen_.Indice(fila, kCanal);
    if (indice >= por_indice_.size()) por_indice_.resize(indice + 1, nullptr);
    if (por_indice_[indice] == nullptr) por_indice_[indice] = &BuscarCanal(Leer(fila, kCanal));
    return *por_indice_[indice];
  }

  CanalEnCurso& BuscarCanal(std::string_view canal) {
    const auto conocido = canales_.find(canal);
    if (conocido != canales_.end()) return conocido->second;
    return canales_.try_emplace(std::string(canal), canal, configuracion_, contexto_).first->second;
  }

  static constexpr std::size_t kAntes = 8;  // rows

  Origen& origen_;
  Tabla* configuracion_;
  const ContextoRegistros& contexto_;
  Tabla& resultado_;
  std::string fecha_;
  std::string auxiliar_;
  Traduccion traduccion_fecha_;
  Traduccion copiados_[kCamposOrigen];
  std::map<std::string, CanalEnCurso, std::less<>> canales_;
  std::vector<CanalEnCurso*> por_indice_;      // by the number of the text of Canal
  std::vector<std::optional<bool>> sin_hora_;  // by that of Hora
};

}  // namespace utr
