#include "driver/link/protocol/Imagenes.h"

#include <algorithm>

#include "driver/TablasEntregadas.h"

namespace utr::protocolo {

namespace {

constexpr std::size_t kBytesDeColumnas = 6;
constexpr std::uint8_t kTextoLargo = 254;
constexpr std::uint8_t kComoArriba = 255;
constexpr std::uint16_t kSinMinuto = 0xFFFF;
constexpr std::size_t kMayor16 = 0xFFFF;
constexpr int kMinutosDia = 1440;
constexpr std::size_t kBytesDeCabeza = 10;

// Reads from the front of an image; once something was missing it gives zeros and says so.
class Lector {
 public:
  explicit Lector(VistaBytes bytes) : bytes_(bytes) {}
  std::uint8_t Uno() {
    const VistaBytes byte = Tomar(1);
    return bien_ ? byte[0] : std::uint8_t{0};
  }
  std::uint16_t Dos() {
    const VistaBytes par = Tomar(2);
    return bien_ ? Leer16(par, 0) : std::uint16_t{0};
  }
  std::string Texto(std::size_t largo) {
    const VistaBytes texto = Tomar(largo);
    return bien_ ? std::string(texto.begin(), texto.end()) : std::string{};
  }
  bool Bien() const { return bien_; }
  bool Terminado() const { return bien_ && bytes_.empty(); }

 private:
  VistaBytes Tomar(std::size_t cuantos) {
    bien_ = bien_ && cuantos <= bytes_.size();
    if (!bien_) return {};
    const VistaBytes parte = bytes_.first(cuantos);
    bytes_ = bytes_.subspan(cuantos);
    return parte;
  }

