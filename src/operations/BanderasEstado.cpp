#include "operations/BanderasEstado.h"

namespace utr {

const std::array<BanderaEstado, kBanderas> kBanderasEstado{{{7, "ErrorFlash", 0x4000},
                                                            {6, "EvCond(Rd Only)", 0x0200},
                                                            {5, "TxHora", 0x0040},
                                                            {4, "TxEvent", 0x0100},
                                                            {3, "TxWindows", 0x0080},
                                                            {2, "TxOblig", 0x0020},
                                                            {1, "UpDateEv(Wr Only)", 0},
                                                            {0, "UpDateTx(Wr Only)", 0}}};

Banderas BanderasDe(std::int32_t estado) {
  Banderas banderas{};
  for (const BanderaEstado& bandera : kBanderasEstado) banderas[bandera.casilla] = (estado & bandera.leida) != 0;
  return banderas;
}

std::int16_t ValorDe(const Banderas& banderas) {
  unsigned valor = 0;
  for (std::size_t casilla = 0; casilla < kBanderas; ++casilla) valor |= banderas[casilla] ? 1U << casilla : 0U;
  return static_cast<std::int16_t>(valor);
}

std::string TextoDeBanderas(const Banderas& banderas) {
  std::string texto;
  for (const BanderaEstado& bandera : kBanderasEstado) {
    if (!banderas[bandera.casilla]) continue;
    if (!texto.empty()) texto += ", ";
    texto += bandera.rotulo;
  }
  return texto.empty() ? "ninguna" : texto;
}

}  // namespace utr
