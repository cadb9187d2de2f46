#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <sstream>

#include "base/Error.h"
#include "driver/Dias.h"
#include "driver/TablasRegistros.h"
#include "driver/Textos.h"
#include "driver/link/BancoEnlace.h"
#include "driver/link/BancoProceso.h"
#include "driver/link/Operaciones.h"
#include "support/NumeroDeError.h"

// Any operation over a line that fails in every way: it ends in the right answer or in a failure that is told, never in
// wrong data, never in an order that was carried out twice, and in the time that its requests may take.
namespace utr::prueba {
namespace {

using enlace::Medio;
using simulada::Canales;

std::vector<std::string> Filas(const TablaPtr& tabla) {
  std::vector<std::string> filas;
  for (const TablaPtr clon = tabla->Clone(); !clon->Eof(); clon->MoveNext()) {
    std::string fila;
    for (std::size_t c = 0; c < clon->FieldCount(); ++c) fila += clon->Texto(c) + "|";
    filas.push_back(std::move(fila));
  }
  return filas;
}

// What a read over a failing line may raise.
const std::set<std::int32_t> kDichas{error::kSinRespuesta, error_enlace::kLineaPerdida, error_enlace::kCambiante};

// A unit at the end of a bad line, and somebody who asks it this and that.
class Operador {
 public:
  Operador(Medio medio, unsigned semilla) : medio_(medio), azar_(semilla) {
    if (medio == Medio::kTcp) {
      banco.Driver().PorIP(true);
      banco.Driver().DireccionIP(banco.direccion);
      banco.Driver().PuertoIP(banco.puerto_ip);
    } else {
      banco.Driver().Conectar(banco.enlace, medio == Medio::kSerie ? banco.puerto : banco.puerto_modem);
    }
    banco.Driver().IdEquipo(banco.identificador);
    EXPECT_TRUE(medio != Medio::kLlamada || banco.Driver().LlamarTelefono("4800", "ATZ"));
  }

  // One operation of any kind. Those that take long to look at come up less often.
  void Operar() {
    static constexpr Operacion kOperaciones[] = {&Operador::LeerReloj,        &Operador::LeerEstado,
                                                 &Operador::LeerPagina,       &Operador::LeerFlash,
                                                 &Operador::LeerDatos,        &Operador::LeerEventos,
                                                 &Operador::LeerCola,         &Operador::LeerAgenda,
                                                 &Operador::LeerTrama,        &Operador::Evento,
                                                 &Operador::Salida,           &Operador::Pagina,
                                                 &Operador::Estado,           &Operador::Agenda,
                                                 &Operador::PonerEnHora,      &Operador::ReiniciarAgenda,
                                                 &Operador::LeerCartucho,     &Operador::Reiniciar,
                                                 &Operador::BorrarCartucho,   &Operador::LeerEventosPendientes,
                                                 &Operador::LeerColaPendiente};
    static constexpr Operacion kLargas[] = {&Operador::LeerCanales, &Operador::Parametros, &Operador::Configuracion};
    const bool larga = Hasta(19) == 0;
    Hacer(larga ? kLargas[Hasta(std::size(kLargas) - 1)] : kOperaciones[Hasta(std::size(kOperaciones) - 1)]);
  }

  // There is nothing to look for behind it.
  void TerminarBorrando() { Hacer(&Operador::BorrarFlash); }

  BancoEnlace banco{false};
  int hechas = 0;
  int fallidas = 0;
  std::map<std::string, int> por_cable;  // of each kind of bad line
  std::int64_t mayor_pedido = 9000;      // milliseconds that one request may take, with the silence ahead of it

 private:
  using Operacion = void (Operador::*)();

