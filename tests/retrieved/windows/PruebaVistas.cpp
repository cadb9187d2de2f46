// What the three views share, over all of them.
#include <QAccessible>
#include <functional>
#include <memory>
#include <tuple>

#include "retrieved/windows/BancoVistas.h"
#include "retrieved/windows/frmColaTransmicion.h"
#include "retrieved/windows/frmDatos.h"
#include "retrieved/windows/frmEventos.h"
#include "session/SituacionDelEnlace.h"
#include "support/DispositivoLleno.h"

namespace utr {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kEspera = "Esta operación demorará unos instantes. Por favor espere...";

struct CasoVista {
  const char* nombre;
  const char* titulo;
  std::function<std::unique_ptr<VistaRegistros>(ModRTU&, TablaPtr)> crear;
  const char* boton;      // reads by date
  const char* operacion;  // that it calls
  const char* llamada;
  const char* contador;
  const char* sin_datos;  // words of the panel
  Mensaje al_reves;
  const char* procedimiento;  // in the error log
  const char* guardar;        // entries of the menu
  const char* exportar;
  const char* imprimir;
  const char* dialogo_guardar;
  const char* documento;  // first lines
  int tipo_imp;
  const char* exito_imp;
  const char* cerrar;
};

void PrintTo(const CasoVista& caso, std::ostream* salida) {
  *salida << caso.nombre;
}

template <typename Ventana>
auto Creador() {
  return [](ModRTU& mod, TablaPtr canales) -> std::unique_ptr<VistaRegistros> {
    return std::make_unique<Ventana>(mod, std::move(canales));
  };
}

constexpr const char* kAlReves = "La fecha de inicio debe ser menor que la de finalización";

const CasoVista kVistas[] = {
    {"frmDatos",
     "Datos de la UTR",
     Creador<frmDatos>(),
     "cmd(0)",
     "LeerDatos",
     "LeerDatos(13/03/2026,14/03/2026,0)",
     "Cantidad de Registros Cargados: ",
     "Sin datos para el canal durante las fechas seleccionada",
     {kAlReves, "Datos de la UTR", Icono::kInformacion, Botones::kAceptar},
     "cmd_Click",
     "mnuDatosGuardarComo",
     "mnuExportData",
     "mnudatosPrint",
     "Guardar como ...",
     "Datos históricos de la UTR\r\nDesde: 13/03/2026\r\nHasta: 14/03/2026\r\nFecha\tHora\tCanal\tDescripción\t",
     1,
     "La lista de datos ha sido exportada con éxito",
     "cmd(1)"},
    {"frmEventos",
     "Eventos de la UTR",
     Creador<frmEventos>(),
     "cmd(0)",
     "LeerEventos",
     "LeerEventos(13/03/2026 00:00:00,14/03/2026 00:00:00)",
     "Cantidad de Eventos Cargados: ",
     "Sin eventos durante las fechas seleccionada",
     {kAlReves, "Atención", Icono::kExclamacion, Botones::kAceptar},
     "cmd_Click( 0 )",
     "mnuEvGuardarComo",
     "mnuExportarEv",
     "mnuEvPrint",
     "Exportar ...",
     "Eventos de la UTR\r\nDesde: 13/03/2026 00:00:00\r\nHasta: 14/03/2026 00:00:00\r\nFecha\tHora\tCódigo\t",
     0,
     "La lista de eventos ha sido exportada con éxito",
     "cmd(1)"},
    {"frmColaTransmicion",
     "Cola de transmisión",
     Creador<frmColaTransmicion>(),
     "TraerTxPorDia",
     "LeerColaTx",
     "LeerColaTx(13/03/2026,14/03/2026)",
     "Cantidad de Registros Cargados: ",
     "Sin datos para el canal durante las fechas seleccionada",
     {kAlReves, "Cola de transmisión", Icono::kInformacion, Botones::kAceptar},
     "TraerTxPorDia",
     "mnuGuardarComo",
     "mnuExportar",
     "mnuImprimir",
     "Guardar como ...",
     "Datos de la cola de tx de la UTR\r\nDesde: 13/03/2026\r\nHasta: 14/03/2026\r\nFecha\tHora\tCanal\t",
     1,
     "La lista de datos ha sido exportada con éxito",
     "cmd"},
};

class PruebaVistas : public BancoVistas, public testing::TestWithParam<CasoVista> {
 protected:
  PruebaVistas() {
    ventana = GetParam().crear(banco.mod, Canales());
    ventana->show();
    Fecha(*ventana, "FechaInicio", Dia(13));
    Fecha(*ventana, "FechaFin", Dia(14));
  }

