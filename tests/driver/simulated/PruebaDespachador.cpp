#include <gtest/gtest.h>

#include <filesystem>

#include "driver/link/protocol/Imagenes.h"
#include "driver/simulated/station/Despachador.h"
#include "driver/simulated/station/Extremo.h"
#include "support/Carpeta.h"
#include "support/RelojFalso.h"

namespace utr::simulada {
namespace {

using namespace protocolo;
using prueba::Carpeta;

constexpr std::uint32_t kSesion = 0x1234;
constexpr std::uint8_t kDireccion = 120;

struct Banco {
  explicit Banco(std::filesystem::path carpeta = {})
      : viva(std::move(carpeta), {"Estacion.toml", "Estacion.estado"}, reloj, {},
             [](const FechaHora&, std::string_view) {}) {}

  // The answer; empty for silence.
  Bytes Pedir(VistaBytes pdu, std::uint8_t direccion = kDireccion, bool por_ip = false) {
    return unidad.Responder(direccion, pdu, por_ip).value_or(Bytes{});
  }
  std::vector<std::uint16_t> Registros(std::uint16_t desde, std::uint16_t cuantos) {
    return LeerRespuestaDeRegistros(Pedir(PedidoDeTramo(4, {desde, cuantos})), cuantos)
        .value_or(std::vector<std::uint16_t>{});
  }
  // The code of the exception; 0 for an ordinary answer, -1 for silence.
  int Excepcion(VistaBytes pdu) {
    const Bytes respuesta = Pedir(pdu);
    return respuesta.empty() ? -1 : LeerExcepcion(respuesta, pdu[0]).value_or(0);
  }
  int Mandar(const Orden& orden) { return Excepcion(PedidoDeEscritura(0, BloqueDe(orden))); }
  Orden Nueva(Codigo codigo, std::vector<std::uint16_t> argumentos = {}) {
    return {120, kSesion, ++secuencia, codigo, std::move(argumentos)};
  }
  // What became of the newest order.
  ResultadoDeOrden Resultado() { return LeerResultados(Registros(registro::kOrdenes, 5)).at(0); }
  EstadoDeOrden Hacer(Codigo codigo, std::vector<std::uint16_t> argumentos = {}) {
    EXPECT_EQ(Mandar(Nueva(codigo, std::move(argumentos))), 0);
    return Resultado().estado;
  }
  Bytes Pagina(int pista, int pagina) {
    const VistaPagina vista = viva.Unidad().memoria.PaginaEn(pista, pagina);
    return {vista.begin(), vista.end()};
  }
  Bytes Archivo(std::vector<PedidoDeArchivo> partes) {
    const auto leidas = LeerRespuestaDeArchivos(Pedir(PedidoDeArchivos(partes)), partes);
    return leidas ? leidas->at(0) : Bytes{};
  }
  // The image of a table, read as a client does.
  Bytes Imagen(std::uint16_t archivo) {
    const auto resumen = LeerCabeza(Archivo({{archivo, 0, 5}}));
    Bytes imagen;
    for (std::uint16_t pieza = 1; imagen.size() < resumen->largo; ++pieza) {
      const Bytes bytes = Archivo({{archivo, pieza, 32}});
      imagen.insert(imagen.end(), bytes.begin(), bytes.end());
    }
    imagen.resize(resumen->largo);
    EXPECT_EQ(ResumenDe(imagen), *resumen);
    return imagen;
  }
  // Stages one piece.
  int Ensayar(std::uint32_t sesion, std::uint16_t pieza, Bytes datos) {
    Bytes cabeza;
    Poner32(cabeza, sesion);
    datos.resize(kBytesPorPieza, 0);
    const EscrituraDeArchivo partes[] = {{archivo::kBorrador, 0, cabeza}, {archivo::kBorrador, pieza, datos}};
    return Excepcion(PedidoDeEscrituraDeArchivos(partes));
  }
  int SucesosDe(std::uint8_t codigo) {
    int cuantos = 0;
    viva.Unidad().memoria.RecorrerSucesos([&](VistaPagina pagina, const Cabecera& cabecera) {
      for (unsigned i = 0; i < cabecera.cuenta; ++i) cuantos += LeerSuceso(pagina, i).codigo == codigo ? 1 : 0;
    });
    return cuantos;
  }

