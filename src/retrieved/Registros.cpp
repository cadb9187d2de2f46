#include "retrieved/Registros.h"

#include <map>
#include <optional>
#include <vector>

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/Canales.h"
#include "retrieved/Escalado.h"

namespace utr {

namespace {

constexpr const char* kSinValor = "N/D";
constexpr const char* kSinDescripcion = "-";

// Places of the fields of RegistrosDatos.
enum Lugar : std::size_t {
  kFecha,
  kHora,
  kCanal,
  kValor,
  kMaximo,
  kMinimo,
  kValidacion,
  kColaTX,
  kDescripcion,
  kUnidad
};

struct CampoResultado {
  const char* nombre;
  std::uint32_t tamano;
};
constexpr CampoResultado kCampos[] = {{"Fecha", 20},       {"Hora", 15},   {"Canal", 10},     {"Valor", 50},
                                      {"Maximo", 50},      {"Minimo", 50}, {"Validacion", 3}, {"ColaTX", 3},
                                      {"Descripcion", 50}, {"Unidad", 15}};
// Raw values are counts of 16 bits at most. A column with more distinct texts than that isn't worth remembering.
constexpr std::size_t kRecordables = 65536;

constexpr Lugar kEscalados[] = {kValor, kMaximo, kMinimo};
constexpr Lugar kCopiados[] = {kHora, kValidacion, kColaTX};

std::string TextoUnidad(const Tabla& fila, Catalogo& catalogo) {
  return catalogo.DescripcionUnidad(TextoGeneral(Val(fila.Texto("Unidad"))));
}

std::string TextoDescripcion(const Tabla& fila, Catalogo& catalogo) {
  return catalogo.DescripcionParametro(fila.Texto("Parametro"), Entero16(Val(fila.Texto("Tipo"))));
}

// The fields of the source by the places of the result that they feed.
struct CamposOrigen {
  explicit CamposOrigen(const Tabla& origen) {
    for (std::size_t i = kFecha; i <= kColaTX; ++i) lugar[i] = origen.IndiceCampo(kCampos[i].nombre);
  }
  std::size_t lugar[kColaTX + 1];
};

// Which text of a column of the result stands for each text of a column of the source, by their numbers, as far as
// known.
class Traduccion {
 public:
  // Writes what stands for text `indice` into the current row; `producir` works it out the first time.
  template <typename Producir>
  void Poner(Tabla& resultado, Lugar campo, std::uint32_t indice, Producir producir) {
    if (indice < numeros_.size() && numeros_[indice] != 0) return resultado.SetIndice(campo, numeros_[indice]);
    resultado.Set(campo, producir());
    if (indice >= numeros_.size()) numeros_.resize(indice + 1 + numeros_.size() / 2);
    numeros_[indice] = resultado.Textos(campo).De(resultado.Filas().Actual());
  }

 private:
  std::vector<std::uint32_t> numeros_;
};

// Everything that the rows of one channel have in common.
class CanalEnCurso {
 public:
  CanalEnCurso(std::string_view canal, Tabla* configuracion, const ContextoRegistros& contexto)
      : nombre_(NombreCanal(LeerEntero16(canal))),
        descripcion_(DescripcionDeCanal(canal, configuracion, contexto.catalogo)),
        unidad_(UnidadDeCanal(canal, configuracion, contexto.catalogo)),
        contexto_(contexto) {
    if (SeleccionarCanal(canal, configuracion)) escala_.emplace(*configuracion);
  }

  void PonerTextos(Tabla& resultado) {
    fijos_.Poner(resultado, kCanal, kCanal, [&]() -> const std::string& { return nombre_; });
    fijos_.Poner(resultado, kDescripcion, kDescripcion, [&]() -> const std::string& { return descripcion_; });
    fijos_.Poner(resultado, kUnidad, kUnidad, [&]() -> const std::string& { return unidad_; });
  }

  std::string Escalar(std::string_view valor) const {
    if (!EsNumerico(valor)) return kSinValor;
    return escala_ ? escala_->Escalar(valor, contexto_) : std::string(valor);
  }

  // False where each scaling leaves its own line in the log.
  bool SePuedeRecordar() const { return !escala_ || !escala_->SinSpan(); }

  Traduccion& De(Lugar escalado) { return escalados_[escalado - kValor]; }

 private:
  std::string nombre_;
  std::string descripcion_;
  std::string unidad_;
  std::optional<EscalaHistorica> escala_;
  const ContextoRegistros& contexto_;
  Traduccion fijos_;
  Traduccion escalados_[std::size(kEscalados)];
};

// Walks the source once. Fields are found by name once, the row of a channel once for each channel.
class ConstructorRegistros {
 public:
  ConstructorRegistros(const Tabla& origen, Tabla* configuracion, const ContextoRegistros& contexto, bool es_cola,
                       Tabla& resultado)
      : origen_(origen),
        configuracion_(configuracion),
        contexto_(contexto),
        es_cola_(es_cola),
        resultado_(resultado),
        campos_(origen) {
    for (std::size_t i = kFecha; i <= kColaTX; ++i) {
      es_texto_[i] = ClaseDe(origen.Field(campos_.lugar[i]).tipo) == Clase::kTexto;
      recordable_[i] = es_texto_[i] && origen.Textos(campos_.lugar[i]).Cantidad() <= kRecordables;
    }
  }

