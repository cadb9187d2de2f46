#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/Archivos.h"
#include "base/Error.h"
#include "base/Texto.h"
#include "tables/EscritorFilas.h"
#include "tables/Persistido.h"
#include "tables/Renglones.h"

namespace utr {
namespace {

bool EsNombreSimple(std::string_view nombre) {
  if (nombre.empty() || (nombre.front() >= '0' && nombre.front() <= '9')) return false;
  for (const char c : nombre) {
    if (!((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_')) return false;
  }
  return true;
}

using NombresXml = std::unordered_set<std::string, DispersionSinCaso, IgualdadSinCaso>;

// The XML name of a column whose own can't be one, where no other column bears it.
std::string NombreSupletorio(const DatosTabla& datos, const NombresXml& tomados, std::size_t i) {
  std::string nombre = "c" + std::to_string(i);
  while (datos.Buscar(nombre) >= 0 || tomados.contains(nombre)) nombre += '_';
  return nombre;
}

// The names that the columns have in the file: those with which they came, else their own, where that can be.
std::vector<std::string> RepartirNombres(const DatosTabla& datos) {
  std::vector<std::string> nombres(datos.campos.size());
  NombresXml tomados;
  for (const bool de_archivo : {true, false}) {
    for (std::size_t i = 0; i < nombres.size(); ++i) {
      const std::string& nombre = de_archivo ? datos.detalles[i].nombre_xml : datos.campos[i].nombre;
      const bool sirve = de_archivo ? EsNombreXml(nombre) : EsNombreSimple(nombre);
      if (nombres[i].empty() && sirve && tomados.insert(nombre).second) nombres[i] = nombre;
    }
  }
  for (std::size_t i = 0; i < nombres.size(); ++i) {
    if (!nombres[i].empty()) continue;
    nombres[i] = NombreSupletorio(datos, tomados, i);
    tomados.insert(nombres[i]);
  }
  return nombres;
}

void EscribirTipo(Renglones& r, const Campo& campo, const Columna& columna) {
  const TipoPersistido& t = DescripcionDeTipo(campo.tipo);
  r.Elemento(3, "s:datatype");
  r.Atributo("dt:type=", t.dt, 0);
  if (!t.dbtype.empty()) r.Atributo("rs:dbtype=", t.dbtype, 0);
  std::uint32_t largo = t.largo != 0 ? t.largo : campo.tamano;
  if (t.largo == 0 && largo != 0 && t.dt == "string") {
    // A value may be longer than its field was declared; the file declares what it holds.
    for (std::uint32_t n = 1; n <= columna.Textos().Cantidad(); ++n) {
      const auto texto = columna.Textos().Texto(n);
      if (texto.size() > largo) largo = std::max(largo, static_cast<std::uint32_t>(Largo(texto)));
    }
  }
  // A text field without a size is a memo; only a variant declares no length at all.
  const bool memo = t.dt == "string" && largo == 0 && campo.tipo != TipoCampo::kVariante;
  if (memo) largo = kLargoMemo;
  if (largo != 0) r.Atributo("dt:maxLength=", std::to_string(largo), 0);
  if (t.con_escala && campo.escala != kSinDeclarar) r.Atributo("rs:scale=", std::to_string(campo.escala), 0);
  if (t.con_precision && campo.precision != kSinDeclarar) {
    r.Atributo("rs:precision=", std::to_string(campo.precision), 0);
  }
  if (t.fijo) r.Atributo("rs:fixedlength=", "true", 0);
  if (memo || t.largo_memo || (campo.atributos & atributo::kLargo) != 0) r.Atributo("rs:long=", "true", 0);
  if ((campo.atributos & atributo::kPuedeSerNulo) == 0) r.Atributo("rs:maybenull=", "false", 0);
  r.Cerrar("/>");
}

std::string DeRowset(std::string_view nombre) {
  return "rs:" + std::string(nombre) + "=";
}

void EscribirAjenos(Renglones& r, const std::vector<AtributoAjeno>& ajenos, std::size_t extra) {
  for (const auto& ajeno : ajenos) r.Atributo(DeRowset(ajeno.nombre), Escapar(ajeno.valor), extra);
}

void EscribirCampo(Renglones& r, const DatosTabla& datos, std::size_t i, const std::string& nombre_xml) {
  const Campo& campo = datos.campos[i];
  r.Elemento(2, "s:AttributeType");
  r.Atributo("name=", nombre_xml, 1);
  if (nombre_xml != campo.nombre) r.Atributo("rs:name=", Escapar(campo.nombre), 1);
  r.Atributo("rs:number=", std::to_string(i + 1), 1);
  for (const auto& marca : kMarcasDeCampo) {
    if ((campo.atributos & marca.atributo) != 0) r.Atributo(DeRowset(marca.nombre), "true", 1);
  }
  EscribirAjenos(r, datos.detalles[i].otros, 1);
  r.Cerrar(">");
  EscribirTipo(r, campo, datos.columnas[i]);
  r.Crudo("\t\t</s:AttributeType>\r\n");
}

void EscribirEsquema(Renglones& r, const DatosTabla& datos, const std::vector<std::string>& nombres) {
  r.Crudo("<xml xmlns:s='");
  r.Crudo(uri::kEsquema);
  r.Crudo("'\r\n\txmlns:dt='");
  r.Crudo(uri::kTipos);
  r.Crudo("'\r\n\txmlns:rs='");
  r.Crudo(uri::kRowset);
  r.Crudo("'\r\n\txmlns:z='");
  r.Crudo(uri::kFila);
  r.Crudo("'>\r\n<s:Schema id='RowsetSchema'>\r\n");
  r.Elemento(1, "s:ElementType");
  r.Atributo("name=", "row", 0);
  r.Atributo("content=", "eltOnly", 0);
  EscribirAjenos(r, datos.de_tabla, 0);
  r.Cerrar(">");
  for (std::size_t i = 0; i < datos.campos.size(); ++i) EscribirCampo(r, datos, i, nombres[i]);
  r.Crudo("\t\t<s:extends type='rs:rowbase'/>\r\n\t</s:ElementType>\r\n</s:Schema>\r\n");
}

// The rows with their changes in the order of the service: what was changed where it stands, what was added behind it,
// what was taken away at the end.
class EscritorDatos {
 public:
  EscritorDatos(Renglones& renglones, const DatosTabla& datos, const std::vector<std::string>& nombres)
      : r_(renglones), datos_(datos), nombres_(nombres), filas_(renglones, datos, nombres) {}

  void Escribir() {
    if (datos_.originales) originales_.emplace(r_, *datos_.originales, nombres_);
    for (std::size_t fila = 0; fila < datos_.publicadas; ++fila) {
      const FilaPendiente* pendiente = Pendiente(fila);
      pendiente != nullptr ? Cambio(fila, *pendiente) : filas_.Fila(1, fila);
    }
    if (datos_.publicadas < datos_.filas) {
      r_.Crudo("\t<rs:insert>\r\n");
      for (std::size_t fila = datos_.publicadas; fila < datos_.filas; ++fila) filas_.Nueva(fila, Pendiente(fila));
      r_.Crudo("\t</rs:insert>\r\n");
    }
    if (datos_.borradas) Borradas(*datos_.borradas);
  }

 private:
  // Asked for the rows in their order.
  const FilaPendiente* Pendiente(std::size_t fila) {
    const auto& pendientes = datos_.pendientes;
    if (siguiente_ == pendientes.size() || pendientes[siguiente_].fila != fila) return nullptr;
    return &pendientes[siguiente_++];
  }

  void Cambio(std::size_t fila, const FilaPendiente& pendiente) {
    r_.Crudo("\t<rs:update>\r\n\t\t<rs:original>\r\n");
    originales_->Fila(3, *pendiente.original);
    r_.Crudo("\t\t</rs:original>\r\n");
    filas_.Cambio(fila, pendiente);
    r_.Crudo("\t</rs:update>\r\n");
  }

  void Borradas(const DatosTabla& borradas) {
    EscritorFilas escritor(r_, borradas, nombres_);
    r_.Crudo("\t<rs:delete>\r\n");
    for (std::size_t fila = 0; fila < borradas.filas; ++fila) escritor.Fila(2, fila);
    r_.Crudo("\t</rs:delete>\r\n");
  }

  Renglones& r_;
  const DatosTabla& datos_;
  const std::vector<std::string>& nombres_;
  EscritorFilas filas_;
  std::optional<EscritorFilas> originales_;
  std::size_t siguiente_ = 0;
};

void EscribirTodo(const DatosTabla& datos, std::ostream& salida) {
  const auto nombres = RepartirNombres(datos);
  Renglones r(salida);
  EscribirEsquema(r, datos, nombres);
  r.Crudo("<rs:data>\r\n");
  EscritorDatos(r, datos, nombres).Escribir();
  r.Crudo("</rs:data>\r\n</xml>");
  r.Volcar();
}

}  // namespace

void EscribirPersistido(const DatosTabla& datos, const std::filesystem::path& ruta, bool reemplazar) {
  // No reader takes a table without fields for one.
  if (datos.campos.empty()) throw Error(error::kLlamada, "Tabla", "No se puede guardar una tabla sin campos");
  const auto escribir = [&](std::ostream& salida) { EscribirTodo(datos, salida); };
  reemplazar ? EscribirEntero(ruta, escribir) : EscribirNuevo(ruta, escribir);
}

}  // namespace utr