  // Raises nothing but what a failing line may raise.
  void Hacer(Operacion operacion) {
    LlamarDeNuevo();
    const std::int64_t antes = banco.reloj.Milisegundos();
    const std::uint64_t pedidos = banco.Enlace().Cuenta().pedidos;
    ++hechas;
    try {
      (this->*operacion)();
    } catch (const Error& falla) {
      Contar(false);
      EXPECT_TRUE(kDichas.contains(falla.Numero())) << falla.Numero() << falla.Descripcion();
    }
    const auto nuevos = static_cast<std::int64_t>(banco.Enlace().Cuenta().pedidos - pedidos);
    EXPECT_LE(banco.reloj.Milisegundos() - antes, (nuevos + 1) * mayor_pedido);
  }
  // A call that was lost is the operator's to place again.
  void LlamarDeNuevo() {
    if (banco.fines_de_llamada == llamadas_perdidas_) return;
    EXPECT_FALSE(Driver().EstadoEnlace());
    EXPECT_TRUE(Driver().LlamarTelefono("4800", "ATZ"));
    llamadas_perdidas_ = banco.fines_de_llamada;
  }
  Comunicador& Driver() { return banco.Driver(); }
  simulada::Estacion& Unidad() { return banco.Viva().Unidad(); }
  std::size_t Hasta(std::size_t mayor) { return std::uniform_int_distribution<std::size_t>(0, mayor)(azar_); }
  std::string Dia() { return TextoFecha(FechaDeDias(DiasDesde1970(banco.Ahora()) - 1 - static_cast<int>(Hasta(25)))); }
  void Contar(bool bien) {
    fallidas += bien ? 0 : 1;
    por_cable[cable_] += bien ? 0 : 1;
  }

  // The result of an order, where what it changes is as it was or as it was to be, and the latter where it succeeded.
  template <class Valor>
  void Cambia(bool bien, const Valor& antes, const Valor& pedido, const Valor& ahora) {
    Contar(bien);
    EXPECT_TRUE(ahora == pedido || (!bien && ahora == antes));
  }
  int Sucesos(std::uint8_t codigo, std::optional<std::uint16_t> valor = {}) {
    int cuantos = 0;
    Unidad().memoria.RecorrerSucesos([&](paginas::VistaPagina pagina, const paginas::Cabecera& cabecera) {
      for (unsigned i = 0; i < cabecera.cuenta; ++i) {
        const auto suceso = paginas::LeerSuceso(pagina, i);
        cuantos += suceso.codigo == codigo && suceso.valor1 == valor.value_or(suceso.valor1) ? 1 : 0;
      }
    });
    return cuantos;
  }

