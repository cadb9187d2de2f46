#include "driver/TablasRegistros.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <vector>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/Dias.h"

namespace utr::paginas {

namespace {

// Fields of the two tables, by position.
enum CampoMuestra : std::size_t { kFecha, kHora, kCanal, kValor, kMaximo, kMinimo, kValidacion, kColaTX };
enum CampoSuceso : std::size_t { kCodigo = 2, kValor1, kValor2 };

TablaPtr NuevaTabla(std::initializer_list<std::pair<const char*, unsigned>> campos) {
  auto tabla = std::make_shared<Tabla>();
  for (const auto& [nombre, tamano] : campos) tabla->Append(nombre, TipoCampo::kVarChar, tamano);
  tabla->Open();
  return tabla;
}

void PonerNumero(Tabla& tabla, std::size_t campo, std::int32_t numero) {
  char texto[12];
  const char* fin = std::to_chars(texto, texto + sizeof texto, numero).ptr;
  tabla.Set(campo, std::string_view{texto, fin});
}

// By hand: this runs for every record of a decoded page, and a formatting library costs a fifth of the whole there.
void PonerDosCifras(char* lugar, unsigned numero) {
  lugar[0] = static_cast<char>('0' + numero / 10 % 10);
  lugar[1] = static_cast<char>('0' + numero % 10);
}

void PonerHora(Tabla& tabla, unsigned segundo) {
  char texto[] = "00:00:00";
  PonerDosCifras(texto, segundo / 3600);
  PonerDosCifras(texto + 3, segundo / 60 % 60);
  PonerDosCifras(texto + 6, segundo % 60);
  tabla.Set(kHora, std::string_view{texto, 8});
}

TablaPtr Terminada(TablaPtr tabla) {
  tabla->UpdateBatch();
  if (tabla->RecordCount() > 0) tabla->MoveFirst();
  return tabla;
}

std::int64_t MomentoDe(std::string_view texto, bool hasta) {
  const FechaHora fecha = ConvertirAFecha(texto);
  const bool dia_entero = hasta && texto.find(':') == std::string_view::npos;
  return Segundos(fecha) + (dia_entero ? kSegundosDia - 1 : 0);
}

// Midnight of a page's day; a page without one lies in every range.
std::int64_t MedianocheDe(const Cabecera& cabecera) {
  return cabecera.dia == kDiaAusente ? 0 : SegundosDeDia(cabecera.dia);
}

bool EnRango(const Cabecera& cabecera, const Rango& rango, std::int64_t momento, unsigned marcas) {
  if (cabecera.dia == kDiaAusente) return !rango.solo_pendiente || (marcas & marca::kPendiente) != 0;
  return rango.Contiene(momento, marcas);
}

constexpr std::size_t kEncabezadoRespuesta = 13;  // bytes of a reply frame ahead of the page

// Five numbers joined by "#"; what they say beyond their form the pages say themselves.
bool EsDescriptor(std::string_view descriptor) {
  const auto partes = Separar(descriptor, '#');
  return partes.size() == 5 && std::all_of(partes.begin(), partes.end(), EsNumerico);
}

// The page inside a reply frame and its header, where the frame holds a whole page.
std::optional<std::pair<VistaPagina, Cabecera>> PaginaDeRespuesta(std::span<const std::uint8_t> respuesta,
                                                                  std::string_view descriptor) {
  if (respuesta.size() < kEncabezadoRespuesta + kBytesPagina || !EsDescriptor(descriptor)) return std::nullopt;
  const VistaPagina pagina{respuesta.data() + kEncabezadoRespuesta, kBytesPagina};
  const auto cabecera = LeerCabecera(pagina);
  if (!cabecera) return std::nullopt;
  return std::pair{pagina, *cabecera};
}

}  // namespace

Rango LeerRango(std::string_view desde, std::string_view hasta) {
  Rango rango;
  if (!desde.empty()) rango.desde = MomentoDe(desde, false);
  if (!hasta.empty()) rango.hasta = MomentoDe(hasta, true);
  return rango;
}

FilasMuestras::FilasMuestras()
    : tabla_(NuevaTabla({{"Fecha", 20},
                         {"Hora", 15},
                         {"Canal", 10},
                         {"Valor", 50},
                         {"Maximo", 50},
                         {"Minimo", 50},
                         {"Validacion", 3},
                         {"ColaTX", 3}})) {}

void FilasMuestras::Agregar(VistaPagina pagina, const Cabecera& cabecera, const Rango& rango,
                            std::string_view fecha_ausente) {
  const std::int64_t medianoche = MedianocheDe(cabecera);
  const bool fecha_propia = cabecera.dia != kDiaAusente;
  const bool fecha_en_muestra = fecha_propia && cabecera.contenido == Contenido::kCola;
  std::string fecha = fecha_propia ? FechaDeDia(cabecera.dia) : std::string{fecha_ausente};
  for (unsigned i = 0; i < cabecera.cuenta; ++i) {
    const Muestra muestra = LeerMuestra(pagina, cabecera, i);
    if (!EnRango(cabecera, rango, medianoche + muestra.minuto * 60, muestra.marcas)) continue;
    if (!fecha.empty() && !fecha_en_muestra) {
      tabla_->AddNew();
      tabla_->Set(kFecha, fecha);
      fecha.clear();
    }
    AgregarFila(muestra, fecha);
    fecha.clear();
  }
}

void FilasMuestras::AgregarFila(const Muestra& muestra, const std::string& fecha) {
  Tabla& tabla = *tabla_;
  tabla.AddNew();
  if (!fecha.empty()) tabla.Set(kFecha, fecha);
  PonerHora(tabla, muestra.minuto * 60U);
  PonerNumero(tabla, kCanal, muestra.canal);
  if ((muestra.marcas & marca::kSinValor) == 0) {
    PonerNumero(tabla, kValor, muestra.valor);
    if ((muestra.marcas & marca::kSinExtremos) == 0) {
      PonerNumero(tabla, kMaximo, muestra.maximo);
      PonerNumero(tabla, kMinimo, muestra.minimo);
    }
  }
  tabla.Set(kValidacion, (muestra.marcas & marca::kValidado) != 0 ? "1" : "0");
  tabla.Set(kColaTX, (muestra.marcas & marca::kEnCola) != 0 ? "1" : "0");
}

TablaPtr FilasMuestras::Terminar() {
  return Terminada(std::move(tabla_));
}

FilasSucesos::FilasSucesos()
    : tabla_(NuevaTabla({{"Fecha", 20}, {"Hora", 15}, {"Codigo", 50}, {"Valor1", 50}, {"Valor2", 50}})) {}

void FilasSucesos::Agregar(VistaPagina pagina, const Cabecera& cabecera, const Rango& rango,
                           std::string_view fecha_ausente) {
  const std::int64_t medianoche = MedianocheDe(cabecera);
  bool marcador = false;
  for (unsigned i = 0; i < cabecera.cuenta; ++i) {
    const Suceso suceso = LeerSuceso(pagina, i);
    if (!EnRango(cabecera, rango, medianoche + suceso.segundo, suceso.marcas)) continue;
    if (!marcador) {
      AgregarMarcador(cabecera.dia == kDiaAusente ? std::string{fecha_ausente} : FechaDeDia(cabecera.dia));
    }
    marcador = true;
    AgregarFila(suceso);
  }
}

void FilasSucesos::AgregarMarcador(std::string_view fecha) {
  tabla_->AddNew();
  tabla_->Set(kFecha, fecha);
}

void FilasSucesos::AgregarFila(const Suceso& suceso) {
  tabla_->AddNew();
  PonerHora(*tabla_, suceso.segundo);
  PonerNumero(*tabla_, kCodigo, suceso.codigo);
  if ((suceso.marcas & marca::kSinValor) != 0) return;
  PonerNumero(*tabla_, kValor1, suceso.valor1);
  PonerNumero(*tabla_, kValor2, suceso.valor2);
}

TablaPtr FilasSucesos::Terminar() {
  return Terminada(std::move(tabla_));
}

void FilasPendientes::Marcar(std::int32_t dia) {
  dia_ = dia;
  filas_.AgregarMarcador(FechaDeDia(dia));
  marcado_ = true;
}

// Of a clock that was put back: events without a marker belong to the day before the first one.
void FilasPendientes::Retroceder() {
  if (!marcado_) Marcar(dia_ + 1);
}

void FilasPendientes::Agregar(VistaPagina pagina, const Cabecera& cabecera) {
  for (unsigned i = 0; i < cabecera.cuenta; ++i) {
    const Suceso suceso = LeerSuceso(pagina, i);
    if ((suceso.marcas & marca::kPendiente) == 0) continue;
    if (dia_ < 0) dia_ = cabecera.dia;
    while (dia_ < cabecera.dia) Marcar(dia_ + 1);
    if (dia_ > cabecera.dia) {
      Retroceder();
      Marcar(cabecera.dia);
    }
    filas_.AgregarFila(suceso);
  }
}

TablaPtr FilasPendientes::Terminar(std::int32_t hoy) {
  while (dia_ >= 0 && dia_ < hoy) Marcar(dia_ + 1);
  if (dia_ >= 0 && dia_ > hoy) Retroceder();
  return filas_.Terminar();
}

TablaPtr TablaInstantaneos(std::span<const std::int32_t> trama) {
  TablaPtr tabla = NuevaTabla({{"Valor", 50}});
  for (const std::int32_t valor : trama) {
    tabla->AddNew();
    PonerNumero(*tabla, 0, valor);
  }
  return Terminada(std::move(tabla));
}

TablaPtr DecodificarPagina(std::span<const std::uint8_t> respuesta, std::string_view descriptor,
                           std::string_view fecha) {
  const auto hallada = PaginaDeRespuesta(respuesta, descriptor);
  if (!hallada || hallada->second.contenido == Contenido::kCola) return nullptr;
  if (hallada->second.contenido == Contenido::kEventos) {
    FilasSucesos filas;
    filas.Agregar(hallada->first, hallada->second, Rango{}, fecha);
    return filas.Terminar();
  }
  FilasMuestras filas;
  filas.Agregar(hallada->first, hallada->second, Rango{}, fecha);
  return filas.Terminar();
}

TablaPtr DecodificarPaginaCola(std::span<const std::uint8_t> respuesta, std::string_view descriptor,
                               std::string_view fecha) {
  const auto hallada = PaginaDeRespuesta(respuesta, descriptor);
  if (!hallada || hallada->second.contenido != Contenido::kCola) return nullptr;
  FilasMuestras filas;
  filas.Agregar(hallada->first, hallada->second, Rango{}, fecha);
  return filas.Terminar();
}

}  // namespace utr::paginas
