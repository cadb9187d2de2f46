#include "retrieved/recovery/Procesamiento.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <ostream>
#include <utility>

#include "base/Archivos.h"
#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"
#include "configuration/FilasDeCanales.h"
#include "driver/CanalesUTR.h"
#include "retrieved/Eventos.h"
#include "retrieved/Registros.h"
#include "retrieved/recovery/ArchivosResultado.h"
#include "retrieved/recovery/EstadisticaRegistros.h"
#include "retrieved/recovery/RecorridoRecuperacion.h"
#include "retrieved/recovery/SeleccionRegistros.h"
#include "services/RegistroErrores.h"

namespace utr {

namespace {

constexpr const char* kDescripciones = "Eventos.xml";

struct Aviso {
  FinProceso fin;
  const char* texto;
  Icono icono;
};
constexpr Aviso kAvisos[] = {
    {FinProceso::kConfiguracionNoValida, "La configuración cargada no es válida", Icono::kCritico},
    {FinProceso::kSinArchivo, "Debe seleccionar el archivo a procesar", Icono::kInformacion},
    {FinProceso::kFormatoNoReconocido, "No se reconoce el formato del archivo", Icono::kCritico},
};

// The channels of a list, in its order, each once.
std::vector<std::int16_t> CanalesDe(const ListasPilas& listas) {
  std::vector<std::int16_t> canales;
  for (const std::string_view entrada : Separar(listas.canales, ',')) {
    if (!EsNumerico(entrada)) continue;
    const auto canal = static_cast<std::int16_t>(Val(entrada) + 1);
    if (std::find(canales.begin(), canales.end(), canal) == canales.end()) canales.push_back(canal);
  }
  return canales;
}

// Minutes between two records of each channel.
std::map<std::int16_t, double> MinutosDeCanales(const Tabla& configuracion) {
  std::map<std::int16_t, double> minutos;
  if (configuracion.BuscarCampo("TStorage") < 0) return minutos;
  for (const TablaPtr filas = configuracion.Clone(); !filas->Eof(); filas->MoveNext()) {
    if (const auto canal = NumeroDeFila(filas->Texto("Canal")))
      minutos.try_emplace(*canal, Val(filas->Texto("TStorage")));
  }
  return minutos;
}

// One run: what was walked becomes tables, files and figures.
class Proceso {
 public:
  Proceso(const PedidoProceso& pedido, const ContextoRegistros& contexto, Progreso& progreso, const Atender& atender)
      : pedido_(pedido),
        contexto_(contexto),
        progreso_(progreso),
        atender_(atender),
        listas_(ArmarListasPilas(*pedido.configuracion)),
        canales_(CanalesDe(listas_)),
        nombres_(pedido.carpeta, pedido.archivos.front()),
        recorrido_(listas_, contexto.comunicador, pedido.mapa) {}

  ResultadoProceso Correr(const std::vector<TamanoRecuperacion>& tamanos) {
    Recorrer(tamanos);
    progreso_.Texto("Guardando información en disco");
    progreso_.Rango(static_cast<std::int64_t>(canales_.size()) + 2);
    progreso_.Posicion(0);
    AlFallar(
        [this] {
          GuardarDatos();
          GuardarCola();
          GuardarEventos();
        },
        [this] { InformarInterrumpido(); });
    Informar();
    return std::move(resultado_);
  }

 private:
  InformeRecuperacion& Informe() { return resultado_.informe; }

  void Recorrer(const std::vector<TamanoRecuperacion>& tamanos) {
    std::uint64_t lineas = 0;
    for (const TamanoRecuperacion& tamano : tamanos) lineas += tamano.lineas;
    progreso_.Rango(static_cast<std::int64_t>(lineas));
    for (std::size_t i = 0; i < tamanos.size(); ++i)
      recorrido_.Recorrer(pedido_.archivos[i], tamanos[i], progreso_, atender_);
  }

  void Avisar(const std::string& texto) {
    progreso_.Texto(texto);
    if (atender_) atender_();
  }

  void Avanzar() {
    progreso_.Posicion(++pasos_);
    if (atender_) atender_();
  }

  // A line of the report, with what the walk counted.
  InformeRegistros& Renglon(std::string nombre, ClaseFlujo clase, std::int16_t canal = 0) {
    InformeRegistros& renglon = Informe().registros.emplace_back();
    renglon.nombre = std::move(nombre);
    renglon.canal = canal;
    const auto& cuentas = recorrido_.Cuentas(clase);
    if (const auto cuenta = cuentas.find(canal); cuenta != cuentas.end()) {
      renglon.decodificadas = cuenta->second.decodificadas;
      renglon.fines = cuenta->second.fines;
    }
    return renglon;
  }

