#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <optional>

#include "base/Error.h"
#include "console/Interrupcion.h"
#include "console/Sesion.h"
#include "driver/ErroresDeEnlace.h"
#include "retrieved/Eventos.h"
#include "retrieved/recovery/ArchivoVisto.h"
#include "retrieved/recovery/LecturaEnCurso.h"
#include "retrieved/recovery/Procesamiento.h"
#include "session/LecturaConfiguracion.h"

// The orders whose work is files: the memory saved, what is made of it, and what was saved before.
namespace utr::consola {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void FallaDeArchivo(const std::string& texto) {
  throw Error(error::kArchivo, "adminutr-cli", texto);
}

bool EsOtraCosaQueUnArchivo(const fs::path& ruta) {
  std::error_code nada;
  const fs::file_status que = fs::status(ruta, nada);
  return fs::exists(que) && !fs::is_regular_file(que);
}

// A pipe would wait for ever for somebody who writes to it.
void ExigirArchivoDeDisco(const fs::path& ruta) {
  if (EsOtraCosaQueUnArchivo(ruta)) FallaDeArchivo("No es un archivo de disco: " + ruta.string());
}

// Ahead of anything that is said of its contents.
void ExigirQueEste(const fs::path& ruta) {
  std::error_code nada;
  if (!fs::exists(ruta, nada)) throw Error(error::kArchivo, "adminutr-cli", ruta.string(), ENOENT);
  ExigirArchivoDeDisco(ruta);
}

// --- Dump ------------------------------------------------------------------------------------------------------------

// An earlier file with what crashes have left of reads that went on from it.
struct Anterior {
  explicit Anterior(const fs::path& ruta) : lectura(ruta), continuaciones(ContinuacionesDe(ruta, lectura)) {
    for (const fs::path& continuacion : continuaciones) lectura.Agregar(continuacion);
  }
  LecturaAnterior lectura;
  std::vector<fs::path> continuaciones;
};

fs::path RutaDelVolcado(const Sesion& sesion) {
  const fs::path& pedida = sesion.LasOpciones().destino.archivo;
  if (pedida.empty()) return NombreArchivoFlash(fs::current_path(), sesion.ElReloj().Ahora());
  ExigirArchivoDeDisco(pedida);
  return pedida;
}

std::string CuantasFallaron(std::size_t paginas) {
  return paginas == 1 ? "1 página no se pudo leer" : fmt::format("{} páginas no se pudieron leer", paginas);
}

// What keeps a dump from being whole; empty: nothing.
std::string LoQueFalta(const LectorFlash& lector) {
  if (lector.Cancelada()) return "La estación dejó de contestar";
  return lector.Fallidas().empty() ? "" : CuantasFallaron(lector.Fallidas().size());
}

// The table of channels beside the dump, which is whole by then. Raises what keeps it from being there.
void GuardarConfiguracion(Sesion& sesion, const fs::path& volcado) {
  sesion.SerPaciente(false);
  const std::string donde = "la memoria está entera en " + volcado.string();
  const auto guardar = [&] {
    const TablaPtr tabla = sesion.Driver().ConfiguracionAlmacenada(true);
    ExigirSinInterrumpir();
    if (!tabla || !tabla->Abierta() || tabla->RecordCount() == 0)
      throw Error(error::kSinRespuesta, "volcar", "No se pudo completar la lectura de la configuración");
    sesion.PasarAArchivos();
    tabla->GuardarSobre(RutaDeConfiguracion(volcado));
  };
  const std::optional<Error> falla = FallaDe(guardar);
  if (Interrupcion::Veces() > 0) throw Error(error_enlace::kCancelada, "volcar", "Interrumpido: " + donde);
  if (falla) throw Error(falla->Numero(), falla->Origen(), EnUnRenglon(*falla) + "; " + donde);
}

// --- Recovery --------------------------------------------------------------------------------------------------------

fs::path RutaConfiguracion(const Opciones& opciones) {
  if (!opciones.configuracion.empty()) return opciones.configuracion;
  fs::path propuesta = RutaDeConfiguracion(opciones.archivos.front());
  std::error_code nada;
  if (fs::exists(propuesta, nada)) return propuesta;
  throw Error(error::kLlamada, "adminutr-cli",
              "Falta --configuracion: junto al archivo no está " + propuesta.filename().string());
}

fs::path CarpetaDeResultados(const Opciones& opciones) {
  if (opciones.carpeta.empty()) return fs::current_path();
  std::error_code falla;
  fs::create_directories(opciones.carpeta, falla);
  if (falla)
    throw Error(error::kArchivo, "recuperar", "No se puede crear la carpeta " + opciones.carpeta.string(),
                falla.value());
  return opciones.carpeta;
}

// Every track ends in a line of its own, and so does the file.
bool TerminaEntero(const fs::path& ruta) {
  std::ifstream archivo(ruta, std::ios::binary | std::ios::ate);
  const std::streamoff largo = archivo.tellg();
  constexpr std::streamoff kCola = 16;
  archivo.seekg(std::max<std::streamoff>(0, largo - kCola));
  const std::string cola{std::istreambuf_iterator<char>(archivo), {}};
  const std::size_t fin = cola.find_last_not_of("\r\n\"");
  return fin != cola.npos && std::string_view(cola).substr(0, fin + 1).ends_with("EOT");
}

// What the files hold and no table does; empty: nothing.
std::string LoPerdido(const ResultadoProceso& resultado) {
  const CuentaLineas lineas = resultado.informe.Lineas();
  const std::uint64_t perdidas =
      lineas[FinLinea::kDanada] + lineas[FinLinea::kCortada] + lineas[FinLinea::kCorta] + lineas[FinLinea::kSinTabla];
  std::string texto;
  const auto agregar = [&texto](const std::string& algo) { texto += (texto.empty() ? "" : "; ") + algo; };
  if (perdidas > 0)
    agregar(perdidas == 1 ? "1 línea no se pudo leer" : fmt::format("{} líneas no se pudieron leer", perdidas));
  for (const InformeArchivo& archivo : resultado.informe.archivos) {
    if (!TerminaEntero(archivo.ruta)) agregar("el volcado está cortado: " + archivo.ruta.string());
  }
  return texto;
}

}  // namespace

