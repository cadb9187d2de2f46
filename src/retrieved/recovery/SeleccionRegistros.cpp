#include "retrieved/recovery/SeleccionRegistros.h"

#include <optional>
#include <string>
#include <vector>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/CanalesUTR.h"

namespace utr {

namespace {

// What a function makes of the texts of a column, worked out once for each distinct text.
template <typename Juicio>
class PorTexto {
 public:
  PorTexto(const Tabla& tabla, std::string_view campo, Juicio juicio)
      : tabla_(tabla),
        campo_(tabla.IndiceCampo(campo)),
        de_textos_(ClaseDe(tabla.Field(campo_).tipo) == Clase::kTexto),
        juicio_(juicio) {}

  bool operator()(std::size_t fila) {
    if (!de_textos_) return juicio_(tabla_.Filas().Texto(fila, campo_));
    const std::uint32_t indice = tabla_.Textos(campo_).De(fila);
    if (indice >= conocidos_.size()) conocidos_.resize(indice + 1 + conocidos_.size() / 2);
    if (!conocidos_[indice]) conocidos_[indice] = juicio_(tabla_.Filas().Texto(fila, campo_));
    return *conocidos_[indice];
  }

 private:
  const Tabla& tabla_;
  std::size_t campo_;
  bool de_textos_;
  Juicio juicio_;
  std::vector<std::optional<bool>> conocidos_;
};

bool EsParteDeHora(std::string_view parte, std::int32_t mayor) {
  if (!EsNumerico(parte)) return false;
  const double numero = LeerDoble(parte);
  return numero >= 0 && numero <= mayor;
}

bool EsHora(std::string_view texto) {
  const auto partes = Separar(Recortar(texto), ':');
  return partes.size() >= 3 && EsParteDeHora(partes[0], 23) && EsParteDeHora(partes[1], 59) &&
         EsParteDeHora(partes[2], 59);
}

// The rows of a table that are to stay. They are copied from the first one on that isn't: before that, and most often
// to the end, there is nothing to copy.
class Seleccion {
 public:
  explicit Seleccion(Tabla& origen) : origen_(origen), numeros_(origen.FieldCount()) {
    for (std::size_t i = 0; i < origen.FieldCount(); ++i)
      de_textos_.push_back(ClaseDe(origen.Field(i).tipo) == Clase::kTexto);
  }

  // Walks the rows on show; `queda` tells which stay.
  template <typename Queda>
  TablaPtr Hacer(Queda queda) {
    const std::size_t cuantas = origen_.RecordCount();
    const bool toda = origen_.Filter().empty() && origen_.Sort().empty();
    for (std::size_t posicion = 0; posicion < cuantas; ++posicion) {
      const std::size_t fila = origen_.Filas().EnVista(posicion);
      const bool pasa = queda(fila);
      if (!copia_ && !(pasa && toda)) Comenzar(posicion);
      if (pasa && copia_) Copiar(fila);
    }
    if (!copia_) return cuantas > 0 ? origen_.Clone() : CopiarRecordset(origen_, false);
    copia_->UpdateBatch();
    copia_->MoveFirst();
    return std::move(copia_);
  }

 private:
  // All rows ahead of this one stayed.
  void Comenzar(std::size_t posicion) {
    copia_ = CopiarRecordset(origen_, false);
    for (std::size_t antes = 0; antes < posicion; ++antes) Copiar(origen_.Filas().EnVista(antes));
  }

  void Copiar(std::size_t fila) {
    copia_->AddNew();
    for (std::size_t campo = 0; campo < de_textos_.size(); ++campo) {
      if (de_textos_[campo]) {
        CopiarTexto(fila, campo);
      } else {
        copia_->Set(campo, origen_.Filas().Value(fila, campo));
      }
    }
  }

  void CopiarTexto(std::size_t fila, std::size_t campo) {
    const std::uint32_t indice = origen_.Textos(campo).De(fila);
    if (indice == 0) return;
    std::vector<std::uint32_t>& numeros = numeros_[campo];
    if (indice >= numeros.size()) numeros.resize(indice + 1 + numeros.size() / 2);
    if (numeros[indice] != 0) return copia_->SetIndice(campo, numeros[indice]);
    copia_->Set(campo, origen_.Filas().Value(fila, campo));
    numeros[indice] = copia_->Textos(campo).De(copia_->Filas().Actual());
  }

  Tabla& origen_;
  TablaPtr copia_;
  std::vector<bool> de_textos_;
  std::vector<std::vector<std::uint32_t>> numeros_;  // of the texts of the source in the copy, by column
};

}  // namespace

TablaPtr ValidarRegistros(Tabla& tabla, Descartes* descartes) {
  PorTexto con_fecha(tabla, "Fecha", [](std::string_view texto) { return EsFecha(Recortar(texto)); });
  PorTexto con_hora(tabla, "Hora", EsHora);
  Descartes hallados;
  TablaPtr validos = Seleccion(tabla).Hacer([&](std::size_t fila) {
    if (!con_fecha(fila)) {
      ++hallados.por_fecha;
      return false;
    }
    const bool valida = con_hora(fila);
    if (!valida) ++hallados.por_hora;
    return valida;
  });
  if (descartes != nullptr) {
    descartes->por_fecha += hallados.por_fecha;
    descartes->por_hora += hallados.por_hora;
  }
  return validos;
}

TablaPtr ExtraerCanal(Tabla& tabla, std::int16_t canal) {
  const std::string nombre = NombreCanal(canal);
  PorTexto es_suyo(tabla, "Canal", [&](std::string_view texto) {
    return EsNumerico(texto) ? LeerDoble(texto) == canal : ClaseDeCanal(canal).has_value() && texto == nombre;
  });
  return Seleccion(tabla).Hacer([&](std::size_t fila) { return es_suyo(fila); });
}

}  // namespace utr