  RelojFalso reloj;
  EstacionViva viva;
  Despachador unidad{viva};
  std::uint16_t secuencia = 0;
};

TEST(Despachador, RegistrosYExcepciones) {
  Banco b;
  EXPECT_EQ(b.Registros(0, 5), (std::vector<std::uint16_t>{120, 1, 1, 0x20 | 0x40 | 0x80, 1}));
  EXPECT_EQ(b.Registros(registro::kReloj, 6), (std::vector<std::uint16_t>{2026, 3, 15, 10, 0, 0}));
  const auto trama = b.viva.Unidad().Instantaneos(b.viva.ahora);
  const auto leida = b.Registros(registro::kTrama, 38);
  EXPECT_TRUE(std::equal(trama.begin(), trama.end(), leida.begin(), leida.end()));
  const auto pilas = b.Registros(registro::kPilas, kLargoDePilas);
  ASSERT_EQ(pilas.size(), kLargoDePilas);
  int con_pila = 0;
  const TablaPtr canales = b.viva.Unidad().canales.ComoTabla();
  for (std::size_t fila = 0; !canales->Eof(); canales->MoveNext(), ++fila) {
    EXPECT_EQ(std::to_string(pilas[fila]), canales->Texto("Pila")) << canales->Texto("Canal");
    con_pila += pilas[fila] < 9 ? 1 : 0;
  }
  EXPECT_GT(con_pila, 5);
  const struct {
    Bytes pdu;
    int excepcion;
  } casos[] = {{PedidoDeTramo(4, {10000, 1}), 2},
               {PedidoDeTramo(4, {272, 2}), 2},
               {PedidoDeTramo(4, {10, 2}), 2},  // beyond its block
               {PedidoDeTramo(4, {0, 0}), 3},
               {PedidoDeTramo(4, {0, 126}), 3},
               {PedidoDeTramo(3, {0, 1}), 1},
               {PedidoDeTramo(1, {0, 3}), 2},
               {PedidoDeTramo(1, {65535, 2}), 2},
               {PedidoDeTramo(2, {0, 3}), 0},
               {PedidoDeSalida(2, true), 2},
               {{5, 0, 0, 1, 2}, 3},
               {PedidoDeEscritura(0, std::vector<std::uint16_t>(8, 0)), 3},
               {PedidoDeEscritura(1, BloqueDe(b.Nueva(Codigo::kEstado, {0}))), 3},
               {PedidoDeEscritura(10000, std::vector<std::uint16_t>(2, 0)), 2},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{256, 1023, 33}}), 2},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{256, 1024, 1}}), 2},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{256, 0, 0}}), 2},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{288, 0, 1}}), 2},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{48, 0, 1}}), 2},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{256, 0, 65535}}), 3},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{256, 0, 123}}), 3},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{256, 0, 121}}), 0},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{1, 9999, 1}}), 0},
               {PedidoDeArchivos(std::vector<PedidoDeArchivo>{{1, 10000, 1}}), 2}};
  for (const auto& caso : casos) EXPECT_EQ(b.Excepcion(caso.pdu), caso.excepcion) << testing::PrintToString(caso.pdu);
}

TEST(Despachador, ADifusionYAOtrosCalla) {
  Banco b;
  const Bytes salida = PedidoDeSalida(0, true);
  EXPECT_TRUE(b.Pedir(salida, 0).empty());
  EXPECT_TRUE(b.Pedir(salida, 121).empty());
  EXPECT_FALSE(b.viva.Unidad().salidas[0]);
  EXPECT_FALSE(b.Pedir(salida, 0, true).empty());
  EXPECT_TRUE(b.viva.Unidad().salidas[0]);
  EXPECT_EQ(b.SucesosDe(suceso::kSalidaConmutada), 1);
  EXPECT_FALSE(b.Pedir(salida, 255).empty());
  EXPECT_EQ(b.SucesosDe(suceso::kSalidaConmutada), 1) << "it was on already";
  b.viva.Escenificar("[equipo]\nmuda = true\n");
  EXPECT_TRUE(b.Pedir(PedidoDeTramo(4, {0, 1})).empty());
}

