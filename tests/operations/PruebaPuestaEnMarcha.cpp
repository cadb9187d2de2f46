#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "operations/PuestaEnMarcha.h"
#include "support/Carpeta.h"
#include "support/ComunicadorFalso.h"
#include "support/RelojFalso.h"
#include "support/Tablas.h"

namespace utr {
namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;

using Bitacora = std::vector<std::string>;

// A unit that says no to one call, by the beginning of its text.
class UnidadQueNiega : public ComunicadorFalso {
 public:
  std::string niega = "nada";

  bool EscribirPagina(std::string_view pagina, std::string_view datos) override {
    return ComunicadorFalso::EscribirPagina(pagina, datos) && !llamadas.back().starts_with(niega);
  }
};

// What is seen and waited for, among the calls.
class RelojAnotado : public RelojFalso {
 public:
  explicit RelojAnotado(Bitacora& bitacora) : bitacora_(bitacora) {}
  void Esperar(double segundos, const Atender& atender) override {
    bitacora_.push_back("espera " + std::to_string(static_cast<int>(segundos)));
    RelojFalso::Esperar(segundos, atender);
  }

 private:
  Bitacora& bitacora_;
};
class ProgresoAnotado : public SinProgreso {
 public:
  explicit ProgresoAnotado(Bitacora& bitacora) : bitacora_(bitacora) {}
  void Texto(std::string_view texto) override { bitacora_.emplace_back(texto); }
  void Rango(std::int64_t pasos) override { bitacora_.push_back("de " + std::to_string(pasos)); }
  void Posicion(std::int64_t hechos) override { bitacora_.push_back("= " + std::to_string(hechos)); }

 private:
  Bitacora& bitacora_;
};

class PuestaEnMarcha : public testing::Test {
 protected:
  PuestaEnMarcha() {
    completa.Add(1, *TablaDeCanales({{{"Canal", "1"}}}), "1");
    completa.Add(4, *TablaDeCanales({{{"Canal", "4"}, {"Flags", "0"}}}), "2");
    horarios.Add(480);
    horarios.DuracionVentana = 300;
    pagina0 = "4,1,2,120,0,9,10,0,77";
    unidad.Devuelve("LeerPagina", [this](const std::string&) -> std::string { return pagina0; });
    const std::function<std::string(const std::string&)> par = [](const std::string& llamada) {
      const int valor = std::stoi(llamada.substr(llamada.find('(') + 1));
      return std::to_string(valor % 256) + '/' + std::to_string(valor / 256);
    };
    unidad.Devuelve("ConvertirDe", par);
    unidad.al_llamar = [this](const std::string& llamada) {
      bitacora.push_back(llamada);
      if (llamada.starts_with(rompe)) throw Error(8020, "driver", "la UTR no responde");
    };
  }

  ResultadoPuesta Correr() {
    bitacora.clear();
    unidad.llamadas.clear();
    const ContextoPuesta contexto{.unidad = {unidad, registro},
                                  .reloj = reloj,
                                  .diario = diario,
                                  .progreso = progreso,
                                  .lineas = [this](const auto& lineas) {
                                    vistas = lineas;
                                    en_curso += std::count_if(
                                        lineas.begin(), lineas.end(),
                                        [](const LineaPuesta& linea) { return linea.estado == EstadoPaso::kEnCurso; });
                                  }};
    return PonerEnMarcha(pedido, contexto);
  }
  std::string Estados() const {
    std::string estados;
    for (const LineaPuesta& linea : vistas) estados += std::string(NombreDe(linea.estado)) + "; ";
    return estados;
  }

