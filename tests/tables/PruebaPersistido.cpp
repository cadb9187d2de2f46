#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

#include "base/Texto.h"
#include "support/Carpeta.h"
#include "support/NumeroDeError.h"
#include "support/Tablas.h"
#include "tables/Comun.h"

namespace utr {
namespace {

using prueba::Carpeta;
using prueba::NumeroDeError;
using prueba::Recorrido;

const std::string kCabeza =
    "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'\r\n"
    "\txmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'\r\n"
    "\txmlns:rs='urn:schemas-microsoft-com:rowset'\r\n"
    "\txmlns:z='#RowsetSchema'>\r\n";

// Wherever it stands: values are looked through eight bytes at a time, and ready ones are made of texts that repeat.
TEST(Persistido, EscribeReferenciasEnTodoLugar) {
  const struct {
    const char* caracter;
    const char* escrito;
  } casos[] = {{"&", "&#x26;"},  {"<", "&#x3c;"}, {">", "&#x3e;"}, {"'", "&#x27;"},
               {"\"", "&#x22;"}, {"\n", "&#xa;"}, {"\x1f", ""},    {"\xF1", "ñ"}};
  const Carpeta carpeta;
  for (const auto& c : casos) {
    for (const std::size_t lugar : {0U, 6U, 7U, 8U, 15U, 17U, 40U}) {
      const auto texto = [&](const char* algo) { return std::string(lugar, 'a') + algo + "b%(;=?!#"; };
      Tabla t;
      t.Append("Una", TipoCampo::kVarChar, 30);
      t.Append("Cuatro", TipoCampo::kVarChar, 30);
      t.Open();
      for (int fila = 0; fila < 4; ++fila) {
        t.AddNew();
        if (fila == 0) t.Set("Una", texto(c.caracter));
        t.Set("Cuatro", texto(c.caracter));
      }
      t.UpdateBatch();
      t.GuardarSobre(carpeta / "t.xml");
      const std::string esperado = "Una='" + texto(c.escrito) + "' Cuatro='" + texto(c.escrito) + "'";
      EXPECT_NE(prueba::LeerTodo(carpeta / "t.xml").find(esperado), std::string::npos) << c.escrito << " " << lugar;
    }
  }
}

TEST(Persistido, EscribeLosBytesDelServicio) {
  Tabla t;
  t.Append("Id", TipoCampo::kEntero, 0, atributo::kActualizable);
  t.Append("Open since", TipoCampo::kFecha);
  t.Append("Canal", TipoCampo::kVarChar, 30);
  t.Append("CtePluvi", TipoCampo::kDoble);
  t.Append("Modificado", TipoCampo::kLogico);
  t.Open();
  t.AddNew();
  t.Set("Id", "1");
  t.Set("Open since", "2024-05-06T07:08:09");
  t.Set("Canal", "a'b\"<&>\t\r\nñ");
  t.Set("CtePluvi", "3.14159");
  t.Set("Modificado", Valor{true});
  t.AddNew();
  t.Set("Canal", "");
  t.UpdateBatch();
  t.AddNew();
  t.Set("Id", "-2");
  const Carpeta carpeta;
  t.Save(carpeta / "t.xml");
  const std::string esperado =
      kCabeza +
      "<s:Schema id='RowsetSchema'>\r\n"
      "\t<s:ElementType name='row' content='eltOnly' rs:updatable='true'>\r\n"
      "\t\t<s:AttributeType name='Id' rs:number='1' rs:write='true'>\r\n"
      "\t\t\t<s:datatype dt:type='int' dt:maxLength='4' rs:precision='0' rs:fixedlength='true' "
      "rs:maybenull='false'/>\r\n"
      "\t\t</s:AttributeType>\r\n"
      "\t\t<s:AttributeType name='c1' rs:name='Open since' rs:number='2' rs:nullable='true' rs:write='true'>\r\n"
      "\t\t\t<s:datatype dt:type='dateTime' rs:dbtype='variantdate' dt:maxLength='16' rs:precision='0' "
      "rs:fixedlength='true'\r\n"
      "\t\t\t rs:maybenull='false'/>\r\n"
      "\t\t</s:AttributeType>\r\n"
      "\t\t<s:AttributeType name='Canal' rs:number='3' rs:nullable='true' rs:write='true'>\r\n"
      "\t\t\t<s:datatype dt:type='string' rs:dbtype='str' dt:maxLength='30' rs:precision='0' rs:maybenull='false'/>\r\n"
      "\t\t</s:AttributeType>\r\n"
      "\t\t<s:AttributeType name='CtePluvi' rs:number='4' rs:nullable='true' rs:write='true'>\r\n"
      "\t\t\t<s:datatype dt:type='float' dt:maxLength='8' rs:precision='0' rs:fixedlength='true' "
      "rs:maybenull='false'/>\r\n"
      "\t\t</s:AttributeType>\r\n"
      "\t\t<s:AttributeType name='Modificado' rs:number='5' rs:nullable='true' rs:write='true'>\r\n"
      "\t\t\t<s:datatype dt:type='boolean' dt:maxLength='2' rs:precision='0' rs:fixedlength='true' "
      "rs:maybenull='false'/>\r\n"
      "\t\t</s:AttributeType>\r\n"
      "\t\t<s:extends type='rs:rowbase'/>\r\n"
      "\t</s:ElementType>\r\n"
      "</s:Schema>\r\n"
      "<rs:data>\r\n"
      "\t<z:row Id='1' c1='2024-05-06T07:08:09' Canal='a&#x27;b&#x22;&#x3c;&#x26;&#x3e;&#x9;&#xd;&#xa;ñ' "
      "CtePluvi='3.1415899999999999'\r\n"
      "\t\t Modificado='True'/>\r\n"
      "\t<z:row Canal=''/>\r\n"
      "\t<rs:insert>\r\n"
      "\t\t<z:row Id='-2' rs:forcenull='c1 Canal CtePluvi Modificado'/>\r\n"
      "\t</rs:insert>\r\n"
      "</rs:data>\r\n"
      "</xml>";
  EXPECT_EQ(prueba::LeerTodo(carpeta / "t.xml"), esperado);

  Tabla leida;
  leida.Open(carpeta / "t.xml");
  EXPECT_EQ(leida.Pendientes(), 1U);
  EXPECT_EQ(leida.Texto("Canal"), "a'b\"<&>\t\r\nñ");
  leida.Save(carpeta / "otra.xml");
  EXPECT_EQ(prueba::LeerTodo(carpeta / "otra.xml"), esperado) << "what it wrote reads and writes the same";
}

// A line takes another attribute up to 107 bytes, whatever the attribute's own length.
TEST(Persistido, ElAnchoDeUnRenglonSeCuentaEnBytes) {
  const Carpeta carpeta;
  const std::size_t propios = std::string_view("\t<z:row A=''").size();
  for (const auto& [texto, bytes] :
       std::initializer_list<std::pair<std::string, std::size_t>>{{std::string(107 - propios, 'x'), 107},
                                                                  {std::string(108 - propios, 'x'), 108},
                                                                  {std::string(106 - propios - 1, 'x') + "ñ", 107},
                                                                  {std::string(106 - propios, 'x') + "ñ", 108}}) {
    const auto t = TablaDeTextos({"A", "B"}, {{texto.c_str(), "1"}});
    t->GuardarSobre(carpeta / "t.xml");
    const std::string corte = bytes < 108 ? " " : "\r\n\t\t ";
    EXPECT_NE(prueba::LeerTodo(carpeta / "t.xml").find("A='" + texto + "'" + corte + "B='1'"), std::string::npos)
        << bytes;
  }
}

TEST(Persistido, IdaYVueltaDeTodosLosTipos) {
  const struct {
    TipoCampo tipo;
    const char* valor;
  } casos[] = {
      {TipoCampo::kVarWChar, "Köln 💧"},
      {TipoCampo::kWChar, "ab   "},
      {TipoCampo::kLongVarWChar, "memo"},
      {TipoCampo::kVarChar, "x"},
      {TipoCampo::kChar, "y"},
      {TipoCampo::kLongVarChar, "z"},
      {TipoCampo::kEntero8, "-128"},
      {TipoCampo::kEntero8SinSigno, "255"},
      {TipoCampo::kEntero16, "-32768"},
      {TipoCampo::kEntero16SinSigno, "65535"},
      {TipoCampo::kEntero, "-2147483648"},
      {TipoCampo::kEnteroSinSigno, "4294967295"},
      {TipoCampo::kEntero64, "-9007199254740993"},
      {TipoCampo::kEntero64SinSigno, "18446744073709551615"},
      {TipoCampo::kDoble, "1.7976931348623157E+308"},
      {TipoCampo::kSimple, "5.325"},
      {TipoCampo::kLogico, "False"},
      {TipoCampo::kMoneda, "9.7"},
      {TipoCampo::kDecimal, "5000.5"},
      {TipoCampo::kNumerico, "-.0100"},
      {TipoCampo::kFecha, "1899-12-30T10:00:00"},
      {TipoCampo::kMarcaDeTiempo, "2001-02-03T04:05:06.123000000"},
      {TipoCampo::kFechaSola, "2001-02-03"},
      {TipoCampo::kHoraSola, "04:05:06"},
      {TipoCampo::kGuid, "{0C6F5B3E-0000-4000-8000-00AA00BB00CC}"},
      {TipoCampo::kBinario, "00ff7a"},
      {TipoCampo::kVarBinario, "01"},
      {TipoCampo::kLongVarBinario, "02"},
      {TipoCampo::kVariante, "lo que sea"},
  };
  const Carpeta carpeta;
  Tabla t;
  int n = 0;
  for (const auto& c : casos) {
    Campo campo;
    campo.nombre = "f" + std::to_string(n++);
    campo.tipo = c.tipo;
    campo.tamano = c.tipo == TipoCampo::kVariante ? 0 : 10;
    campo.escala = 3;
    t.Append(campo);
  }
  t.Append("memo", TipoCampo::kVarChar, 0);
  t.Open();
  t.AddNew();
  for (std::size_t i = 0; i < std::size(casos); ++i) t.Set(i, casos[i].valor);
  t.Set("memo", "sin límite");
  t.UpdateBatch();
  t.Save(carpeta / "1.xml");
  Tabla u;
  u.Open(carpeta / "1.xml");
  for (std::size_t i = 0; i < std::size(casos); ++i) {
    EXPECT_EQ(u.Field(i).tipo, casos[i].tipo) << i;
    EXPECT_EQ(u.Texto(i), t.Texto(i)) << i;
  }
  u.Save(carpeta / "2.xml");
  EXPECT_EQ(prueba::LeerTodo(carpeta / "1.xml"), prueba::LeerTodo(carpeta / "2.xml"));
  EXPECT_NE(prueba::LeerTodo(carpeta / "1.xml").find("f15='5.3249998'"), std::string::npos);
}

TEST(Persistido, DeclaraCadaTipoComoElServicio) {
  using T = TipoCampo;
  const struct {
    T tipo;
    const char* declarado;
  } casos[] = {
      {T::kVarWChar, "dt:type='string' dt:maxLength='10' rs:precision='0'"},
      {T::kWChar, "dt:type='string' dt:maxLength='10' rs:precision='0' rs:fixedlength='true'"},
      {T::kLongVarWChar, "dt:type='string' dt:maxLength='10' rs:precision='0' rs:long='true'"},
      {T::kBstr, "dt:type='string' dt:maxLength='10' rs:precision='0' rs:long='true'"},
      {T::kVarChar, "dt:type='string' rs:dbtype='str' dt:maxLength='10' rs:precision='0'"},
      {T::kChar, "dt:type='string' rs:dbtype='str' dt:maxLength='10' rs:precision='0' rs:fixedlength='true'"},
      {T::kLongVarChar, "dt:type='string' rs:dbtype='str' dt:maxLength='10' rs:precision='0' rs:long='true'"},
      {T::kEntero8, "dt:type='i1' dt:maxLength='1' rs:precision='0' rs:fixedlength='true'"},
      {T::kEntero8SinSigno, "dt:type='ui1' dt:maxLength='1' rs:precision='0' rs:fixedlength='true'"},
      {T::kEntero16, "dt:type='i2' dt:maxLength='2' rs:precision='0' rs:fixedlength='true'"},
      {T::kEntero16SinSigno, "dt:type='ui2' dt:maxLength='2' rs:precision='0' rs:fixedlength='true'"},
      {T::kEntero, "dt:type='int' dt:maxLength='4' rs:precision='0' rs:fixedlength='true'"},
      {T::kEnteroSinSigno, "dt:type='ui4' dt:maxLength='4' rs:precision='0' rs:fixedlength='true'"},
      {T::kEntero64, "dt:type='i8' dt:maxLength='8' rs:precision='0' rs:fixedlength='true'"},
      {T::kEntero64SinSigno, "dt:type='ui8' dt:maxLength='8' rs:precision='0' rs:fixedlength='true'"},
      {T::kSimple, "dt:type='r4' dt:maxLength='4' rs:precision='0' rs:fixedlength='true'"},
      {T::kDoble, "dt:type='float' dt:maxLength='8' rs:precision='0' rs:fixedlength='true'"},
      {T::kLogico, "dt:type='boolean' dt:maxLength='2' rs:precision='0' rs:fixedlength='true'"},
      {T::kMoneda, "dt:type='number' rs:dbtype='currency' dt:maxLength='8' rs:precision='0' rs:fixedlength='true'"},
      {T::kDecimal,
       "dt:type='number' rs:dbtype='decimal' dt:maxLength='16' rs:scale='0' rs:precision='0' rs:fixedlength='true'"},
      {T::kNumerico,
       "dt:type='number' rs:dbtype='numeric' dt:maxLength='19' rs:scale='0' rs:precision='0' rs:fixedlength='true'"},
      {T::kNumericoVariable, "dt:type='number' rs:dbtype='varnumeric' dt:maxLength='10' rs:scale='0' rs:precision='0'"},
      {T::kFecha,
       "dt:type='dateTime' rs:dbtype='variantdate' dt:maxLength='16' rs:precision='0' rs:fixedlength='true'"},
      {T::kMarcaDeTiempo,
       "dt:type='dateTime' rs:dbtype='timestamp' dt:maxLength='16' rs:scale='0' rs:precision='0' "
       "rs:fixedlength='true'"},
      {T::kFechaArchivo,
       "dt:type='dateTime' rs:dbtype='filetime' dt:maxLength='16' rs:precision='0' rs:fixedlength='true'"},
      {T::kFechaSola, "dt:type='date' dt:maxLength='6' rs:precision='0' rs:fixedlength='true'"},
      {T::kHoraSola, "dt:type='time' dt:maxLength='6' rs:precision='0' rs:fixedlength='true'"},
      {T::kGuid, "dt:type='uuid' dt:maxLength='16' rs:precision='0' rs:fixedlength='true'"},
      {T::kBinario, "dt:type='bin.hex' dt:maxLength='10' rs:precision='0' rs:fixedlength='true'"},
      {T::kVarBinario, "dt:type='bin.hex' dt:maxLength='10' rs:precision='0'"},
      {T::kLongVarBinario, "dt:type='bin.hex' dt:maxLength='10' rs:precision='0' rs:long='true'"},
  };
  const Carpeta carpeta;
  for (const auto& c : casos) {
    Tabla t;
    t.Append("f", c.tipo, 10);
    t.Open();
    t.GuardarSobre(carpeta / "t.xml");
    const std::string texto = Reemplazar(prueba::LeerTodo(carpeta / "t.xml"), "\r\n\t\t\t ", " ");
    const std::string esperado = std::string("<s:datatype ") + c.declarado + " rs:maybenull='false'/>";
    EXPECT_NE(texto.find(esperado), std::string::npos) << esperado;
  }
}

TEST(Persistido, UnValorLargoSeGuardaEnteroYSeDeclara) {
  const Carpeta carpeta;
  const auto t = TablaCon({{"C", TipoCampo::kVarChar, 20}}, {{"veintiún caracteres ñ"}});
  t->Save(carpeta / "t.xml");
  Tabla u;
  u.Open(carpeta / "t.xml");
  EXPECT_EQ(u.Texto("C"), "veintiún caracteres ñ");
  EXPECT_EQ(u.Field("C").tamano, 21U);
  EXPECT_EQ(t->Field("C").tamano, 20U);
}

TEST(Persistido, NoReemplazaUnArchivoQueExiste) {
  const Carpeta carpeta;
  prueba::EscribirTodo(carpeta / "t.xml", "anterior");
  const auto t = TablaDeTextos({"C"}, {{"1"}});
  EXPECT_EQ(NumeroDeError([&] { t->Save(carpeta / "t.xml"); }), error::kArchivo);
  EXPECT_EQ(prueba::LeerTodo(carpeta / "t.xml"), "anterior");
  EXPECT_EQ(NumeroDeError([&] { t->Save(carpeta / "u.xml", 0); }), error::kLlamada);
  EXPECT_EQ(NumeroDeError([&] { t->Save(carpeta / "no" / "u.xml"); }), error::kArchivo);
  std::filesystem::create_symlink(carpeta / "lejos.xml", carpeta / "enlace.xml");
  EXPECT_EQ(NumeroDeError([&] { t->Save(carpeta / "enlace.xml"); }), error::kArchivo);
  EXPECT_EQ(carpeta.Cuantos(), 2U);
  t->GuardarSobre(carpeta / "t.xml");
  Tabla leida;
  leida.Open(carpeta / "t.xml");
  EXPECT_EQ(Recorrido(leida, "C"), "1");
}

TEST(Persistido, UnaTablaSinCamposNoSeGuarda) {
  const Carpeta carpeta;
  prueba::EscribirTodo(carpeta / "t.xml", "anterior");
  Tabla t;
  t.Open();
  EXPECT_EQ(NumeroDeError([&] { t.Save(carpeta / "u.xml"); }), error::kLlamada);
  EXPECT_EQ(NumeroDeError([&] { t.GuardarSobre(carpeta / "t.xml"); }), error::kLlamada);
  EXPECT_EQ(prueba::LeerTodo(carpeta / "t.xml"), "anterior");
  EXPECT_EQ(carpeta.Cuantos(), 1U);
}

TEST(Persistido, GuardaLaTablaEnteraAunqueSeMuestreUnaParte) {
  const Carpeta carpeta;
  const auto t = TablaDeTextos({"C", "n"}, {{"b", "1"}, {"a", "2"}, {"b", "3"}});
  t->AddNew();
  t->Set("n", "4");
  t->Save(carpeta / "sin filtro.xml");
  t->Filter("C='b'");
  t->Sort("n DESC");
  t->MoveLast();
  t->Save(carpeta / "con filtro.xml");
  EXPECT_EQ(prueba::LeerTodo(carpeta / "con filtro.xml"), prueba::LeerTodo(carpeta / "sin filtro.xml"));
  EXPECT_EQ(t->Texto("n"), "1") << "and the cursor stays";
  Tabla leida;
  leida.Open(carpeta / "con filtro.xml");
  EXPECT_EQ(Recorrido(leida, "n"), "1 2 3 4");
}

// Bytes of a file and what a reader sees of its rows: fields joined by "|", rows by "/".
struct Entrada {
  const char* nombre;
  std::string bytes;
  const char* vista;
};

std::string Vista(Tabla& t) {
  std::string vista;
  for (std::size_t i = 0; i < t.FieldCount(); ++i) vista += (i ? "|" : "") + t.Field(i).nombre;
  for (t.MoveFirst(); !t.Eof(); t.MoveNext()) {
    vista += "/";
    for (std::size_t i = 0; i < t.FieldCount(); ++i) vista += (i ? "|" : "") + (t.EsNulo(i) ? "-" : t.Texto(i));
  }
  return vista;
}

std::string Utf16(const std::string& ascii, bool grande) {
  std::string s = grande ? "\xFE\xFF" : "\xFF\xFE";
  for (const char c : ascii) s += grande ? std::string({'\0', c}) : std::string({c, '\0'});
  return s;
}

const std::string kEsquemaSimple =
    "<s:Schema id='RowsetSchema'><s:ElementType name='row' content='eltOnly'>"
    "<s:AttributeType name='Id' rs:number='1'><s:datatype dt:type='int' dt:maxLength='4'/></s:AttributeType>"
    "<s:AttributeType name='Town' rs:number='2'><s:datatype dt:type='string' dt:maxLength='20'/></s:AttributeType>"
    "<s:extends type='rs:rowbase'/></s:ElementType></s:Schema>";

std::string Veces(std::string_view texto, int veces) {
  std::string s;
  while (veces-- > 0) s += texto;
  return s;
}

// A table of one row whose text stands in the file as given.
std::string ConTexto(const std::string& texto) {
  return kCabeza + kEsquemaSimple + "<rs:data><z:row Id='1' Town='" + texto + "'/></rs:data></xml>";
}

std::vector<Entrada> Entradas() {
  const std::string cambios =
      kCabeza + kEsquemaSimple +
      "<rs:data><rs:update><rs:original><z:row Id='1' Town='Köln'/></rs:original><z:row Town='Bonn'/></rs:update>"
      "<z:row Id='2'/><rs:insert><z:row Id='4' Town='D&#x27;Orsay'/></rs:insert>"
      "<rs:delete><z:row Id='3' Town=''/></rs:delete></rs:data></xml>";
  const std::string simple = kCabeza + kEsquemaSimple + "<rs:data><z:row Id='7' Town=''/></rs:data></xml>";
  return {
      {"cambios", cambios, "Id|Town/1|Bonn/2|-/4|D'Orsay"},
      {"forcenull en un cambio",
       kCabeza + kEsquemaSimple +
           "<rs:data><rs:update><rs:original><z:row Id='1' Town='x'/></rs:original>"
           "<z:row Id='5' rs:forcenull='TOWN'/></rs:update></rs:data></xml>",
       "Id|Town/5|-"},
      {"cambio sin original",
       kCabeza + kEsquemaSimple + "<rs:data><rs:update><z:row Id='1'/></rs:update></rs:data></xml>", "Id|Town/1|-"},
      {"sin datos", kCabeza + kEsquemaSimple + "</xml>", "Id|Town"},
      {"dos bloques y parámetros ajenos",
       kCabeza + kEsquemaSimple +
           "<rs:data><z:row Id='1'/></rs:data><rs:data><z:row Id='2'/></rs:data><params a='1'/></xml>",
       "Id|Town/1|-/2|-"},
      {"utf-8 con marca", "\xEF\xBB\xBF" + simple, "Id|Town/7|"},
      {"declaración", "<?xml version='1.0' encoding='UTF-8'?>\r\n" + simple, "Id|Town/7|"},
      {"utf-16 LE", Utf16(simple, false), "Id|Town/7|"},
      {"utf-16 BE", Utf16(simple, true), "Id|Town/7|"},
      {"bytes ANSI",
       kCabeza + kEsquemaSimple +
           "<rs:data><z:row Id='1' Town='Caba\xF1"
           "a'/></rs:data></xml>",
       "Id|Town/1|Cabaña"},
      {"un byte malo entre caracteres enteros", ConTexto("Precipitaci\xC3\xB3n \xF1 \xE2\x82"),
       "Id|Town/1|Precipitación � ��"},
      {"declara UTF-8 con un byte malo",
       "<?xml version='1.0' encoding='utf-8'?>" + ConTexto("Caba\xF1"
                                                           "a"),
       "Id|Town/1|Caba�a"},
      {"marca de UTF-8 con un byte malo",
       "\xEF\xBB\xBF" + ConTexto("Caba\xF1"
                                 "a"),
       "Id|Town/1|Caba�a"},
      {"declara ANSI y parece UTF-8",
       "<?xml version=\"1.0\" encoding=\"Windows-1252\"?>\r\n" + ConTexto("\xC3\xB3 \x80"), "Id|Town/1|Ã³ €"},
      {"declara lo que no es", "<?xml version='1.0' encoding='UTF-16'?>" + ConTexto("ñ"), "Id|Town/1|ñ"},
      {"referencias que no son caracteres",
       ConTexto("&#xD83D;-&#x110000;-&#57343;-&#0;-&#x1;-&#xFFFF;-&#x100000041;-&#99999999999999999999;"),
       "Id|Town/1|�-�-�-�-�-�-�-�"},
      {"referencias que lo son", ConTexto("&#x41;&#66;&#xFFFD;&#x1F4A7;&#x9;&#xx;&#;&#x 41;&amp;#x110000;"),
       "Id|Town/1|AB�💧\t&#xx;&#;&#x 41;&#x110000;"},
      {"media pareja en utf-16", Reemplazar(Utf16(ConTexto("a@b"), false), std::string_view("@\0", 2), "\x3D\xD8"),
       "Id|Town/1|a�b"},
      {"pareja en utf-16 y letra suelta",
       Reemplazar(Utf16(ConTexto("a@b"), true), std::string_view("\0@", 2), "\xD8\x3D\xDC\xA7") + "x", "Id|Town/1|a💧b"},
      {"filas que el esquema nombra de otro modo",
       Reemplazar(kCabeza + kEsquemaSimple, "name='row'", "name='Fila'") +
           "<rs:data><z:row Id='1'/><z:fila Id='2'/></rs:data></xml>",
       "Id|Town/1|-/2|-"},
      {"varios cambios en uno",
       kCabeza + kEsquemaSimple +
           "<rs:data><rs:update><rs:original><z:row Id='1'/></rs:original><z:row Town='a'/>"
           "<rs:original><z:row Id='2'/><z:row Id='3'/></rs:original><z:row Town='b'/></rs:update></rs:data></xml>",
       "Id|Town/1|a/2|b/3|-"},
      {"blancos crudos", kCabeza + kEsquemaSimple + "<rs:data><z:row Id=' 1 ' Town=' a\t\r\nb '/></rs:data></xml>",
       "Id|Town/1| a\t\r\nb "},
      {"claves en otro caso y desconocidas",
       kCabeza + kEsquemaSimple + "<rs:data><z:row TOWN='x' otra='1' id='1,000'/></rs:data></xml>", "Id|Town/1000|x"},
      {"comillas dobles, tipos en el AttributeType",
       "<xml xmlns:s=\"uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882\" "
       "xmlns:dt=\"uuid:C2F41010-65B3-11d1-A29F-00AA00C14882\" "
       "xmlns:rs=\"urn:schemas-microsoft-com:rowset\" xmlns:z=\"#RowsetSchema\"><s:Schema id=\"RowsetSchema\">"
       "<s:ElementType name=\"row\" content=\"eltOnly\"><s:AttributeType name=\"a\" dt:type=\"int\" "
       "rs:maybenull=\"true\"/>"
       "<s:AttributeType name=\"b\"/></s:ElementType></s:Schema><rs:data><z:row b=\"it's\" a=\"1.5\"/></rs:data></xml>",
       "a|b/2|it's"},
      {"referencias",
       kCabeza + "<s:Schema id='RowsetSchema'><s:ElementType name='row' content='eltOnly'><s:attribute "
                 "type='b'/><s:attribute "
                 "type='a'/><s:extends type='rs:rowbase'/></s:ElementType><s:AttributeType name='a' dt:type='i2'/>"
                 "<s:AttributeType name='b'/></s:Schema><rs:data><z:row a='1' b='2'/></rs:data></xml>",
       "b|a/2|1"},
      {"orden por número, nombres y ocultas",
       kCabeza + "<s:Schema id='RowsetSchema'><s:ElementType name='row'><s:AttributeType name='z' rs:number='2'/>"
                 "<s:AttributeType name='c0' rs:name='Open since' rs:number='1'/>"
                 "<s:AttributeType name='k' rs:number='3' rs:hidden='true'/></s:ElementType></s:Schema>"
                 "<rs:data><z:row z='1' c0='2' k='3'/></rs:data></xml>",
       "Open since|z/2|1"},
      {"nombres repetidos y columna sin nombre",
       kCabeza + "<s:Schema id='RowsetSchema'><s:ElementType name='row'><s:AttributeType name='c1'/><s:AttributeType "
                 "name='x' rs:name='C1'/><s:AttributeType rs:number='3'/><s:AttributeType name='y' rs:name='a b'/>"
                 "</s:ElementType></s:Schema><rs:data><z:row x='2' y='3'/></rs:data></xml>",
       "c1|C1|a b/-|2|3"},
      {"un bloque propio detrás de otro",
       kCabeza + kEsquemaSimple +
           "<rs:data><z:row Id='1'/></rs:data>\r\n<rs:data>\r\n\t<z:row Id='2'/>\r\n</rs:data>\r\n</xml>",
       "Id|Town/1|-/2|-"},
      {"envolturas ajenas",
       kCabeza + kEsquemaSimple + "<rs:data><f:insert xmlns:f='u'><g><z:row Id='1'/></g></f:insert></rs:data></xml>",
       "Id|Town/1|-"},
      {"envolturas sin fin",
       kCabeza + kEsquemaSimple + "<rs:data>" + Veces("<q>", 100000) + Veces("</q>", 100000) +
           "<z:row Id='1'/></rs:data></xml>",
       "Id|Town/1|-"},
      {"capítulos en el formato propio",
       kCabeza + kEsquemaSimple +
           "<rs:data>\r\n\t<z:row Id='1'>\r\n\t\t<Parts No='10'/>\r\n\t</z:row>\r\n\t<z:row Id='2'/>\r\n"
           "</rs:data>\r\n</xml>",
       "Id|Town/1|-/2|-"},
      {"apóstrofos sueltos",
       kCabeza + kEsquemaSimple + "<rs:data>\r\n\t<z:row Id='1' Town='O'Higgins'/>\r\n</rs:data>\r\n</xml>",
       "Id|Town/1|O'Higgins"},
      {"comillas sueltas", kCabeza + kEsquemaSimple + "<rs:data><z:row Town=\"el \"15\".\" Id='1'/></rs:data></xml>",
       "Id|Town/1|el \"15\"."},
      {"otros prefijos",
       "<xml xmlns:x='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882' xmlns:r='urn:schemas-microsoft-com:rowset' "
       "xmlns:t='#RowsetSchema'><x:Schema id='RowsetSchema'><x:ElementType name='row' content='eltOnly'>"
       "<x:AttributeType name='a'/></x:ElementType></x:Schema><r:data><t:row a='1'/></r:data></xml>",
       "a/1"},
      {"capítulos",
       kCabeza +
           "<s:Schema id='RowsetSchema'><s:ElementType name='row'><s:AttributeType name='Id' dt:type='int'/>"
           "<s:ElementType name='Parts' rs:relation='010000000100000000000000'><s:AttributeType "
           "name='No'/></s:ElementType>"
           "</s:ElementType></s:Schema><rs:data><z:row Id='1'><Parts No='10'/></z:row><z:row Id='2'/></rs:data></xml>",
       "Id/1/2"},
      {"fechas y números escritos por otros",
       kCabeza + "<s:Schema id='RowsetSchema'><s:ElementType name='row'><s:AttributeType name='f' dt:type='dateTime'/>"
                 "<s:AttributeType name='n' dt:type='number'/><s:AttributeType name='b' dt:type='boolean'/>"
                 "<s:AttributeType name='h' dt:type='bin.hex'/></s:ElementType></s:Schema>"
                 "<rs:data><z:row f='2008-01-25 13:04:00' n='1,5.5' b='-1' h='0A\r\n\t0b'/>"
                 "<z:row f='2008-01-25T13:04:00Z' n='+1E1' b='FALSE'/><z:row f='2008-01-25'/><z:row "
                 "f='10:00:00'/></rs:data></xml>",
       "f|n|b|h/2008-01-25T13:04:00|15.5|True|0a0b/2008-01-25T13:04:00|10|False|-/2008-01-25T00:00:00|-|-|-/"
       "1899-12-30T10:00:00|-|-|-"},
  };
}

TEST(Persistido, UnTextoConUnByteMaloSeGuardaComoSeLee) {
  const Carpeta carpeta;
  const auto t = TablaDeTextos({"C"}, {{"Precipitaci\xC3\xB3n \xF1"},
                                       {"Caba\xF1"
                                        "a"}});
  t->Save(carpeta / "t.xml");
  Tabla leida;
  leida.Open(carpeta / "t.xml");
  EXPECT_EQ(Vista(leida), "C/Precipitación �/Cabaña");
}

TEST(Persistido, LeeLasFormasDeOtrosEscritores) {
  const Carpeta carpeta;
  for (const auto& e : Entradas()) {
    prueba::EscribirTodo(carpeta / "e.xml", e.bytes);
    Tabla t;
    ASSERT_NO_THROW(t.Open(carpeta / "e.xml")) << e.nombre;
    EXPECT_EQ(Vista(t), e.vista) << e.nombre;
    // What was read goes whole through a file of our own, and a copy of it has the same fields.
    Tabla propia;
    t.Save(carpeta / "propia.xml");
    propia.Open(carpeta / "propia.xml");
    EXPECT_EQ(Vista(propia), e.vista) << e.nombre;
    if (t.RecordCount() > 0) {
      EXPECT_EQ(Vista(*CopiarRecordset(t, true)), e.vista) << e.nombre;
    }
    propia.Save(carpeta / "otra.xml");
    EXPECT_EQ(prueba::LeerTodo(carpeta / "propia.xml"), prueba::LeerTodo(carpeta / "otra.xml")) << e.nombre;
    std::filesystem::remove(carpeta / "propia.xml");
    std::filesystem::remove(carpeta / "otra.xml");
  }
}

}  // namespace
}  // namespace utr
