#include <gtest/gtest.h>

#include "base/Texto.h"
#include "support/Carpeta.h"
#include "tables/Comun.h"

// Files as the service writes them: what is read and written again is the same, byte for byte.
namespace utr {
namespace {

using prueba::Carpeta;
using prueba::Recorrido;

std::string Columna(const std::string& atributos, const std::string& tipo) {
  return "\t\t<s:AttributeType " + atributos + ">\r\n\t\t\t<s:datatype " + tipo + "/>\r\n\t\t</s:AttributeType>\r\n";
}

std::string Archivo(const std::string& columnas, const std::string& filas, const std::string& tabla = "") {
  return "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'\r\n"
         "\txmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'\r\n"
         "\txmlns:rs='urn:schemas-microsoft-com:rowset'\r\n"
         "\txmlns:z='#RowsetSchema'>\r\n"
         "<s:Schema id='RowsetSchema'>\r\n"
         "\t<s:ElementType name='row' content='eltOnly'" +
         tabla + ">\r\n" + columnas +
         "\t\t<s:extends type='rs:rowbase'/>\r\n\t</s:ElementType>\r\n</s:Schema>\r\n<rs:data>\r\n" + filas +
         "</rs:data>\r\n</xml>";
}

const std::string kIdYLugar =
    Columna("name='Id' rs:number='1' rs:nullable='true'", "dt:type='int' dt:maxLength='4' rs:fixedlength='true'") +
    Columna("name='Lugar' rs:number='2' rs:nullable='true'", "dt:type='string' dt:maxLength='20'");

std::string Guardada(const Carpeta& carpeta, const Tabla& tabla) {
  tabla.GuardarSobre(carpeta / "salida.xml");
  return prueba::LeerTodo(carpeta / "salida.xml");
}

void Abrir(const Carpeta& carpeta, const std::string& bytes, Tabla& tabla) {
  prueba::EscribirTodo(carpeta / "entrada.xml", bytes);
  tabla.Open(carpeta / "entrada.xml");
}

const std::string kCambios =
    "\t<rs:update>\r\n\t\t<rs:original>\r\n\t\t\t<z:row Id='1' Lugar='Köln'/>\r\n\t\t</rs:original>\r\n"
    "\t\t<z:row Lugar='Bonn'/>\r\n\t</rs:update>\r\n"
    "\t<z:row Id='2'/>\r\n"
    "\t<rs:update>\r\n\t\t<rs:original>\r\n\t\t\t<z:row Id='3' Lugar='x'/>\r\n\t\t</rs:original>\r\n"
    "\t\t<z:row rs:forcenull='Lugar'/>\r\n\t</rs:update>\r\n"
    "\t<rs:insert>\r\n\t\t<z:row Id='4'/>\r\n\t\t<z:row Id='5' rs:forcenull='Lugar'/>\r\n"
    "\t\t<z:row rs:forcenull='Lugar'/>\r\n\t\t<z:row Id='6' Lugar='D&#x27;Orsay'/>\r\n\t</rs:insert>\r\n"
    "\t<rs:delete>\r\n\t\t<z:row Id='7' Lugar=''/>\r\n\t\t<z:row/>\r\n\t</rs:delete>\r\n";

TEST(BytesGuardados, LoQueEscribeElServicioVuelveIgual) {
  const std::string digitos(70, 'a');
  const struct {
    const char* nombre;
    std::string bytes;
  } casos[] = {
      {"cambios pendientes", Archivo(kIdYLugar, kCambios, " rs:updatable='true'")},
      {"una tabla de una base de datos",
       Archivo(
           Columna("name='Id' rs:number='1' rs:rowid='true' rs:writeunknown='true' rs:basecatalog='b' "
                   "rs:basetable='t&#x26;u'\r\n\t\t\t rs:basecolumn='Id' rs:keycolumn='true' rs:autoincrement='true'",
                   "dt:type='int' dt:maxLength='4' rs:precision='10' rs:fixedlength='true' rs:maybenull='false'") +
               Columna("name='v' rs:number='2' rs:rowver='true'",
                       "dt:type='bin.hex' dt:maxLength='8' rs:precision='255' rs:fixedlength='true'") +
               Columna("name='n' rs:number='3' rs:cachedeferred='true' rs:nullable='true' rs:maydefer='true' "
                       "rs:write='true'\r\n\t\t\t rs:writeunknown='true'",
                       "dt:type='number' rs:dbtype='varnumeric' dt:maxLength='20' rs:scale='255' "
                       "rs:precision='255'"),
           "\t<z:row Id='1' n='.50'/>\r\n", " rs:CommandTimeout='30' rs:updatable='true'")},
      {"precisiones de textos y bytes",
       Archivo(Columna("name='a' rs:number='1'", "dt:type='string' dt:maxLength='5' rs:precision='0'") +
                   Columna("name='b' rs:number='2'", "dt:type='string' dt:maxLength='5'") +
                   Columna("name='c' rs:number='3'", "dt:type='string'") +
                   Columna("name='d' rs:number='4'", "dt:type='bin.hex' dt:maxLength='5' rs:precision='0'") +
                   Columna("name='e' rs:number='5'", "dt:type='bin.hex' dt:maxLength='5' rs:precision='7'"),
               "")},
      {"nombres", Archivo(Columna("name='ows_N' rs:name='N de orden' rs:number='1'", "dt:type='string'") +
                              Columna("name='Año' rs:number='2'", "dt:type='string'") +
                              Columna("name='c2' rs:name='Año' rs:number='3'", "dt:type='string'"),
                          "\t<z:row ows_N='1' Año='2' c2='3'/>\r\n")},
      {"digitos en varios renglones",
       Archivo(
           Columna("name='h' rs:number='1'", "dt:type='bin.hex' dt:maxLength='4294967295' rs:long='true'") +
               Columna("name='t' rs:number='2'", "dt:type='string'"),
           "\t<z:row h='" + digitos + "\r\n\t\t" + digitos + "' t='x'/>\r\n\t<z:row h='" + digitos + "' t='x'/>\r\n")},
  };
  const Carpeta carpeta;
  for (const auto& c : casos) {
    Tabla t;
    Abrir(carpeta, c.bytes, t);
    EXPECT_EQ(Guardada(carpeta, t), c.bytes) << c.nombre;
    // Written by others: the same table, through the reader of any layout.
    Tabla ajena;
    Abrir(carpeta, Reemplazar(c.bytes, "<rs:data>", "<rs:data >"), ajena);
    EXPECT_EQ(Guardada(carpeta, ajena), c.bytes) << c.nombre;
  }
}

TEST(BytesGuardados, UnCambioPendienteSigueALaTabla) {
  const Carpeta carpeta;
  Tabla t;
  Abrir(carpeta, Archivo(kIdYLugar, kCambios), t);
  EXPECT_EQ(Recorrido(t, "Id"), "1 2 3 4 5  6");
  EXPECT_EQ(t.Pendientes(), 8U);
  t.MoveFirst();
  t.Set("Id", "9");
  t.IrAFila(1);
  t.Set("Lugar", "y");
  t.IrAFila(3);
  t.Set("Lugar", Valor{});
  t.AddNew();
  std::string esperado = Reemplazar(kCambios, "<z:row Lugar='Bonn'/>", "<z:row Id='9' Lugar='Bonn'/>");
  esperado = Reemplazar(esperado, "<z:row Id='2'/>", "<z:row Id='2' Lugar='y'/>");
  esperado = Reemplazar(esperado, "<z:row Id='4'/>", "<z:row Id='4' rs:forcenull='Lugar'/>");
  esperado = Reemplazar(esperado, "\t</rs:insert>", "\t\t<z:row rs:forcenull='Id Lugar'/>\r\n\t</rs:insert>");
  EXPECT_EQ(Guardada(carpeta, t), Archivo(kIdYLugar, esperado));
  t.UpdateBatch();
  EXPECT_EQ(t.Pendientes(), 0U);
  EXPECT_EQ(Guardada(carpeta, t),
            Archivo(kIdYLugar,
                    "\t<z:row Id='9' Lugar='Bonn'/>\r\n\t<z:row Id='2' Lugar='y'/>\r\n\t<z:row Id='3'/>\r\n"
                    "\t<z:row Id='4'/>\r\n\t<z:row Id='5'/>\r\n\t<z:row/>\r\n"
                    "\t<z:row Id='6' Lugar='D&#x27;Orsay'/>\r\n\t<z:row/>\r\n"));
}

TEST(BytesGuardados, OtrosBytesDejanDeEstarEnVariosRenglones) {
  const Carpeta carpeta;
  Tabla t;
  const std::string columna = Columna("name='h' rs:number='1'", "dt:type='bin.hex' dt:maxLength='9'");
  Abrir(carpeta, Archivo(columna, "\t<z:row h='0A\r\n\t\t0b'/>\r\n"), t);
  EXPECT_EQ(t.Texto("h"), "0a0b");
  t.Set("h", "0c");
  EXPECT_EQ(Guardada(carpeta, t), Archivo(columna, "\t<z:row h='0c'/>\r\n"));
  t.Set("h", "0a0b");
  EXPECT_EQ(Guardada(carpeta, t), Archivo(columna, "\t<z:row h='0A\r\n\t\t0b'/>\r\n"));
}

// A table of texts alone goes to the file by a quicker road than one with a column of numbers beside them, and by
// others according to how many texts there are and how long they are: each of them writes what is in the table, and the
// same.
class CaminosDeGuardar {
 public:
  CaminosDeGuardar(std::size_t distintos, std::size_t largo, std::string dentro)
      : filas_(4 * distintos), distintos_(distintos), largo_(largo), dentro_(std::move(dentro)) {}

