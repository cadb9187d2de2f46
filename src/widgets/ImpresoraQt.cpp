#include "widgets/ImpresoraQt.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <memory>
#include <utility>

#include "base/Error.h"
#include "widgets/Compaginado.h"
#include "widgets/TextoQt.h"
#include "widgets/TurnoDeImpresora.h"

namespace utr {
namespace {

constexpr std::int32_t kErrorImpresora = 482;
constexpr double kMargen = 15;  // millimetres
constexpr const char* kNombrePrograma = "AdminUTR";

struct ClaseDePapel {
  QPageSize::PageSizeId tamano;
  const char* nombre;
};
constexpr ClaseDePapel kPapeles[] = {{QPageSize::A4, "A4 (210 x 297 mm)"},
                                     {QPageSize::Letter, "Carta (216 x 279 mm)"},
                                     {QPageSize::Legal, "Oficio (216 x 356 mm)"},
                                     {QPageSize::A3, "A3 (297 x 420 mm)"}};

[[noreturn]] void NoLoToma() {
  throw Error(kErrorImpresora, "Imprimir", "Error de impresora");
}

struct Trabajo {
  QPrinter impresora{QPrinter::HighResolution};
  QPainter pintor{};
};

// A job that was begun prints what it has by then, however it ends: the printers of the system leave nothing to abort.
// So one that isn't to be printed doesn't end; it stays with the program.
void Apartar(std::unique_ptr<Trabajo> trabajo) {
  static auto& apartados = *new std::vector<std::unique_ptr<Trabajo>>;
  apartados.push_back(std::move(trabajo));
}

// Printer, paper and name of a job.
void Preparar(QPrinter& impresora, const EleccionImpresora& eleccion, std::string_view titulo) {
  impresora.setPrinterName(Q(eleccion.nombre));
  PonerPapel(impresora, eleccion);
  impresora.setDocName(titulo.empty() ? QString::fromLatin1(kNombrePrograma) : Q(titulo));
}

}  // namespace

int DibujarDocumento(QPagedPaintDevice& dispositivo, QPainter& pintor, const DocumentoImpreso& documento,
                     const QFont& letra, Progreso& progreso) {
  const Compaginado hojas(documento, dispositivo, letra, progreso);
  if (hojas.Paginas() == 0 || !pintor.begin(&dispositivo)) return 0;
  const std::string total = std::to_string(hojas.Paginas());
  progreso.Rango(hojas.Paginas());
  for (int pagina = 0; pagina < hojas.Paginas(); ++pagina) {
    progreso.Texto("Página " + std::to_string(pagina + 1) + " de " + total);
    progreso.Posicion(pagina);
    if (progreso.Cancelado() || (pagina > 0 && !dispositivo.newPage())) return 0;
    hojas.Dibujar(pintor, pagina);
  }
  return hojas.Paginas();
}

void PonerPapel(QPrinter& impresora, const EleccionImpresora& eleccion) {
  const auto orientacion = eleccion.apaisado ? QPageLayout::Landscape : QPageLayout::Portrait;
  const QMarginsF margenes(kMargen, kMargen, kMargen, kMargen);
  const QPageSize papel(kPapeles[static_cast<std::size_t>(eleccion.papel)].tamano);
  impresora.setPageLayout(QPageLayout(papel, orientacion, margenes, QPageLayout::Millimeter));
}

QFont FuenteDe(LetraImpresion letra) {
  return letra == LetraImpresion::kPareja ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                          : QGuiApplication::font();
}

QStringList NombresDePapel() {
  QStringList nombres;
  for (const ClaseDePapel& papel : kPapeles) nombres.append(QString::fromUtf8(papel.nombre));
  return nombres;
}

std::vector<std::string> ImpresoraQt::Nombres() {
  std::vector<std::string> nombres;
  for (const QString& nombre : QPrinterInfo::availablePrinterNames()) nombres.push_back(U(nombre));
  return nombres;
}

bool ImpresoraQt::Imprimir(const EleccionImpresora& eleccion, const DocumentoImpreso& documento, Progreso& progreso) {
  const auto dibujar = [&documento](QPagedPaintDevice& dispositivo, QPainter& pintor, Progreso& como_va) {
    return DibujarDocumento(dispositivo, pintor, documento, FuenteDe(documento.letra), como_va);
  };
  return Dibujar(eleccion, documento.titulo, dibujar, progreso);
}

bool ImpresoraQt::Dibujar(const EleccionImpresora& eleccion, std::string_view titulo, const DibujarPaginas& dibujar,
                          Progreso& progreso) {
  auto trabajo = std::make_unique<Trabajo>();
  Preparar(trabajo->impresora, eleccion, titulo);
  // A name that the system doesn't know leaves the job to its usual printer.
  if (!trabajo->impresora.isValid() || trabajo->impresora.printerName() != Q(eleccion.nombre)) NoLoToma();
  const bool dibujado = dibujar(trabajo->impresora, trabajo->pintor, progreso) > 0;
  if (dibujado) {
    if (!trabajo->pintor.end()) NoLoToma();
    return true;
  }
  if (trabajo->pintor.isActive()) Apartar(std::move(trabajo));
  if (!progreso.Cancelado()) NoLoToma();
  return false;
}

void ImprimirDibujo(Impresora& impresora, const EleccionImpresora& eleccion, std::string_view titulo,
                    const DibujarPaginas& dibujar, Progreso& progreso) {
  auto* con_dibujos = dynamic_cast<ImpresoraDibujos*>(&impresora);
  if (con_dibujos == nullptr) NoLoToma();
  PorCopia(eleccion.copias, progreso,
           [&](Progreso& de_copia) { return con_dibujos->Dibujar(eleccion, titulo, dibujar, de_copia); });
}

}  // namespace utr