  // Drops what has no date or time, and counts it.
  TablaPtr Validar(const TablaPtr& armada, InformeRegistros& renglon) {
    Avisar("Validando registros obtenidos...");
    Descartes descartes;
    TablaPtr valida = ValidarRegistros(*armada, &descartes);
    renglon.fines[FinFila::kSinFecha] += descartes.por_fecha;
    renglon.fines[FinFila::kSinHora] += descartes.por_hora;
    return valida;
  }

  void Guardar(const Tabla& tabla, const std::filesystem::path& ruta, InformeRegistros& renglon) {
    tabla.GuardarSobre(ruta);
    renglon.fines[FinFila::kGuardada] += tabla.RecordCount();
    renglon.archivo = ruta;
    resultado_.archivo = ruta;
    DescribirRegistros(tabla, renglon);
  }

  TablaPtr Armar(const std::vector<FilaCruda>& filas) {
    return ArmarRegistros(filas, recorrido_.Textos(), pedido_.configuracion.get(), contexto_);
  }

  void GuardarDatos() {
    const bool hubo = recorrido_.Flujo(ClaseFlujo::kDatos).hubo;
    if (hubo) BorrarDatos();
    auto filas = recorrido_.SepararDatos();
    const auto minutos = MinutosDeCanales(*pedido_.configuracion);
    for (const std::int16_t canal : canales_) {
      InformeRegistros& renglon = Renglon(NombreCanal(canal), ClaseFlujo::kDatos, canal);
      if (const auto suyos = minutos.find(canal); suyos != minutos.end()) renglon.minutos = suyos->second;
      if (hubo) GuardarCanal(canal, filas[canal], renglon);
      filas.erase(canal);
      Avanzar();
    }
    ContarSinArchivo(filas);
  }

  // No result has that name, but programs that don't part channels leave one, which would stand beside newer ones.
  void BorrarDatos() {
    std::error_code nada;
    if (std::filesystem::is_regular_file(nombres_.Datos(), nada)) std::filesystem::remove(nombres_.Datos(), nada);
  }

  void GuardarCanal(std::int16_t canal, const std::vector<FilaCruda>& filas, InformeRegistros& renglon) {
    Avisar("Escalando datos históricos - Espere por favor...");
    const TablaPtr valida = Validar(Armar(filas), renglon);
    Avisar("Guardando datos historicos - Canal: " + std::to_string(canal));
    const TablaPtr extraida = ExtraerCanal(*valida, canal);
    if (extraida->RecordCount() > 0) Guardar(*extraida, nombres_.Canal(canal), renglon);
  }

  // What is left belongs to channels that no file takes; of some of them the walk has dropped all.
  void ContarSinArchivo(const std::map<std::int16_t, std::vector<FilaCruda>>& filas) {
    for (const auto& [canal, cuenta] : recorrido_.Cuentas(ClaseFlujo::kDatos)) {
      if (std::find(canales_.begin(), canales_.end(), canal) != canales_.end()) continue;
      const bool sin_numero = canal == RecorridoRecuperacion::kSinNumero;
      const std::string nombre = ClaseDeCanal(canal) ? NombreCanal(canal) : fmt::format("Canal {}", canal);
      InformeRegistros& renglon = Renglon(sin_numero ? "Sin canal" : nombre, ClaseFlujo::kDatos, canal);
      if (const auto suyas = filas.find(canal); suyas != filas.end())
        renglon.fines[FinFila::kSinArchivo] += suyas->second.size();
    }
  }

  void GuardarCola() {
    const FlujoDecodificado& flujo = recorrido_.Flujo(ClaseFlujo::kCola);
    if (flujo.hubo) {
      Avisar("Escalando datos de cola de transmision ...");
      InformeRegistros& renglon = Renglon("Cola de transmisión", ClaseFlujo::kCola);
      std::vector<FilaCruda> filas;
      std::copy_if(flujo.filas.begin(), flujo.filas.end(), std::back_inserter(filas), [&](const FilaCruda& fila) {
        return recorrido_.CanalDe(fila) != RecorridoRecuperacion::kSinNumero;
      });
      renglon.fines[FinFila::kSinArchivo] += flujo.filas.size() - filas.size();
      Guardar(*Validar(Armar(filas), renglon), nombres_.Cola(), renglon);
    }
    Avanzar();
  }