  void LeerReloj() {
    const std::string texto = Driver().LeerFechaHora();
    Contar(!texto.empty());
    if (texto.empty()) return;
    const std::int64_t atraso = Unidad().Reloj(Segundos(banco.Ahora())) - Segundos(ConvertirAFecha(texto));
    EXPECT_TRUE(atraso >= 0 && atraso <= mayor_pedido / 1000) << atraso;
  }
  void LeerEstado() {
    const std::int32_t estado = Driver().LeerEstado();
    Contar(estado >= 0);
    EXPECT_TRUE(estado == -1 || estado == Unidad().Estado());
  }
  void LeerPagina() {
    const int cual = static_cast<int>(Hasta(40));
    const std::string texto = Driver().LeerPagina(std::to_string(cual), false);
    Contar(!texto.empty());
    EXPECT_TRUE(texto.empty() || texto == TextoPagina(Unidad().LeerPagina(cual)));
  }
  // Old pages, which don't change.
  void LeerFlash() {
    const auto pista = static_cast<std::int16_t>(3 * Hasta(8));
    const auto pagina = static_cast<std::int16_t>(Hasta(200));
    for (std::int16_t i = 0; i < 5; ++i) {
      const auto otra = static_cast<std::int16_t>(pagina + i);
      const std::string texto = Driver().LeerPaginaFlash(pista, otra);
      Contar(!texto.empty());
      EXPECT_TRUE(texto.empty() || texto == Unidad().memoria.TextoDePagina(pista, otra));
    }
  }
  void LeerDatos() {
    const int canal = 1 + static_cast<int>(Hasta(22));
    const std::string dia = Dia();
    const TablaPtr leida = Driver().LeerDatos(dia, dia, static_cast<std::int16_t>(canal - 1));
    paginas::FilasMuestras filas;
    const auto rango = paginas::LeerRango(dia, dia);
    const int pila = Unidad().canales.PilaDe(canal);
    if (pila < simulada::kPilas) {
      Unidad().memoria.RecorrerPila(pila, [&](auto pagina, const auto& cabecera) {
        if (cabecera.canal == canal) filas.Agregar(pagina, cabecera, rango, {});
      });
    }
    EXPECT_EQ(Filas(leida), Filas(filas.Terminar())) << dia << " " << canal;
  }
  void LeerCartucho() {
    const std::string dia = Dia();
    const TablaPtr leida = Driver().LeerDatosCartucho(dia, dia, 0);
    paginas::FilasMuestras filas;
    Unidad().cartucho.RecorrerPila(Unidad().canales.PilaDe(1), [&](auto pagina, const auto& cabecera) {
      if (cabecera.canal == 1) filas.Agregar(pagina, cabecera, paginas::LeerRango(dia, dia), {});
    });
    EXPECT_EQ(Filas(leida), Filas(filas.Terminar())) << dia;
  }
  void LeerEventos() {
    const std::string dia = Dia();
    const TablaPtr leida = Driver().LeerEventos(dia, dia);
    paginas::FilasSucesos filas;
    Unidad().memoria.RecorrerSucesos(
        [&](auto pagina, const auto& cabecera) { filas.Agregar(pagina, cabecera, paginas::LeerRango(dia, dia), {}); });
    EXPECT_EQ(Filas(leida), Filas(filas.Terminar())) << dia;
  }
  void LeerCola() {
    const std::string dia = Dia();
    const TablaPtr leida = Driver().LeerColaTx(dia, dia);
    paginas::FilasMuestras filas;
    Unidad().memoria.RecorrerCola(
        [&](auto pagina, const auto& cabecera) { filas.Agregar(pagina, cabecera, paginas::LeerRango(dia, dia), {}); });
    EXPECT_EQ(Filas(leida), Filas(filas.Terminar())) << dia;
  }
  void LeerEventosPendientes() {
    const TablaPtr leida = Driver().LeerEventos("", "");
    const std::int32_t hoy = DiaDe(Unidad().Reloj(Segundos(banco.Ahora())));
    EXPECT_EQ(Filas(leida), Filas(simulada::SucesosPendientes(Unidad().memoria, hoy)));
  }
  void LeerColaPendiente() {
    const TablaPtr leida = Driver().LeerColaTx("", "");
    auto rango = paginas::LeerRango("", "");
    rango.solo_pendiente = true;
    paginas::FilasMuestras filas;
    Unidad().memoria.RecorrerCola(
        [&](auto pagina, const auto& cabecera) { filas.Agregar(pagina, cabecera, rango, {}); });
    EXPECT_EQ(Filas(leida), Filas(filas.Terminar()));
  }
  void LeerCanales() { EXPECT_EQ(Filas(Driver().ConfiguracionAlmacenada(true)), Filas(Unidad().canales.ComoTabla())); }
  void LeerAgenda() {
    const TablaPtr leida = Driver().LeerAgenda();
    Contar(leida != nullptr);
    EXPECT_TRUE(!leida || Filas(leida) == Filas(Unidad().agenda.ComoTabla()));
  }
  void LeerTrama() {
    const TablaPtr leida = Driver().LeerInstantaneos();
    ASSERT_EQ(leida->RecordCount(), kLugaresDeTrama);
    EXPECT_EQ(leida->Filas().Texto(36, 0), Unidad().salidas[0] ? "1" : "0");
  }