  VistaBytes bytes_;
  bool bien_ = true;
};

void PonerTexto(Bytes& imagen, const std::string& texto) {
  if (texto.size() < kTextoLargo) {
    imagen.push_back(static_cast<std::uint8_t>(texto.size()));
  } else {
    imagen.push_back(kTextoLargo);
    Poner16(imagen, static_cast<std::uint16_t>(texto.size()));
  }
  imagen.insert(imagen.end(), texto.begin(), texto.end());
}

std::string LeerTexto(Lector& lector, const std::string* arriba) {
  const std::uint8_t largo = lector.Uno();
  if (largo == kComoArriba && arriba != nullptr) return *arriba;
  if (largo == kComoArriba) return lector.Texto(kMayorImagen + 1);  // there is no row above
  return lector.Texto(largo == kTextoLargo ? lector.Dos() : largo);
}

}  // namespace

FilasDeCanales FilasDeTabla(const Tabla& tabla) {
  const auto& columnas = ColumnasDeUnidad();
  const TablaPtr clon = ALaVista(tabla);
  clon->IndiceCampo("Canal");
  FilasDeCanales filas;
  std::vector<int> campos;
  for (const ColumnaCanal& columna : columnas) {
    campos.push_back(clon->BuscarCampo(columna.nombre));
    filas.presentes.push_back(campos.back() >= 0);
  }
  for (; !clon->Eof(); clon->MoveNext()) {
    auto& fila = filas.filas.emplace_back();
    for (const int campo : campos) fila.push_back(campo >= 0 ? clon->Texto(static_cast<std::size_t>(campo)) : "");
  }
  return filas;
}

TablaPtr TablaDeFilas(const FilasDeCanales& filas) {
  const auto& columnas = ColumnasDeUnidad();
  auto tabla = std::make_shared<Tabla>();
  for (std::size_t c = 0; c < columnas.size(); ++c) {
    if (filas.presentes[c]) tabla->Append(columnas[c].nombre, TipoCampo::kVarChar);
  }
  tabla->Open();
  for (const auto& fila : filas.filas) {
    tabla->AddNew();
    std::size_t campo = 0;
    for (std::size_t c = 0; c < columnas.size(); ++c) {
      if (filas.presentes[c]) tabla->Set(campo++, fila[c]);
    }
  }
  tabla->UpdateBatch();
  if (tabla->RecordCount() > 0) tabla->MoveFirst();
  return tabla;
}

std::optional<Bytes> ImagenDe(const FilasDeCanales& filas) {
  if (filas.filas.size() > kMayorFilas) return std::nullopt;
  Bytes imagen;
  Poner16(imagen, static_cast<std::uint16_t>(filas.filas.size()));
  imagen.resize(imagen.size() + kBytesDeColumnas, 0);
  for (std::size_t c = 0; c < filas.presentes.size(); ++c) {
    if (filas.presentes[c]) imagen[2 + c / 8] = static_cast<std::uint8_t>(imagen[2 + c / 8] | (1U << (c % 8)));
  }
  const std::vector<std::string>* arriba = nullptr;
  for (const auto& fila : filas.filas) {
    for (std::size_t c = 0; c < fila.size(); ++c) {
      if (!filas.presentes[c]) continue;
      if (fila[c].size() > kMayor16) return std::nullopt;
      if (arriba != nullptr && !fila[c].empty() && (*arriba)[c] == fila[c]) {
        imagen.push_back(kComoArriba);
      } else {
        PonerTexto(imagen, fila[c]);
      }
    }
    if (imagen.size() > kMayorImagen) return std::nullopt;
    arriba = &fila;
  }
  return imagen;
}

std::optional<FilasDeCanales> LeerImagenDeCanales(VistaBytes imagen) {
  const std::size_t columnas = ColumnasDeUnidad().size();
  Lector lector(imagen);
  const std::size_t cuantas = lector.Dos();
  FilasDeCanales filas;
  for (std::size_t i = 0; i < kBytesDeColumnas; ++i) {
    for (unsigned byte = lector.Uno(), bit = 0; bit < 8; ++bit) filas.presentes.push_back((byte >> bit & 1) != 0);
  }
  // Few rows, because one byte repeats a text of any length. A column that isn't known is none of ours to understand.
  const auto ultima = std::find(filas.presentes.rbegin(), filas.presentes.rend(), true);
  if (!lector.Bien() || cuantas > kMayorFilas || ultima == filas.presentes.rend() ||
      static_cast<std::size_t>(filas.presentes.rend() - ultima) > columnas)
    return std::nullopt;
  filas.presentes.resize(columnas);
  for (std::size_t i = 0; i < cuantas && lector.Bien(); ++i) {
    std::vector<std::string> fila(columnas);
    for (std::size_t c = 0; c < columnas; ++c) {
      if (filas.presentes[c]) fila[c] = LeerTexto(lector, i == 0 ? nullptr : &filas.filas.back()[c]);
    }
    filas.filas.push_back(std::move(fila));
  }
  if (!lector.Terminado()) return std::nullopt;
  return filas;
}

std::optional<Bytes> ImagenDe(std::span<const EntradaAgenda> entradas) {
  if (entradas.size() > kMayorAgenda) return std::nullopt;
  Bytes imagen;
  Poner16(imagen, static_cast<std::uint16_t>(entradas.size()));
  for (const EntradaAgenda& e : entradas) {
    if (e.descripcion.size() > 255) return std::nullopt;
    Poner16(imagen, e.minuto < 0 ? kSinMinuto : static_cast<std::uint16_t>(e.minuto));
    const int clases = (e.obligatoria ? 1 : 0) | (e.ventana ? 2 : 0) | (e.condicional ? 4 : 0);
    imagen.push_back(static_cast<std::uint8_t>(clases));
    imagen.push_back(static_cast<std::uint8_t>(e.descripcion.size()));
    imagen.insert(imagen.end(), e.descripcion.begin(), e.descripcion.end());
  }
  return imagen;
}

std::optional<std::vector<EntradaAgenda>> LeerImagenDeAgenda(VistaBytes imagen) {
  Lector lector(imagen);
  const std::size_t cuantas = lector.Dos();
  if (cuantas > kMayorAgenda) return std::nullopt;
  std::vector<EntradaAgenda> entradas;
  for (std::size_t i = 0; i < cuantas && lector.Bien(); ++i) {
    const std::uint16_t minuto = lector.Dos();
    const std::uint8_t clases = lector.Uno();
    if ((minuto >= kMinutosDia && minuto != kSinMinuto) || clases > 7) return std::nullopt;
    entradas.push_back({.minuto = minuto == kSinMinuto ? -1 : minuto,
                        .obligatoria = (clases & 1) != 0,
                        .ventana = (clases & 2) != 0,
                        .condicional = (clases & 4) != 0,
                        .descripcion = lector.Texto(lector.Uno())});
  }
  if (!lector.Terminado()) return std::nullopt;
  return entradas;
}

Resumen ResumenDe(VistaBytes imagen) {
  return {imagen.size() < 2 ? std::uint16_t{0} : Leer16(imagen, 0), static_cast<std::uint32_t>(imagen.size()),
          Crc32(imagen)};
}

Bytes ArchivoDe(VistaBytes imagen) {
  Bytes archivo = BytesDe(ArgumentosDe(ResumenDe(imagen)));
  archivo.resize(kBytesPorPieza, 0);
  archivo.insert(archivo.end(), imagen.begin(), imagen.end());
  archivo.resize((1 + PiezasDe(imagen.size())) * kBytesPorPieza, 0);
  return archivo;
}

std::optional<Resumen> LeerCabeza(VistaBytes record) {
  if (record.size() < kBytesDeCabeza) return std::nullopt;
  const auto resumen = LeerResumen(RegistrosDe(record.first(kBytesDeCabeza)));
  return resumen && resumen->largo <= kMayorImagen ? resumen : std::nullopt;
}

}  // namespace utr::protocolo