  void GuardarEventos() {
    const FlujoDecodificado& flujo = recorrido_.Flujo(ClaseFlujo::kEventos);
    if (flujo.hubo) {
      Avisar("Procesando eventos recuperados...");
      InformeRegistros& renglon = Renglon("Eventos", ClaseFlujo::kEventos);
      const TablaPtr armada = ArmarRegistrosEventos(ArmarFlujoEventos(flujo.filas, recorrido_.Textos()),
                                                    pedido_.configuracion.get(), pedido_.descripciones.get());
      Guardar(*Validar(armada, renglon), nombres_.Eventos(), renglon);
    }
    Avanzar();
  }

  void Informar() {
    InformeRecuperacion& informe = Informe();
    informe.momento = contexto_.reloj.Ahora();
    informe.configuracion = pedido_.configuracion_aplicada;
    informe.archivos = recorrido_.Archivos();
    informe.ajenas = recorrido_.Ajenas();
    for (const std::filesystem::path& ruta : nombres_.Existentes()) {
      const bool propia = std::any_of(informe.registros.begin(), informe.registros.end(),
                                      [&](const InformeRegistros& renglon) { return renglon.archivo == ruta; });
      if (!propia) informe.de_antes.push_back(ruta);
    }
    EscribirEntero(nombres_.Informe(), [&](std::ostream& salida) { salida << TextoInforme(informe); });
    resultado_.archivo_informe = nombres_.Informe();
  }

  // Results that were replaced already don't belong to the report of the run before any more.
  void InformarInterrumpido() {
    if (resultado_.archivo.empty()) return;
    Informe().interrumpido = true;
    IgnorandoErrores([this] { Informar(); });
  }

  const PedidoProceso& pedido_;
  const ContextoRegistros& contexto_;
  Progreso& progreso_;
  const Atender& atender_;
  ListasPilas listas_;
  std::vector<std::int16_t> canales_;
  ArchivosResultado nombres_;
  RecorridoRecuperacion recorrido_;
  ResultadoProceso resultado_;
  std::int64_t pasos_ = 0;
};

// Of a name of four characters nothing is left for the results: in the program's folder that of the events would be the
// table from which events are described.
void CuidarDescripciones(const PedidoProceso& pedido) {
  const std::filesystem::path eventos = ArchivosResultado(pedido.carpeta, pedido.archivos.front()).Eventos();
  std::error_code nada;
  if (eventos.filename() != kDescripciones ||
      !std::filesystem::equivalent(pedido.carpeta, pedido.carpeta_programa, nada))
    return;
  throw Error(error::kLlamada, "ProcesandoDatos",
              fmt::format("Los resultados de {} reemplazarían a {}, que es del programa: elija otra carpeta para "
                          "guardarlos",
                          pedido.archivos.front().filename().string(), kDescripciones));
}

ResultadoProceso SinCorrer(FinProceso fin, const std::filesystem::path& culpable = {}) {
  ResultadoProceso resultado;
  resultado.fin = fin;
  resultado.culpable = culpable;
  return resultado;
}

}  // namespace

ResultadoProceso ProcesandoDatos(const PedidoProceso& pedido, const ContextoRegistros& contexto, Progreso& progreso,
                                 const Atender& atender) {
  if (!pedido.configuracion) return SinCorrer(FinProceso::kConfiguracionNoValida);
  pedido.configuracion->Filter("");
  if (pedido.configuracion->RecordCount() == 0) return SinCorrer(FinProceso::kConfiguracionNoValida);
  if (pedido.archivos.empty() || pedido.archivos.front().empty()) return SinCorrer(FinProceso::kSinArchivo);
  CuidarDescripciones(pedido);
  Proceso proceso(pedido, contexto, progreso, atender);
  std::vector<TamanoRecuperacion> tamanos;
  for (const std::filesystem::path& archivo : pedido.archivos) {
    tamanos.push_back(MedirRecuperacion(archivo));
    if (tamanos.back().bytes == 0) return SinCorrer(FinProceso::kFormatoNoReconocido, archivo);
  }
  return proceso.Correr(tamanos);
}

std::optional<Mensaje> MensajeDe(const ResultadoProceso& resultado) {
  for (const Aviso& aviso : kAvisos) {
    if (aviso.fin != resultado.fin) continue;
    Mensaje mensaje;
    mensaje.texto = aviso.texto;
    mensaje.icono = aviso.icono;
    return mensaje;
  }
  return std::nullopt;
}

}  // namespace utr