  void Evento() {
    const auto valor = static_cast<std::uint16_t>(++numero_);
    const bool bien = Driver().GrabarEvento("1", "200/0/" + TextoPar(valor));
    Contar(bien);
    const int cuantos = Sucesos(200, valor);
    EXPECT_TRUE(cuantos == 1 || (!bien && cuantos == 0)) << "carried out " << cuantos << " times";
  }
  void Salida() {
    const std::size_t cual = Hasta(1);
    const bool antes = Unidad().salidas[cual];
    const int sucesos = Sucesos(simulada::suceso::kSalidaConmutada, static_cast<std::uint16_t>(cual + 1));
    const bool bien = Driver().GrabarSalidaDigital(static_cast<int>(cual) + 1, !antes);
    Cambia(bien, antes, !antes, Unidad().salidas[cual]);
    EXPECT_LE(Sucesos(simulada::suceso::kSalidaConmutada, static_cast<std::uint16_t>(cual + 1)), sucesos + 1);
  }
  void Pagina() {
    const int cual = 1 + static_cast<int>(Hasta(30));
    const auto antes = Unidad().LeerPagina(cual);
    auto pedida = antes;
    for (auto& byte : pedida) byte = static_cast<std::uint8_t>(Hasta(255));
    const bool bien = Driver().EscribirPagina(std::to_string(cual), TextoPagina(pedida));
    Cambia(bien, antes, pedida, Unidad().LeerPagina(cual));
  }
  void Estado() {
    const auto bits = static_cast<std::uint16_t>(Hasta(63) << 2);
    const unsigned antes = Unidad().banderas;
    const bool bien = Driver().GrabarEstado(TextoPar(bits));
    Cambia(bien, antes & 0xBCU, bits & 0xBCU, Unidad().banderas & 0xBCU);
  }
  void Agenda() {
    Tabla tabla;
    for (const char* campo : {"HorarioInteger", "TOblig", "TWind", "TCond"})
      tabla.Append(campo, TipoCampo::kVarChar, 20);
    tabla.Open();
    const std::size_t cuantas = 1 + Hasta(60);
    for (std::size_t i = 0; i < cuantas; ++i) {
      tabla.AddNew();
      tabla.Set("HorarioInteger", std::to_string(Hasta(1439)));
      for (const char* campo : {"TOblig", "TWind", "TCond"}) tabla.Set(campo, Hasta(1) == 0 ? "Si" : "No");
    }
    tabla.UpdateBatch();
    const std::string antes = Unidad().agenda.ComoTexto();
    simulada::Agenda pedida = Unidad().agenda;
    pedida.Escribir(tabla);
    const bool bien = Driver().GrabarAgenda(tabla);
    Cambia(bien, antes, pedida.ComoTexto(), Unidad().agenda.ComoTexto());
  }
  void Parametros() { EscribirCanales(&Canales::Mezclar, &Comunicador::GrabarParametrizacion); }
  void Configuracion() { EscribirCanales(&Canales::Reemplazar, &Comunicador::GrabarConfiguracion); }
  void EscribirCanales(bool (Canales::*tomar)(Tabla&), bool (Comunicador::*grabar)(Tabla&)) {
    const TablaPtr tabla = Unidad().canales.ComoTabla();
    for (; !tabla->Eof(); tabla->MoveNext()) {
      if (Hasta(3) == 0) tabla->Set("AMax", std::to_string(Hasta(100000)) + std::string(Hasta(80), '0'));
    }
    const auto antes = Filas(Unidad().canales.ComoTabla());
    Canales pedidos = Unidad().canales;
    (pedidos.*tomar)(*tabla);
    const bool bien = (Driver().*grabar)(*tabla);
    Cambia(bien, antes, Filas(pedidos.ComoTabla()), Filas(Unidad().canales.ComoTabla()));
  }
  void PonerEnHora() {
    const bool bien = Driver().GrabarFechaHora();
    Contar(bien);
    EXPECT_TRUE(!bien || std::abs(Unidad().desfase) <= mayor_pedido / 1000);
  }
  // As many events as orders at the most, however often each was sent. An order that was told to have failed may be
  // carried out while the next one is under way.
  void UnaVez(std::uint8_t codigo, const std::function<bool()>& ordenar) {
    int& mas = ordenadas_.try_emplace(codigo, Sucesos(codigo)).first->second;
    ++mas;
    Contar(ordenar());
    EXPECT_LE(Sucesos(codigo), mas);
  }
  void Reiniciar() {
    UnaVez(simulada::suceso::kReinicio, [this] { return Driver().ReiniciarUTR("14"); });
    banco.Pasar(20);
  }
  void BorrarCartucho() {
    UnaVez(simulada::suceso::kCartuchoBorrado, [this] { return Driver().BorrarCartucho(); });
  }
  void BorrarFlash() {
    const bool bien = Driver().BorrarFlash();
    Contar(bien);
    const bool vacia = Unidad().memoria.SituacionDe(0).siguiente == 0 && !Unidad().memoria.SituacionDe(0).lleno;
    EXPECT_EQ(Sucesos(simulada::suceso::kFlashBorrada), vacia ? 1 : 0);
    EXPECT_TRUE(vacia || !bien);
  }
  void ReiniciarAgenda() { Contar(Driver().ReiniciarAgenda("41")); }

