#include "widgets/ServiciosLista.h"

#include <memory>

#include "base/Error.h"
#include "base/Fechas.h"
#include "lists/Csv.h"
#include "widgets/DialogoCsv.h"
#include "widgets/DialogoVistaPrevia.h"
#include "widgets/TurnoDeImpresora.h"
#include "widgets/VistaLista.h"

namespace utr {
namespace {

constexpr std::string_view kFiltroTexto = "Texto (delimitado por tabuladores)(*.txt)|*.txt";
constexpr std::string_view kFiltroCsv = "Valores separados por un signo (*.csv)|*.csv";
constexpr std::string_view kFiltroImp = "Archivo para insercion manual(*.imp)|*.imp";
constexpr const char* kExportada = "La lista ha sido exportada con éxito";
constexpr std::string_view kConfigurarImpresora = "Configurar Impresora";

// What an export for manual insertion lacks, or nothing.
std::string Falta(const TablaPtr& tabla, const std::string& sin_resultado) {
  if (!tabla || !tabla->Abierta()) return sin_resultado;
  return tabla->RecordCount() == 0 ? "No hay datos para exportar" : "";
}

}  // namespace

ServiciosLista::ServiciosLista(const ContextoListas& contexto, const VistaLista& vista, PalabrasLista palabras)
    : contexto_(contexto), vista_(vista), palabras_(std::move(palabras)) {}

void ServiciosLista::Informar(const std::string& texto) {
  contexto_.operador.Mostrar({texto, palabras_.titulo_ventana, Icono::kInformacion, Botones::kAceptar});
}

void ServiciosLista::Intentar(std::string_view procedimiento, const std::function<void()>& accion) {
  RegistrandoYMostrando(contexto_.registro, contexto_.operador, palabras_.modulo, procedimiento,
                        palabras_.titulo_ventana, Redaccion::kCompletarse, accion, Icono::kInformacion);
}

// Which rows go into a document; nothing after a cancel. Only a filter that hides rows is worth a question.
std::optional<Renglones> ServiciosLista::ElegirRenglones(const std::string& pregunta) {
  const std::size_t vistos = vista_.Lista().Cantidad();
  const std::size_t todos = vista_.Lista().Total();
  if (vistos == todos) return Renglones::kTodos;
  Mensaje mensaje{"El filtro deja a la vista " + std::to_string(vistos) + " de los " + std::to_string(todos) +
                      " renglones.\n" + pregunta,
                  palabras_.titulo_ventana, Icono::kPregunta, Botones::kOpciones};
  mensaje.opciones = {"Sólo los " + std::to_string(vistos) + " renglones a la vista", "Todos los renglones"};
  switch (contexto_.operador.Mostrar(mensaje)) {
    case Respuesta::kPrimera:
      return Renglones::kALaVista;
    case Respuesta::kSegunda:
      return Renglones::kTodos;
    default:
      return std::nullopt;
  }
}

bool ServiciosLista::ExportarLista(const std::filesystem::path& ruta, const Encabezado& encabezado,
                                   Renglones renglones) {
  bool escrita = false;
  Intentar("ExportarLista", [&] {
    const PunteroDeEspera puntero(contexto_.operador);
    escrita = utr::ExportarLista(vista_.Lista(), encabezado(), ruta, renglones);
  });
  return escrita;
}

std::optional<std::filesystem::path> ServiciosLista::ElegirArchivo(const std::string& titulo, std::string_view filtro,
                                                                   const char* extension) {
  const std::string nombre = nombre_ ? nombre_() : std::string();
  return contexto_.operador.ElegirGuardar(
      {titulo, std::string(filtro), {}, nombre.empty() ? nombre : nombre + extension});
}

void ServiciosLista::GuardarComo(const Encabezado& encabezado) {
  const auto renglones = ElegirRenglones("¿Qué desea guardar?");
  if (!renglones) return;
  const auto ruta = ElegirArchivo(palabras_.titulo_guardar, kFiltroTexto, ".txt");
  if (ruta && ExportarLista(*ruta, encabezado, *renglones)) Informar(kExportada);
}

void ServiciosLista::GuardarComoCsv() {
  const auto renglones = ElegirRenglones("¿Qué desea guardar?");
  if (!renglones) return;
  DialogoCsv dialogo(vista_.window());
  if (dialogo.exec() != QDialog::Accepted) return;
  const auto ruta = ElegirArchivo("Guardar como CSV ...", kFiltroCsv, ".csv");
  if (!ruta) return;
  bool escrita = false;
  Intentar("GuardarComoCsv", [&] {
    const PunteroDeEspera puntero(contexto_.operador);
    escrita = ExportarCsv(vista_.Lista(), dialogo.Opciones(), *ruta, *renglones);
  });
  if (escrita) Informar(kExportada);
}

void ServiciosLista::FijarImp(int tipo, std::string exito) {
  palabras_.tipo_imp = tipo;
  palabras_.exito_imp = std::move(exito);
}

void ServiciosLista::ExportarImp(const TablaPtr& tabla) {
  if (const std::string falta = Falta(tabla, palabras_.sin_resultado); !falta.empty()) {
    contexto_.operador.Mostrar({falta, "Exportacion", Icono::kInformacion, Botones::kAceptar});
    return;
  }
  const auto ruta = ElegirArchivo("Exportar ...", kFiltroImp, ".imp");
  if (!ruta) return;
  bool escrita = false;
  RegistrandoYMostrando(contexto_.registro, contexto_.operador, palabras_.modulo, palabras_.procedimiento_imp,
                        palabras_.titulo_ventana, Redaccion::kExportar, [&] {
                          const PunteroDeEspera puntero(contexto_.operador);
                          escrita = contexto_.comunicador.ExportarImp(*tabla, ruta->string(), palabras_.tipo_imp);
                        });
  if (escrita) Informar(palabras_.exito_imp);
}

// --- Paper -----------------------------------------------------------------------------------------------------------

std::string ServiciosLista::Pie(const std::string& origen) const {
  const std::string de_donde = origen.empty() && contexto_.estacion ? contexto_.estacion() : origen;
  return (de_donde.empty() ? "" : de_donde + "  ·  ") + "Impreso: " + TextoFechaHora(contexto_.reloj.Ahora());
}

DocumentoImpreso ServiciosLista::Lista(const EncabezadoLista& encabezado, Renglones renglones) const {
  DocumentoImpreso documento{.texto = ArmarDocumento(vista_.Lista(), encabezado, renglones),
                             .titulo = encabezado.titulo,
                             .pie = Pie(encabezado.origen),
                             .titulos = encabezado.lineas.size() + 1};
  for (const ColumnaLista& columna : vista_.Lista().LasColumnas())
    documento.numericas.push_back(columna.orden == ClaseOrden::kNumero);
  return documento;
}

void ServiciosLista::Imprimir(const Encabezado& encabezado) {
  if (vista_.Lista().Cantidad() == 0) return;
  const auto renglones = ElegirRenglones("¿Qué desea imprimir?");
  if (renglones) Imprimir([&] { return Lista(encabezado(), *renglones); });
}

void ServiciosLista::ImprimirTexto(const std::string& texto, const std::string& origen) {
  Imprimir([&] {
    return DocumentoImpreso{
        .texto = texto, .letra = LetraImpresion::kPareja, .titulo = palabras_.titulo_ventana, .pie = Pie(origen)};
  });
}

void ServiciosLista::Imprimir(const std::function<DocumentoImpreso()>& documento) {
  if (!HayImpresora(contexto_.operador, contexto_.eleccion)) return;
  Intentar(palabras_.procedimiento_imprimir, [&] {
    const PunteroDeEspera puntero(contexto_.operador);
    const DocumentoImpreso impreso = documento();
    if (!EstaInstalada(contexto_.impresora, contexto_.eleccion)) return;
    EnMarco([&](Progreso& progreso) {
      PorCopia(contexto_.eleccion.copias, progreso,
               [&](Progreso& de_copia) { return contexto_.impresora.Imprimir(contexto_.eleccion, impreso, de_copia); });
    });
  });
}

void ServiciosLista::EnMarco(const std::function<void(Progreso&)>& trabajo) {
  if (marco_) return marco_(trabajo);
  SinProgreso nadie;
  trabajo(nadie);
}

void ServiciosLista::VistaPrevia(const Encabezado& encabezado, QWidget* ventana) {
  if (vista_.Lista().Cantidad() == 0) return;
  const auto renglones = ElegirRenglones("¿Qué desea ver?");
  if (!renglones) return;
  bool imprimir = false;
  DocumentoImpreso documento;
  Intentar("VistaPrevia", [&] {
    documento = Lista(encabezado(), *renglones);
    std::unique_ptr<DialogoVistaPrevia> dialogo;
    EnMarco([&](Progreso& progreso) {
      dialogo = std::make_unique<DialogoVistaPrevia>(documento, contexto_.eleccion, progreso, ventana);
    });
    imprimir = dialogo->Paginas() > 0 && dialogo->exec() == QDialog::Accepted;
  });
  if (imprimir) Imprimir([&] { return documento; });
}

bool ServiciosLista::ConfigurarImpresora() {
  const auto eleccion = contexto_.operador.ElegirImpresora(kConfigurarImpresora, contexto_.eleccion);
  if (!eleccion) return false;
  contexto_.eleccion = *eleccion;
  return true;
}

}  // namespace utr
