#include "retrieved/recovery/RecorridoRecuperacion.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr {

namespace {

constexpr std::size_t kLugarDePagina = 13;
constexpr int kPrimeraPistaCola = kGruposFlash[kGrupoCola].primera;
constexpr int kPrimeraPistaEventos = kGruposFlash[kGrupoEventos].primera;
constexpr std::size_t kBytesDePagina = 64;
constexpr const char* kFechaDeReferencia = "01/01/2001";
constexpr const char* kRestoDelDescriptor = "#0#1024#0#64";
constexpr std::size_t kLineasNombradas = 500;  // of each kind, in the report

struct FinDeClase {
  ClaseLinea clase;
  FinLinea fin;
};
constexpr FinDeClase kFinesDeClase[] = {
    {ClaseLinea::kEncabezado, FinLinea::kEncabezado}, {ClaseLinea::kFinDePista, FinLinea::kFinDePista},
    {ClaseLinea::kVacia, FinLinea::kVacia},           {ClaseLinea::kCorta, FinLinea::kCorta},
    {ClaseLinea::kDanada, FinLinea::kDanada},         {ClaseLinea::kCortada, FinLinea::kCortada},
};

ClaseFlujo FlujoDePista(int pista) {
  if (pista < kPrimeraPistaCola) return ClaseFlujo::kDatos;
  return pista < kPrimeraPistaEventos ? ClaseFlujo::kCola : ClaseFlujo::kEventos;
}

std::vector<TramoPaginas> Tramos(const std::vector<bool>& paginas) {
  std::vector<TramoPaginas> tramos;
  for (int pista = 0; pista < kPistas; ++pista) {
    for (int pagina = 0; pagina < kPaginasPista; ++pagina) {
      if (!paginas[IndiceDePagina({pista, pagina})]) continue;
      if (!tramos.empty() && tramos.back().pista == pista && tramos.back().hasta == pagina - 1) {
        tramos.back().hasta = pagina;
      } else {
        tramos.push_back({pista, pagina, pagina});
      }
    }
  }
  return tramos;
}

// What is known of a page from another line or file isn't made worse by this one.
int Peso(EstadoPagina estado) {
  constexpr EstadoPagina kOrden[] = {EstadoPagina::kPendiente, EstadoPagina::kDaniada, EstadoPagina::kSinCanal,
                                     EstadoPagina::kVacia, EstadoPagina::kDatos};
  return static_cast<int>(std::find(std::begin(kOrden), std::end(kOrden), estado) - std::begin(kOrden));
}

bool TieneDatos(const LineaRecuperacion& linea) {
  const auto bytes = linea.Bytes().first(std::min(linea.cuantos, kBytesDePagina));
  return std::any_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte != 255; });
}

}  // namespace

RecorridoRecuperacion::RecorridoRecuperacion(const ListasPilas& listas, Comunicador& comunicador, MapaMemoria* mapa)
    : comunicador_(comunicador),
      mapa_(mapa),
      flujos_{FlujoDecodificado(ClaseFlujo::kDatos, textos_), FlujoDecodificado(ClaseFlujo::kCola, textos_),
              FlujoDecodificado(ClaseFlujo::kEventos, textos_)} {
  for (int pila = 0; pila < static_cast<int>(kGrupoCola); ++pila) {
    const auto lugar = static_cast<std::size_t>(pila);
    configuradas_[lugar] = EstaPilaConfigurada(3 * pila, listas.pilas);
    indices_[lugar] = IndicePila(3 * pila, listas.pilas);
  }
  for (const std::string_view canal : Separar(listas.canales, ',')) {
    descriptores_.push_back(std::string(canal) + kRestoDelDescriptor);
    pedidos_.push_back(static_cast<std::int16_t>(Val(canal) + 1));
  }
}

void RecorridoRecuperacion::Recorrer(const std::filesystem::path& ruta, const TamanoRecuperacion& tamano,
                                     Progreso& progreso, const Atender& atender) {
  bufer_.fill(0);
  indice_ = 0;
  anotada_ = -1;
  for (Paginas* paginas : {&blancas_con_datos_, &sin_canal_, &sin_tabla_, &tomadas_})
    paginas->assign(kPaginasFlash, false);
  for (FlujoDecodificado& flujo : flujos_) flujo.lector.OlvidarFecha();
  InformeArchivo& informe = archivos_.emplace_back();
  informe.ruta = ruta;
  informe.bytes = tamano.bytes;
  informe.lineas = tamano.lineas;
  LectorRecuperacion lector(ruta);
  while (const LineaRecuperacion* linea = lector.Siguiente()) {
    ++informe.fines[Tomar(*linea, progreso)];
    progreso.Posicion(static_cast<std::int64_t>(++hechas_));
    if (atender) atender();
  }
  if (lector.EsAjeno()) {
    const std::string dano = lector.PrimerDano();
    throw Error(error::kArchivo, "ProcesandoDatos",
                ruta.filename().string() + " no es un archivo de recuperación: ninguna de sus líneas es una página" +
                    (dano.empty() ? "" : " (" + dano + ")"));
  }
  informe.blancas_con_datos = Tramos(blancas_con_datos_);
  informe.sin_canal = Tramos(sin_canal_);
  informe.sin_tabla = Tramos(sin_tabla_);
  informe.tomadas = Tramos(tomadas_);
}

