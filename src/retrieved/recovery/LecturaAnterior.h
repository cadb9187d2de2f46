#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/Reloj.h"
#include "driver/Comunicador.h"
#include "retrieved/recovery/MapaMemoria.h"
#include "retrieved/recovery/SeleccionFlash.h"

namespace utr {

// How often a page is asked for before it counts as one that can't be read.
inline constexpr int kIntentosPorPagina = 3;

// The pages that recovery files hold, for a read that goes on where another one stopped. Of a page that comes more than
// once the last line counts, but a blank one never takes the place of data.
class LecturaAnterior {
 public:
  // Raises kArchivo for a file that can't be read or is no recovery file.
  explicit LecturaAnterior(const std::filesystem::path& ruta);

  // Takes the pages of another file of the same unit too.
  void Agregar(const std::filesystem::path& ruta);

  // Nothing that the other file holds speaks against its being of the same reading: pages with data that both have are
  // equal, but for those that may have changed.
  bool Concuerda(const LecturaAnterior& otra) const;

  // The other file's pages with data are all here: equal, or with data of its own where it may have changed.
  bool Contiene(const LecturaAnterior& otra) const;

  // The page text; null: the files don't hold that page.
  const std::string* Texto(const LugarPagina& lugar) const;
  bool EsVacia(const LugarPagina& lugar) const { return vacias_[IndiceDePagina(lugar)]; }

  // A page that may have changed since, because the unit goes on recording: a blank one, and the last one with data of
  // its group.
  bool PuedeCambiar(const LugarPagina& lugar) const;

  // Some page of a group of kGruposFlash is there.
  bool Tiene(std::size_t grupo) const { return por_grupo_[grupo].paginas > 0; }

  // The selection with all groups that the files hold.
  SeleccionFlash Ampliar(SeleccionFlash seleccion) const;

  std::size_t Paginas() const noexcept { return paginas_; }
  std::uint64_t Danadas() const noexcept { return danadas_; }  // lines that were no whole page; their pages are lacking

  // Reads up to three pages with data again, far apart, and raises kArchivo when the unit holds none of them as they
  // are: another unit, or an erased memory. So does a unit of which none can be read. Files without data pass.
  void ComprobarEquipo(Comunicador& comunicador, const Atender& atender) const;

 private:
  struct PorGrupo {
    std::size_t paginas = 0;
    std::optional<LugarPagina> ultima;  // with data
  };

  void Tomar(const LugarPagina& lugar, std::string_view texto);
  std::vector<LugarPagina> Testigos() const;

  std::vector<std::string> textos_;
  std::vector<bool> vacias_;
  std::array<PorGrupo, kGruposFlash.size()> por_grupo_;
  std::size_t paginas_ = 0;
  std::uint64_t danadas_ = 0;
};

// Marks what a read is going to ask for, what it leaves out, and what an earlier file holds (null: there is none).
void MarcarPlan(MapaMemoria& mapa, const SeleccionFlash& seleccion, const LecturaAnterior* anterior);

// The text of a page of the unit: up to kIntentosPorPagina tries until one can stand in a file. Empty: none could.
// `reintentos` counts the tries behind the first. Raises what the driver raises.
std::string LeerConReintentos(Comunicador& comunicador, const LugarPagina& lugar, std::int64_t& reintentos);

}  // namespace utr