  Medio medio_;
  std::mt19937 azar_;
  int numero_ = 0;
  int llamadas_perdidas_ = 0;
  std::string cable_;
  std::map<std::uint8_t, int> ordenadas_;  // events that there may be by now, of each code

 public:
  // Another kind of bad line from now on.
  void Estropear() {
    const auto raro = [this] { return std::to_string(static_cast<double>(Hasta(60)) / 1000); };
    std::ostringstream cable;
    cable << "[linea]\nsemilla = " << Hasta(1000000) << "\n";
    for (const char* falla : {"ruido", "pedido_perdido", "respuesta_perdida", "media_trama", "respuesta_doble",
                              "respuesta_tarde", "basura", "hueco"}) {
      if (Hasta(1) == 0) cable << falla << " = " << raro() << "\n";
    }
    cable << "latencia_ms = " << Hasta(80) << "\nfluctuacion_ms = " << Hasta(80) << "\nhueco_ms = " << Hasta(240)
          << "\ntarde_ms = " << Hasta(5000) << "\n";
    // A line that is hung up every so often, or slower than its port.
    if (Hasta(3) == 0) cable << "corta_despues = " << 60 + Hasta(200) << "\n";
    if (Hasta(3) == 0) cable << "bits_por_segundo = " << (2400 << Hasta(3)) << "\n";
    cable << "[historia]\nhueco = false\n";  // a stop of the unit's own leaves events like those of a restart
    cable_ = cable.str();
    banco.Escenario(cable_);
  }
};

// A thousand at a time, each with a unit of its own, whose flash is erased at the end.
void Probar(enlace::Medio medio, int millares, unsigned semilla) {
  constexpr int kMillar = 1000;
  for (int i = 0; i < millares && !testing::Test::HasFailure(); ++i) {
    Operador operador(medio, semilla + static_cast<unsigned>(i));
    if (medio == enlace::Medio::kLlamada) operador.mayor_pedido = 30000;
    while (operador.hechas + 1 < kMillar && !testing::Test::HasFailure()) {
      if (operador.hechas % 100 == 0) operador.Estropear();
      operador.Operar();
    }
    operador.TerminarBorrando();
    // So many failures would mean that nothing was tried.
    EXPECT_LT(operador.fallidas, kMillar / 5) << testing::PrintToString(operador.por_cable);
    EXPECT_GT(operador.banco.Enlace().Cuenta().reintentos, static_cast<std::uint64_t>(kMillar) / 100);
  }
}

// A line on which much is lost, and a machine that may be slow: what comes late is asked again.
enlace::Plazos Impacientes() {
  enlace::Plazos plazos;
  plazos.serie = plazos.llamada = plazos.tcp = plazos.escritura = 150;
  plazos.hueco = plazos.hueco_en_llamada = 50;
  plazos.silencio = plazos.silencio_en_llamada = 20;
  plazos.sondeo = 20;
  plazos.peor_velocidad = 9600;
  return plazos;
}

// Somebody at the end of a real line. What is right isn't at hand there: it is read ahead of the faults, and what was
// written is told by what was answered. A write that failed may have been carried out, or be so later.
class OperadorLejano {
 public:
  OperadorLejano(BancoProceso& banco, int operaciones) : banco_(banco), driver_(banco.Driver()) {
    datos_ = Filas(driver_.LeerDatos(dia_, dia_, 0));
    cola_ = Filas(driver_.LeerColaTx(dia_, dia_));
    canales_ = Canales();
    pagina_ = driver_.LeerPaginaFlash(0, 7);
    horarios_ = {Horarios().value()};
    for (std::size_t cual = 0; cual < std::size(kHacer); ++cual) {  // what each costs where nothing fails
      costo_.push_back(Costo([&] { (this->*kHacer[cual])(operaciones + static_cast<int>(cual)); }));
    }
  }

  void Operar(int i) {
    const std::size_t cual = azar_() % std::size(kHacer);
    const auto pedidos = Costo([&] {
      try {
        (this->*kHacer[cual])(i);
      } catch (const Error& falla) {
        ++fallidas;
        EXPECT_TRUE(kDichas.contains(falla.Numero())) << falla.Numero() << falla.Descripcion();
      }
    });
    // Each of its requests goes out three times at the most, and ahead of each the one that asks who is there; a draft
    // that got lost is made once more.
    EXPECT_LE(pedidos, 2 * 2 * kIntentos * (costo_[cual] + 1)) << cual;
  }

