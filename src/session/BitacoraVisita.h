#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/Fechas.h"
#include "services/Diario.h"
#include "services/RegistroErrores.h"

namespace utr {

// Keeps the journal on the disk, entry by entry as they come, each in the file of its day in the folder of its station:
// see ArchivoBitacora. What is in a file is never changed, but for provisional entries: they stand there until another
// one takes their place, and then the file is replaced whole. A file that can't go on, because it is of another version
// or its end got lost, is left alone, and one more is begun for that day.
//
// An entry that the disk refuses stops nothing: it waits in memory, in its order, and is tried again with the next one.
class BitacoraVisita {
 public:
  // `programa`: folder of the program. It follows `diario` from now on; all must outlive it.
  BitacoraVisita(std::filesystem::path programa, Diario& diario, RegistroErrores& registro);
  ~BitacoraVisita();
  BitacoraVisita(const BitacoraVisita&) = delete;
  BitacoraVisita& operator=(const BitacoraVisita&) = delete;

  // Entries that aren't on the disk, oldest first, and why the first of them isn't; empty: all are.
  const std::vector<Asiento>& Pendientes() const noexcept { return pendientes_; }
  const std::string& Falla() const noexcept { return falla_; }

  // Who shows it; one at a time, none with an empty function. Told whenever one of both has changed.
  void AlCambiar(std::function<void()> aviso) { aviso_ = std::move(aviso); }

  // Tries again to bring to the disk what waits. Never raises.
  void Reintentar();

  // Writes what waits of a station to a file that the operator chose, as a journal. It waits no more then. Raises
  // kArchivo.
  void GuardarPendientes(std::int32_t estacion, const std::filesystem::path& archivo);

  // Where the journals of a station lie; the folder may not be there yet.
  std::filesystem::path Carpeta(std::int32_t estacion) const;
  const std::filesystem::path& Programa() const noexcept { return programa_; }

 private:
  // The file of a day of a station, as this object left it.
  struct Abierta {
    std::filesystem::path archivo{};
    std::uint64_t largo = 0;  // in bytes
    std::size_t ultimo = 0;   // number of the last entry
    // The first provisional entry and all behind it; empty where there is none. Ahead of them:
    std::vector<Asiento> cola{};
    std::uint64_t largo_firme = 0;
    std::size_t ultimo_firme = 0;
    // Lines of provisional entries that stand ahead of what is written from now on, since somebody else has written to
    // the file, by `orden`.
    struct Suelto {
      std::string renglon;
      bool sobra = false;  // another entry took its place
    };
    std::map<std::uint64_t, Suelto> sueltos{};

    bool ComoQuedo() const;
    void Afirmar();
    void Soltar(Abierta& antes);
  };

  using Lugar = std::pair<std::filesystem::path, std::int64_t>;  // folder and day

  void Seguir(const Diario::Cambio& cambio);
  void Guardar(const Asiento& asiento);
  void Quitar();
  Abierta& AbiertaDe(const Asiento& asiento);
  static Abierta Abrir(const std::filesystem::path& carpeta, const FechaHora& dia);
  void Agregar(Abierta& abierta, const Asiento& asiento);
  void Rehacer(Abierta& abierta, const Asiento* nuevo);
  bool TieneRetirados(const Abierta& abierta) const;
  void PonerAlDia(const Lugar& lugar, Abierta& abierta);
  void QuitarSueltos(Abierta& abierta);
  bool Retirado(const Asiento& asiento) const { return retirados_.contains(asiento.orden); }

  std::filesystem::path programa_;
  Diario& diario_;
  RegistroErrores& registro_;
  std::function<void()> aviso_;
  std::vector<Asiento> pendientes_;
  std::string falla_;
  std::map<Lugar, Abierta> abiertas_;
  std::set<std::uint64_t> retirados_;  // that a file may still hold
};

// "1 asiento", "2 asientos".
std::string CuantosAsientos(std::size_t cuantos);

}  // namespace utr
