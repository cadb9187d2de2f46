#include "retrieved/download/Descarga.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <ostream>
#include <system_error>

#include "base/Archivos.h"
#include "base/Error.h"
#include "driver/ErroresDeEnlace.h"
#include "retrieved/ColumnasRegistros.h"
#include "retrieved/download/TablaPorTiempo.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kModulo = "Descarga";
constexpr const char* kArchivoDeDatos = "Datos.csv";
constexpr int kFallasSeguidas = 2;

// Numbers of the system that say the same to the operator.
bool FaltaLugar(int error_del_sistema) {
  return error_del_sistema == ENOSPC || error_del_sistema == EDQUOT || error_del_sistema == EFBIG;
}

std::string PorQue(const Error& falla) {
  return falla.Descripcion() + (FaltaLugar(falla.ErrorDelSistema()) ? ": no queda lugar en el disco" : "");
}

Columnas ColumnasDe(ClasePieza clase) {
  return clase == ClasePieza::kEventos ? ColumnasEventos() : ColumnasDatos();
}

// The clone that a reader may move about, for the readers filter the table of channels.
TablaPtr Propia(const TablaPtr& configuracion) {
  return configuracion ? configuracion->Clone() : nullptr;
}

}  // namespace

std::string TextoEstado(const Pieza& pieza) {
  switch (pieza.estado) {
    case EstadoPieza::kGuardada:
      return "guardada";
    case EstadoPieza::kSinDatos:
      return "sin datos en el período";
    case EstadoPieza::kFalta:
      return "falta: " + pieza.porque;
    case EstadoPieza::kPendiente:
      break;
  }
  return "pendiente";
}

fs::path NuevaCarpetaDeDescarga(const fs::path& donde, std::int32_t identificador, const FechaHora& ahora) {
  const std::string nombre = fmt::format("UTR-{}_{:04}-{:02}-{:02}_{:02}-{:02}-{:02}", identificador, ahora.anio,
                                         ahora.mes, ahora.dia, ahora.hora, ahora.minuto, ahora.segundo);
  std::error_code falla;
  fs::create_directories(donde, falla);
  for (int vez = 1; !falla; ++vez) {
    fs::path carpeta = donde / (vez == 1 ? nombre : fmt::format("{}-{}", nombre, vez));
    if (fs::create_directory(carpeta, falla)) return carpeta;
  }
  throw Error(error::kArchivo, std::string(kModulo), "No se puede crear la carpeta " + (donde / nombre).string(),
              falla.value());
}

Descarga::Descarga(const ContextoRegistros& contexto, const TablaPtr& configuracion, const Atender& atender,
                   const fs::path& carpeta_programa, PedidoDescarga pedido, fs::path carpeta)
    : pedido_(pedido),
      carpeta_(std::move(carpeta)),
      configuracion_(configuracion),
      datos_(contexto, Propia(configuracion), atender),
      eventos_(contexto, Propia(configuracion), atender, carpeta_programa),
      cola_(contexto, Propia(configuracion), atender),
      reloj_(contexto.reloj),
      registro_(contexto.registro) {
  if (pedido_.configuracion) AgregarPieza(ClasePieza::kConfiguracion, "Configuración", "Configuracion");
  if (pedido_.datos) {
    for (const std::string& canal : datos_.CargarCanales())
      AgregarPieza(ClasePieza::kCanal, canal, canal.substr(0, canal.find('_')));
  }
  if (pedido_.eventos) AgregarPieza(ClasePieza::kEventos, "Eventos", "Eventos");
  if (pedido_.cola) AgregarPieza(ClasePieza::kCola, "Cola de transmisión", "ColaTx");
  AgregarPieza(ClasePieza::kResumen, "Resumen de la descarga", "Descarga");
}

// A table of channels may name one twice.
void Descarga::AgregarPieza(ClasePieza clase, const std::string& que, const std::string& nombre) {
  const char* extension = pedido_.formato == FormatoDescarga::kTablas ? ".xml" : ".csv";
  if (clase == ClasePieza::kConfiguracion) extension = ".ucg";
  if (clase == ClasePieza::kResumen) extension = ".txt";
  Pieza pieza{.clase = clase, .que = que};
  pieza.archivo = Juntas(pieza) ? kArchivoDeDatos : nombre + extension;
  const auto tomado = [&] {
    return !Juntas(pieza) && std::any_of(piezas_.begin(), piezas_.end(),
                                         [&](const Pieza& otra) { return otra.archivo == pieza.archivo; });
  };
  for (int vez = 2; tomado(); ++vez) pieza.archivo = fmt::format("{}-{}{}", nombre, vez, extension);
  piezas_.push_back(std::move(pieza));
}