FinLinea RecorridoRecuperacion::Tomar(const LineaRecuperacion& linea, Progreso& progreso) {
  if (linea.clase == ClaseLinea::kPagina) {
    progreso.Texto(fmt::format("Procesando... (Track:{} Pagina:{})", linea.pista, linea.pagina));
    return TomarPagina(linea);
  }
  InformeArchivo& informe = archivos_.back();
  if (linea.clase == ClaseLinea::kDanada) Nombrar(informe.danadas, linea, std::string(EnPalabras(linea.dano)));
  if (linea.clase == ClaseLinea::kCortada) Nombrar(informe.danadas, linea, "está cortada: el archivo termina en ella");
  if (linea.clase == ClaseLinea::kCorta) Nombrar(informe.danadas, linea, "es corta y no es de las conocidas");
  if (linea.con_lugar) Marcar({linea.pista, linea.pagina}, EstadoPagina::kDaniada);
  return std::find_if(std::begin(kFinesDeClase), std::end(kFinesDeClase),
                      [&](const FinDeClase& par) { return par.clase == linea.clase; })
      ->fin;
}

// The buffer takes every page, also one that goes no further; what a short one leaves there is of the page before.
FinLinea RecorridoRecuperacion::TomarPagina(const LineaRecuperacion& linea) {
  const LugarPagina lugar{linea.pista, linea.pagina};
  std::copy(linea.Bytes().begin(), linea.Bytes().end(), bufer_.begin() + kLugarDePagina);
  if (linea.EsBlanca()) {
    if (TieneDatos(linea)) blancas_con_datos_[IndiceDePagina(lugar)] = true;
    Marcar(lugar, EstadoPagina::kVacia);
    return FinLinea::kBlanca;
  }
  Ubicar(linea.pista);
  if (linea.pista < kPrimeraPistaCola && !configuradas_[GrupoDePista(linea.pista)]) {
    sin_canal_[IndiceDePagina(lugar)] = true;
    Marcar(lugar, EstadoPagina::kSinCanal);
    return FinLinea::kSinCanal;
  }
  return copias_.Anotar(lugar, linea.Bytes()) ? Decodificar(linea) : FinLinea::kRepetida;
}

// The index changes at the first track of a stack alone, and not at track 0: a stack whose first track left no page
// goes on with the index before it. The pages themselves say of which channel they are.
void RecorridoRecuperacion::Ubicar(int pista) {
  if (pista >= kPrimeraPistaCola || pista == anotada_) return;
  anotada_ = pista;
  const std::size_t pila = GrupoDePista(pista);
  if (pista > 0 && pista % 3 == 0 && configuradas_[pila]) indice_ = static_cast<std::size_t>(indices_[pila]);
}

FinLinea RecorridoRecuperacion::Decodificar(const LineaRecuperacion& linea) {
  const LugarPagina lugar{linea.pista, linea.pagina};
  if (linea.cuantos < kBytesDePagina) {
    ++archivos_.back().cuantas_incompletas;
    Nombrar(archivos_.back().incompletas, linea,
            fmt::format("pista {}, página {}: trae {} bytes", linea.pista, linea.pagina, linea.cuantos));
  }
  const TablaPtr tabla = Llamar(lugar);
  const bool tomada =
      tabla && tabla->Abierta() && tabla->RecordCount() > 0 && TomarFilas(FlujoDePista(linea.pista), *tabla, lugar);
  (tomada ? tomadas_ : sin_tabla_)[IndiceDePagina(lugar)] = true;
  Marcar(lugar, tomada ? EstadoPagina::kDatos : EstadoPagina::kDaniada);
  return tomada ? FinLinea::kDatos : FinLinea::kSinTabla;
}

TablaPtr RecorridoRecuperacion::Llamar(const LugarPagina& lugar) {
  switch (FlujoDePista(lugar.pista)) {
    case ClaseFlujo::kDatos:
      return comunicador_.DecodificarPagina(bufer_, descriptores_[indice_], kFechaDeReferencia);
    case ClaseFlujo::kCola:
      return comunicador_.DecodificarPaginaCola(bufer_, fmt::format("1#{}#1024#0#64", lugar.pagina),
                                                kFechaDeReferencia);
    case ClaseFlujo::kEventos:
      break;
  }
  return comunicador_.DecodificarPagina(bufer_, "1#0#1024#0#64", kFechaDeReferencia);
}