  static TablaPtr Lectura(const std::vector<const char*>& horas) {
    std::vector<Celdas> filas;
    const bool eventos = std::string(GetParam().operacion) == "LeerEventos";
    for (const char* hora : horas) {
      filas.push_back(eventos ? Celdas{"", hora, "1", "5", "7"} : Celdas{"", hora, "1", "2048", "", "x", "0", "1"});
    }
    return eventos ? Eventos(filas) : Datos(filas);
  }

  void Leer(const std::vector<const char*>& horas) {
    driver.Devuelve(GetParam().operacion, Lectura(horas));
    Pulsar(*ventana, GetParam().boton);
  }

  // Entries of the menu and buttons of the toolbar that follow the list, in agreement.
  bool ServiciosHabilitados() const {
    std::vector<bool> estados;
    for (const char* entrada : {GetParam().guardar, GetParam().exportar, GetParam().imprimir}) {
      estados.push_back(Hijo<QAction>(*ventana, entrada)->isEnabled());
    }
    for (const char* clave : {"Save", "Print", "Export"}) {
      estados.push_back(Hijo<QWidget>(*ventana, clave)->isEnabled());
    }
    for (const bool estado : estados) EXPECT_EQ(estado, estados.front());
    return estados.front();
  }

  std::unique_ptr<VistaRegistros> ventana;
};

TEST_P(PruebaVistas, LoLeidoSeListaSeCuentaYAbreLosServicios) {
  EXPECT_EQ(U(ventana->windowTitle()), GetParam().titulo);
  EXPECT_FALSE(ServiciosHabilitados());
  Leer({"00:10:00", "00:20:00"});
  EXPECT_EQ(driver.llamadas.back(), GetParam().llamada);
  EXPECT_EQ(Filas(*ventana).size(), 2u);
  EXPECT_THAT(Filas(*ventana)[1], HasSubstr("14/03/2026|00:20:00|"));
  EXPECT_EQ(Texto(*ventana, "lblCantRegistros"), GetParam().contador + std::string("2"));
  EXPECT_THAT(Texto(*ventana, "lblPeriodo"), HasSubstr("13/03/2026"));
  EXPECT_THAT(Paneles(*ventana), IsEmpty());
  EXPECT_TRUE(ServiciosHabilitados());
  EXPECT_EQ(operador.ocupado, 0);
  EXPECT_GT(operador.relojes_vistos, 0);
}

TEST_P(PruebaVistas, SinTablaOSinFilasSeVeElPanelYNoHayServicios) {
  for (const TablaPtr& nada : {TablaPtr(), Lectura({})}) {
    Leer({"00:10:00"});
    ASSERT_TRUE(ServiciosHabilitados());
    driver.Devuelve(GetParam().operacion, nada);
    Pulsar(*ventana, GetParam().boton);
    EXPECT_THAT(Filas(*ventana), IsEmpty());
    EXPECT_THAT(Paneles(*ventana), ElementsAre("picSinDatos"));
    EXPECT_EQ(U(Hijo<PanelAviso>(*ventana, "picSinDatos")->Texto()), GetParam().sin_datos);
    EXPECT_EQ(Texto(*ventana, "lblCantRegistros"), "");
    EXPECT_FALSE(ServiciosHabilitados());
  }
}

TEST_P(PruebaVistas, MientrasSeLeeSeVeElPanelYNadaSePuede) {
  int veces = 0;
  driver.al_llamar = [&](const std::string&) {
    ++veces;
    EXPECT_THAT(Paneles(*ventana), ElementsAre("picInfo"));
    EXPECT_EQ(U(Hijo<PanelAviso>(*ventana, "picInfo")->Texto()), kEspera);
    EXPECT_EQ(operador.ocupado, 1);
    EXPECT_FALSE(Hijo<QWidget>(*ventana, GetParam().boton)->isEnabled());
    EXPECT_FALSE(ServiciosHabilitados());
    Pulsar(*ventana, GetParam().boton);
    Elegir(*ventana, GetParam().guardar);
    ventana->close();
    QTest::keyClick(ventana.get(), Qt::Key_Escape);
    EXPECT_TRUE(ventana->isVisible());
  };
  Leer({"00:10:00"});
  EXPECT_EQ(veces, 1);
  EXPECT_TRUE(Hijo<QWidget>(*ventana, GetParam().boton)->isEnabled());
  ventana->close();
  EXPECT_FALSE(ventana->isVisible());
}

TEST_P(PruebaVistas, LoTecleadoYPulsadoConElManejadorDetenidoSePierde) {
  auto* boton = Hijo<QWidget>(*ventana, GetParam().boton);
  boton->setFocus();
  driver.al_llamar = [&](const std::string&) {
    EncolarClic(boton);
    EncolarTecla(ventana.get(), Qt::Key_Return);
    EncolarTecla(ventana.get(), Qt::Key_Escape);
  };
  Leer({"00:10:00", "00:20:00"});
  QCoreApplication::processEvents();
  EXPECT_EQ(driver.Cuantas(GetParam().operacion), 1u);
  EXPECT_TRUE(ventana->isVisible());
  EXPECT_EQ(Filas(*ventana).size(), 2u);
  EXPECT_EQ(ventana->focusWidget(), boton);
}

TEST_P(PruebaVistas, UnDocumentoLlevaLasFechasLeidasYNoLasPuestasDespues) {
  Leer({"00:10:00"});
  const std::string periodo = Texto(*ventana, "lblPeriodo");
  Fecha(*ventana, "FechaInicio", Dia(1));
  Fecha(*ventana, "FechaFin", Dia(2));
  const auto ruta = banco.carpeta / "lista.txt";
  operador.EsperaGuardar(GetParam().dialogo_guardar, ruta);
  operador.Espera("La lista ha sido exportada con éxito");
  Elegir(*ventana, GetParam().guardar);
  EXPECT_TRUE(prueba::LeerTodo(ruta).starts_with(GetParam().documento)) << prueba::LeerTodo(ruta);
  banco.mod.eleccion_impresora = {"Oficina", 1};
  Elegir(*ventana, GetParam().imprimir);
  EXPECT_THAT(banco.impresora.trabajos.back(), HasSubstr("\r\nDesde: 13/03/2026"));
  EXPECT_EQ(Texto(*ventana, "lblPeriodo"), periodo);
}

TEST_P(PruebaVistas, UnaLecturaFallidaSeDiceSeRegistraYDejaLaVentanaUtil) {
  Leer({"00:10:00"});
  driver.Falla(GetParam().operacion, Error(1000, "driver", "Sin respuesta"), 1);
  operador.al_preguntar = [this] {
    EXPECT_THAT(Paneles(*ventana), IsEmpty());
    EXPECT_THAT(Filas(*ventana), IsEmpty());
    EXPECT_FALSE(Ocupacion::Ocupada(*ventana));
  };
  operador.Espera(Mensaje{"La operación solicitada no puede completarse\n[ Sin respuesta ]", GetParam().titulo,
                          Icono::kCritico, Botones::kAceptar});
  Pulsar(*ventana, GetParam().boton);
  operador.al_preguntar = {};
  EXPECT_THAT(Filas(*ventana), IsEmpty());
  EXPECT_FALSE(ServiciosHabilitados());
  EXPECT_THAT(banco.Errores(), HasSubstr("\"" + std::string(GetParam().nombre) + "\",\"" + GetParam().procedimiento));
  Leer({"00:10:00", "00:20:00"});
  EXPECT_EQ(Filas(*ventana).size(), 2u);
}

TEST_P(PruebaVistas, UnCampoAusenteSeBorraEnSilencio) {
  driver.Devuelve(GetParam().operacion, TablaDeTextos({"Fecha", "Hora"}, {{"", "00:10:00"}}));
  Pulsar(*ventana, GetParam().boton);
  EXPECT_THAT(Filas(*ventana), IsEmpty());
  EXPECT_THAT(Paneles(*ventana), IsEmpty());
  EXPECT_EQ(banco.Errores(), "");
  EXPECT_TRUE(Hijo<QWidget>(*ventana, GetParam().boton)->isEnabled());
}

TEST_P(PruebaVistas, FechasAlRevesANadieLlamanYLasIgualesPasan) {
  Fecha(*ventana, "FechaInicio", Dia(15));
  operador.Espera(GetParam().al_reves);
  Pulsar(*ventana, GetParam().boton);
  EXPECT_THAT(driver.llamadas, IsEmpty());
  EXPECT_THAT(Paneles(*ventana), IsEmpty());
  Fecha(*ventana, "FechaFin", Dia(15));
  Leer({"00:10:00"});
  EXPECT_EQ(Filas(*ventana).size(), 1u);
}

TEST_P(PruebaVistas, ElCartuchoTieneUnLectorGemelo) {
  const std::string gemela = GetParam().operacion + std::string("Cartucho");
  Hijo<QCheckBox>(*ventana, "chkCartucho")->setChecked(true);
  driver.Devuelve(gemela, Lectura({"00:10:00"}));
  Pulsar(*ventana, GetParam().boton);
  EXPECT_EQ(driver.Cuantas(gemela), 1u);
  EXPECT_EQ(driver.Cuantas(GetParam().operacion), 0u);
  EXPECT_EQ(Filas(*ventana).size(), 1u);
}

TEST_P(PruebaVistas, LaListaSeGuardaEnElOrdenQueSeVeBajoSuTitulo) {
  Leer({"00:10:00", "00:20:00"});
  Pulsar(*ventana, "Sort Descending");
  const auto ruta = banco.carpeta / "lista.txt";
  operador.EsperaGuardar(GetParam().dialogo_guardar, ruta);
  operador.Espera(
      Mensaje{"La lista ha sido exportada con éxito", GetParam().titulo, Icono::kInformacion, Botones::kAceptar});
  Elegir(*ventana, GetParam().guardar);
  const std::string texto = prueba::LeerTodo(ruta);
  EXPECT_TRUE(texto.starts_with(GetParam().documento)) << texto;
  EXPECT_FALSE(texto.ends_with("\n"));
}

TEST_P(PruebaVistas, UnDiscoQueSeLlenaDejaElAnteriorYSeDice) {
  std::vector<std::string> horas;
  for (int i = 0; i < 800; ++i) horas.push_back("00:" + std::to_string(i));
  std::vector<const char*> punteros;
  for (const std::string& hora : horas) punteros.push_back(hora.c_str());
  Leer(punteros);
  const auto ruta = banco.carpeta / "lista.txt";
  prueba::EscribirTodo(ruta, "viejo");
  operador.EsperaGuardar(GetParam().dialogo_guardar, ruta);
  operador.Espera("La operación solicitada no puede completarse\n[ No se puede escribir el archivo " + ruta.string() +
                  " ]");
  {
    const DispositivoLleno lleno(4096);
    Elegir(*ventana, GetParam().guardar);
  }
  EXPECT_EQ(prueba::LeerTodo(ruta), "viejo");
  EXPECT_EQ(Filas(*ventana).size(), 800u);
}

TEST_P(PruebaVistas, LaTablaDeLaVistaVaAlImp) {
  Leer({"00:10:00"});
  const auto ruta = banco.carpeta / "lista.imp";
  operador.EsperaGuardar("Exportar ...", ruta);
  operador.Espera(GetParam().exito_imp);
  Elegir(*ventana, GetParam().exportar);
  EXPECT_EQ(driver.llamadas.back(),
            "ExportarImp(tabla," + ruta.string() + "," + std::to_string(GetParam().tipo_imp) + ")");
}

TEST_P(PruebaVistas, TrasLosBotonesApagadosEstanLosMensajesSinDatos) {
  QAction* exportar = Hijo<QAction>(*ventana, GetParam().exportar);
  exportar->setEnabled(true);
  operador.Espera(Mensaje{"Debe leer datos para exportar", "Exportacion", Icono::kInformacion, Botones::kAceptar});
  exportar->trigger();
  driver.Devuelve(GetParam().operacion, Lectura({}));
  Pulsar(*ventana, GetParam().boton);
  exportar->setEnabled(true);
  operador.Espera(Mensaje{"No hay datos para exportar", "Exportacion", Icono::kInformacion, Botones::kAceptar});
  exportar->trigger();
}

TEST_P(PruebaVistas, LosBotonesOrdenanPorLaPrimeraColumnaComoTexto) {
  Leer({"00:10:00"});
  TablaPtr dias = Lectura({"00:10:00"});
  dias->AddNew();
  dias->Set("Fecha", "02/04/2026");
  dias->AddNew();
  dias->Set("Hora", "00:30:00");
  dias->Set(std::size_t{2}, "1");
  dias->UpdateBatch();
  driver.Devuelve(GetParam().operacion, dias);
  Pulsar(*ventana, GetParam().boton);
  Pulsar(*ventana, "Sort Ascending");
  EXPECT_TRUE(Filas(*ventana)[0].starts_with("02/04/2026"));
  Pulsar(*ventana, "Sort Descending");
  EXPECT_TRUE(Filas(*ventana)[0].starts_with("14/03/2026"));
  EXPECT_EQ(driver.Cuantas(GetParam().operacion), 2u) << "nothing was read for it";
}

TEST_P(PruebaVistas, EnterMuestraLaFilaEntera) {
  Leer({"00:10:00", "00:20:00"});
  GuionVentanas guion;
  guion.Espera("frmItemLista", [](QDialog& detalle) {
    EXPECT_THAT(U(detalle.windowTitle()), StartsWith("Detalles: "));
    EXPECT_EQ(Texto(detalle, "lblColumna(1)"), "Hora: ");
    EXPECT_EQ(Texto(detalle, "lblDato(1)"), "00:20:00");
    auto* leido = QAccessible::queryAccessibleInterface(&Hallar<QLabel>(detalle, "lblDato(1)"));
    EXPECT_EQ(leido->text(QAccessible::Name), "00:20:00") << "what a screen reader reads is the value";
    Pulsar(detalle, "cmd");
  });
  Lista(*ventana).Elegir(1);
  QTest::keyClick(Lista(*ventana).findChild<QWidget*>("Lista"), Qt::Key_Return);
}

TEST_P(PruebaVistas, CadaCampoTieneSuRotuloYSuNombreAccesible) {
  for (const char* campo : {"FechaInicio", "FechaFin"}) {
    auto* control = Hijo<QDateTimeEdit>(*ventana, campo);
    const auto* rotulo = Hijo<QLabel>(*ventana, (std::string("lbl") + campo).c_str());
    EXPECT_EQ(rotulo->buddy(), control);
    EXPECT_TRUE(rotulo->text().contains('&'));
    EXPECT_FALSE(control->accessibleName().isEmpty());
  }
}

TEST_P(PruebaVistas, UnClicEnUnaParteDeLaFechaDejaReemplazarla) {
  auto* campo = Hijo<QDateTimeEdit>(*ventana, "FechaInicio");
  auto* texto = campo->findChild<QLineEdit*>();
  QTest::mouseClick(texto, Qt::LeftButton, Qt::NoModifier, QPoint(2, texto->height() / 2));
  QTest::keyClicks(texto, "07");
  EXPECT_EQ(campo->date(), QDate(2026, 3, 7));
}

TEST_P(PruebaVistas, TabRecorreMarcosListaYSalida) {
  std::vector<std::string> recorrido;
  Hijo<QWidget>(*ventana, "FechaInicio")->setFocus();
  for (int i = 0; i < 40; ++i) {
    const std::string control = U(ventana->focusWidget()->objectName());
    if (recorrido.empty() || recorrido.back() != control) recorrido.push_back(control);  // dates have parts
    QTest::keyClick(ventana->focusWidget(), Qt::Key_Tab);
  }
  const auto lugar = [&recorrido](const char* nombre) {
    return std::find(recorrido.begin(), recorrido.end(), nombre) - recorrido.begin();
  };
  const std::ptrdiff_t orden[] = {lugar("FechaFin"),  lugar("chkCartucho"), lugar(GetParam().boton),
                                  lugar("txtFiltro"), lugar("Lista"),       lugar(GetParam().cerrar)};
  EXPECT_TRUE(std::is_sorted(std::begin(orden), std::end(orden))) << testing::PrintToString(recorrido);
  EXPECT_GT(std::count(recorrido.begin(), recorrido.end(), "FechaInicio"), 1)
      << "and round again: " << testing::PrintToString(recorrido);
}

TEST_P(PruebaVistas, UnPeriodoPoneLasDosFechas) {
  const auto fechas = [this](const QWidget& vista) {
    return std::pair(Hijo<QDateTimeEdit>(vista, "FechaInicio")->date(), Hijo<QDateTimeEdit>(vista, "FechaFin")->date());
  };
  const QDate hoy(2026, 3, 15);
  const QDate comienzos[] = {hoy, hoy.addDays(-1), hoy.addDays(-7), QDate(2000, 1, 1)};
  for (std::size_t i = 0; i < std::size(comienzos); ++i) {
    Pulsar(*ventana, ("Periodo(" + std::to_string(i) + ")").c_str());
    EXPECT_EQ(fechas(*ventana), std::pair(comienzos[i], hoy)) << i;
  }
  EXPECT_FALSE(Hijo<QWidget>(*ventana, "Periodo(4)")->isEnabled()) << "no visit is known";
  Leer({"00:10:00"});
  banco.reloj.Adelantar(72 * 3600);
  auto otra = GetParam().crear(banco.mod, Canales());
  Pulsar(*otra, "Periodo(4)");
  EXPECT_EQ(fechas(*otra), std::pair(hoy, hoy.addDays(3)));
}

TEST_P(PruebaVistas, SoloLoMarcadoComoRecordadoVuelve) {
  const auto dejar = [this](bool recordar) {
    auto vista = GetParam().crear(banco.mod, Canales());
    vista->show();
    Hijo<QAbstractButton>(*vista, "chkRecordar")->setChecked(recordar);
    Fecha(*vista, "FechaInicio", Dia(2));
    Hijo<QAbstractButton>(*vista, "chkCartucho")->setChecked(true);
    Lista(*vista).Ordenar(1, false);
    vista->close();
  };
  const auto hallado = [this] {
    auto vista = GetParam().crear(banco.mod, Canales());
    return std::tuple(Hijo<QDateTimeEdit>(*vista, "FechaInicio")->date().day(),
                      Hijo<QAbstractButton>(*vista, "chkCartucho")->isChecked(),
                      Lista(*vista).ColumnaOrdenada().has_value());
  };
  dejar(true);
  EXPECT_EQ(hallado(), std::tuple(2, true, true));
  dejar(false);
  EXPECT_EQ(hallado(), std::tuple(15, false, false));
}

TEST_P(PruebaVistas, UnaLecturaSeCancelaDondeElManejadorPuede) {
  SituacionDelEnlace situacion;
  banco.mod.situacion = &situacion;
  Leer({"00:10:00"});
  EXPECT_EQ(ventana->findChild<QAbstractButton*>("CancelarLectura"), nullptr) << "not of the station in process";
  situacion.PonerClase(ClaseDeUnidad::kReal);
  driver.al_llamar = [&](const std::string& llamada) {
    if (llamada.starts_with("Cancelar")) return;
    EXPECT_THAT(Texto(*ventana, "lblDetalle"), StartsWith("Esperando a la UTR desde las 10:00:00"));
    Pulsar(*ventana, "CancelarLectura");
    throw Error(8021, "Comunicador", "La operación fue cancelada");
  };
  Pulsar(*ventana, GetParam().boton);
  driver.al_llamar = {};
  EXPECT_EQ(driver.llamadas.back(), "Cancelar(no)");
  EXPECT_THAT(Paneles(*ventana), ElementsAre("picCancelada"));
  EXPECT_THAT(Filas(*ventana), IsEmpty());
  EXPECT_EQ(banco.Errores(), "");
  Leer({"00:10:00", "00:20:00"});
  EXPECT_EQ(Filas(*ventana).size(), 2u);
  EXPECT_THAT(Paneles(*ventana), IsEmpty());
}

TEST_P(PruebaVistas, LaVistaAndaSinCanales) {
  auto sola = GetParam().crear(banco.mod, nullptr);
  sola->show();
  driver.Devuelve(GetParam().operacion, Lectura({"00:10:00"}));
  Pulsar(*sola, GetParam().boton);
  const bool datos = std::string(GetParam().nombre) == "frmDatos";
  EXPECT_EQ(Filas(*sola).size(), datos ? 0u : 1u) << "without channels there is nothing to choose in the data view";
}

INSTANTIATE_TEST_SUITE_P(Todas, PruebaVistas, testing::ValuesIn(kVistas),
                         [](const auto& caso) { return std::string(caso.param.nombre); });

}  // namespace
}  // namespace utr
