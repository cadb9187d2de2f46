#include "session/BitacoraVisita.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <optional>
#include <ostream>
#include <string_view>
#include <utility>

#include "base/Archivos.h"
#include "base/Error.h"
#include "session/ArchivoBitacora.h"
#include "session/Respaldos.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

constexpr const char* kModulo = "BitacoraVisita";
constexpr int kMayorOrden = 999;

bool Existe(const fs::path& ruta) {
  std::error_code falla;
  return fs::symlink_status(ruta, falla).type() != fs::file_type::not_found;
}

// What is there of a file that can go on; nothing for one that is to be left alone.
std::optional<BitacoraLeida> LaQueSigue(const fs::path& archivo) {
  std::optional<BitacoraLeida> leida;
  std::error_code falla;
  const bool propio = fs::symlink_status(archivo, falla).type() == fs::file_type::regular;
  if (!propio || !IgnorandoErrores([&] { leida = LeerBitacora(archivo); }) || !leida->reparo.empty())
    return std::nullopt;
  return leida;
}

// Brings one piece to the disk, at the end of a file of that length or as a new file.
void AlDisco(const fs::path& archivo, std::uint64_t largo, const std::string& bytes) {
  const bool nuevo = largo == 0 && !Existe(archivo);
  ArchivoCreciente creciente = nuevo ? ArchivoCreciente(archivo) : ArchivoCreciente(archivo, largo);
  creciente.Agregar(bytes);
  AlFallar([&] { creciente.Terminar(); },
           [&] {
             std::error_code nada;  // or it would stand there twice once it is tried again
             fs::resize_file(archivo, largo, nada);
           });
}

// The end of a file once more, in the room that it has. Bytes that need more are refused ahead of the first one.
void ReescribirElFinal(const fs::path& archivo, std::uint64_t desde, std::string_view bytes) {
  const auto fallar = [&](int error_del_sistema) {
    throw Error(error::kArchivo, kModulo, "No se puede escribir " + archivo.string(), error_del_sistema);
  };
  struct Descriptor {
    int numero;
    ~Descriptor() { ::close(numero); }
  } const abierto{::open(archivo.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW)};
  if (abierto.numero < 0) fallar(errno);
  const auto lugar = static_cast<off_t>(desde);
  const auto largo = static_cast<off_t>(bytes.size());
  if (const int falla = ::posix_fallocate(abierto.numero, lugar, std::max<off_t>(largo, 1)); falla != 0) fallar(falla);
  if (::pwrite(abierto.numero, bytes.data(), bytes.size(), lugar) != largo) fallar(errno);
  if (::ftruncate(abierto.numero, lugar + largo) != 0 || ::fsync(abierto.numero) != 0) fallar(errno);
}

std::string PrimerosBytes(const fs::path& archivo, std::uint64_t cuantos) {
  std::string bytes(cuantos, '\0');
  std::ifstream entrada(archivo, std::ios::binary);
  if (!entrada.read(bytes.data(), static_cast<std::streamsize>(cuantos)))
    throw Error(error::kArchivo, kModulo, "No se puede leer " + archivo.string());
  return bytes;
}

}  // namespace

BitacoraVisita::BitacoraVisita(fs::path programa, Diario& diario, RegistroErrores& registro)
    : programa_(std::move(programa)), diario_(diario), registro_(registro) {
  diario_.AlCambiar([this](const Diario::Cambio& cambio) { Seguir(cambio); });
}

BitacoraVisita::~BitacoraVisita() {
  diario_.AlCambiar({});
}

void BitacoraVisita::Seguir(const Diario::Cambio& cambio) {
  for (const std::uint64_t orden : cambio.retirados) {
    const auto espera = std::erase_if(pendientes_, [&](const Asiento& uno) { return uno.orden == orden; });
    if (espera == 0) retirados_.insert(orden);
  }
  if (cambio.nuevo != nullptr) {
    pendientes_.push_back(*cambio.nuevo);
    return Reintentar();
  }
  for (Asiento& asiento : pendientes_) asiento.provisional = false;
  for (auto& [lugar, abierta] : abiertas_) {
    abierta.sueltos.clear();
    for (Asiento& asiento : abierta.cola) asiento.provisional = false;
    abierta.Afirmar();
  }
}

