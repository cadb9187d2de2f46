#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "base/Progreso.h"
#include "lists/DocumentoLista.h"
#include "services/ContextoListas.h"
#include "tables/Tabla.h"

class QWidget;

namespace utr {

class VistaLista;

// What a window says through the list services.
struct PalabrasLista {
  std::string modulo{};                         // "frmEventos": in the error log
  std::string titulo_ventana{};                 // title of messages
  std::string titulo_guardar = "Exportar ...";  // caption of the save dialog
  std::string procedimiento_imprimir{};         // "ImprimirEventos": in the error log
  std::string procedimiento_imp = "Exportar";   // name of the .imp command: in the error log
  int tipo_imp = 1;                             // 0 events, 1 data
  std::string exito_imp = "La lista de datos ha sido exportada con éxito";
  std::string sin_resultado = "Debe leer datos para exportar";  // said when there is nothing to export yet
};

// The services that every list window ends in: save as text and as CSV, export for manual insertion, print, choose the
// printer.
// Each shows its own messages; none raises.
class ServiciosLista {
 public:
  // `encabezado` gives title and date lines of the document; it is asked each time.
  using Encabezado = std::function<EncabezadoLista()>;

  ServiciosLista(const ContextoListas& contexto, const VistaLista& vista, PalabrasLista palabras);

  // The title of the messages from now on.
  void Titular(std::string titulo) { palabras_.titulo_ventana = std::move(titulo); }

  // The document of the list written to that file, with the rows in sight or with all. False: the list is empty, or it
  // couldn't be written (no message); an error gives a message and false.
  bool ExportarLista(const std::filesystem::path& ruta, const Encabezado& encabezado,
                     Renglones renglones = Renglones::kALaVista);

  // Asks which rows where the filter hides some, and for the file, then ExportarLista, then says so. Nothing on a
  // cancel.
  void GuardarComo(const Encabezado& encabezado);

  // The same as CSV: asks which rows, how it is to be written and for the file, and says so when it stands.
  void GuardarComoCsv();

  // What the .imp export writes from now on, and says then.
  void FijarImp(int tipo, std::string exito);

  // Writes the .imp file of the table, which is the private copy of the window: null before any read. All rows,
  // whatever the filter.
  void ExportarImp(const TablaPtr& tabla);

  // Prints the document, one job a copy, asking which rows where the filter hides some, and for the printer when none
  // was chosen yet or the chosen one is gone. Nothing with an empty list.
  void Imprimir(const Encabezado& encabezado);

  // Prints a text that isn't the list and is aligned with blanks, in the same way. `origen`: whose it is, as in
  // EncabezadoLista.
  void ImprimirTexto(const std::string& texto, const std::string& origen = {});

  // Shows the pages that Imprimir would print, over `ventana`; the operator may print them from there.
  void VistaPrevia(const Encabezado& encabezado, QWidget* ventana);

  // The name that is proposed for files, without extension; none without one.
  void Proponer(std::function<std::string()> nombre) { nombre_ = std::move(nombre); }

  // What is around pages while they are laid out: it runs the work, with something that tells how far it is and may
  // cancel it. Without one nobody is told.
  using Marco = std::function<void(const std::function<void(Progreso&)>& trabajo)>;
  void Enmarcar(Marco marco) { marco_ = std::move(marco); }

  // The printer dialog. True: one was chosen, and is remembered until the program ends.
  bool ConfigurarImpresora();

 private:
  void Imprimir(const std::function<DocumentoImpreso()>& documento);
  DocumentoImpreso Lista(const EncabezadoLista& encabezado, Renglones renglones) const;
  std::optional<std::filesystem::path> ElegirArchivo(const std::string& titulo, std::string_view filtro,
                                                     const char* extension);
  std::string Pie(const std::string& origen) const;
  void EnMarco(const std::function<void(Progreso&)>& trabajo);
  std::optional<Renglones> ElegirRenglones(const std::string& pregunta);
  void Informar(const std::string& texto);
  void Intentar(std::string_view procedimiento, const std::function<void()>& accion);

  ContextoListas contexto_;
  const VistaLista& vista_;
  PalabrasLista palabras_;
  Marco marco_;
  std::function<std::string()> nombre_;
};

}  // namespace utr
