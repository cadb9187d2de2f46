#include "driver/simulated/unit/EstadoPersistido.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <fstream>
#include <optional>
#include <ostream>
#include <sstream>
#include <type_traits>

#include "base/Archivos.h"
#include "base/Error.h"

namespace utr::simulada {

namespace {

constexpr std::string_view kMarca = "UTRSIM03";
constexpr std::string_view kMarcaSinOrdenes = "UTRSIM02";  // read still: a station lives through an update
constexpr std::string_view kMarcaSinVersion = kMarca.substr(0, 6);

[[noreturn]] void Daniado(const char* motivo) {
  throw Error(error::kArchivo, "UTRSimulada.estado", motivo);
}

// FNV-1a over the whole content, eight bytes at a step.
std::uint64_t Suma(std::string_view bytes) {
  std::uint64_t suma = 0xCBF29CE484222325U;
  while (!bytes.empty()) {
    std::uint64_t parte = 0;
    const std::size_t largo = std::min<std::size_t>(bytes.size(), sizeof parte);
    std::memcpy(&parte, bytes.data(), largo);
    suma = (suma ^ parte) * 0x100000001B3U;
    suma ^= suma >> 29;
    bytes.remove_prefix(largo);
  }
  return suma;
}

// Any number in eight bytes: a whole one as it is, another by its bits.
template <class T>
std::int64_t ABits(T valor) {
  if constexpr (std::is_floating_point_v<T>) {
    return std::bit_cast<std::int64_t>(static_cast<double>(valor));
  } else {
    return static_cast<std::int64_t>(valor);
  }
}

template <class T>
T DeBits(std::int64_t bits) {
  if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>(std::bit_cast<double>(bits));
  } else {
    return static_cast<T>(bits);
  }
}

// The two directions have one face, so that Recorrer names each field once and in one order.
class Escritor {
 public:
  template <class T>
  requires std::is_arithmetic_v<T>
  void Campo(T& valor) {
    const auto numero = ABits(valor);
    bytes_.append(reinterpret_cast<const char*>(&numero), sizeof numero);
  }
  void Campo(std::string& texto) {
    Cuenta(texto.size());
    bytes_ += texto;
  }
  void Bytes(std::span<std::uint8_t> bytes) {
    bytes_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  }
  std::uint64_t Cuenta(std::uint64_t cuenta) {
    Campo(cuenta);
    return cuenta;
  }
  static constexpr bool kLee = false;
  std::string& Contenido() { return bytes_; }

 private:
  std::string bytes_;
};

// What it reads is bounded by what is there and by nothing else: whatever the unit took in, it can read again.
class Lector {
 public:
  explicit Lector(std::string_view bytes) : bytes_(bytes) {}
  template <class T>
  requires std::is_arithmetic_v<T>
  void Campo(T& valor) {
    std::int64_t numero = 0;
    std::memcpy(&numero, Tomar(sizeof numero).data(), sizeof numero);
    valor = DeBits<T>(numero);
  }
  void Campo(std::string& texto) {
    std::uint64_t largo = 0;
    Campo(largo);
    texto = Tomar(largo);
  }
  void Bytes(std::span<std::uint8_t> bytes) { std::memcpy(bytes.data(), Tomar(bytes.size()).data(), bytes.size()); }
  std::uint64_t Cuenta(std::uint64_t) {
    std::uint64_t cuenta = 0;
    Campo(cuenta);
    if (cuenta > bytes_.size()) Daniado("el archivo de estado tiene una cuenta imposible");
    return cuenta;
  }
  bool Fin() const { return bytes_.empty(); }
  static constexpr bool kLee = true;