void BitacoraVisita::Reintentar() {
  if (pendientes_.empty()) return;
  const std::string falla_anterior = std::exchange(falla_, {});
  std::size_t hechos = 0;
  if (const auto falla = FallaDe([&] {
        for (; hechos < pendientes_.size(); ++hechos) Guardar(pendientes_[hechos]);
      })) {
    falla_ = falla->Descripcion();
    if (falla_anterior.empty()) registro_.RegistrarError(*falla, kModulo, "Reintentar");
  }
  pendientes_.erase(pendientes_.begin(), pendientes_.begin() + static_cast<std::ptrdiff_t>(hechos));
  if (pendientes_.empty()) IgnorandoErrores([this] { Quitar(); });
  const bool todo_bien = falla_.empty() && falla_anterior.empty();
  if (!todo_bien && aviso_) IgnorandoErrores(aviso_);
}

// A disk without room for the file once more may have some for the entry; the call is then told twice.
void BitacoraVisita::Guardar(const Asiento& asiento) {
  if (Abierta& abierta = AbiertaDe(asiento); TieneRetirados(abierta)) {
    if (IgnorandoErrores([&] { Rehacer(abierta, &asiento); })) return;
  }
  Agregar(AbiertaDe(asiento), asiento);
}

// Takes away what an entry of another file took the place of.
void BitacoraVisita::Quitar() {
  for (auto& [lugar, abierta] : abiertas_) {
    if (!TieneRetirados(abierta) && abierta.sueltos.empty()) continue;
    IgnorandoErrores([&, &lugar = lugar, &abierta = abierta] {
      PonerAlDia(lugar, abierta);
      if (TieneRetirados(abierta)) Rehacer(abierta, nullptr);
    });
  }
  retirados_.clear();
}

bool BitacoraVisita::TieneRetirados(const Abierta& abierta) const {
  return std::any_of(abierta.cola.begin(), abierta.cola.end(), [this](const Asiento& uno) { return Retirado(uno); });
}

// Nobody else has written to it since.
bool BitacoraVisita::Abierta::ComoQuedo() const {
  std::error_code falla;
  return !archivo.empty() && fs::file_size(archivo, falla) == largo && !falla;
}

BitacoraVisita::Abierta& BitacoraVisita::AbiertaDe(const Asiento& asiento) {
  const Lugar lugar{Carpeta(asiento.estacion), DiasDesde1970(asiento.momento)};
  Abierta& abierta = abiertas_[lugar];
  PonerAlDia(lugar, abierta);
  return abierta;
}

// Looks at the file once more where somebody else has written to it, also while it was put in order.
void BitacoraVisita::PonerAlDia(const Lugar& lugar, Abierta& abierta) {
  const auto reabrir = [&] {
    if (abierta.ComoQuedo()) return;
    Abierta antes = std::exchange(abierta, Abrir(lugar.first, FechaDeDias(lugar.second)));
    abierta.Soltar(antes);
  };
  reabrir();
  QuitarSueltos(abierta);
  reabrir();
}

// Provisional entries as they stand in the file that somebody else has written to.
void BitacoraVisita::Abierta::Soltar(Abierta& antes) {
  if (antes.archivo != archivo) return;
  sueltos = std::move(antes.sueltos);
  std::size_t numero = antes.ultimo_firme;
  for (const Asiento& asiento : antes.cola) {
    ++numero;
    if (asiento.provisional) sueltos[asiento.orden] = {RenglonBitacora(numero, asiento)};
  }
}

// What others wrote stays, and so do the numbers of all lines. A line that isn't found any more was changed by
// somebody, who answers for it.
void BitacoraVisita::QuitarSueltos(Abierta& abierta) {
  for (auto& [orden, suelto] : abierta.sueltos) suelto.sobra = suelto.sobra || retirados_.contains(orden);
  const auto sobra = [](const auto& uno) { return uno.second.sobra; };
  if (std::none_of(abierta.sueltos.begin(), abierta.sueltos.end(), sobra)) return;
  const std::string todo = PrimerosBytes(abierta.archivo, abierta.largo);
  std::string texto = todo.substr(0, abierta.largo_firme);
  for (const auto& [orden, suelto] : abierta.sueltos) {
    const std::size_t lugar = suelto.sobra ? texto.rfind(suelto.renglon) : std::string::npos;
    if (lugar != std::string::npos && lugar > 0 && texto[lugar - 1] == '\n') texto.erase(lugar, suelto.renglon.size());
  }
  const std::uint64_t quitados = abierta.largo_firme - texto.size();
  texto += todo.substr(abierta.largo_firme);
  const bool hecho = quitados == 0 || IgnorandoErrores([&] {
                       EscribirEntero(abierta.archivo, [&](std::ostream& salida) {
                         salida << texto;
                         // Whatever came in between would be lost: it is tried again with the next entry.
                         if (!abierta.ComoQuedo())
                           throw Error(error::kArchivo, kModulo, "Otro escribió en " + abierta.archivo.string());
                       });
                     });
  if (!hecho) return;
  std::erase_if(abierta.sueltos, sobra);
  abierta.largo -= quitados;
  abierta.largo_firme -= quitados;
}