Codigo Volcar(Sesion& sesion) {
  const Opciones& opciones = sesion.LasOpciones();
  const fs::path ruta = RutaDelVolcado(sesion);
  std::optional<Anterior> anterior;
  if (opciones.continuar) anterior.emplace(ruta);
  sesion.Abrir();
  ProbarEnlace(sesion.Driver());
  if (anterior) anterior->lectura.ComprobarEquipo(sesion.Driver(), sesion.AtencionEntreLlamadas());
  ExigirSinInterrumpir();
  sesion.SerPaciente(true);
  MapaMemoria mapa(UsoMapa::kLectura);
  const LectorFlash* lector = nullptr;
  const Atender oir = sesion.Atencion();
  LecturaEnCurso lectura({.comunicador = sesion.Driver(),
                          .reloj = sesion.ElReloj(),
                          .progreso = sesion.Avance(),
                          .mapa = mapa,
                          .atender =
                              [&] {
                                sesion.Avance().Decir([&] { return EnPalabras(lector->Avance()); });
                                oir();
                              }},
                         {.ruta = ruta,
                          .opciones = {opciones.seleccion, anterior ? &anterior->lectura : nullptr, {}},
                          .continuaciones = anterior ? anterior->continuaciones : std::vector<fs::path>{}});
  lector = &lectura.Lector();
  const std::string donde = "lo que se alcanzó a leer está en " + ruta.string();
  const std::optional<Error> falla = FallaDe([&] { lectura.Leer(); });
  if (Interrupcion::Veces() > 0) throw Error(error_enlace::kCancelada, "volcar", "Interrumpido: " + donde);
  if (falla) throw Error(falla->Numero(), falla->Origen(), EnUnRenglon(*falla) + "; " + donde);
  if (const std::string falta = LoQueFalta(*lector); !falta.empty()) {
    sesion.Avisar(falta + "; " + donde);
    return Codigo::kSinRespuesta;
  }
  if (opciones.con_configuracion) GuardarConfiguracion(sesion, ruta);
  sesion.Decir(ruta.string());
  return Codigo::kHecho;
}

Codigo Recuperar(Sesion& sesion) {
  sesion.PasarAArchivos();
  const Opciones& opciones = sesion.LasOpciones();
  for (const fs::path& archivo : opciones.archivos) ExigirQueEste(archivo);
  const fs::path configuracion = RutaConfiguracion(opciones);
  ExigirQueEste(configuracion);
  PedidoProceso pedido;
  pedido.configuracion = LeerArchivoDeCanales(sesion.Driver(), configuracion.string());
  pedido.descripciones = CargarEventos(sesion.Carpeta());
  pedido.archivos = opciones.archivos;
  pedido.carpeta = CarpetaDeResultados(opciones);
  pedido.carpeta_programa = sesion.Carpeta();
  pedido.configuracion_aplicada = "del archivo " + configuracion.string();
  const ResultadoProceso resultado =
      ProcesandoDatos(pedido, sesion.Contexto(), sesion.Avance(), [] { ExigirSinInterrumpir(); });
  if (const auto mensaje = MensajeDe(resultado)) {
    const fs::path& culpable = resultado.culpable.empty() ? configuracion : resultado.culpable;
    FallaDeArchivo(mensaje->texto + ": " + culpable.string());
  }
  for (const InformeRegistros& renglon : resultado.informe.registros) {
    if (!renglon.archivo.empty()) sesion.Decir(renglon.archivo.string());
  }
  sesion.Decir(resultado.archivo_informe.string());
  if (const std::string perdido = LoPerdido(resultado); !perdido.empty()) {
    sesion.Avisar(perdido + "; ver " + resultado.archivo_informe.string());
    return Codigo::kArchivo;
  }
  if (!resultado.archivo.empty()) return Codigo::kHecho;
  sesion.Avisar("No hay datos que recuperar");
  return Codigo::kSinDatos;
}

Codigo VerTabla(Sesion& sesion) {
  sesion.PasarAArchivos();
  const fs::path& archivo = sesion.LasOpciones().archivos.front();
  ExigirArchivoDeDisco(archivo);
  const ArchivoVisto visto = AbrirParaVer(archivo);
  if (visto.tabla->RecordCount() == 0) {
    sesion.Avisar("La tabla no tiene filas");
    return Codigo::kSinDatos;
  }
  sesion.Entregar(visto.tabla, visto.columnas, {"Visualizador", {"Fecha: " + TextoFecha(sesion.ElReloj().Ahora())}});
  sesion.Resumir(*visto.tabla, nullptr, visto.a_intervalos);
  return Codigo::kHecho;
}

}  // namespace utr::consola