// False: the rows aren't of the kind that belongs on the track.
bool RecorridoRecuperacion::TomarFilas(ClaseFlujo clase, const Tabla& tabla, const LugarPagina& lugar) {
  FlujoDecodificado& flujo = flujos_[static_cast<std::size_t>(clase)];
  filas_.clear();
  if (!flujo.lector.Leer(tabla, filas_)) return false;
  flujo.hubo = true;
  // Most pages are of one channel.
  std::uint32_t texto = 0;
  CuentaRegistros* cuenta = nullptr;
  const auto cuenta_de = [&](const FilaCruda& fila) -> CuentaRegistros& {
    const std::uint32_t suyo = clase == ClaseFlujo::kDatos ? fila[kCanalCrudo] : 0;
    if (cuenta != nullptr && suyo == texto) return *cuenta;
    texto = suyo;
    const std::int16_t canal = clase == ClaseFlujo::kDatos ? CanalDe(fila) : std::int16_t{0};
    return *(cuenta = &cuentas_[static_cast<std::size_t>(clase)][canal]);
  };
  for (const FilaCruda& fila : filas_) ++cuenta_de(fila).decodificadas;
  if (clase == ClaseFlujo::kDatos) CompararCanales(lugar);
  std::erase_if(filas_, [&](const FilaCruda& fila) {
    if (fila[kFechaCruda] != 0 && fila[kHoraCruda] != 0) return false;
    ++cuenta_de(fila).fines[fila[kFechaCruda] == 0 ? FinFila::kSinFecha : FinFila::kSinHora];
    return true;
  });
  copias_.QuitarRepetidas(filas_, flujo.filas,
                          [&](const FilaCruda& fila) { ++cuenta_de(fila).fines[FinFila::kRepetida]; });
  flujo.filas.insert(flujo.filas.end(), filas_.begin(), filas_.end());
  return true;
}

void RecorridoRecuperacion::CompararCanales(const LugarPagina& lugar) {
  std::uint32_t texto = 0;
  for (const FilaCruda& fila : filas_) {
    if (std::exchange(texto, fila[kCanalCrudo]) == fila[kCanalCrudo] && &fila != filas_.data()) continue;
    if (const std::int16_t canal = CanalDe(fila); canal != pedidos_[indice_]) NombrarAjena(lugar, canal);
  }
}

void RecorridoRecuperacion::NombrarAjena(const LugarPagina& lugar, std::int16_t propio) {
  const std::int16_t pedido = pedidos_[indice_];
  const std::size_t archivo = archivos_.size() - 1;
  if (!ajenas_.empty()) {
    PaginasAjenas& ultima = ajenas_.back();
    if (ultima.archivo == archivo && ultima.pedido == pedido && ultima.propio == propio &&
        ultima.tramo.pista == lugar.pista && lugar.pagina >= ultima.tramo.desde - 1 &&
        lugar.pagina <= ultima.tramo.hasta + 1) {
      ultima.tramo.desde = std::min(ultima.tramo.desde, lugar.pagina);
      ultima.tramo.hasta = std::max(ultima.tramo.hasta, lugar.pagina);
      return;
    }
  }
  ajenas_.push_back({archivo, {lugar.pista, lugar.pagina, lugar.pagina}, pedido, propio});
}

std::int16_t RecorridoRecuperacion::CanalDe(const FilaCruda& fila) {
  const std::uint32_t texto = fila[kCanalCrudo];
  if (texto >= canales_.size()) canales_.resize(texto + 1 + canales_.size() / 2);
  if (!canales_[texto]) {
    const auto numero = EnteroExacto(textos_.Texto(texto));
    const bool cabe = numero && *numero > kSinNumero && *numero <= 32767;
    canales_[texto] = cabe ? static_cast<std::int16_t>(*numero) : kSinNumero;
  }
  return *canales_[texto];
}

std::map<std::int16_t, std::vector<FilaCruda>> RecorridoRecuperacion::SepararDatos() {
  std::map<std::int16_t, std::vector<FilaCruda>> canales;
  FilasDeFlujo filas;
  filas.swap(flujos_[static_cast<std::size_t>(ClaseFlujo::kDatos)].filas);
  for (; !filas.empty(); filas.pop_front()) canales[CanalDe(filas.front())].push_back(filas.front());
  return canales;
}

void RecorridoRecuperacion::Marcar(const LugarPagina& lugar, EstadoPagina estado) {
  if (mapa_ != nullptr && Peso(estado) > Peso(mapa_->Estado(lugar))) mapa_->Poner(lugar, estado);
}

void RecorridoRecuperacion::Nombrar(std::vector<LineaNombrada>& lista, const LineaRecuperacion& linea,
                                    std::string porque) {
  if (lista.size() < kLineasNombradas) lista.push_back({linea.numero, std::move(porque)});
}

}  // namespace utr