  prueba::Carpeta carpeta;
  Bitacora bitacora;
  RelojAnotado reloj{bitacora};
  ProgresoAnotado progreso{bitacora};
  RegistroErrores registro{carpeta / "utr.err", reloj};
  Propiedades propiedades{carpeta / "utr.dll"};
  Diario diario{propiedades, reloj};
  UnidadQueNiega unidad;
  std::string rompe = "nada";
  std::string pagina0;
  ConfigColl completa;
  FDLHorarios horarios;
  PedidoPuesta pedido{.completa = completa,
                      .horarios = horarios,
                      .asignar = true,
                      .identificador = "300",
                      .velocidad = 19200,
                      .borrar_cartucho = true};
  std::vector<LineaPuesta> vistas;
  std::ptrdiff_t en_curso = 0;  // how many times a step was seen under way
};

const Bitacora kEntera{"de 7",
                       "= 0",
                       "Guardando la configuración de sensores",
                       "GrabarConfiguracion(tabla)",
                       "= 1",
                       "Guardando la configuración de agenda",
                       "GrabarAgenda(tabla)",
                       "LeerPagina(0,no)",
                       "ConvertirDe(300)",
                       "EscribirPagina(0,4,1,2,120,0,9,44,1,77)",
                       "= 2",
                       "Escribiendo paginas de configuración",
                       "EscribirPagina(34,0,0,0)",
                       "EscribirPagina(35,1,0,0)",
                       "= 3",
                       "Escribiendo el Id de la UTR",
                       "LeerPagina(0,no)",
                       "ConvertirDe(300)",
                       "EscribirPagina(0,4,1,2,44,1,9,10,0,77)",
                       "= 4",
                       "Escribiendo la velocidad de la UTR",
                       "LeerPagina(0,no)",
                       "EscribirPagina(0,5,1,2,120,0,9,10,0,77)",
                       "= 5",
                       "Borrando flash...",
                       "BorrarFlash()",
                       "Poniendo en hora...",
                       "espera 2",
                       "GrabarFechaHora()",
                       "Puesto en hora",
                       "Borrando cartucho...",
                       "BorrarCartucho()",
                       "espera 2",
                       "Cartucho Borrado...",
                       "= 6",
                       "Reiniciando UTR",
                       "ReiniciarUTR(44)",
                       "UTR iniciada espere por favor...",
                       "espera 10",
                       "= 7"};

TEST_F(PuestaEnMarcha, TodoVaEnSuOrden) {
  const ResultadoPuesta resultado = Correr();
  EXPECT_THAT(bitacora, ElementsAreArray(kEntera));
  EXPECT_FALSE(resultado.error);
  EXPECT_EQ(en_curso, 11) << "each step is seen under way";
  EXPECT_EQ(resultado.identificador, 300);
  EXPECT_EQ(Estados(), "aviso; hecho; hecho; hecho; hecho; hecho; hecho; hecho; hecho; hecho; hecho; hecho; ");
  EXPECT_EQ(vistas.front().texto, "sin respaldo de los canales de la UTR");
  EXPECT_EQ(Filas(*unidad.Recibidas("GrabarConfiguracion").at(0), {"Canal", "Flags"}), (Bitacora{"1|1", "4|0"}));
  EXPECT_EQ(Filas(*unidad.Recibidas("GrabarAgenda").at(0), {"HorarioInteger", "TWind"}), (Bitacora{"480|Si"}));
}

TEST_F(PuestaEnMarcha, LoQueNoHaceFaltaNoSeEscribe) {
  const auto falta = [this](const std::string& linea) {
    return std::find(bitacora.begin(), bitacora.end(), linea) == bitacora.end();
  };
  pedido.asignar = false;
  pedido.borrar_cartucho = false;
  pedido.respaldo = ResultadoRespaldo{.archivo = "Respaldos/70/x lectura.ucg"};
  EXPECT_EQ(Correr().identificador, 0);
  EXPECT_FALSE(falta("Eliminando identificador del equipo"));
  EXPECT_FALSE(falta("EscribirPagina(0,4,1,2,0,0,9,10,0,77)"));
  EXPECT_TRUE(falta("BorrarCartucho()"));
  EXPECT_FALSE(falta("= 6"));
  EXPECT_EQ(vistas.front().detalle, "x lectura.ucg");
  pedido.identificador = "0";
  FDLHorarios ninguno;
  const PedidoPuesta sin_agenda{.completa = completa, .horarios = ninguno, .identificador = "0", .velocidad = 300};
  const ContextoPuesta contexto{.unidad = {unidad, registro}, .reloj = reloj, .diario = diario, .progreso = progreso};
  bitacora.clear();
  EXPECT_FALSE(PonerEnMarcha(sin_agenda, contexto).identificador);
  EXPECT_TRUE(falta("GrabarAgenda(tabla)") && falta("ConvertirDe(0)") && falta("= 4"));
  EXPECT_FALSE(falta("= 2"));
  EXPECT_FALSE(falta("EscribirPagina(0,0,1,2,120,0,9,10,0,77)")) << "code 0 is 300";
}

// Each call that can be answered by no: what is raised then (0: nothing, it goes on), and its line.
struct Negativa {
  const char* llamada;
  const char* operacion;  // that says no; null: the call itself does
  std::uint32_t numero;
  const char* origen;
  const char* texto;
  std::size_t linea;
};
void PrintTo(const Negativa& no, std::ostream* salida) {
  *salida << no.llamada;
}
constexpr Negativa kNegativas[] = {
    {"GrabarConfiguracion", "GrabarConfiguracion", 0x800403E9, "GuardarConfiguracion",
     "No se ha podido grabar la configuración de los canales", 1},
    {"GrabarAgenda", "GrabarAgenda", 0x80040FA2, "GrabaragendaLocal", "No se pudo grabar la agenda", 2},
    {"EscribirPagina(0,4,1,2,120,0,9,44", nullptr, 0x80040FA2, "GrabaragendaLocal",
     "No se pudo grabar la ventana de agenda", 3},
    {"EscribirPagina(34", nullptr, 0x80040FA0, "InicioOrbcomm", "No se pudo grabar página 34", 4},
    {"EscribirPagina(35", nullptr, 0x80040FA1, "InicioOrbcomm", "No se pudo grabar página 35", 5},
    {"EscribirPagina(0,4,1,2,44,1", nullptr, 0, "", "", 6},
    {"EscribirPagina(0,5", nullptr, 0, "", "", 7},
    {"BorrarFlash", "BorrarFlash", 0x800403E9, "BorradoFlashYHora", "No se ha podido borrar la flash", 8},
    {"GrabarFechaHora", "GrabarFechaHora", 0x800403E9, "BorradoFlashYHora", "No se ha podido grabar hora", 9},
    {"BorrarCartucho", "BorrarCartucho", 0x800403E9, "BorradoCartucho", "No se ha podido borrar el cartucho", 10},
    {"ReiniciarUTR", "ReiniciarUTR", 0x800403EB, "IniciarUTRYAgenda", "No se ha podido iniciar la UTR", 11},
};

class PuestaQueFalla : public PuestaEnMarcha, public testing::WithParamInterface<Negativa> {
 protected:
  // What was said, called and waited for up to that call, and nothing behind it.
  void ExigirHastaAhi() {
    const auto ahi = std::find_if(kEntera.begin(), kEntera.end(),
                                  [](const std::string& una) { return una.starts_with(GetParam().llamada); });
    ASSERT_NE(ahi, kEntera.end());
    EXPECT_THAT(bitacora, ElementsAreArray(kEntera.begin(), ahi + 1));
    for (std::size_t i = 1; i < vistas.size(); ++i) {
      const EstadoPaso esperado = i < GetParam().linea    ? EstadoPaso::kHecho
                                  : i == GetParam().linea ? EstadoPaso::kNoConfirmado
                                                          : EstadoPaso::kNoAlcanzado;
      EXPECT_EQ(NombreDe(vistas[i].estado), NombreDe(esperado)) << vistas[i].texto;
    }
  }
};

TEST_P(PuestaQueFalla, UnNoSeDiceYTerminaDondeCorresponde) {
  const Negativa& no = GetParam();
  unidad.niega = no.llamada;
  if (no.operacion != nullptr) unidad.Devuelve(no.operacion, false);
  const ResultadoPuesta resultado = Correr();
  EXPECT_TRUE(resultado.escribio);
  if (no.numero == 0) {
    EXPECT_FALSE(resultado.error);
    EXPECT_THAT(bitacora, ElementsAreArray(kEntera));
    EXPECT_EQ(vistas.at(no.linea).estado, EstadoPaso::kNoAceptado);
    EXPECT_EQ(diario.Asientos().at(no.linea - 1).resultado, "no aceptado; no confirmado");
    EXPECT_EQ(resultado.identificador.has_value(), no.linea != 6);
    return;
  }
  ASSERT_TRUE(resultado.error);
  EXPECT_EQ(static_cast<std::uint32_t>(resultado.error->Numero()), no.numero);
  EXPECT_EQ(resultado.error->Origen(), no.origen);
  EXPECT_EQ(resultado.error->Descripcion(), no.texto);
  EXPECT_EQ(vistas.at(no.linea).detalle, no.texto);
  EXPECT_EQ(diario.Asientos().size(), no.linea) << "the steps that went out, and none of those behind";
  EXPECT_EQ(diario.Asientos().back().resultado, "[" + std::string(no.texto) + "]; no confirmado");
  ExigirHastaAhi();
}

TEST_P(PuestaQueFalla, UnErrorTerminaDondeOcurreYOtroIntentoPuede) {
  rompe = GetParam().llamada;
  const ResultadoPuesta resultado = Correr();
  ASSERT_TRUE(resultado.error);
  EXPECT_EQ(resultado.error->Descripcion(), "la UTR no responde");
  ExigirHastaAhi();
  rompe = "nada";
  EXPECT_FALSE(Correr().error);
  EXPECT_THAT(bitacora, ElementsAreArray(kEntera));
}

INSTANTIATE_TEST_SUITE_P(Llamadas, PuestaQueFalla, testing::ValuesIn(kNegativas),
                         [](const auto& caso) { return "Linea" + std::to_string(caso.param.linea); });

TEST_F(PuestaEnMarcha, UnaPaginaCeroQueNoSirveDetieneSinEscribirla) {
  for (const char* pagina : {"", "4", "4,1,2,120,0,9,10"}) {
    pagina0 = pagina;
    ASSERT_TRUE(Correr().error) << pagina;
    EXPECT_THAT(unidad.De("EscribirPagina"), IsEmpty()) << pagina;
    EXPECT_EQ(vistas.at(3).estado, EstadoPaso::kNoConfirmado);
  }
}

TEST(Identificador, SeAdmiteDeUnoA32760) {
  constexpr std::string_view kNumero = "Ingrese un valor numerico";
  constexpr std::string_view kRango = "Ingrese un valor numérico comprendido entre 1 y 32760";
  const std::pair<const char*, std::string_view> casos[] = {{"", kNumero},     {"abc", kNumero}, {"0", kRango},
                                                            {"1", ""},         {"00070", ""},    {"32760", ""},
                                                            {"32761", kRango}, {"65535", kRango}};
  for (const auto& [texto, reparo] : casos) EXPECT_EQ(ReparoDeIdentificador(texto), reparo) << texto;
}

}  // namespace
}  // namespace utr
