#pragma once

#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "driver/Pagina.h"
#include "driver/link/client/UnidadRemota.h"

namespace utr::enlace {

enum class CualMemoria : std::uint8_t { kFlash, kCartucho };

// A page of a memory: its track, and its place in the track.
struct LugarEnMemoria {
  int pista = 0;
  int pagina = 0;
};

// The 64 bytes of each page, three at most; nothing in place of one that the unit refuses. Three that are refused
// together are asked for one by one. Where a ring is given its head comes with the pages, of the same moment; nothing
// of it when anything was refused.
using PaginaLeida = std::optional<Bytes>;
struct AnilloAlLado {
  std::size_t anillo = 0;
  std::optional<protocolo::Cabezal> cabezal{};
};
std::vector<PaginaLeida> LeerPaginas(UnidadRemota& unidad, CualMemoria memoria,
                                     const std::vector<LugarEnMemoria>& lugares, AnilloAlLado* al_lado = nullptr);

// The days that are wanted of a ring, both included, as day numbers; an end that isn't there is open. With
// `solo_pendiente` the pages from the oldest one with something pending on.
struct DiasPedidos {
  std::optional<std::int32_t> desde;
  std::optional<std::int32_t> hasta;
  bool solo_pendiente = false;
};

// A read of the pages of one ring, the oldest first, as the ring stands at its end: what was overwritten, erased or
// begun meanwhile is seen in the head of the ring, which comes again with the pages.
class LecturaDeAnillo {
 public:
  LecturaDeAnillo(UnidadRemota& unidad, CualMemoria memoria, std::size_t anillo)
      : unidad_(unidad), memoria_(memoria), anillo_(anillo), ahora_{anillo} {}

  // Hands over the whole pages that may hold what is wanted: all of those days, and some beside them. `cabezal` was
  // read just now. Raises kCambiante for a memory that changes too much meanwhile, kPaginaNegada for a page of them
  // that the unit refuses.
  using Visita = std::function<void(paginas::VistaPagina, const paginas::Cabecera&)>;
  void Leer(const protocolo::Cabezal& cabezal, const DiasPedidos& dias, const Visita& visita);

 private:
  // A page that was read, and its header where it is whole.
  struct Tomada {
    Bytes bytes;
    std::optional<paginas::Cabecera> cabecera;

    std::optional<std::int32_t> Dia() const;
  };

  std::uint32_t Cuantas() const;
  LugarEnMemoria LugarDe(std::uint32_t edad) const;
  std::uint32_t EdadDe(std::uint16_t lugar) const;
  const Tomada& Tomar(std::uint32_t edad);
  std::vector<std::optional<std::int32_t>> LeerDias(const std::vector<std::uint32_t>& edades);
  std::uint32_t Buscar(std::int32_t dia);
  void LeerRango(const DiasPedidos& dias);
  protocolo::Cabezal Ahora();
  bool PonerAlDia(const protocolo::Cabezal& ahora);

  UnidadRemota& unidad_;
  CualMemoria memoria_;
  std::size_t anillo_;
  protocolo::Cabezal cabezal_;
  AnilloAlLado ahora_;                       // with the pages that were read last
  std::optional<std::uint32_t> primera_;     // age of the first page that may hold what is wanted; not looked for yet
  std::map<std::uint32_t, Tomada> tomadas_;  // by age: 0 is the oldest page of the ring
};

// The heads of the rings of a memory; nothing: the unit doesn't have it.
std::optional<protocolo::Cabezales> LeerCabezalesDe(UnidadRemota& unidad, CualMemoria memoria);

// The heads in their registers. Raises kOtraVersion for what can't be heads.
protocolo::Cabezales CabezalesDe(std::span<const std::uint16_t> registros);

}  // namespace utr::enlace