  // Once nothing fails any more.
  void Terminar() {
    EXPECT_TRUE(horarios_.contains(Horarios().value()));
    EXPECT_EQ(Canales(), canales_);
    std::map<std::string, int> veces;
    const std::string hoy = TextoFecha(banco_.Ahora());
    for (const TablaPtr t = driver_.LeerEventos(hoy, hoy); !t->Eof(); t->MoveNext()) {
      if (t->Texto("Codigo") == "200") ++veces[t->Texto("Valor1")];
    }
    for (const auto& [valor, dicho] : escritos_) {
      const int cuantas = veces[std::to_string(valor)];
      EXPECT_TRUE(cuantas == 1 || (!dicho && cuantas == 0)) << valor << " was written " << cuantas << " times";
    }
  }

  int fallidas = 0;

 private:
  using Hacer = void (OperadorLejano::*)(int);
  static constexpr std::uint64_t kIntentos = 3;
  static const Hacer kHacer[7];

  template <class Cosa>
  std::uint64_t Costo(Cosa cosa) {
    const std::uint64_t antes = banco_.Enlace().Cuenta().pedidos;
    cosa();
    return banco_.Enlace().Cuenta().pedidos - antes;
  }
  // The table of channels, but for the one value that is written, which has to be one of those that it may be.
  std::vector<std::string> Canales() {
    const TablaPtr tabla = driver_.ConfiguracionAlmacenada(true);
    if (maximos_.empty()) maximos_.insert(tabla->Texto("AMax"));
    EXPECT_TRUE(maximos_.contains(tabla->Texto("AMax"))) << tabla->Texto("AMax");
    tabla->Set("AMax", "");
    return Filas(tabla);
  }

  void Datos(int) { EXPECT_EQ(Filas(driver_.LeerDatos(dia_, dia_, 0)), datos_); }
  void Cola(int) { EXPECT_EQ(Filas(driver_.LeerColaTx(dia_, dia_)), cola_); }
  void Configuracion(int) { EXPECT_EQ(Canales(), canales_); }
  void Pagina(int) {
    const std::string leida = driver_.LeerPaginaFlash(0, 7);
    EXPECT_TRUE(leida.empty() || leida == pagina_);
  }
  void Evento(int i) { escritos_[i] = driver_.GrabarEvento("1", "200/0/" + TextoPar(static_cast<std::uint16_t>(i))); }
  void Parametros(int i) {
    const std::string maximo = std::to_string(100 + i);
    maximos_.insert(maximo);
    if (driver_.GrabarParametrizacion(*TablaDeTextos({"Canal", "AMax"}, {{"1", maximo.c_str()}}))) maximos_ = {maximo};
  }
  // The minutes of the entries that count; nothing where it wasn't read.
  std::optional<std::string> Horarios() {
    const TablaPtr tabla = driver_.LeerAgenda();
    if (!tabla) return std::nullopt;
    std::string horarios;
    for (; !tabla->Eof(); tabla->MoveNext()) {
      if (tabla->Texto("Descripcion") == "OK") horarios += tabla->Texto("HorarioInteger") + " ";
    }
    return horarios;
  }
  void Agenda(int i) {
    const std::string minuto = std::to_string(i);
    horarios_.insert(minuto + " ");
    const TablaPtr pedida =
        TablaDeTextos({"HorarioInteger", "TOblig", "TWind", "TCond"}, {{minuto.c_str(), "Si", "No", "No"}});
    if (driver_.GrabarAgenda(*pedida)) horarios_ = {minuto + " "};
    const auto leidos = Horarios();
    EXPECT_TRUE(!leidos || horarios_.contains(*leidos)) << *leidos;
  }