 private:
  std::string_view Tomar(std::uint64_t largo) {
    if (bytes_.size() < largo) Daniado("el archivo de estado está cortado");
    const std::string_view parte = bytes_.substr(0, largo);
    bytes_.remove_prefix(largo);
    return parte;
  }
  std::string_view bytes_;
};

// Each byte is the one behind it, since all of a memory are looked at for every change that is kept.
bool EstaBorrada(std::span<const std::uint8_t> pagina) {
  return pagina.front() == 255 && std::memcmp(pagina.data(), pagina.data() + 1, pagina.size() - 1) == 0;
}

// Pages that are erased all through take one bit, the others their bytes.
template <class Archivo>
void Recorrer(Archivo& archivo, Memoria& memoria) {
  constexpr std::size_t kPaginas = std::size_t{kPistas} * kPaginasPista;
  std::array<std::uint8_t, kPaginas / 8> usadas{};
  const std::span<std::uint8_t> bytes = memoria.Bytes();
  if constexpr (!Archivo::kLee) {
    for (std::size_t i = 0; i < kPaginas; ++i) {
      if (EstaBorrada(bytes.subspan(i * kBytesPagina, kBytesPagina))) continue;
      usadas[i / 8] = static_cast<std::uint8_t>(usadas[i / 8] | (1U << (i % 8)));
    }
  }
  archivo.Bytes(usadas);
  for (std::size_t i = 0; i < kPaginas; ++i) {
    if ((usadas[i / 8] >> (i % 8) & 1) != 0) archivo.Bytes(bytes.subspan(i * kBytesPagina, kBytesPagina));
  }
  for (Anillo& anillo : memoria.Anillos()) {
    archivo.Campo(anillo.siguiente);
    archivo.Campo(anillo.abierta);
    archivo.Campo(anillo.lleno);
    const auto cuantas = static_cast<std::int64_t>(anillo.cuantas);
    if (anillo.siguiente >= anillo.cuantas || anillo.abierta < -1 || anillo.abierta >= cuantas) {
      Daniado("el archivo de estado tiene una pila imposible");
    }
  }
}

template <class Archivo>
void Recorrer(Archivo& archivo, std::map<std::string, std::string>& mapa) {
  std::vector<std::pair<std::string, std::string>> pares(mapa.begin(), mapa.end());
  pares.resize(archivo.Cuenta(pares.size()));
  for (auto& [clave, texto] : pares) {
    archivo.Campo(clave);
    archivo.Campo(texto);
  }
  mapa.clear();
  mapa.insert(pares.begin(), pares.end());
}

template <class Archivo>
void Recorrer(Archivo& archivo, std::map<int, std::vector<std::uint8_t>>& paginas) {
  std::vector<std::pair<int, std::vector<std::uint8_t>>> pares(paginas.begin(), paginas.end());
  pares.resize(archivo.Cuenta(pares.size()));
  for (auto& [numero, bytes] : pares) {
    archivo.Campo(numero);
    bytes.resize(archivo.Cuenta(bytes.size()));
    archivo.Bytes(bytes);
  }
  paginas.clear();
  paginas.insert(pares.begin(), pares.end());
}

template <class Archivo>
void Recorrer(Archivo& archivo, Estacion::Vistazos& vistazos) {
  for (Vistazo& v : vistazos) {
    archivo.Campo(v.momento);
    for (double* numero : {&v.valor, &v.arriba, &v.abajo}) archivo.Campo(*numero);
  }
}

template <class Archivo>
void Recorrer(Archivo& archivo, std::vector<OrdenGuardada>& ordenes) {
  ordenes.resize(archivo.Cuenta(ordenes.size()));
  for (OrdenGuardada& orden : ordenes) {
    archivo.Campo(orden.sesion);
    archivo.Campo(orden.huella);
    for (std::uint16_t* numero : {&orden.secuencia, &orden.estado, &orden.motivo}) archivo.Campo(*numero);
  }
}

template <class Archivo>
void Recorrer(Archivo& archivo, EstadoPersistido& estado, bool con_ordenes) {
  Estacion& e = estado.estacion;
  archivo.Campo(e.velocidad);
  archivo.Campo(e.identificador);
  archivo.Campo(e.banderas);
  archivo.Campo(e.desfase);
  for (bool& salida : e.salidas) archivo.Campo(salida);
  Recorrer(archivo, e.paginas);
  for (auto& fila : e.canales.Filas()) {
    if (archivo.Cuenta(fila.size()) != fila.size()) Daniado("el archivo de estado es de otra tabla de canales");
    for (std::string& texto : fila) archivo.Campo(texto);
  }
  for (Agenda* agenda : {&e.agenda, &e.vigente}) {
    std::string texto = agenda->ComoTexto();
    archivo.Campo(texto);
    if (!agenda->LeerTexto(texto)) Daniado("el archivo de estado tiene una agenda imposible");
  }
  archivo.Campo(e.ventana);
  Recorrer(archivo, e.memoria);
  Recorrer(archivo, e.cartucho);
  archivo.Campo(e.registrado);
  archivo.Campo(e.transmitido);
  for (Estacion::Vistazos* vistazos : {&e.para_alarmas, &e.para_condicional, &e.para_vigilancia}) {
    Recorrer(archivo, *vistazos);
  }
  Recorrer(archivo, estado.aplicado);
  archivo.Campo(estado.escenario);
  if (con_ordenes) Recorrer(archivo, estado.ordenes);
}

// What is there under that name, "" included, or nothing where the name is free. A broken link isn't free.
std::optional<std::string> BytesDe(const std::filesystem::path& ruta) {
  std::error_code falla;
  const auto que = std::filesystem::symlink_status(ruta, falla).type();
  if (que == std::filesystem::file_type::not_found) return std::nullopt;
  std::ifstream archivo(ruta, std::ios::binary);
  std::ostringstream copia;
  copia << archivo.rdbuf();
  if (!archivo) Daniado("el archivo de estado no se puede leer");
  return std::move(copia).str();
}

}  // namespace

