#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "driver/link/protocol/Imagenes.h"

namespace utr::simulada {

// What one session has staged of a table. It lives in memory alone, so that nothing of it outlives the unit's run.
class Borrador {
 public:
  // Whether that session may write now (`ahora` in milliseconds): nobody has a draft, the draft is its own, or the
  // other's is too old to count.
  bool Admite(std::uint32_t sesion, std::int64_t ahora) const;

  // Puts whole pieces from that one on, counted from 0. Another session's draft goes first. False, with nothing
  // changed: pieces beyond the largest image.
  bool Escribir(std::uint32_t sesion, std::int64_t ahora, std::size_t pieza, protocolo::VistaBytes datos);

  // The image, where it is that session's, whole, and what the order says; nothing otherwise.
  std::optional<protocolo::Bytes> Imagen(std::uint32_t sesion, std::int64_t ahora,
                                         const protocolo::Resumen& resumen) const;

  void Vaciar();

  // The same where it is that session's.
  void Soltar(std::uint32_t sesion) {
    if (sesion == sesion_) Vaciar();
  }

 private:
  bool Caduco(std::int64_t ahora) const { return ahora - escrito_ >= protocolo::kVidaDelBorrador; }

  std::uint32_t sesion_ = 0;  // 0: nobody's
  std::int64_t escrito_ = 0;  // milliseconds
  protocolo::Bytes bytes_;
  std::vector<bool> piezas_;
};

}  // namespace utr::simulada