  std::string Filas(bool con_numeros) const {
    Tabla tabla;
    tabla.Append("t", TipoCampo::kVarChar, 70000);
    tabla.Append("u", TipoCampo::kVarChar, 70000);
    if (con_numeros) tabla.Append("n", TipoCampo::kEntero);
    tabla.Open();
    for (std::size_t fila = 0; fila < filas_; ++fila) {
      tabla.AddNew();
      if (fila % 11 != 3) tabla.Set(0, Texto(fila));
      if (fila % 3 != 1) tabla.Set(1, std::to_string(fila % 5));
    }
    tabla.UpdateBatch();
    const Carpeta carpeta;
    const std::string bytes = Guardada(carpeta, tabla);
    Releer(carpeta);
    return bytes.substr(bytes.find("<rs:data>"));
  }

 private:
  std::string Texto(std::size_t fila) const {
    std::string texto = std::to_string(fila * 7 % distintos_) + dentro_;
    if (texto.size() < largo_) texto.append(largo_ - texto.size(), 'x');
    return texto;
  }

  void Releer(const Carpeta& carpeta) const {
    Tabla tabla;
    tabla.Open(carpeta / "salida.xml");
    ASSERT_EQ(tabla.RecordCount(), filas_);
    for (std::size_t fila = 0; fila < filas_; ++fila, tabla.MoveNext()) {
      ASSERT_EQ(tabla.Texto("t"), fila % 11 == 3 ? "" : Texto(fila)) << "row " << fila;
      ASSERT_EQ(tabla.Texto("u"), fila % 3 == 1 ? "" : std::to_string(fila % 5)) << "row " << fila;
    }
  }

  std::size_t filas_;
  std::size_t distintos_;
  std::size_t largo_;
  std::string dentro_;
};

TEST(BytesGuardados, LasFilasSonLasMismasPorCualquierCamino) {
  struct Caso {
    std::size_t distintos;
    std::size_t largo;
    const char* dentro;
  };
  std::vector<Caso> casos = {{2048, 7, ""}, {2049, 63, "&'ñ"}, {3, 33000, "'"}};
  for (const std::size_t largo : {6U, 7U, 14U, 15U, 30U, 31U, 32U, 33U, 62U, 63U}) casos.push_back({2049, largo, ""});
  for (const std::size_t largo : {0U, 6U, 7U, 8U, 14U, 15U, 16U, 58U, 59U, 60U, 62U, 63U, 64U, 65U, 200U}) {
    casos.push_back({3, largo, ""});
    casos.push_back({3, largo, "&'ñ"});
  }
  for (const Caso& caso : casos) {
    const CaminosDeGuardar tabla(caso.distintos, caso.largo, caso.dentro);
    const bool iguales = tabla.Filas(false) == tabla.Filas(true);
    EXPECT_TRUE(iguales) << caso.distintos << " texts of " << caso.largo << caso.dentro;
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace utr