TEST(Despachador, LasPaginasSonLasDeLaMemoria) {
  Banco b;
  Bytes tres;
  for (int pagina = 5; pagina < 8; ++pagina) {
    const Bytes una = b.Pagina(0, pagina);
    tres.insert(tres.end(), una.begin(), una.end());
  }
  EXPECT_EQ(b.Archivo({{archivo::kFlash, 5, 96}, {archivo::kEco, 7, 1}}), tres);
  const auto cabezales = LeerCabezales(b.Registros(registro::kAnillos, kRegistrosDeCabezales));
  ASSERT_TRUE(cabezales);
  const Cabezal& sucesos = cabezales->at(kAnilloDeSucesos);
  EXPECT_TRUE(sucesos.asciende);
  ASSERT_NE(sucesos.pendiente, kSinPendiente);
  const auto hay_pendientes = [&](int lugar) {
    const Bytes pagina = b.Pagina(30 + lugar / 1024, lugar % 1024);
    const VistaPagina vista{pagina.data(), kBytesPagina};
    return (LeerSuceso(vista, LeerCabecera(vista)->cuenta - 1U).marcas & marca::kPendiente) != 0;
  };
  EXPECT_TRUE(hay_pendientes(sucesos.pendiente));
  EXPECT_FALSE(hay_pendientes(sucesos.pendiente - 1));
  // A clock that goes back leaves days that descend.
  EXPECT_EQ(b.Hacer(Codigo::kReloj, {2026, 3, 1, 0, 0, 0}), EstadoDeOrden::kHecha);
  EXPECT_FALSE(LeerCabezales(b.Registros(registro::kAnillos, kRegistrosDeCabezales))->at(10).asciende);
  EXPECT_EQ(b.Registros(registro::kReloj, 3), (std::vector<std::uint16_t>{2026, 3, 1}));

  b.viva.Escenificar("[cartucho]\npresente = false\n");
  EXPECT_EQ(b.Excepcion(PedidoDeTramo(4, {registro::kAnillosDelCartucho, 4})), 2);
  EXPECT_EQ(b.Excepcion(PedidoDeArchivos(std::vector<PedidoDeArchivo>{{archivo::kCartucho, 0, 32}})), 2);
  EXPECT_EQ(b.Hacer(Codigo::kBorrarCartucho), EstadoDeOrden::kEnCurso);
  b.reloj.Adelantar(3);
  EXPECT_EQ(b.Resultado().motivo, Motivo::kSinCartucho);
}

// Orders are told apart by all of the bits of their check.
TEST(Despachador, OtroContenidoNoPasaPorElMismo) {
  Banco b;
  const Orden orden = b.Nueva(Codigo::kSuceso, {128, 0});
  EXPECT_EQ(b.Mandar(orden), 0);
  const auto de_todo = [](const Orden& una) { return Crc32(BytesDe(BloqueDe(una))); };
  int parecidas = 0;  // to a check over the block with its own
  for (int valor = 1; valor < 65536 * 16 && parecidas < 2; ++valor) {
    Orden otra = orden;
    otra.argumentos = {static_cast<std::uint16_t>(129 + valor / 65536), static_cast<std::uint16_t>(valor)};
    if (de_todo(otra) != de_todo(orden)) continue;
    ++parecidas;
    EXPECT_EQ(b.Mandar(otra), 3) << valor;
  }
  EXPECT_GT(parecidas, 0);
}

TEST(Despachador, UnaOrdenRepetidaSeHaceUnaVez) {
  Carpeta carpeta;
  Orden orden;
  {
    Banco b(carpeta.Ruta());
    orden = b.Nueva(Codigo::kSuceso, {128, 40});
    for (int vez = 0; vez < 3; ++vez) EXPECT_EQ(b.Mandar(orden), 0);
    EXPECT_EQ(b.SucesosDe(128), 1);
    Orden otra = orden;
    otra.argumentos = {129, 40};
    EXPECT_EQ(b.Mandar(otra), 3);
    otra = b.Nueva(Codigo::kSuceso, {128, 40});
    otra.identificador = 121;
    EXPECT_EQ(b.Mandar(otra), 3) << "it was meant for another unit";
    EXPECT_EQ(b.SucesosDe(128) + b.SucesosDe(129), 1);
    EXPECT_EQ(b.Resultado(), (ResultadoDeOrden{kSesion, 1, EstadoDeOrden::kHecha, Motivo::kNinguno}));
  }
  Banco b(carpeta.Ruta());
  EXPECT_EQ(b.Mandar(orden), 0);
  EXPECT_EQ(b.SucesosDe(128), 1) << "the unit was started again in between";
  // Sixteen are kept.
  b.secuencia = 1;
  for (int i = 0; i < 16; ++i) EXPECT_EQ(b.Hacer(Codigo::kEstado, {4}), EstadoDeOrden::kHecha);
  EXPECT_EQ(LeerResultados(b.Registros(registro::kOrdenes, 80)).back().secuencia, 2);
}

