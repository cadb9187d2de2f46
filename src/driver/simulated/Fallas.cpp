#include "driver/simulated/Fallas.h"

#include <algorithm>

#include "base/Fechas.h"
#include "base/Texto.h"
#include "driver/Textos.h"
#include "driver/simulated/Memoria.h"

namespace utr::simulada {

namespace {

struct Palabra {
  std::string_view nombre;
  TipoFalla tipo;
};
constexpr Palabra kPalabras[] = {
    {"falso", TipoFalla::kFalso},
    {"vacio", TipoFalla::kVacio},
    {"ninguna", TipoFalla::kNinguna},
    {"sin_filas", TipoFalla::kSinFilas},
    {"error", TipoFalla::kError},
    {"demora", TipoFalla::kDemora},
    {"campo_ausente", TipoFalla::kCampoAusente},
    {"numero_como_texto", TipoFalla::kNumeroComoTexto},
    {"no_numero", TipoFalla::kNoNumero},
    {"trama_corta", TipoFalla::kTramaCorta},
    {"fecha_invalida", TipoFalla::kFechaInvalida},
    {"pagina_dañada", TipoFalla::kPaginaDaniada},
    {"pagina_sin_fecha", TipoFalla::kPaginaSinFecha},
};

bool EsRespuesta(TipoFalla tipo) {
  return tipo <= TipoFalla::kError;
}

bool Cumple(const std::optional<int>& condicion, const std::optional<int>& valor) {
  return !condicion || condicion == valor;
}

bool Alcanza(const Falla& f, const Contexto& c) {
  return Cumple(f.pista, c.pista) && Cumple(f.pagina, c.pagina) && Cumple(f.canal, c.canal) &&
         Cumple(f.puerto, c.puerto) && Cumple(f.velocidad, c.velocidad);
}

// A copy of the table, row by row, in which `de` says for each field of the copy which field of the source it takes.
TablaPtr Copiar(Tabla& tabla, const std::vector<Campo>& campos, const std::vector<std::size_t>& de, int filas) {
  auto copia = std::make_shared<Tabla>();
  for (const Campo& campo : campos) copia->Append(campo);
  copia->Open();
  const TablaPtr origen = tabla.Clone();
  for (; !origen->Eof() && filas != 0; origen->MoveNext(), --filas) {
    copia->AddNew();
    for (std::size_t i = 0; i < de.size(); ++i) {
      if (origen->EsNulo(de[i])) continue;
      if (campos[i].tipo == origen->Field(de[i]).tipo) {
        copia->Set(i, origen->Value(de[i]));
      } else {
        copia->Set(i, origen->Texto(de[i]));
      }
    }
  }
  copia->UpdateBatch();
  if (copia->RecordCount() > 0) copia->MoveFirst();
  return copia;
}

// Every value of the field that isn't null, where `cambia` agrees, becomes the text of the fault.
void CambiarValores(Tabla& tabla, std::size_t campo, const std::string& valor, bool solo_fechas) {
  for (; !tabla.Eof(); tabla.MoveNext()) {
    if (tabla.EsNulo(campo) || (solo_fechas && !EsFecha(tabla.Texto(campo)))) continue;
    tabla.Set(campo, valor);
  }
  tabla.UpdateBatch();
  if (tabla.RecordCount() > 0) tabla.MoveFirst();
}

std::string EstropearPagina(const Falla& falla, const std::string& texto) {
  auto bytes = LeerTextoPagina(texto);
  if (!bytes || bytes->size() < kBytesPagina) return texto;
  const Pagina pagina{bytes->data(), kBytesPagina};
  if (falla.tipo == TipoFalla::kPaginaSinFecha) {
    if (!LeerCabecera(pagina)) return texto;
    CambiarDia(pagina, kDiaAusente);
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
  return nombre == "pagina_daniada" ? std::optional(TipoFalla::kPaginaDaniada) : std::nullopt;
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
      return da == Da::kTexto;
    case TipoFalla::kFechaInvalida:
      return da == Da::kTabla || operacion == Op::kLeerFechaHora;
    case TipoFalla::kPaginaDaniada:
    case TipoFalla::kPaginaSinFecha:
      return operacion == Op::kLeerPaginaFlash;
    case TipoFalla::kNinguna:
    case TipoFalla::kSinFilas:
    case TipoFalla::kCampoAusente:
    case TipoFalla::kNumeroComoTexto:
    case TipoFalla::kNoNumero:
    case TipoFalla::kTramaCorta:
      return da == Da::kTabla;
  }
  return false;
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
    if (EsRespuesta(falla.tipo) && efecto.respuesta) continue;  // another one answers this call
    if (falla.veces > 0) --falla.veces;
    if (falla.tipo == TipoFalla::kDemora) {
      efecto.demora += falla.segundos;
    } else if (EsRespuesta(falla.tipo)) {
      efecto.respuesta = falla;
    } else {
      efecto.de_datos.push_back(falla);
    }
  }
  return efecto;
}

TablaPtr Estropear(const Falla& falla, Tabla& tabla) {
  std::vector<Campo> campos;
  std::vector<std::size_t> de;
  std::size_t lugar = 0;
  bool esta = false;
  const bool fechas = falla.tipo == TipoFalla::kFechaInvalida;
  const std::string nombre = falla.campo.empty() && fechas ? "Fecha" : falla.campo;
  for (std::size_t i = 0; i < tabla.FieldCount(); ++i) {
    Campo campo = tabla.Field(i);
    const bool suyo = IgualSinCaso(campo.nombre, nombre);
    if (suyo && falla.tipo == TipoFalla::kCampoAusente) continue;
    const bool a_texto = falla.tipo == TipoFalla::kNumeroComoTexto || falla.tipo == TipoFalla::kNoNumero;
    if (suyo && a_texto && ClaseDe(campo.tipo) != Clase::kTexto) {
      campo.tipo = TipoCampo::kVarChar;
      campo.tamano = 50;
    }
    if (suyo) {
      esta = true;
      lugar = campos.size();
    }
    campos.push_back(std::move(campo));
    de.push_back(i);
  }
  TablaPtr copia = Copiar(tabla, campos, de, falla.tipo == TipoFalla::kTramaCorta ? falla.cuantos : -1);
  if (esta && (fechas || falla.tipo == TipoFalla::kNoNumero)) CambiarValores(*copia, lugar, falla.valor, fechas);
  return copia;
}

std::string Estropear(const Falla& falla, std::string texto) {
  switch (falla.tipo) {
    case TipoFalla::kPaginaDaniada:
    case TipoFalla::kPaginaSinFecha:
      return EstropearPagina(falla, texto);
    case TipoFalla::kFechaInvalida:
      return falla.valor;
    default:
      return texto;
  }
}

}  // namespace utr::simulada
