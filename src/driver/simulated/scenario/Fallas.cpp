#include "driver/simulated/scenario/Fallas.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/TablasRegistros.h"
#include "driver/Textos.h"
#include "driver/simulated/unit/Agenda.h"
#include "driver/simulated/unit/Canales.h"
#include "driver/simulated/unit/Memoria.h"

namespace utr::simulada {

namespace {

// The word of each fault, and the keys that mean something for it beside those that all have.
struct Palabra {
  std::string_view nombre;
  TipoFalla tipo;
  std::string_view claves;
};
constexpr std::string_view kClavesDeTodas =
    "operacion tipo cuando despues_de pista pagina hasta_pagina puerto velocidad canal";
constexpr Palabra kPalabras[] = {
    {"falso", TipoFalla::kFalso, "respuesta_perdida"},
    {"vacio", TipoFalla::kVacio, "respuesta_perdida"},
    {"ninguna", TipoFalla::kNinguna, "respuesta_perdida"},
    {"sin_filas", TipoFalla::kSinFilas, ""},
    {"error", TipoFalla::kError, "numero origen texto respuesta_perdida"},
    {"demora", TipoFalla::kDemora, "segundos bloquea"},
    {"atraso", TipoFalla::kAtraso, "segundos"},
    {"campo_ausente", TipoFalla::kCampoAusente, "campo"},
    {"numero_como_texto", TipoFalla::kNumeroComoTexto, "campo"},
    {"texto_como_numero", TipoFalla::kTextoComoNumero, "campo"},
    {"no_numero", TipoFalla::kNoNumero, "campo valor fila"},
    {"trama_corta", TipoFalla::kTramaCorta, "cuantos"},
    {"fila_repetida", TipoFalla::kFilaRepetida, "fila"},
    {"marca_con_hora", TipoFalla::kMarcaConHora, "valor fila"},
    {"fecha_invalida", TipoFalla::kFechaInvalida, "campo valor fila"},
    {"texto", TipoFalla::kTexto, "texto"},
    {"pagina_dañada", TipoFalla::kPaginaDaniada, "cuantos"},
    {"pagina_daniada", TipoFalla::kPaginaDaniada, "cuantos"},
    {"pagina_sin_fecha", TipoFalla::kPaginaSinFecha, ""},
    {"pagina_borrada", TipoFalla::kPaginaBorrada, ""},
};

bool TieneClave(std::string_view claves, std::string_view clave) {
  const auto lista = Separar(claves, ' ');
  return std::find(lista.begin(), lista.end(), clave) != lista.end();
}

bool EsRespuesta(TipoFalla tipo) {
  return tipo <= TipoFalla::kError;
}

bool Cumple(const std::optional<int>& condicion, const std::optional<int>& valor) {
  return !condicion || condicion == valor;
}

bool CumplePagina(const Falla& f, const std::optional<int>& pagina) {
  if (!f.hasta_pagina) return Cumple(f.pagina, pagina);
  return pagina && *pagina >= f.pagina.value_or(0) && *pagina <= *f.hasta_pagina;
}

bool Alcanza(const Falla& f, const Contexto& c) {
  return Cumple(f.pista, c.pista) && CumplePagina(f, c.pagina) && Cumple(f.canal, c.canal) &&
         Cumple(f.puerto, c.puerto) && Cumple(f.velocidad, c.velocidad);
}

// How a table is copied: the fields of the copy, which field of the source each takes, and which rows come.
struct Copia {
  std::vector<Campo> campos;
  std::vector<std::size_t> de;
  std::optional<int> filas;     // only the first ones
  std::optional<int> repetida;  // this row twice, from 1
};

// A text that is read as a number has none when it isn't one.
Valor ValorPara(TipoCampo tipo, const Tabla& origen, std::size_t campo) {
  if (tipo == origen.Field(campo).tipo) return origen.Value(campo);
  const std::string texto = origen.Texto(campo);
  if (!EsNumerico(texto)) return {};
  return LeerDoble(texto);
}

void CopiarFila(Tabla& copia, const Tabla& origen, const Copia& como) {
  copia.AddNew();
  for (std::size_t i = 0; i < como.de.size(); ++i) {
    const std::size_t campo = como.de[i];
    if (origen.EsNulo(campo)) continue;
    if (ClaseDe(como.campos[i].tipo) == Clase::kTexto) {
      copia.Set(i, origen.Texto(campo));
    } else {
      copia.Set(i, ValorPara(como.campos[i].tipo, origen, campo));
    }
  }
}

TablaPtr Copiar(const Tabla& tabla, const Copia& como) {
  auto copia = std::make_shared<Tabla>();
  for (const Campo& campo : como.campos) copia->Append(campo);
  copia->Open();
  const TablaPtr origen = tabla.Clone();
  for (int fila = 1; !origen->Eof() && (!como.filas || fila <= *como.filas); origen->MoveNext(), ++fila) {
    CopiarFila(*copia, *origen, como);
    if (fila == como.repetida) CopiarFila(*copia, *origen, como);
  }
  copia->UpdateBatch();
  if (copia->RecordCount() > 0) copia->MoveFirst();
  return copia;
}

// Whole numbers where all texts of the column are, else numbers of any kind.
TipoCampo TipoNumerico(const Tabla& tabla, std::size_t campo) {
  for (const TablaPtr filas = tabla.Clone(); !filas->Eof(); filas->MoveNext()) {
    const std::string texto = filas->Texto(campo);
    const double numero = EsNumerico(texto) ? LeerDoble(texto) : 0;
    if (numero != std::floor(numero) || std::abs(numero) > std::numeric_limits<std::int32_t>::max())
      return TipoCampo::kDoble;
  }
  return TipoCampo::kEntero;
}

// The fault is of dates and names no field.
std::string CampoDe(const Falla& falla) {
  const bool de_fechas = falla.tipo == TipoFalla::kFechaInvalida || falla.tipo == TipoFalla::kMarcaConHora;
  return falla.campo.empty() && de_fechas ? "Fecha" : falla.campo;
}

// The field as the fault leaves it.
Campo CampoEstropeado(const Falla& falla, const Tabla& tabla, std::size_t indice) {
  Campo campo = tabla.Field(indice);
  const bool es_texto = ClaseDe(campo.tipo) == Clase::kTexto;
  if (!es_texto && (falla.tipo == TipoFalla::kNumeroComoTexto || falla.tipo == TipoFalla::kNoNumero)) {
    campo.tipo = TipoCampo::kVarChar;
    campo.tamano = 50;
  } else if (es_texto && falla.tipo == TipoFalla::kTextoComoNumero) {
    campo.tipo = TipoNumerico(tabla, indice);
    campo.tamano = campo.tipo == TipoCampo::kEntero ? 4 : 8;
  }
  return campo;
}

// Which rows take the value of the fault: the one that it names, else all that have something to go wrong.
bool LeToca(const Falla& falla, const Tabla& tabla, int fila, std::size_t campo) {
  if (falla.fila) return fila == *falla.fila;
  if (tabla.EsNulo(campo)) return false;
  return falla.tipo == TipoFalla::kNoNumero || EsFecha(tabla.Texto(campo));
}

void CambiarValores(Tabla& tabla, const Falla& falla, std::size_t campo) {
  const bool marca = falla.tipo == TipoFalla::kMarcaConHora;
  const std::size_t destino = marca ? tabla.IndiceCampo("Hora") : campo;
  for (int fila = 1; !tabla.Eof(); tabla.MoveNext(), ++fila) {
    if (LeToca(falla, tabla, fila, campo)) tabla.Set(destino, falla.valor);
  }
  tabla.UpdateBatch();
  if (tabla.RecordCount() > 0) tabla.MoveFirst();
}

bool CambiaValores(TipoFalla tipo) {
  return tipo == TipoFalla::kNoNumero || tipo == TipoFalla::kFechaInvalida || tipo == TipoFalla::kMarcaConHora;
}

bool EsDeCampo(TipoFalla tipo) {
  return CambiaValores(tipo) || tipo == TipoFalla::kCampoAusente || tipo == TipoFalla::kNumeroComoTexto ||
         tipo == TipoFalla::kTextoComoNumero;
}

// Tables as an operation gives them, without rows that matter: for their fields.
std::vector<TablaPtr> TablasDe(Op operacion) {
  switch (operacion) {
    case Op::kLeerInstantaneos:
      return {TablaInstantaneos({})};
    case Op::kLeerAgenda:
      return {Agenda{}.ComoTabla()};
    case Op::kConfiguracionAlmacenada:
    case Op::kLeerArchivoConfiguracion:
    case Op::kCargarConfiguracion:
      return {Canales{}.ComoTabla()};
    case Op::kLeerEventos:
    case Op::kLeerEventosCartucho:
      return {FilasSucesos{}.Terminar()};
    case Op::kDecodificarPagina:
      return {FilasMuestras{}.Terminar(), FilasSucesos{}.Terminar()};
    default:
      return {FilasMuestras{}.Terminar()};
  }
}

std::string EstropearPagina(const Falla& falla, const std::string& texto) {
  auto bytes = LeerTextoPagina(texto);
  if (!bytes || bytes->size() < kBytesPagina) return texto;
  const Pagina pagina{bytes->data(), kBytesPagina};
  if (falla.tipo == TipoFalla::kPaginaSinFecha) {
    if (!LeerCabecera(pagina)) return texto;
    CambiarDia(pagina, kDiaAusente);
  } else if (falla.tipo == TipoFalla::kPaginaBorrada) {
    std::fill(pagina.begin(), pagina.end(), std::uint8_t{255});
  } else {
    // Bits spread over the page, the same ones at every reading.
    for (int i = 0; i < falla.cuantos; ++i) {
      const auto bit = static_cast<unsigned>(i * 37 + 11) % (kBytesPagina * 8);
      pagina[bit / 8] = static_cast<std::uint8_t>(pagina[bit / 8] ^ (1U << (bit % 8)));
    }
  }
  return TextoDe(pagina);
}

}  // namespace

std::optional<TipoFalla> BuscarTipoFalla(std::string_view nombre) {
  for (const Palabra& palabra : kPalabras) {
    if (palabra.nombre == nombre) return palabra.tipo;
  }
  return std::nullopt;
}

bool Conviene(TipoFalla tipo, Op operacion) {
  if (operacion == Op::kEscribirLog) return false;  // the log never fails
  const Da da = De(operacion).da;
  switch (tipo) {
    case TipoFalla::kError:
    case TipoFalla::kDemora:
      return true;
    case TipoFalla::kFalso:
      return da == Da::kLogico || operacion == Op::kLeerEstado;
    case TipoFalla::kVacio:
    case TipoFalla::kTexto:
      return da == Da::kTexto;
    case TipoFalla::kAtraso:
      return operacion == Op::kLeerInstantaneos;
    case TipoFalla::kFechaInvalida:
      return da == Da::kTabla || operacion == Op::kLeerFechaHora;
    case TipoFalla::kMarcaConHora:
      return da == Da::kTabla && De(operacion).nombre.find("Cola") == std::string_view::npos;
    case TipoFalla::kPaginaDaniada:
    case TipoFalla::kPaginaSinFecha:
    case TipoFalla::kPaginaBorrada:
      return operacion == Op::kLeerPaginaFlash;
    case TipoFalla::kNinguna:
    case TipoFalla::kSinFilas:
    case TipoFalla::kCampoAusente:
    case TipoFalla::kNumeroComoTexto:
    case TipoFalla::kTextoComoNumero:
    case TipoFalla::kNoNumero:
    case TipoFalla::kTramaCorta:
    case TipoFalla::kFilaRepetida:
      return da == Da::kTabla;
  }
  return false;
}

bool Admite(TipoFalla tipo, std::string_view clave) {
  if (TieneClave(kClavesDeTodas, clave)) return true;
  return std::any_of(std::begin(kPalabras), std::end(kPalabras),
                     [&](const Palabra& p) { return p.tipo == tipo && TieneClave(p.claves, clave); });
}

std::string ReparoDeCampo(const Falla& falla) {
  if (!EsDeCampo(falla.tipo)) return {};
  if (De(falla.operacion).da != Da::kTabla) {
    return falla.campo.empty() && !falla.fila ? "" : "no puede tener campo ni fila: no viene una tabla";
  }
  const std::string campo = CampoDe(falla);
  if (campo.empty()) return "necesita campo";
  for (const TablaPtr& tabla : TablasDe(falla.operacion)) {
    const int lugar = tabla->BuscarCampo(campo);
    if (lugar < 0) continue;
    const bool es_texto = ClaseDe(tabla->Field(static_cast<std::size_t>(lugar)).tipo) == Clase::kTexto;
    if (es_texto && falla.tipo == TipoFalla::kNumeroComoTexto) return "tiene un campo que ya es de texto: " + campo;
    if (!es_texto && falla.tipo == TipoFalla::kTextoComoNumero) return "tiene un campo que no es de texto: " + campo;
    return {};
  }
  return "tiene un campo que " + std::string{De(falla.operacion).nombre} + " no trae: \"" + campo + "\"";
}

Asunto AsuntoDe(Op operacion) {
  switch (operacion) {
    case Op::kLeerPaginaFlash:
      return {.pista = true, .pagina = true};
    case Op::kLeerPagina:
    case Op::kEscribirPagina:
      return {.pagina = true};
    case Op::kLeerDatos:
    case Op::kLeerDatosCartucho:
      return {.canal = true};
    default:
      return {};
  }
}

void Fallas::Poner(std::vector<Falla> fallas) {
  fallas_ = std::move(fallas);
  hay_.fill(0);
  for (const Falla& falla : fallas_) ++hay_[static_cast<std::size_t>(falla.operacion)];
}

Fallas::Efecto Fallas::Para(Op op, const Contexto& contexto) {
  Efecto efecto;
  if (Ninguna(op)) return efecto;
  for (Falla& falla : fallas_) {
    if (falla.operacion != op || falla.veces == 0 || !Alcanza(falla, contexto)) continue;
    if (falla.despues_de > 0) {
      --falla.despues_de;
      continue;
    }
    if (EsRespuesta(falla.tipo) && efecto.respuesta) continue;  // another one answers this call
    if (falla.veces > 0) --falla.veces;
    Sumar(efecto, falla);
  }
  return efecto;
}

void Fallas::Sumar(Efecto& efecto, const Falla& falla) {
  if (falla.tipo == TipoFalla::kDemora) {
    efecto.demora += falla.segundos;
    efecto.bloquea = efecto.bloquea || falla.bloquea;
  } else if (falla.tipo == TipoFalla::kAtraso) {
    efecto.atraso += falla.segundos;
  } else if (EsRespuesta(falla.tipo)) {
    efecto.respuesta = falla;
  } else {
    efecto.de_datos.push_back(falla);
  }
}

TablaPtr Estropear(const Falla& falla, Tabla& tabla) {
  Copia como;
  std::optional<std::size_t> lugar;
  const std::string nombre = CampoDe(falla);
  for (std::size_t i = 0; i < tabla.FieldCount(); ++i) {
    const bool suyo = EsDeCampo(falla.tipo) && IgualSinCaso(tabla.Field(i).nombre, nombre);
    if (suyo && falla.tipo == TipoFalla::kCampoAusente) continue;
    if (suyo) lugar = como.campos.size();
    como.campos.push_back(suyo ? CampoEstropeado(falla, tabla, i) : tabla.Field(i));
    como.de.push_back(i);
  }
  if (falla.tipo == TipoFalla::kTramaCorta) como.filas = falla.cuantos;
  if (falla.tipo == TipoFalla::kFilaRepetida) como.repetida = falla.fila;
  TablaPtr copia = Copiar(tabla, como);
  if (lugar && CambiaValores(falla.tipo)) CambiarValores(*copia, falla, *lugar);
  return copia;
}

std::string Estropear(const Falla& falla, std::string texto) {
  switch (falla.tipo) {
    case TipoFalla::kPaginaDaniada:
    case TipoFalla::kPaginaSinFecha:
    case TipoFalla::kPaginaBorrada:
      return EstropearPagina(falla, texto);
    case TipoFalla::kFechaInvalida:
      return falla.valor;
    case TipoFalla::kTexto:
      return falla.texto;
    default:
      return texto;
  }
}

}  // namespace utr::simulada