bool Descarga::Juntas(const Pieza& pieza) const {
  return pieza.clase == ClasePieza::kCanal && pedido_.formato == FormatoDescarga::kPorTiempo;
}

bool Descarga::Completa() const {
  return std::all_of(piezas_.begin(), piezas_.end(), [](const Pieza& pieza) {
    return pieza.estado == EstadoPieza::kGuardada || pieza.estado == EstadoPieza::kSinDatos;
  });
}

std::size_t Descarga::Cuantas(EstadoPieza estado) const {
  return static_cast<std::size_t>(std::count_if(piezas_.begin(), piezas_.end(), [&](const Pieza& pieza) {
    return pieza.clase != ClasePieza::kResumen && pieza.estado == estado;
  }));
}

void Descarga::Correr(Progreso& progreso) {
  cancelada_ = false;
  fallas_seguidas_ = 0;
  progreso.Rango(static_cast<std::int64_t>(piezas_.size()));
  bool sigue = true;
  for (std::size_t i = 0; i + 1 < piezas_.size() && sigue; ++i) {
    Pieza& pieza = piezas_[i];
    progreso.Posicion(static_cast<std::int64_t>(i));
    if (pieza.estado == EstadoPieza::kGuardada || pieza.estado == EstadoPieza::kSinDatos) continue;
    cancelada_ = progreso.Cancelado();
    if (cancelada_) break;
    progreso.Texto(pieza.que);
    sigue = Leer(pieza) && Guardar(pieza);
    cancelada_ = progreso.Cancelado() && !sigue;
    if (pieza.estado == EstadoPieza::kFalta) progreso.Descartado(pieza.que, pieza.porque);
    sigue = sigue || (fallas_seguidas_ > 0 && fallas_seguidas_ < kFallasSeguidas && !cancelada_);
  }
  EscribirResumen();
  progreso.Posicion(static_cast<std::int64_t>(piezas_.size()));
}

std::size_t Descarga::SinGuardar() const {
  return static_cast<std::size_t>(std::count_if(piezas_.begin(), piezas_.end(), [](const Pieza& pieza) {
    return pieza.leida && pieza.estado != EstadoPieza::kGuardada;
  }));
}

void Descarga::GuardarLoLeido(const fs::path& carpeta) {
  carpeta_ = carpeta;
  bool sigue = true;
  for (std::size_t i = 0; i + 1 < piezas_.size() && sigue; ++i) {
    if (piezas_[i].leida && piezas_[i].estado != EstadoPieza::kGuardada) sigue = Guardar(piezas_[i]);
  }
  EscribirResumen();
}

void Descarga::EscribirResumen() {
  Escribir(piezas_.back(), [this](const fs::path& ruta) {
    EscribirEntero(ruta, [this](std::ostream& salida) { salida << Resumen(); });
  });
}

// False: it couldn't be read.
bool Descarga::Leer(Pieza& pieza) {
  if (pieza.leida) return true;
  const auto falla = FallaDe([&] { pieza.leida = Pedir(pieza); });
  if (falla) {
    registro_.RegistrarError(*falla, kModulo, "Leer");
    pieza.porque = PorQue(*falla);
    pieza.estado = falla->Numero() == error_enlace::kCancelada ? EstadoPieza::kPendiente : EstadoPieza::kFalta;
    ++fallas_seguidas_;
    return false;
  }
  fallas_seguidas_ = 0;
  if (!pieza.leida || pieza.leida->RecordCount() == 0) {
    pieza.leida.reset();
    pieza.estado = EstadoPieza::kSinDatos;
  }
  return true;
}