  BancoProceso& banco_;
  Comunicador& driver_;
  std::string dia_ = TextoFecha(FechaDeDias(DiasDesde1970(banco_.Ahora()) - 1));
  std::vector<std::string> datos_;
  std::vector<std::string> cola_;
  std::vector<std::string> canales_;
  std::string pagina_;
  std::set<std::string> maximos_;   // that channel 1 may have
  std::set<std::string> horarios_;  // that the schedule may have
  std::map<int, bool> escritos_;    // value of an event, and whether it was told to be written
  std::vector<std::uint64_t> costo_;
  std::mt19937 azar_{4};
};

const OperadorLejano::Hacer OperadorLejano::kHacer[7] = {
    &OperadorLejano::Datos,  &OperadorLejano::Cola,       &OperadorLejano::Configuracion, &OperadorLejano::Pagina,
    &OperadorLejano::Evento, &OperadorLejano::Parametros, &OperadorLejano::Agenda};

void ProbarPor(Medio medio, int operaciones) {
  BancoProceso banco(medio == Medio::kTcp, Impacientes(), "");
  if (medio == Medio::kLlamada) banco.puerto = banco.puerto_modem;
  banco.Conectar();
  ASSERT_TRUE(medio != Medio::kLlamada || banco.Driver().LlamarTelefono("4800", "ATZ"));
  OperadorLejano operador(banco, operaciones);
  banco.Escenario(
      "[linea]\npedido_perdido = 0.003\nrespuesta_perdida = 0.003\nmedia_trama = 0.003\nbasura = 0.003\n"
      "respuesta_doble = 0.02\nrespuesta_tarde = 0.003\ntarde_ms = 200\n");
  for (int i = 0; i < operaciones; ++i) operador.Operar(i);
  banco.Escenario("");
  EXPECT_LT(operador.fallidas, operaciones / 5);
  operador.Terminar();
}

}  // namespace

TEST(FallasDeEnlace, SeisMilOperacionesPorUnaLineaSerie) {
  Probar(enlace::Medio::kSerie, 6, 10);
}

TEST(FallasDeEnlace, DosMilOperacionesPorUnaLlamada) {
  Probar(enlace::Medio::kLlamada, 2, 20);
}

TEST(FallasDeEnlace, DosMilOperacionesPorUnaConexion) {
  Probar(enlace::Medio::kTcp, 2, 30);
}

TEST(FallasDeEnlace, DoscientasPorTcpHastaOtroProceso) {
  ProbarPor(Medio::kTcp, 200);
}

TEST(FallasDeEnlace, DoscientasPorUnTerminalHastaOtroProceso) {
  ProbarPor(Medio::kSerie, 200);
}

TEST(FallasDeEnlace, DoscientasPorUnaLlamadaHastaOtroProceso) {
  ProbarPor(Medio::kLlamada, 200);
}

// The process is killed in the middle of each operation, over each real line, and started again.
TEST(FallasDeEnlace, ElProcesoMuertoSeDiceYVueltoAArrancarSeSigue) {
  for (const Medio medio : {Medio::kTcp, Medio::kSerie, Medio::kLlamada}) {
    BancoProceso banco(medio == Medio::kTcp, Impacientes(), "[historia]\ndias = 1\ndias_cartucho = 1\n");
    Comunicador& driver = banco.Driver();
    if (medio == Medio::kLlamada) banco.puerto = banco.puerto_modem;
    for (const Operacion& operacion : Operaciones()) {
      banco.Conectar();
      ASSERT_TRUE(medio != Medio::kLlamada || driver.LlamarTelefono("4800", "ATZ"));
      ASSERT_NE(driver.LeerFechaHora(), "");
      banco.Escenario("[linea]\nlatencia_ms = 50\n");
      bool murio = false;
      banco.AlEsperar([&] {
        murio = true;
        banco.MatarEstacion();
      });
      bool fallo = false;
      const std::int32_t numero = NumeroDeError([&] { fallo = operacion.fallo(driver); });
      ASSERT_TRUE(murio) << operacion.nombre;
      if (medio == Medio::kTcp) {
        // Nobody is there to open the connection again.
        EXPECT_TRUE(numero == error::kSinRespuesta || (numero == 0 && fallo)) << operacion.nombre << " " << numero;
      } else {
        EXPECT_EQ(numero, error_enlace::kLineaPerdida) << operacion.nombre;
      }
      EXPECT_FALSE(driver.EstadoEnlace()) << operacion.nombre;
      EXPECT_FALSE(driver.EstadoPuerto()) << operacion.nombre;
      banco.RevivirEstacion();
      EXPECT_EQ(driver.LeerFechaHora().empty(), medio == Medio::kLlamada) << "nobody dials but the operator";
    }
  }
}

}  // namespace utr::prueba
