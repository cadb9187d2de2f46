#include "retrieved/Eventos.h"

#include <algorithm>
#include <vector>

#include "base/CarpetaPrograma.h"
#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/Utilidades.h"
#include "retrieved/Escalado.h"

namespace utr {

namespace {

constexpr const char* kSinValor = "N/D";
constexpr const char* kSinNombre = "Evento";
constexpr const char* kFechaProvisional = "01/01/2001";
constexpr std::int16_t kDiferenciales[] = {23, 24, 31, 32, 33, 34, 35};

enum Lugar : std::size_t { kFecha, kHora, kCodigo, kValor1, kValor2, kDescripcion };
struct CampoResultado {
  const char* nombre;
  std::uint32_t tamano;
};
constexpr CampoResultado kCampos[] = {{"Fecha", 20},  {"Hora", 15},   {"Codigo", 50},
                                      {"Valor1", 50}, {"Valor2", 50}, {"Descripcion", 150}};

// A label of one or two characters says that there is no such value.
bool EsRotulo(std::string_view texto) {
  return Largo(texto) > 2;
}

// What both builders do with a row that is an event. The flags live from row to row: an event whose code can't be read
// takes those of the one before it.
class ConstructorEventos {
 public:
  ConstructorEventos(const Tabla& origen, Tabla* configuracion, Tabla* descripciones, bool con_diferencias)
      : origen_(origen),
        configuracion_(configuracion),
        descripciones_(descripciones),
        con_diferencias_(con_diferencias) {
    for (std::size_t i = kFecha; i <= kValor2; ++i) campos_[i] = origen.IndiceCampo(kCampos[i].nombre);
  }

  std::string Leer(std::size_t fila, Lugar campo) const { return origen_.Filas().Texto(fila, campos_[campo]); }

  // Adds the event unless its time says that there is none.
  void Agregar(std::size_t fila, const std::string& fecha, Tabla& resultado) {
    if (Largo(Leer(fila, kHora)) <= 1) return;
    resultado.AddNew();
    resultado.Set(kFecha, fecha);
    resultado.Set(kHora, origen_.Filas().Value(fila, campos_[kHora]));
    PonerCodigo(Leer(fila, kCodigo), resultado);
    PonerValores(fila, resultado);
    resultado.UpdateBatch();
  }

 private:
  void PonerCodigo(const std::string& codigo, Tabla& resultado) {
    const bool numerico = EsNumerico(codigo);
    resultado.Set(kCodigo, numerico ? codigo : kSinValor);
    if (!numerico || descripciones_ == nullptr) return resultado.Set(kDescripcion, kSinNombre);
    const std::string descripcion = DescribirEvento(codigo, descripciones_);
    const auto partes = Separar(descripcion, '#');
    tiene_valor1_ = EsRotulo(partes[2]);
    tiene_valor2_ = EsRotulo(partes[3]);
    es_diferencial_ = con_diferencias_ && tiene_valor2_ && EsEventoDiferencial(LeerEntero16(partes[0]));
    resultado.Set(kDescripcion, Valor{partes[1]});
  }

  void PonerValores(std::size_t fila, Tabla& resultado) {
    const std::string valor1 = Leer(fila, kValor1);
    const std::string valor2 = Leer(fila, kValor2);
    // Of an event with a second value the first one is a channel, without which the second one can't be scaled.
    if (!tiene_valor1_ || !EsNumerico(valor2) || (tiene_valor2_ && !EsNumerico(valor1))) {
      resultado.Set(kValor1, kSinValor);
      resultado.Set(kValor2, kSinValor);
    } else if (tiene_valor2_) {
      // The unit counts channels from 0 here. The blank that a plain number carries stays in both texts.
      const std::string canal = TextoPlano(Val(valor1) + 1);
      resultado.Set(kValor2, es_diferencial_ ? EscalarDiferenciaEvento(valor2, canal, configuracion_)
                                             : EscalarValorEvento(valor2, canal, configuracion_));
      resultado.Set(kValor1, "Canal: " + canal);
    } else {
      resultado.Set(kValor1, origen_.Filas().Value(fila, campos_[kValor1]));
      resultado.Set(kValor2, origen_.Filas().Value(fila, campos_[kValor2]));
    }
  }