void GuardarEstado(const std::filesystem::path& ruta, EstadoPersistido& estado) {
  Escritor escritor;
  Recorrer(escritor, estado, true);
  const std::uint64_t suma = Suma(escritor.Contenido());
  EscribirEntero(ruta, [&](std::ostream& archivo) {
    archivo << kMarca;
    archivo.write(reinterpret_cast<const char*>(&suma), sizeof suma);
    archivo << escritor.Contenido();
  });
}

bool CargarEstado(const std::filesystem::path& ruta, EstadoPersistido& estado) {
  const auto leido = BytesDe(ruta);
  if (!leido) return false;
  const std::string_view todo = *leido;
  std::uint64_t suma = 0;
  if (!todo.starts_with(kMarcaSinVersion)) Daniado("el archivo de estado no se reconoce");
  if (todo.size() < kMarca.size() + sizeof suma) Daniado("el archivo de estado está cortado");
  const bool con_ordenes = todo.starts_with(kMarca);
  if (!con_ordenes && !todo.starts_with(kMarcaSinOrdenes)) Daniado("el archivo de estado es de otra versión");
  std::memcpy(&suma, todo.data() + kMarca.size(), sizeof suma);
  const std::string_view contenido = todo.substr(kMarca.size() + sizeof suma);
  if (Suma(contenido) != suma) Daniado("el archivo de estado está dañado");
  Lector lector(contenido);
  Recorrer(lector, estado, con_ordenes);
  if (!lector.Fin() || estado.estacion.LeerPagina(0).size() != kBytesPagina)
    Daniado("el archivo de estado está dañado");
  estado.estacion.canales.RehacerParametros();
  return true;
}

std::string ApartarEstado(const std::filesystem::path& ruta) {
  std::filesystem::path nueva;
  int numero = 0;
  do {
    nueva = ruta;
    nueva += ".apartado-" + std::to_string(++numero);
  } while (std::filesystem::symlink_status(nueva).type() != std::filesystem::file_type::not_found);
  std::error_code falla;
  std::filesystem::rename(ruta, nueva, falla);
  if (falla) Daniado("el archivo de estado no se puede apartar");
  return nueva.filename().string();
}

}  // namespace utr::simulada