// The file of that day that can go on, or the name of one that isn't there yet.
BitacoraVisita::Abierta BitacoraVisita::Abrir(const fs::path& carpeta, const FechaHora& dia) {
  std::error_code falla;
  fs::create_directories(carpeta, falla);
  if (falla) throw Error(error::kArchivo, kModulo, "No se puede crear la carpeta " + carpeta.string(), falla.value());
  for (int orden = 1; orden <= kMayorOrden; ++orden) {
    const fs::path archivo = carpeta / NombreBitacora(dia, orden);
    if (!Existe(archivo)) return {.archivo = archivo};
    const auto leida = LaQueSigue(archivo);
    if (leida) return {archivo, leida->largo, leida->ultimo, {}, leida->largo, leida->ultimo};
  }
  throw Error(error::kArchivo, kModulo, "No queda nombre para otra bitácora en " + carpeta.string());
}

void BitacoraVisita::Agregar(Abierta& abierta, const Asiento& asiento) {
  const std::string bytes =
      (abierta.largo == 0 ? CabeceraBitacora() : std::string()) + RenglonBitacora(abierta.ultimo + 1, asiento);
  AlDisco(abierta.archivo, abierta.largo, bytes);
  abierta.largo += bytes.size();
  ++abierta.ultimo;
  abierta.cola.push_back(asiento);
  abierta.Afirmar();
}

// The file once more, without those of its end that others took the place of.
void BitacoraVisita::Rehacer(Abierta& abierta, const Asiento* nuevo) {
  std::vector<Asiento> cola = abierta.cola;
  std::erase_if(cola, [this](const Asiento& uno) { return Retirado(uno); });
  if (nuevo != nullptr) cola.push_back(*nuevo);
  const std::string firme = PrimerosBytes(abierta.archivo, abierta.largo_firme);
  std::string resto = firme.empty() ? CabeceraBitacora() : std::string();
  std::size_t ultimo = abierta.ultimo_firme;
  for (const Asiento& asiento : cola) resto += RenglonBitacora(++ultimo, asiento);
  // A full disk has no room for the file beside itself, but for its end in its place.
  const bool entero = IgnorandoErrores(
      [&] { EscribirEntero(abierta.archivo, [&](std::ostream& salida) { salida << firme << resto; }); });
  if (!entero) ReescribirElFinal(abierta.archivo, firme.size(), resto);
  abierta.largo = firme.size() + resto.size();
  abierta.ultimo = ultimo;
  abierta.cola = std::move(cola);
  abierta.Afirmar();
}

// Without a provisional entry nothing of the file changes any more.
void BitacoraVisita::Abierta::Afirmar() {
  if (std::any_of(cola.begin(), cola.end(), [](const Asiento& uno) { return uno.provisional; })) return;
  cola.clear();
  largo_firme = largo;
  ultimo_firme = ultimo;
}

void BitacoraVisita::GuardarPendientes(std::int32_t estacion, const fs::path& archivo) {
  const auto es_suyo = [estacion](const Asiento& uno) { return uno.estacion == estacion; };
  EscribirEntero(archivo, [&](std::ostream& salida) {
    salida << CabeceraBitacora();
    std::size_t numero = 0;
    for (const Asiento& pendiente : pendientes_) {
      if (es_suyo(pendiente)) salida << RenglonBitacora(++numero, pendiente);
    }
  });
  std::erase_if(pendientes_, es_suyo);
  if (pendientes_.empty()) falla_.clear();
  if (aviso_) aviso_();
}

std::string CuantosAsientos(std::size_t cuantos) {
  return cuantos == 1 ? "1 asiento" : std::to_string(cuantos) + " asientos";
}

fs::path BitacoraVisita::Carpeta(std::int32_t estacion) const {
  return Respaldos::CarpetaDe(programa_, estacion);
}

}  // namespace utr