TEST(Despachador, UnaOrdenQueNoSePuedeGuardarNoSeHace) {
  Carpeta carpeta;
  Banco b(carpeta.Ruta());
  std::filesystem::remove_all(carpeta.Ruta());
  EXPECT_EQ(b.Hacer(Codigo::kSuceso, {128, 40}), EstadoDeOrden::kRechazada);
  EXPECT_EQ(b.Resultado().motivo, Motivo::kNoGuardada);
  EXPECT_EQ(b.SucesosDe(128), 0);
  EXPECT_EQ(b.Excepcion(PedidoDeSalida(0, true)), 4);
  EXPECT_FALSE(b.viva.Unidad().salidas[0]);
}

TEST(Despachador, ArgumentosQueNoTienenSentidoSeRechazan) {
  Banco b;
  const struct {
    int codigo;
    std::vector<std::uint16_t> argumentos;
  } casos[] = {{1, {256, 0}},
               {1, {1}},
               {7, {2, 1}},
               {7, {1, 24}},
               {7, {2, 1, 1}},
               {14, {1}},
               {33, {24}},
               {41, {1}},
               {101, {1}},
               {103, {2026, 2, 29, 0, 0, 0}},
               {104, {256}},
               {105, {3, 1}},
               {105, {1, 2}},
               {106, {0, 0}},
               {106, {0, 65, 1}},
               {106, {34, 4, 1, 2}},
               {110, {1, 0, 8, 0, 0}},
               {112, {}},
               {2, {}},
               {999, {}}};
  b.viva.Escenificar("[tiempos]\nborrado = 0\n");
  for (const auto& caso : casos) {
    EXPECT_EQ(b.Hacer(static_cast<Codigo>(caso.codigo), caso.argumentos), EstadoDeOrden::kRechazada) << caso.codigo;
  }
}

TEST(Despachador, UnBorradoDuraYMientrasNoHayOtraOrden) {
  Carpeta carpeta;
  {
    Banco b(carpeta.Ruta());
    const Orden borrado = b.Nueva(Codigo::kBorrarFlash);
    EXPECT_EQ(b.Mandar(borrado), 0);
    EXPECT_EQ(b.Mandar(b.Nueva(Codigo::kEstado, {0})), 6);
    EXPECT_EQ(b.Mandar(borrado), 0) << "the same one may be asked for again";
    EXPECT_EQ(b.Resultado().estado, EstadoDeOrden::kEnCurso);
    EXPECT_NE(b.Pagina(0, 0), Bytes(64, 255));
    b.reloj.Adelantar(3);
    EXPECT_EQ(b.Resultado().estado, EstadoDeOrden::kHecha);
    EXPECT_EQ(b.Pagina(0, 0), Bytes(64, 255));
    EXPECT_EQ(b.Mandar(b.Nueva(Codigo::kBorrarCartucho)), 0);
  }
  Banco b(carpeta.Ruta());
  EXPECT_EQ(b.Resultado(), (ResultadoDeOrden{kSesion, 3, EstadoDeOrden::kRechazada, Motivo::kInterrumpida}));
}

TEST(Despachador, UnReinicioTomaFuerzaCuandoSeLeyo) {
  for (const bool leido : {true, false}) {
    Banco b;
    Bytes cero = b.viva.Unidad().LeerPagina(0);
    cero[0] = 3;
    cero[3] = 77;
    EXPECT_EQ(b.Hacer(Codigo::kPagina, ArgumentosDe(PaginaEscrita{0, cero})), EstadoDeOrden::kHecha);
    EXPECT_EQ(b.Archivo({{archivo::kPaginas, 0, 33}}), RecordDePaginaUTR(cero));
    EXPECT_EQ(b.Mandar(b.Nueva(Codigo::kReinicio)), 0);
    EXPECT_EQ(b.unidad.Velocidad(), 9600);
    EXPECT_EQ(b.Registros(0, 1), std::vector<std::uint16_t>{120});
    const auto estado = leido ? b.Resultado().estado : EstadoDeOrden::kHecha;
    EXPECT_EQ(estado, EstadoDeOrden::kHecha);
    b.reloj.Adelantar(leido ? 0 : 2);
    EXPECT_TRUE(b.Pedir(PedidoDeTramo(4, {0, 1}), 77).empty()) << "it is away";
    EXPECT_EQ(b.unidad.Velocidad(), 4800);
    b.reloj.Adelantar(19);
    EXPECT_TRUE(b.Pedir(PedidoDeTramo(4, {0, 1}), 77).empty()) << "another speed keeps it away longer";
    b.reloj.Adelantar(1);
    EXPECT_TRUE(b.Pedir(PedidoDeTramo(4, {0, 1}), 120).empty());
    EXPECT_FALSE(b.Pedir(PedidoDeTramo(4, {0, 1}), 77).empty());
  }
}

