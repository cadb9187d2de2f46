#include "widgets/ServiciosLista.h"

#include <algorithm>

#include "base/Error.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr std::string_view kFiltroTexto = "Texto (delimitado por tabuladores)(*.txt)|*.txt";
constexpr std::string_view kFiltroImp = "Archivo para insercion manual(*.imp)|*.imp";
constexpr std::string_view kConfigurarImpresora = "Configurar Impresora";

// What an export for manual insertion lacks, or nothing.
const char* Falta(const TablaPtr& tabla) {
  if (!tabla || !tabla->Abierta()) return "Debe leer datos para exportar";
  return tabla->RecordCount() == 0 ? "No hay datos para exportar" : nullptr;
}

}  // namespace

ServiciosLista::ServiciosLista(ModRTU& mod, const VistaLista& vista, PalabrasLista palabras)
    : mod_(mod), vista_(vista), palabras_(std::move(palabras)), impresora_(&propia_) {}

void ServiciosLista::Informar(const std::string& texto) {
  mod_.operador.Mostrar({texto, palabras_.titulo_ventana, Icono::kInformacion, Botones::kAceptar});
}

void ServiciosLista::Intentar(std::string_view procedimiento, const std::function<void()>& accion) {
  RegistrandoYMostrando(mod_.registro, mod_.operador, palabras_.modulo, procedimiento, palabras_.titulo_ventana,
                        Redaccion::kCompletarse, accion, Icono::kInformacion);
}

bool ServiciosLista::ExportarLista(const std::filesystem::path& ruta, const Encabezado& encabezado) {
  bool escrita = false;
  Intentar("ExportarLista", [&] {
    const PunteroDeEspera puntero(mod_.operador);
    escrita = utr::ExportarLista(vista_.Lista(), encabezado(), ruta);
  });
  return escrita;
}

void ServiciosLista::GuardarComo(const Encabezado& encabezado) {
  const auto ruta = mod_.operador.ElegirGuardar({palabras_.titulo_guardar, std::string(kFiltroTexto), {}, {}});
  if (ruta && ExportarLista(*ruta, encabezado)) Informar("La lista ha sido exportada con éxito");
}

void ServiciosLista::ExportarImp(const TablaPtr& tabla) {
  if (const char* falta = Falta(tabla)) {
    mod_.operador.Mostrar({falta, "Exportacion", Icono::kInformacion, Botones::kAceptar});
    return;
  }
  const auto ruta = mod_.operador.ElegirGuardar({"Exportar ...", std::string(kFiltroImp), {}, {}});
  if (!ruta) return;
  bool escrita = false;
  RegistrandoYMostrando(mod_.registro, mod_.operador, palabras_.modulo, palabras_.procedimiento_imp,
                        palabras_.titulo_ventana, Redaccion::kExportar, [&] {
                          const PunteroDeEspera puntero(mod_.operador);
                          escrita = mod_.comunicador.ExportarImp(*tabla, ruta->string(), palabras_.tipo_imp);
                        });
  if (escrita) Informar(palabras_.exito_imp);
}

void ServiciosLista::Imprimir(const Encabezado& encabezado) {
  if (vista_.Lista().Cantidad() == 0) return;
  if (mod_.impresora.nombre.empty() && !ConfigurarImpresora()) return;
  Intentar(palabras_.procedimiento_imprimir, [&] {
    const PunteroDeEspera puntero(mod_.operador);
    const std::string documento = ArmarDocumento(vista_.Lista(), encabezado());
    const std::vector<std::string> nombres = impresora_->Nombres();
    if (std::find(nombres.begin(), nombres.end(), mod_.impresora.nombre) == nombres.end()) return;
    for (int copia = 0; copia < mod_.impresora.copias; ++copia) impresora_->Imprimir(mod_.impresora.nombre, documento);
  });
}

bool ServiciosLista::ConfigurarImpresora() {
  const auto eleccion = mod_.operador.ElegirImpresora(kConfigurarImpresora, mod_.impresora);
  if (!eleccion) return false;
  mod_.impresora = *eleccion;
  return true;
}

}  // namespace utr
