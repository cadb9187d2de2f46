#include "retrieved/Registros.h"

#include <optional>
#include <span>
#include <vector>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/Canales.h"
#include "retrieved/ConstructorRegistros.h"
#include "retrieved/Escalado.h"

namespace utr {

namespace {

constexpr const char* kSinValor = "N/D";
constexpr const char* kSinDescripcion = "-";

struct CampoResultado {
  const char* nombre;
  std::uint32_t tamano;
};
constexpr CampoResultado kCampos[] = {{"Fecha", 20},       {"Hora", 15},   {"Canal", 10},     {"Valor", 50},
                                      {"Maximo", 50},      {"Minimo", 50}, {"Validacion", 3}, {"ColaTX", 3},
                                      {"Descripcion", 50}, {"Unidad", 15}};
// Raw values are counts of 16 bits at most. A column with more distinct texts than that isn't worth remembering.
constexpr std::size_t kRecordables = 65536;

std::string TextoUnidad(const Tabla& fila, Catalogo& catalogo) {
  return catalogo.DescripcionUnidad(TextoGeneral(Val(fila.Texto("Unidad"))));
}

std::string TextoDescripcion(const Tabla& fila, Catalogo& catalogo) {
  return catalogo.DescripcionParametro(fila.Texto("Parametro"), Entero16(Val(fila.Texto("Tipo"))));
}

// The driver's table. Fields are found by name once.
class OrigenTabla {
 public:
  OrigenTabla(const Tabla& origen, bool es_cola) : origen_(origen), es_cola_(es_cola) {
    for (std::size_t i = kFecha; i < kCamposOrigen; ++i) {
      lugar_[i] = origen.IndiceCampo(kCampos[i].nombre);
      es_texto_[i] = ClaseDe(origen.Field(lugar_[i]).tipo) == Clase::kTexto;
      recordable_[i] = es_texto_[i] && origen.Textos(lugar_[i]).Cantidad() <= kRecordables;
      if (es_texto_[i]) indices_[i] = origen.Textos(lugar_[i]).Indices(apoyos_[i]);
    }
  }

  std::size_t Cantidad() const { return origen_.RecordCount(); }
  std::size_t Fila(std::size_t posicion) const { return origen_.Filas().EnVista(posicion); }
  Valor Leer(std::size_t fila, LugarRegistro campo) const { return origen_.Filas().Value(fila, lugar_[campo]); }
  bool Recordable(LugarRegistro campo) const { return recordable_[campo]; }
  std::uint32_t Indice(std::size_t fila, LugarRegistro campo) const { return indices_[campo][fila]; }

  // In the queue a row may carry date and sample together.
  PapelFila Papel(std::size_t fila) {
    if (!EsMarcador(fila)) return PapelFila::kRegistro;
    return es_cola_ ? PapelFila::kFechaYRegistro : PapelFila::kFecha;
  }

 private:
  bool EsMarcador(std::size_t fila) {
    if (!es_texto_[kFecha]) return EsFecha(TextoDe(Leer(fila, kFecha)));
    const std::uint32_t indice = Indice(fila, kFecha);
    if (indice >= marcadores_.size()) marcadores_.resize(indice + 1);
    if (!marcadores_[indice]) marcadores_[indice] = EsFecha(TextoDe(Leer(fila, kFecha)));
    return *marcadores_[indice];
  }

  const Tabla& origen_;
  bool es_cola_;
  std::size_t lugar_[kCamposOrigen] = {};
  bool es_texto_[kCamposOrigen] = {};
  bool recordable_[kCamposOrigen] = {};
  std::span<const std::uint32_t> indices_[kCamposOrigen];  // of texts, by row
  std::vector<std::uint32_t> apoyos_[kCamposOrigen];       // where the table doesn't hold them so
  std::vector<std::optional<bool>> marcadores_;            // by the number of the text of Fecha
};

TablaPtr Armar(const TablaPtr& origen, Tabla* configuracion, const ContextoRegistros& contexto, bool es_cola) {
  if (!origen) return nullptr;
  TablaPtr resultado = CrearRegistrosDatos();
  if (origen->RecordCount() == 0) return resultado;
  OrigenTabla filas(*origen, es_cola);
  ConstructorRegistros(filas, configuracion, contexto, *resultado).Construir();
  if (!resultado->Eof()) resultado->MoveNext();
  return resultado;
}

}  // namespace

CanalEnCurso::CanalEnCurso(std::string_view canal, Tabla* configuracion, const ContextoRegistros& contexto)
    : nombre_(NombreCanal(LeerEntero16(canal))),
      descripcion_(DescripcionDeCanal(canal, configuracion, contexto.catalogo)),
      unidad_(UnidadDeCanal(canal, configuracion, contexto.catalogo)),
      contexto_(contexto) {
  if (SeleccionarCanal(canal, configuracion)) escala_.emplace(*configuracion);
}

void CanalEnCurso::PonerTextos(Tabla& resultado) {
  fijos_.Poner(resultado, kCanal, kCanal, [&]() -> const std::string& { return nombre_; });
  fijos_.Poner(resultado, kDescripcion, kDescripcion, [&]() -> const std::string& { return descripcion_; });
  fijos_.Poner(resultado, kUnidad, kUnidad, [&]() -> const std::string& { return unidad_; });
}

std::string CanalEnCurso::Escalar(std::string_view valor) const {
  if (!EsNumerico(valor)) return kSinValor;
  return escala_ ? escala_->Escalar(valor, contexto_) : std::string(valor);
}

TablaPtr CrearRegistrosDatos() {
  auto tabla = std::make_shared<Tabla>();
  for (const CampoResultado& campo : kCampos) tabla->Append(campo.nombre, TipoCampo::kVarChar, campo.tamano);
  tabla->Open();
  return tabla;
}

TablaPtr ArmarRegistrosDatos(const TablaPtr& origen, Tabla* configuracion, const ContextoRegistros& contexto) {
  return Armar(origen, configuracion, contexto, false);
}

TablaPtr ArmarRegistrosCola(const TablaPtr& origen, Tabla* configuracion, const ContextoRegistros& contexto) {
  return Armar(origen, configuracion, contexto, true);
}

std::string UnidadDeCanal(std::string_view canal, Tabla* configuracion, Catalogo& catalogo) {
  if (configuracion == nullptr) return kSinDescripcion;
  std::string unidad = SeleccionarCanal(canal, configuracion) ? TextoUnidad(*configuracion, catalogo) : kSinDescripcion;
  configuracion->Filter("");
  return unidad;
}

std::string DescripcionDeCanal(std::string_view canal, Tabla* configuracion, Catalogo& catalogo) {
  if (configuracion == nullptr) return kSinDescripcion;
  std::string descripcion =
      SeleccionarCanal(canal, configuracion) ? TextoDescripcion(*configuracion, catalogo) : kSinDescripcion;
  configuracion->Filter("");
  return descripcion;
}

}  // namespace utr
