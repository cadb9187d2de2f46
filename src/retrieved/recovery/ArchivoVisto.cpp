#include "retrieved/recovery/ArchivoVisto.h"

#include <algorithm>
#include <cerrno>
#include <fstream>

#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/CanalesUTR.h"
#include "retrieved/recovery/ArchivosResultado.h"
#include "services/RegistroErrores.h"

namespace utr {
namespace {

using P = Presentacion;
using O = ClaseOrden;

// A report has some hundred lines; whatever is longer than this isn't one, and must not fill the memory.
constexpr std::size_t kLargoInforme = 1024 * 1024;

struct CampoConOrden {
  std::string_view nombre;
  ClaseOrden orden;
};
constexpr CampoConOrden kOrdenes[] = {{"Fecha", O::kFecha},   {"Hora", O::kHora},     {"Valor", O::kNumero},
                                      {"Maximo", O::kNumero}, {"Minimo", O::kNumero}, {"Codigo", O::kNumero},
                                      {"Valor1", O::kNumero}, {"Valor2", O::kNumero}};

ClaseOrden OrdenDe(const Campo& campo) {
  const Clase clase = ClaseDe(campo.tipo);
  if (clase == Clase::kDoble || clase == Clase::kEntero || EsColumnaDeCantidad(campo.nombre)) return O::kNumero;
  const auto* conocido = std::find_if(std::begin(kOrdenes), std::end(kOrdenes),
                                      [&](const auto& uno) { return IgualSinCaso(uno.nombre, campo.nombre); });
  return conocido == std::end(kOrdenes) ? O::kTexto : conocido->orden;
}

Columnas ColumnasDeTabla(const Tabla& tabla) {
  Columnas columnas;
  for (std::size_t i = 0; i < tabla.FieldCount(); ++i) {
    ColumnaLista columna{tabla.Field(i).nombre, tabla.Field(i).nombre, P::kTalCual, OrdenDe(tabla.Field(i))};
    columna.lugar = static_cast<int>(i);  // a file may repeat a name
    columnas.push_back(std::move(columna));
  }
  return columnas;
}

Columnas ColumnasDeImp(bool eventos) {
  if (eventos) {
    return {{"Fecha", "Fecha", P::kTalCual, O::kFecha},
            {"Codigo", "Codigo", P::kTalCual, O::kNumero},
            {"Valor1", "Valor1", P::kTalCual, O::kNumero},
            {"Valor2", "Valor2", P::kTalCual, O::kNumero}};
  }
  return {{"Fecha", "Fecha", P::kTalCual, O::kFecha},    {"Canal", "canal"},
          {"Valor", "Valor", P::kTalCual, O::kNumero},   {"Maximo", "Maximo", P::kTalCual, O::kNumero},
          {"Minimo", "Minimo", P::kTalCual, O::kNumero}, {"Validación", "Validacion", P::kNoSi}};
}

bool TieneCodigo(const Tabla& tabla) {
  return tabla.BuscarCampo("Codigo") >= 0;
}

// A truth value as such a file may hold it: a number, or its word.
bool Cierto(const Valor& valor) {
  const std::string texto{Recortar(TextoDe(valor))};
  if (texto.empty() || IgualSinCaso(texto, "False")) return false;
  return IgualSinCaso(texto, "True") || LeerDoble(texto) != 0;
}

void ExigirColumnas(const Tabla& tabla, const Columnas& columnas) {
  for (const ColumnaLista& columna : columnas) {
    if (tabla.BuscarCampo(columna.campo) >= 0) continue;
    throw Error(error::kCampo, "ImpFileToListView", "El archivo no tiene la columna " + columna.campo);
  }
}

void PrepararImp(ArchivoVisto& visto) {
  const bool vacio = visto.tabla->RecordCount() == 0;
  visto.de_eventos = vacio ? TieneCodigo(*visto.tabla) : !Cierto(visto.tabla->Value(0));
  visto.columnas = ColumnasDeImp(visto.de_eventos);
  if (!vacio) ExigirColumnas(*visto.tabla, visto.columnas);
}

bool TerminaEn(std::string_view nombre, std::string_view final) {
  return nombre.size() >= final.size() && IgualSinCaso(nombre.substr(nombre.size() - final.size()), final);
}

}  // namespace

bool EsImp(const std::filesystem::path& ruta) {
  return TerminaEn(ruta.string(), "imp");
}

ArchivoVisto AbrirParaVer(const std::filesystem::path& ruta) {
  ArchivoVisto visto;
  visto.tabla = std::make_shared<Tabla>();
  visto.tabla->Open(ruta);
  visto.es_imp = EsImp(ruta);
  visto.a_intervalos = !EsResultadoDeCola(ruta);
  if (visto.es_imp) {
    PrepararImp(visto);
  } else {
    visto.de_eventos = TieneCodigo(*visto.tabla);
    visto.columnas = ColumnasDeTabla(*visto.tabla);
  }
  return visto;
}

InformeVisto LeerInforme(const std::filesystem::path& ruta) {
  std::error_code nada;
  errno = 0;
  std::ifstream entrada;
  if (std::filesystem::is_regular_file(ruta, nada)) entrada.open(ruta, std::ios::binary);  // nothing that would wait
  std::string bytes(kLargoInforme + 1, '\0');
  if (!entrada.is_open())
    throw Error(error::kArchivo, "LeerInforme", "No se puede leer el archivo " + ruta.string(), errno);
  entrada.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(entrada.gcount()));
  const bool cortado = bytes.size() > kLargoInforme;
  if (cortado) bytes.resize(kLargoInforme);
  InformeVisto informe{ruta, Reemplazar(ReparadoUtf8(bytes), "\r\n", "\n")};
  if (cortado) informe.texto += "\n\n(Se muestra sólo el comienzo: el archivo es demasiado largo para un informe)";
  return informe;
}

std::optional<InformeVisto> InformeDe(const std::filesystem::path& resultado) {
  const std::filesystem::path ruta = InformeDeResultado(resultado);
  std::error_code nada;
  if (ruta.empty() || !std::filesystem::exists(ruta, nada)) return std::nullopt;
  InformeVisto informe;
  if (const auto falla = FallaDe([&] { informe = LeerInforme(ruta); })) return InformeVisto{ruta, falla->Descripcion()};
  const bool nombrado = informe.texto.find(resultado.filename().string()) != std::string::npos;
  return nombrado ? std::optional(std::move(informe)) : std::nullopt;
}

}  // namespace utr