  void Construir() {
    const std::size_t filas = origen_.RecordCount();
    resultado_.Reservar(filas);
    for (std::size_t posicion = 0; posicion < filas; ++posicion) Agregar(origen_.Filas().EnVista(posicion));
    if (configuracion_ != nullptr && resultado_.RecordCount() > 0) configuracion_->Filter("");
  }

 private:
  void Agregar(std::size_t fila) {
    if (EsMarcador(fila)) {
      fecha_ = origen_.Filas().Texto(fila, campos_.lugar[kFecha]);
      traduccion_fecha_ = {};
      if (!es_cola_) return;
    }
    if (Largo(Leer(fila, kHora)) <= 1) return;
    CanalEnCurso& canal = BuscarCanal(Leer(fila, kCanal));
    resultado_.AddNew();
    traduccion_fecha_.Poner(resultado_, kFecha, 0, [&]() -> const std::string& { return fecha_; });
    for (const Lugar campo : kEscalados) Escalar(fila, campo, canal);
    for (const Lugar campo : kCopiados) Copiar(fila, campo);
    canal.PonerTextos(resultado_);
    resultado_.UpdateBatch();
  }

  void Escalar(std::size_t fila, Lugar campo, CanalEnCurso& canal) {
    if (!recordable_[campo] || !canal.SePuedeRecordar()) {
      resultado_.Set(campo, canal.Escalar(Leer(fila, campo)));
    } else {
      canal.De(campo).Poner(resultado_, campo, Indice(fila, campo), [&] { return canal.Escalar(Leer(fila, campo)); });
    }
  }

  void Copiar(std::size_t fila, Lugar campo) {
    const auto leer = [&] { return origen_.Filas().Value(fila, campos_.lugar[campo]); };
    if (recordable_[campo]) {
      copiados_[campo].Poner(resultado_, campo, Indice(fila, campo), leer);
    } else {
      resultado_.Set(campo, leer());
    }
  }

  bool EsMarcador(std::size_t fila) {
    if (!es_texto_[kFecha]) return EsFecha(Leer(fila, kFecha));
    const std::uint32_t indice = Indice(fila, kFecha);
    if (indice >= marcadores_.size()) marcadores_.resize(indice + 1);
    if (!marcadores_[indice]) marcadores_[indice] = EsFecha(Leer(fila, kFecha));
    return *marcadores_[indice];
  }

  std::uint32_t Indice(std::size_t fila, Lugar campo) const { return origen_.Textos(campos_.lugar[campo]).De(fila); }

  // The text of a value of the source, valid until the next call.
  std::string_view Leer(std::size_t fila, Lugar campo) {
    const Valor valor = origen_.Filas().Value(fila, campos_.lugar[campo]);
    if (const auto* texto = std::get_if<std::string_view>(&valor)) return *texto;
    auxiliar_ = TextoDe(valor);
    return auxiliar_;
  }

  CanalEnCurso& BuscarCanal(std::string_view canal) {
    if (ultimo_ != canales_.end() && ultimo_->first == canal) return ultimo_->second;
    ultimo_ = canales_.find(canal);
    if (ultimo_ == canales_.end())
      ultimo_ = canales_.try_emplace(std::string(canal), canal, configuracion_, contexto_).first;
    return ultimo_->second;
  }

  const Tabla& origen_;
  Tabla* configuracion_;
  const ContextoRegistros& contexto_;
  bool es_cola_;
  Tabla& resultado_;
  CamposOrigen campos_;
  bool es_texto_[kColaTX + 1] = {};
  bool recordable_[kColaTX + 1] = {};
  std::string fecha_;
  std::string auxiliar_;
  Traduccion traduccion_fecha_;
  Traduccion copiados_[kColaTX + 1];
  std::vector<std::optional<bool>> marcadores_;  // by the number of the text of Fecha
  std::map<std::string, CanalEnCurso, std::less<>> canales_;
  std::map<std::string, CanalEnCurso, std::less<>>::iterator ultimo_ = canales_.end();
};

TablaPtr Armar(const TablaPtr& origen, Tabla* configuracion, const ContextoRegistros& contexto, bool es_cola) {
  if (!origen) return nullptr;
  TablaPtr resultado = CrearRegistrosDatos();
  if (origen->RecordCount() == 0) return resultado;
  ConstructorRegistros(*origen, configuracion, contexto, es_cola, *resultado).Construir();
  if (!resultado->Eof()) resultado->MoveNext();
  return resultado;
}

}  // namespace

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