TablaPtr Descarga::Pedir(const Pieza& pieza) {
  switch (pieza.clase) {
    case ClasePieza::kConfiguracion:
      return configuracion_;
    case ClasePieza::kCanal:
      datos_.TraerDatos({pedido_.desde, pedido_.hasta, pieza.que, pedido_.escalados, pedido_.cartucho});
      return datos_.Resultado();
    case ClasePieza::kEventos:
      eventos_.TraerPorFecha(pedido_.desde, pedido_.hasta, pedido_.cartucho);
      return eventos_.Resultado();
    case ClasePieza::kCola:
      cola_.TraerPorDia(pedido_.desde, pedido_.hasta, pedido_.cartucho);
      return cola_.Resultado();
    case ClasePieza::kResumen:
      break;
  }
  return nullptr;
}

// Runs what writes the file of a piece. False: it couldn't be written; the piece keeps what it has.
bool Descarga::Escribir(Pieza& pieza, const std::function<void(const fs::path& ruta)>& escribir) {
  const auto falla = FallaDe([&] { escribir(carpeta_ / pieza.archivo); });
  pieza.estado = falla ? EstadoPieza::kFalta : EstadoPieza::kGuardada;
  pieza.porque = falla ? PorQue(*falla) : "";
  if (!falla) pieza.carpeta = carpeta_;
  if (falla) registro_.RegistrarError(*falla, kModulo, "Escribir");
  return !falla;
}

bool Descarga::Guardar(Pieza& pieza) {
  if (!pieza.leida) return true;
  if (Juntas(pieza)) return GuardarPorTiempo();
  const bool como_tabla = pieza.clase == ClasePieza::kConfiguracion || pedido_.formato == FormatoDescarga::kTablas;
  const bool escrita = Escribir(pieza, [&](const fs::path& ruta) {
    if (como_tabla) return pieza.leida->GuardarSobre(ruta);
    ListaTabla lista(ColumnasDe(pieza.clase));
    lista.Mostrar(pieza.leida);
    ExportarCsv(lista, pedido_.csv, ruta);
  });
  if (!escrita) return false;
  pieza.registros = pieza.leida->RecordCount();
  pieza.leida.reset();
  return true;
}

// All channels that were read so far, in place of the file that lacks the last one of them: whatever ends the run, what
// came has its file.
bool Descarga::GuardarPorTiempo() {
  std::vector<Pieza*> canales;
  std::vector<TablaPtr> tablas;
  for (Pieza& pieza : piezas_) {
    if (!Juntas(pieza) || !pieza.leida) continue;
    canales.push_back(&pieza);
    tablas.push_back(pieza.leida);
  }
  Pieza archivo = *canales.front();
  const bool escrito = Escribir(archivo, [&](const fs::path& ruta) {
    EscribirEntero(ruta, [&](std::ostream& salida) { EscribirPorTiempo(salida, tablas, pedido_.csv); });
  });
  for (Pieza* canal : canales) {
    // A file of an earlier run still holds what it held.
    if (!escrito && canal->estado == EstadoPieza::kGuardada) continue;
    canal->estado = archivo.estado;
    canal->porque = archivo.porque;
    canal->carpeta = archivo.carpeta;
    if (escrito) canal->registros = canal->leida->RecordCount();
  }
  return escrito;
}

std::string Descarga::Donde(const Pieza& pieza) const {
  return pieza.carpeta == carpeta_ ? pieza.archivo : (pieza.carpeta / pieza.archivo).string();
}

std::string Descarga::Resumen() const {
  std::string texto = "Descarga del " + TextoFechaHora(reloj_.Ahora()) + "\r\n" + "Período: desde " +
                      TextoFechaHora(pedido_.desde) + " hasta " + TextoFechaHora(pedido_.hasta) + "\r\n";
  texto += pedido_.escalados ? "Datos en unidades de ingeniería" : "Datos en cuentas";
  texto += pedido_.cartucho ? ", del cartucho\r\n" : "\r\n";
  for (const Pieza& pieza : piezas_) {
    if (pieza.clase == ClasePieza::kResumen) continue;
    texto += "\r\n" + pieza.que + ": " + TextoEstado(pieza);
    if (pieza.estado == EstadoPieza::kGuardada)
      texto +=
          fmt::format(", {} {} en {}", pieza.registros, pieza.registros == 1 ? "registro" : "registros", Donde(pieza));
  }
  return texto + "\r\n";
}

}  // namespace utr