TEST(Despachador, LasTablasSeLeenComoSon) {
  Banco b;
  b.viva.Unidad().canales.Poner(1, "Descripcion", std::string(500, 'x'));
  const auto filas = LeerImagenDeCanales(b.Imagen(archivo::kCanales));
  ASSERT_TRUE(filas);
  EXPECT_EQ(filas->filas, b.viva.Unidad().canales.Filas());
  EXPECT_EQ(LeerImagenDeAgenda(b.Imagen(archivo::kAgenda)), b.viva.Unidad().agenda.Entradas());
}

TEST(Despachador, UnaTablaSeTomaEnteraONada) {
  Banco b;
  FilasDeCanales filas;
  filas.presentes.assign(ColumnasDeUnidad().size(), false);
  filas.presentes[LugarDeColumna("Canal")] = filas.presentes[LugarDeColumna("Descripcion")] = true;
  for (const char* canal : {"1", "4"}) {
    auto& fila = filas.filas.emplace_back(ColumnasDeUnidad().size());
    fila[LugarDeColumna("Canal")] = canal;
    fila[LugarDeColumna("Descripcion")] = std::string(50, canal[0]);
  }
  const Bytes imagen = *ImagenDe(filas);
  ASSERT_EQ(PiezasDe(imagen.size()), 2U);
  const Bytes primera(imagen.begin(), imagen.begin() + 64);
  const Bytes segunda(imagen.begin() + 64, imagen.end());
  const auto tomar = ArgumentosDe(ResumenDe(imagen));
  const auto descripcion = [&](int canal) { return b.viva.Unidad().canales.Texto(canal, "Descripcion"); };
  const auto rechazada = [&] {
    EXPECT_EQ(b.Hacer(Codigo::kTomarParametrizacion, tomar), EstadoDeOrden::kRechazada);
    EXPECT_NE(descripcion(1), std::string(50, '1'));
    return b.Resultado().motivo;
  };
  EXPECT_EQ(b.Ensayar(kSesion, 1, primera), 0);
  EXPECT_EQ(b.Ensayar(kSesion + 1, 1, primera), 6) << "another session's";
  EXPECT_EQ(rechazada(), Motivo::kSinBorrador) << "a piece is missing";

  EXPECT_EQ(b.Ensayar(kSesion, 1, primera), 0);
  b.reloj.Adelantar(30);
  EXPECT_EQ(b.Ensayar(kSesion + 1, 2, segunda), 0) << "the other one is too old";
  EXPECT_EQ(rechazada(), Motivo::kSinBorrador) << "half is another session's";

  b.Ensayar(kSesion, 1, segunda);
  b.Ensayar(kSesion, 2, segunda);
  EXPECT_EQ(rechazada(), Motivo::kSinBorrador) << "it isn't what the order names";

  b.Ensayar(kSesion, 1, primera);
  b.Ensayar(kSesion, 2, segunda);
  EXPECT_EQ(b.Hacer(Codigo::kReinicio), EstadoDeOrden::kHecha);
  b.reloj.Adelantar(4);
  EXPECT_EQ(rechazada(), Motivo::kSinBorrador) << "a restart lies in between";

  b.Ensayar(kSesion, 2, segunda);
  b.Ensayar(kSesion, 1, primera);
  b.Ensayar(kSesion, 1, primera);
  Orden de_otra = b.Nueva(Codigo::kTomarParametrizacion, tomar);
  de_otra.sesion = kSesion + 1;
  EXPECT_EQ(b.Mandar(de_otra), 0);
  EXPECT_EQ(b.Resultado().motivo, Motivo::kSinBorrador) << "and the draft stays its owner's";
  const std::string tipo = b.viva.Unidad().canales.Texto(4, "Tipo");
  EXPECT_EQ(b.Hacer(Codigo::kTomarParametrizacion, tomar), EstadoDeOrden::kHecha);
  EXPECT_EQ(descripcion(1), std::string(50, '1'));
  EXPECT_EQ(descripcion(4), std::string(50, '4'));
  EXPECT_EQ(b.viva.Unidad().canales.Texto(4, "Tipo"), tipo) << "columns that weren't there stay";
  EXPECT_TRUE(b.viva.Unidad().canales.Parametros(2).Habilitado());
  EXPECT_EQ(b.Hacer(Codigo::kTomarConfiguracion, tomar), EstadoDeOrden::kRechazada) << "a draft is taken once";
  EXPECT_TRUE(b.viva.Unidad().canales.Parametros(2).Habilitado());
}

}  // namespace
}  // namespace utr::simulada
