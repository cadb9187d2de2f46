// Any bytes as a table in a file: it opens whole or not at all, and what opened goes through a file, a copy, a filter
// and a sort without losing anything.
#include "base/Error.h"
#include "base/Texto.h"
#include "fuzz/Comun.h"
#include "tables/Tabla.h"

namespace {

using utr::Tabla;
using utr::fuzz::Exigir;

bool Abrir(Tabla& tabla, const std::filesystem::path& ruta) {
  try {
    tabla.Open(ruta);
    return true;
  } catch (const utr::Error& error) {
    Exigir(error.Numero() == utr::error::kArchivo && error.Descripcion().find("t.xml") != std::string::npos,
           "the words of a file that isn't a table");
    Exigir(!tabla.Abierta() && tabla.FieldCount() == 0, "half a table");
    return false;
  }
}

// What a file can hold of a text: other characters of control have no place in XML.
std::string Escribible(std::string_view texto) {
  std::string queda;
  for (const char c : texto) {
    if (static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\r' || c == '\n') queda += c;
  }
  return queda;
}

bool Iguales(const utr::Valor& uno, const utr::Valor& otro) {
  const auto* texto = std::get_if<std::string_view>(&uno);
  const auto* otro_texto = std::get_if<std::string_view>(&otro);
  if (texto == nullptr || otro_texto == nullptr) return uno == otro;
  return Escribible(*texto) == Escribible(*otro_texto);
}

void ExigirIguales(const Tabla& una, const Tabla& otra) {
  Exigir(una.FieldCount() == otra.FieldCount(), "the fields");
  Exigir(una.RecordCount() == otra.RecordCount(), "the rows");
  for (std::size_t campo = 0; campo < una.FieldCount(); ++campo) {
    Exigir(Escribible(una.Field(campo).nombre) == Escribible(otra.Field(campo).nombre), "the name of a field");
    // A declaration that isn't any type's own, such as a text of length "x", becomes that of a type which holds the
    // same.
    Exigir(ClaseDe(una.Field(campo).tipo) == ClaseDe(otra.Field(campo).tipo), "the type of a field");
    for (std::size_t fila = 0; fila < una.RecordCount(); ++fila) {
      Exigir(Iguales(una.Filas().Value(fila, campo), otra.Filas().Value(fila, campo)), "a value");
    }
  }
}

// Through a file and back: the same table, and a second time the same bytes.
void MirarGuardado(const Tabla& tabla, const utr::fuzz::CarpetaEnMemoria& carpeta) {
  tabla.GuardarSobre(carpeta / "1.xml");
  Tabla otra;
  otra.Open(carpeta / "1.xml");
  ExigirIguales(tabla, otra);
  Exigir(tabla.Pendientes() == otra.Pendientes(), "the pending rows");
  otra.GuardarSobre(carpeta / "2.xml");
  Exigir(utr::fuzz::LeerTodo(carpeta / "1.xml") == utr::fuzz::LeerTodo(carpeta / "2.xml"),
         "the bytes of a saved table");
}

// A filter by a value that a row has keeps that row, and as many rows as a walk over all of them finds.
void MirarFiltro(Tabla& tabla, std::size_t campo, std::size_t fila) {
  const std::string& nombre = tabla.Field(campo).nombre;
  const bool nombrable = tabla.IndiceCampo(nombre) == campo && nombre.find('=') == std::string::npos &&
                         utr::Recortar(nombre) == nombre && !nombre.starts_with('[');
  const utr::Valor valor = tabla.Filas().Value(fila, campo);
  if (!nombrable || std::holds_alternative<std::monostate>(valor)) return;
  tabla.Filter(nombre + "='" + utr::Reemplazar(utr::TextoDe(valor), "'", "''") + "'");
  std::size_t quedan = 0;
  bool esta = false;
  for (; !tabla.Eof(); tabla.MoveNext(), ++quedan) esta |= tabla.Filas().Actual() == fila;
  Exigir(quedan == tabla.RecordCount(), "the walk over a filter");
  // The general text of a double doesn't hold all of its digits.
  Exigir(esta || std::holds_alternative<double>(valor), "a row in a filter by its own value");
  tabla.Filter("");
}

void MirarOrden(Tabla& tabla, std::size_t campo) {
  const std::string& nombre = tabla.Field(campo).nombre;
  if (tabla.IndiceCampo(nombre) != campo || nombre.find(' ') != std::string::npos || nombre.starts_with('[')) return;
  const std::size_t filas = tabla.RecordCount();
  tabla.Sort(nombre + " DESC");
  std::vector<bool> vistas(filas);
  for (; !tabla.Eof(); tabla.MoveNext()) {
    Exigir(!vistas[tabla.Filas().Actual()], "a row that comes twice in an order");
    vistas[tabla.Filas().Actual()] = true;
  }
  Exigir(tabla.RecordCount() == filas, "the rows of an order");
  tabla.Sort("");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t cuantos) {
  static const utr::fuzz::CarpetaEnMemoria carpeta;
  utr::fuzz::EscribirTodo(carpeta / "t.xml", utr::fuzz::Vista(bytes, cuantos));
  Tabla tabla;
  if (!Abrir(tabla, carpeta / "t.xml")) return 0;
  MirarGuardado(tabla, carpeta);
  if (tabla.RecordCount() == 0) return 0;
  for (std::size_t campo = 0; campo < std::min<std::size_t>(tabla.FieldCount(), 8); ++campo) {
    MirarFiltro(tabla, campo, tabla.RecordCount() / 2);
    MirarOrden(tabla, campo);
  }
  ExigirIguales(*utr::CopiarRecordset(tabla, true), tabla);
  return 0;
}
