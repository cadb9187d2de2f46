#include "console/Codigos.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

#include "base/Texto.h"
#include "driver/ErroresDeEnlace.h"

namespace utr::consola {

namespace {

constexpr std::pair<std::int32_t, Codigo> kPorNumero[] = {
    {error::kArchivo, Codigo::kArchivo},
    {error::kPuertoEnUso, Codigo::kEnlace},
    {error_enlace::kPuertoInexistente, Codigo::kEnlace},
    {error_enlace::kLineaPerdida, Codigo::kEnlace},
    {error_enlace::kDireccionMuda, Codigo::kEnlace},
};

constexpr Codigo kPorFase[] = {Codigo::kArgumentos, Codigo::kEnlace, Codigo::kSinRespuesta, Codigo::kArchivo};

// What the operator can do something about; the log has the number of any other.
constexpr std::pair<int, const char*> kDelSistema[] = {
    {ENOSPC, "no queda lugar en el disco"},
    {EDQUOT, "no queda lugar para este usuario"},
    {EFBIG, "el archivo es demasiado grande"},
    {EACCES, "no hay permiso"},
    {EPERM, "no hay permiso"},
    {EROFS, "el disco es de sólo lectura"},
    {ENOENT, "no existe"},
    {ENOTDIR, "no existe"},
    {EISDIR, "es una carpeta"},
    {EPIPE, "quien la leía terminó"},
    {EBADF, "está cerrada"},
    {EIO, "el disco falla"},
};

}  // namespace

Codigo CodigoDe(const Error& falla, Fase fase) {
  const auto* conocido = std::find_if(std::begin(kPorNumero), std::end(kPorNumero),
                                      [&](const auto& uno) { return uno.first == falla.Numero(); });
  if (conocido != std::end(kPorNumero)) return conocido->second;
  // The work on files asks for a call that makes sense as whoever typed it does.
  if (falla.Numero() == error::kLlamada && fase == Fase::kArchivos) return Codigo::kArgumentos;
  return kPorFase[static_cast<std::size_t>(fase)];
}

std::string EnUnRenglon(const Error& falla) {
  std::string texto = Reemplazar(Reemplazar(falla.Descripcion(), "\r", ""), "\n", ". ");
  for (const auto& [numero, palabras] : kDelSistema) {
    if (numero == falla.ErrorDelSistema()) texto += std::string(": ") + palabras;
  }
  return texto;
}

}  // namespace utr::consola
