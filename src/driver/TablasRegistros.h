#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "driver/Pagina.h"
#include "tables/Tabla.h"

// The tables of records that a driver gives, made from pages.
namespace utr::paginas {

// What a read asks for: moments in seconds from 01/01/1970, both ends included, and whether only what is pending.
struct Rango {
  std::int64_t desde = std::numeric_limits<std::int64_t>::min();
  std::int64_t hasta = std::numeric_limits<std::int64_t>::max();
  bool solo_pendiente = false;

  bool Contiene(std::int64_t momento, unsigned marcas) const {
    return momento >= desde && momento <= hasta && (!solo_pendiente || (marcas & marca::kPendiente) != 0);
  }
};

// The range of two date texts, ends included: a date without a time takes its whole day in, an empty text leaves that
// end open. Raises error 13 for a text that is no date.
Rango LeerRango(std::string_view desde, std::string_view hasta);

// Rows in the form of LeerDatos and LeerColaTx. A page gives, ahead of its samples, a marker row with its date; a page
// of the queue gives the date together with its first sample instead. A page without a date of its own gives a marker
// row with `fecha_ausente` in both cases.
class FilasMuestras {
 public:
  FilasMuestras();
  void Agregar(VistaPagina pagina, const Cabecera& cabecera, const Rango& rango, std::string_view fecha_ausente);
  TablaPtr Terminar();  // posted, on its first row

 private:
  void AgregarFila(const Muestra& muestra, const std::string& fecha);
  TablaPtr tabla_;
};

// Rows in the form of LeerEventos: a marker ahead of the events of each page.
class FilasSucesos {
 public:
  FilasSucesos();
  void Agregar(VistaPagina pagina, const Cabecera& cabecera, const Rango& rango, std::string_view fecha_ausente);
  void AgregarMarcador(std::string_view fecha);
  void AgregarFila(const Suceso& suceso);
  TablaPtr Terminar();

 private:
  TablaPtr tabla_;
};

// What is pending among events. The stream begins in the middle of a day: the events of its first day stand without a
// marker, and from then on every midnight up to `hoy` (a day number) has left one. Pages come oldest first.
class FilasPendientes {
 public:
  void Agregar(VistaPagina pagina, const Cabecera& cabecera);
  TablaPtr Terminar(std::int32_t hoy);

 private:
  void Marcar(std::int32_t dia);
  void Retroceder();

  FilasSucesos filas_;
  std::int32_t dia_ = -1;  // the day at hand; none yet
  bool marcado_ = false;
};

// One row per value of the frame of present values.
TablaPtr TablaInstantaneos(std::span<const std::int32_t> trama);

// What a page in a reply frame decodes to: Comunicador::DecodificarPagina and DecodificarPaginaCola.
TablaPtr DecodificarPagina(std::span<const std::uint8_t> respuesta, std::string_view descriptor,
                           std::string_view fecha);
TablaPtr DecodificarPaginaCola(std::span<const std::uint8_t> respuesta, std::string_view descriptor,
                               std::string_view fecha);

}  // namespace utr::paginas
