#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "session/AjustesEnlace.h"

namespace utr {

// How a station is reached. kSimulado: the simulated station of the program's own process, by the number of its port.
enum class MedioEstacion : std::uint8_t { kSimulado, kSerie, kTelefono, kIP };

// "Puerto serie", as the operator reads it.
std::string_view TextoDe(MedioEstacion medio);

// A station of the book. What belongs to another way of reaching it than its own is kept all the same.
struct Estacion {
  std::string nombre;
  std::string lugar{};
  std::int32_t identificador = 0;  // 0: not known
  MedioEstacion medio = MedioEstacion::kSerie;
  std::int32_t puerto = kPuertoDefecto;        // number of the serial port, as in "COM 1"; also for a call
  std::int32_t velocidad = kVelocidadDefecto;  // bits per second on it
  std::string telefono{};                      // number to call
  std::string comandos{};                      // for the modem
  std::string direccion{};
  std::int32_t puerto_ip = kPuertoIPDefecto;
  std::string notas{};  // may have lines

  bool operator==(const Estacion&) const = default;
};

// A complaint about a station: its sentence and the field that is wrong.
enum class CampoEstacion : std::uint8_t {
  kNombre,
  kLugar,
  kIdentificador,
  kPuerto,
  kVelocidad,
  kTelefono,
  kComandos,
  kDireccion,
  kPuertoIP,
  kNotas
};
struct ReparoEstacion {
  CampoEstacion campo;
  std::string texto;
};

// The complaints about a station by itself, in the order of its fields; none when it can stand in the book. Names that
// are taken are the book's affair.
std::vector<ReparoEstacion> ReparosDe(const Estacion& estacion);

// What the dialogs of the connection show for that station.
EntradaEnlace EntradaDe(const Estacion& estacion);

// Its link in one line: "COM 4, 9600 bps", "COM 1 (simulado)", "Teléfono 4912345 por COM 4, 9600 bps",
// "10.0.0.5, puerto 1000".
std::string TextoEnlaceDe(const Estacion& estacion);

// What became of an import.
struct ResultadoImportacion {
  std::size_t nuevas = 0;
  std::size_t reemplazadas = 0;  // had that name and differed
  std::size_t dejadas = 0;       // the same, and stay as they were
  std::size_t iguales = 0;       // stood in the book already
};

// The stations that the operator knows, in the order of their names, kept in a file of its own beside the program.
// Names are told apart without case.
//
// Each change goes to the file at once, whole or not at all: one that fails raises kArchivo and leaves the book as it
// was. A file that isn't understood is never replaced, and neither is one that somebody else changed since it was read.
class LibroEstaciones {
 public:
  static constexpr const char* kArchivo = "Estaciones.toml";

  // `archivo`: its path. Nothing is read yet.
  explicit LibroEstaciones(std::filesystem::path archivo);

  const std::filesystem::path& Archivo() const noexcept { return archivo_; }

  // Reads the file; where there is none yet, the one that came with an installed program, else the book is empty.
  // Raises kArchivo, with a sentence that names the line, for one that can't be read or understood; the book is then
  // empty, and changes are refused until a Leer goes well.
  void Leer();

  const std::vector<Estacion>& Estaciones() const noexcept { return estaciones_; }
  // By its name; null where none has it.
  const Estacion* Buscar(std::string_view nombre) const;
  // By its identifier; null where none has it, several do, or it is 0.
  const Estacion* LaUnica(std::int32_t identificador) const;

  // All raise kLlamada for a station with complaints or a name that another one has.
  void Agregar(Estacion estacion);
  void Cambiar(std::string_view nombre, Estacion estacion);
  void Borrar(std::string_view nombre);

  // Takes in the stations of another book's file, all or none, read as strictly as the book's own. `reemplazar`: what
  // becomes of those whose name is in the book with other data. Raises kArchivo as Leer does.
  ResultadoImportacion Importar(const std::filesystem::path& archivo, bool reemplazar);
  // What Importar with `reemplazar` would do; changes nothing.
  ResultadoImportacion Previsto(const std::filesystem::path& archivo) const;
  // Writes the whole book to another file, in place of what was there.
  void Exportar(const std::filesystem::path& archivo) const;

 private:
  void Guardar(std::vector<Estacion> nuevas);
  void ExigirLibre(const Estacion& estacion, const Estacion* propia) const;

  std::filesystem::path archivo_;
  std::string bytes_;  // of the file, when it was read or written last
  bool leido_ = false;
  std::vector<Estacion> estaciones_;
};

}  // namespace utr
