#include "retrieved/recovery/LectorFlash.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/Error.h"
#include "services/RegistroErrores.h"

namespace utr {
namespace {

constexpr const char* kOrigen = "Lectura de la memoria";
constexpr const char* kSinEnlace =
    "No se puede establecer la conexión con el equipo\nVerifique el conexionado y la configuración del puerto";

// Nothing is said of the time that is left before so many pages: the first ones tell little.
constexpr std::int64_t kPaginasParaEstimar = 16;

// Milliseconds of reading that a crash of the program may cost.
constexpr std::int64_t kEntreEntregas = 100;

bool Responde(Comunicador& comunicador) {
  bool responde = false;
  IgnorandoErrores([&] { responde = comunicador.LeerEstado() >= 0; });
  return responde;
}

std::string Duracion(std::int64_t segundos) {
  if (segundos < 60) return fmt::format("{} s", segundos);
  const std::int64_t minutos = (segundos + 59) / 60;
  return minutos < 60 ? fmt::format("{} min", minutos) : fmt::format("{} h {} min", minutos / 60, minutos % 60);
}

}  // namespace

double AvanceLectura::PorSegundo() const {
  return leidas == 0 || gastado == 0 ? 0 : static_cast<double>(leidas) * 1000 / static_cast<double>(gastado);
}

std::optional<std::int64_t> AvanceLectura::SegundosRestantes() const {
  if (leidas < std::min(kPaginasParaEstimar, leidas + por_leer)) return std::nullopt;
  return leidas == 0 ? 0 : por_leer * gastado / (leidas * 1000);
}

std::string EnPalabras(const AvanceLectura& avance) {
  std::string texto = fmt::format("{} de {} páginas", avance.pasadas, avance.total);
  if (const double ritmo = avance.PorSegundo(); ritmo > 0) texto += fmt::format(", {:.1f} por segundo", ritmo);
  if (const auto faltan = avance.SegundosRestantes())
    texto += fmt::format(", {} {}", avance.como_maximo ? "faltan como máximo" : "faltan", Duracion(*faltan));
  return texto + fmt::format(", {} {}", avance.reintentos, avance.reintentos == 1 ? "reintento" : "reintentos");
}

void ProbarEnlace(Comunicador& comunicador) {
  if (!Responde(comunicador)) throw Error(error::kSinRespuesta, kOrigen, kSinEnlace);
}

LectorFlash::LectorFlash(const ContextoLectura& contexto, const OpcionesLectura& opciones,
                         EscritorRecuperacion& archivo)
    : contexto_(contexto), opciones_(opciones), archivo_(archivo), plan_(PlanDeLectura(opciones.seleccion)) {
  Preparar();
}

// Marks the map and counts what lies ahead.
void LectorFlash::Preparar() {
  MarcarPlan(contexto_.mapa, opciones_.seleccion, opciones_.anterior);
  avance_.como_maximo = !opciones_.seleccion.completa;
  for (const PasoFlash& paso : plan_) {
    if (!paso.leer) continue;
    avance_.total += kPaginasPista;
    for (int pagina = 0; pagina < kPaginasPista; ++pagina)
      avance_.por_leer += SeTomaDelArchivo({paso.pista, pagina}) ? 0 : 1;
  }
}

bool LectorFlash::SeTomaDelArchivo(const LugarPagina& lugar) const {
  const LecturaAnterior* anterior = opciones_.anterior;
  if (anterior == nullptr || anterior->Texto(lugar) == nullptr) return false;
  const std::vector<LugarPagina>& fallidas = opciones_.reintentar;
  return fallidas.empty() ? !anterior->PuedeCambiar(lugar)
                          : !std::binary_search(fallidas.begin(), fallidas.end(), lugar);
}

void LectorFlash::Leer() {
  contexto_.progreso.Rango(avance_.total);
  for (std::size_t i = 0; i < plan_.size() && !cancelada_;) {
    const int pista = plan_[i].pista;
    const bool detenida = plan_[i].leer && LeerPista(pista);
    if (!plan_[i].leer) archivo_.FinDePista();
    const int ultima = detenida ? kGruposFlash[GrupoDePista(pista)].ultima : pista;
    while (i < plan_.size() && plan_[i].pista <= ultima) ++i;
    if (cancelada_ || !contexto_.progreso.Cancelado()) continue;
    Cancelar();
    GuardarResto({ultima + 1, 0}, kPistas - 1, false);
  }
  contexto_.progreso.Posicion(avance_.pasadas);
  nada_perdido_ = true;
}

// True: blank pages have ended the group.
bool LectorFlash::LeerPista(int pista) {
  contexto_.progreso.Texto(fmt::format("Pista:{}", pista));
  for (int pagina = 0; pagina < kPaginasPista; ++pagina) {
    const LugarPagina lugar{pista, pagina};
    const bool hay = Seguir(lugar) && ObtenerPagina(lugar);
    if (cancelada_) {
      GuardarResto(lugar, kPistas - 1);
      return false;
    }
    if (hay && Detiene()) {
      SaltearDesde(lugar);
      contexto_.progreso.Posicion(avance_.pasadas);
      GuardarResto(lugar, kGruposFlash[GrupoDePista(pista)].ultima);
      return true;
    }
    if (hay) archivo_.Pagina(lugar, texto_);
    ++avance_.pasadas;
  }
  archivo_.FinDePista();
  return false;
}

// Tells where the read is and lets events run; false when it is to end here.
bool LectorFlash::Seguir(const LugarPagina& lugar) {
  avance_.lugar = lugar;
  contexto_.progreso.Posicion(avance_.pasadas);
  if (contexto_.atender) contexto_.atender();
  if (!cancelada_ && contexto_.progreso.Cancelado()) Cancelar();
  return !cancelada_;
}

void LectorFlash::Cancelar() {
  cancelada_ = true;
  renglones_.emplace_back(kCancelada);
}

// Brings the text of a page, from the earlier file or from the unit; false when there is none.
bool LectorFlash::ObtenerPagina(const LugarPagina& lugar) {
  const std::string* anterior = opciones_.anterior == nullptr ? nullptr : opciones_.anterior->Texto(lugar);
  if (SeTomaDelArchivo(lugar)) {
    texto_ = *anterior;
    return true;
  }
  const std::int64_t antes = contexto_.reloj.Milisegundos();
  if (antes - entregado_ >= kEntreEntregas) {
    archivo_.Entregar();
    entregado_ = antes;
  }
  const bool hay = PedirPagina(lugar, anterior);
  avance_.gastado += contexto_.reloj.Milisegundos() - antes;
  ++avance_.leidas;
  --avance_.por_leer;
  if (!hay) VigilarEnlace();
  if (!hay && anterior != nullptr) texto_ = *anterior;
  return hay || anterior != nullptr;
}

// A page with data that is blank now was erased since: what was saved of it stands.
bool LectorFlash::PedirPagina(const LugarPagina& lugar, const std::string* anterior) {
  AlFallar([&] { texto_ = LeerConReintentos(contexto_.comunicador, lugar, avance_.reintentos); },
           [&] {
             if (opciones_.anterior == nullptr) return;
             GuardarResto(lugar, kPistas - 1);
             nada_perdido_ = true;
           });
  if (texto_.empty()) {
    Fallo(lugar, anterior != nullptr);
    return false;
  }
  fallas_seguidas_ = 0;
  const bool vacia = EsPaginaVacia(texto_);
  if (vacia && anterior != nullptr && !opciones_.anterior->EsVacia(lugar)) {
    texto_ = *anterior;
    return true;
  }
  contexto_.mapa.Poner(lugar, vacia ? EstadoPagina::kVacia : EstadoPagina::kDatos);
  return true;
}

void LectorFlash::Fallo(const LugarPagina& lugar, bool queda_la_anterior) {
  fallidas_.push_back(lugar);
  std::string renglon = fmt::format("No se puede leer la pagina: {}", lugar.pagina);
  contexto_.progreso.Descartado(fmt::format("Pista {}, página {}", lugar.pista, lugar.pagina), renglon);
  if (queda_la_anterior) renglon += " (queda la del archivo anterior)";
  renglones_.push_back(std::move(renglon));
  contexto_.mapa.Poner(lugar, EstadoPagina::kFallida);
  ++fallas_seguidas_;
}

void LectorFlash::VigilarEnlace() {
  if (fallas_seguidas_ < kFallasSeguidas) return;
  fallas_seguidas_ = 0;
  if (Responde(contexto_.comunicador)) return;
  if (!contexto_.seguir_sin_respuesta || !contexto_.seguir_sin_respuesta()) Cancelar();
}

// The page at hand is the blank one that ends its group.
bool LectorFlash::Detiene() {
  if (opciones_.seleccion.completa || !EsPaginaVacia(texto_) || ++vacias_ < kVaciasPorParada) return false;
  if (QuedaPorReintentar(avance_.lugar)) return false;
  vacias_ = 0;
  return true;
}

// A page that failed lies behind this one in its group.
bool LectorFlash::QuedaPorReintentar(const LugarPagina& lugar) const {
  const std::vector<LugarPagina>& fallidas = opciones_.reintentar;
  const auto siguiente = std::upper_bound(fallidas.begin(), fallidas.end(), lugar);
  return siguiente != fallidas.end() && GrupoDePista(siguiente->pista) == GrupoDePista(lugar.pista);
}

// The rest of the group isn't read; the page that stopped it counts as blank.
void LectorFlash::SaltearDesde(LugarPagina lugar) {
  const int ultima = kGruposFlash[GrupoDePista(lugar.pista)].ultima;
  bool primera = true;
  for (; lugar.pista <= ultima; ++lugar.pista, lugar.pagina = 0) {
    for (; lugar.pagina < kPaginasPista; ++lugar.pagina) {
      ++avance_.pasadas;
      if (!primera && !SeTomaDelArchivo(lugar)) --avance_.por_leer;
      if (!primera && contexto_.mapa.Estado(lugar) == EstadoPagina::kPendiente)
        contexto_.mapa.Poner(lugar, EstadoPagina::kSalteada);
      primera = false;
    }
  }
}

// Writes what the earlier file holds of the tracks up to `hasta_pista`, from a page on, and the end of every track that
// has pages, as well as that of the first one when it was begun.
void LectorFlash::GuardarResto(LugarPagina desde, int hasta_pista, bool pista_abierta) {
  for (; desde.pista <= hasta_pista; ++desde.pista, desde.pagina = 0) {
    bool con_paginas = std::exchange(pista_abierta, false);
    for (; opciones_.anterior != nullptr && desde.pagina < kPaginasPista; ++desde.pagina) {
      const std::string* texto = opciones_.anterior->Texto(desde);
      if (texto == nullptr) continue;
      archivo_.Pagina(desde, *texto);
      con_paginas = true;
    }
    if (con_paginas) archivo_.FinDePista();
  }
}

}  // namespace utr