  const Tabla& origen_;
  Tabla* configuracion_;
  Tabla* descripciones_;
  bool con_diferencias_;
  std::size_t campos_[kValor2 + 1];
  bool tiene_valor1_ = false;
  bool tiene_valor2_ = false;
  bool es_diferencial_ = false;
};

std::string DiaAnterior(const std::string& fecha, Comunicador& comunicador) {
  const std::int16_t dia = Entero16(comunicador.DescribirCodigo(fecha));
  return comunicador.ConvertirA(Entero16(dia - 1.0));
}

void ReemplazarFechaProvisional(Tabla& resultado, const std::string& fecha) {
  resultado.Filter(std::string("Fecha=") + kFechaProvisional);
  for (; !resultado.Eof(); resultado.MoveNext()) resultado.Set(kFecha, fecha);
  resultado.Filter("");
}

}  // namespace

TablaPtr CrearRegistrosEventos() {
  auto tabla = std::make_shared<Tabla>();
  for (const CampoResultado& campo : kCampos) tabla->Append(campo.nombre, TipoCampo::kVarChar, campo.tamano);
  tabla->Open();
  return tabla;
}

TablaPtr CargarEventos(const std::filesystem::path& carpeta) {
  const std::filesystem::path ruta = ArchivoDelPrograma(carpeta, "Eventos.xml");
  auto tabla = std::make_shared<Tabla>();
  if (!ExisteArchivo(ruta) || !IgnorandoErrores([&] { tabla->Open(ruta); })) return nullptr;
  return tabla;
}

std::string DescribirEvento(std::string_view codigo, Tabla* descripciones) {
  const std::string recortado(Recortar(codigo));
  if (descripciones != nullptr) {
    descripciones->Filter("");
    descripciones->Filter("Numero='" + Reemplazar(recortado, "'", "''") + "'");
    if (descripciones->RecordCount() > 0) {
      return recortado + "#" + descripciones->Texto("Nombre") + "#" + descripciones->Texto("Valor1") + "#" +
             descripciones->Texto("Valor2");
    }
  }
  return recortado + "#-#-#-";
}

bool EsEventoDiferencial(std::int16_t codigo) {
  return std::find(std::begin(kDiferenciales), std::end(kDiferenciales), codigo) != std::end(kDiferenciales);
}

TablaPtr ArmarRegistrosEventos(const TablaPtr& origen, Tabla* configuracion, Tabla* descripciones) {
  if (!origen) return nullptr;
  TablaPtr resultado = CrearRegistrosEventos();
  const std::size_t filas = origen->RecordCount();
  if (filas == 0) return resultado;
  ConstructorEventos constructor(*origen, configuracion, descripciones, true);
  std::string fecha_en_curso;
  for (std::size_t posicion = 0; posicion < filas; ++posicion) {
    const std::size_t fila = origen->Filas().EnVista(posicion);
    // Any text that is longer than one character is a marker here, a date or not.
    const std::string fecha = constructor.Leer(fila, kFecha);
    if (Largo(fecha) > 1) {
      fecha_en_curso = fecha;
    } else {
      constructor.Agregar(fila, fecha_en_curso, *resultado);
    }
  }
  if (!resultado->Eof()) resultado->MoveNext();
  return resultado;
}

TablaPtr ArmarEventosPendientes(const TablaPtr& origen, Tabla* configuracion, Tabla* descripciones,
                                const ContextoRegistros& contexto) {
  if (!origen) return nullptr;
  TablaPtr resultado = CrearRegistrosEventos();
  const std::size_t filas = origen->RecordCount();
  if (filas == 0) return resultado;
  ConstructorEventos constructor(*origen, configuracion, descripciones, false);
  std::string fecha_anterior = TextoFecha(contexto.reloj.Ahora());
  std::string fecha_en_curso = kFechaProvisional;
  bool fecha_vista = false;
  for (std::size_t posicion = 0; posicion < filas; ++posicion) {
    const std::size_t fila = origen->Filas().EnVista(posicion);
    const std::string fecha = constructor.Leer(fila, kFecha);
    if (!EsFecha(fecha)) {
      constructor.Agregar(fila, fecha_en_curso, *resultado);
      continue;
    }
    if (!fecha_vista) fecha_anterior = DiaAnterior(fecha, contexto.comunicador);
    fecha_vista = true;
    fecha_en_curso = fecha;
  }
  if (resultado->RecordCount() > 0) ReemplazarFechaProvisional(*resultado, fecha_anterior);
  return resultado;
}

}  // namespace utr
