#include "retrieved/recovery/LecturaAnterior.h"

#include <algorithm>

#include "base/Error.h"
#include "retrieved/recovery/EscritorRecuperacion.h"
#include "retrieved/recovery/LectorRecuperacion.h"

namespace utr {
namespace {

constexpr const char* kOrigen = "Lectura de la memoria";
constexpr int kTestigos = 3;

// Where the pages that are compared stand among those with data, in parts of kPartes: the first three, and where one
// of them can't be read the next.
constexpr std::size_t kPartes = 12;
constexpr std::size_t kLugares[] = {2, 6, 10, 4, 8, 1, 11, 3, 9};

constexpr const char* kOtroEquipo =
    "Ninguna de las páginas que se comprobaron es igual en el equipo y en el archivo.\n"
    "El archivo es de otro equipo, o la memoria del equipo fue borrada";
constexpr const char* kTodoCambio =
    "Ninguna de las páginas que se comprobaron es igual en el equipo y en el archivo.\n"
    "El archivo es de otro equipo, o sus pocas páginas cambiaron desde entonces. Lea a un archivo nuevo";
constexpr const char* kIlegible =
    "No se pudo leer del equipo ninguna de las páginas con las que se comprueba que el archivo es suyo";

}  // namespace

std::string LeerConReintentos(Comunicador& comunicador, const LugarPagina& lugar, std::int64_t& reintentos) {
  for (int intento = 0; intento < kIntentosPorPagina; ++intento) {
    if (intento > 0) ++reintentos;
    std::string texto =
        comunicador.LeerPaginaFlash(static_cast<std::int16_t>(lugar.pista), static_cast<std::int16_t>(lugar.pagina));
    if (EscritorRecuperacion::Admite(texto)) return texto;
  }
  return {};
}

void MarcarPlan(MapaMemoria& mapa, const SeleccionFlash& seleccion, const LecturaAnterior* anterior) {
  for (int indice = 0; indice < kPaginasFlash; ++indice) {
    const LugarPagina lugar{indice / kPaginasPista, indice % kPaginasPista};
    const bool leer = seleccion.Elige(GrupoDePista(lugar.pista));
    const bool esta = anterior != nullptr && anterior->Texto(lugar) != nullptr;
    mapa.Poner(lugar, esta ? EstadoPagina::kAnterior : leer ? EstadoPagina::kPendiente : EstadoPagina::kSalteada);
  }
}

LecturaAnterior::LecturaAnterior(const std::filesystem::path& ruta) : textos_(kPaginasFlash), vacias_(kPaginasFlash) {
  Agregar(ruta);
}

void LecturaAnterior::Agregar(const std::filesystem::path& ruta) {
  LectorRecuperacion lector(ruta);
  bool es_suyo = false;
  while (const LineaRecuperacion* linea = lector.Siguiente()) {
    switch (linea->clase) {
      case ClaseLinea::kPagina:
        es_suyo = true;
        Tomar({linea->pista, linea->pagina}, linea->texto);
        break;
      case ClaseLinea::kEncabezado:
      case ClaseLinea::kFinDePista:
        es_suyo = true;
        break;
      case ClaseLinea::kDanada:
      case ClaseLinea::kCortada:
        ++danadas_;
        break;
      default:
        break;
    }
  }
  if (!es_suyo || lector.EsAjeno())
    throw Error(error::kArchivo, kOrigen, "El archivo no es un archivo de recuperación: " + ruta.string());
}

void LecturaAnterior::Tomar(const LugarPagina& lugar, std::string_view texto) {
  const std::size_t indice = IndiceDePagina(lugar);
  const bool vacia = EsPaginaVacia(texto);
  const bool estaba = !textos_[indice].empty();
  if (estaba && vacia && !vacias_[indice]) return;
  textos_[indice] = texto;
  vacias_[indice] = vacia;
  PorGrupo& grupo = por_grupo_[GrupoDePista(lugar.pista)];
  if (!estaba) {
    ++paginas_;
    ++grupo.paginas;
  }
  if (!vacia && (!grupo.ultima || *grupo.ultima < lugar)) grupo.ultima = lugar;
}

bool LecturaAnterior::Concuerda(const LecturaAnterior& otra) const {
  for (int indice = 0; indice < kPaginasFlash; ++indice) {
    const LugarPagina lugar{indice / kPaginasPista, indice % kPaginasPista};
    const bool ambas = Texto(lugar) != nullptr && otra.Texto(lugar) != nullptr;
    if (!ambas || PuedeCambiar(lugar) || otra.EsVacia(lugar)) continue;
    if (*Texto(lugar) != *otra.Texto(lugar)) return false;
  }
  return true;
}

bool LecturaAnterior::Contiene(const LecturaAnterior& otra) const {
  for (int indice = 0; indice < kPaginasFlash; ++indice) {
    const LugarPagina lugar{indice / kPaginasPista, indice % kPaginasPista};
    if (otra.Texto(lugar) == nullptr || otra.EsVacia(lugar)) continue;
    if (Texto(lugar) == nullptr || EsVacia(lugar)) return false;
    if (!otra.PuedeCambiar(lugar) && *Texto(lugar) != *otra.Texto(lugar)) return false;
  }
  return true;
}

const std::string* LecturaAnterior::Texto(const LugarPagina& lugar) const {
  const std::string& texto = textos_[IndiceDePagina(lugar)];
  return texto.empty() ? nullptr : &texto;
}

bool LecturaAnterior::PuedeCambiar(const LugarPagina& lugar) const {
  return EsVacia(lugar) || por_grupo_[GrupoDePista(lugar.pista)].ultima == lugar;
}

SeleccionFlash LecturaAnterior::Ampliar(SeleccionFlash seleccion) const {
  for (std::size_t grupo = 0; grupo < kGrupoCola; ++grupo) {
    seleccion.datos = seleccion.datos || Tiene(grupo);
    seleccion.pilas[grupo] = seleccion.pilas[grupo] || Tiene(grupo);
  }
  seleccion.cola = seleccion.cola || Tiene(kGrupoCola);
  seleccion.eventos = seleccion.eventos || Tiene(kGrupoEventos);
  return seleccion;
}

// Pages with data that a unit at work doesn't write to any more; where there are none, any.
std::vector<LugarPagina> LecturaAnterior::Testigos() const {
  std::vector<LugarPagina> firmes;
  std::vector<LugarPagina> otras;
  for (int indice = 0; indice < kPaginasFlash; ++indice) {
    const LugarPagina lugar{indice / kPaginasPista, indice % kPaginasPista};
    if (Texto(lugar) != nullptr && !EsVacia(lugar)) (PuedeCambiar(lugar) ? otras : firmes).push_back(lugar);
  }
  const std::vector<LugarPagina>& todas = firmes.empty() ? otras : firmes;
  std::vector<LugarPagina> testigos;
  for (const std::size_t parte : kLugares) {
    if (todas.empty()) break;
    const LugarPagina& lugar = todas[parte * todas.size() / kPartes];
    if (std::find(testigos.begin(), testigos.end(), lugar) == testigos.end()) testigos.push_back(lugar);
  }
  return testigos;
}

void LecturaAnterior::ComprobarEquipo(Comunicador& comunicador, const Atender& atender) const {
  const std::vector<LugarPagina> testigos = Testigos();
  if (testigos.empty()) return;
  int leidas = 0;
  std::int64_t reintentos = 0;
  for (const LugarPagina& lugar : testigos) {
    if (atender) atender();
    const std::string texto = LeerConReintentos(comunicador, lugar, reintentos);
    if (texto == *Texto(lugar)) return;
    leidas += texto.empty() ? 0 : 1;
    if (leidas == kTestigos) break;
  }
  const char* motivo = PuedeCambiar(testigos.front()) ? kTodoCambio : kOtroEquipo;
  throw Error(error::kArchivo, kOrigen, leidas > 0 ? motivo : kIlegible);
}

}  // namespace utr
