#include "configuration/Catalogo.h"

#include "base/CarpetaPrograma.h"
#include "base/Texto.h"
#include "configuration/Canales.h"
#include "driver/Utilidades.h"
#include "services/RegistroErrores.h"

namespace utr {

namespace {

// The second column of the first row whose first column equals the id; empty without one.
std::string Buscar(const TablaPtr& tabla, std::string_view id) {
  std::string texto;
  IgnorandoErrores([&] {
    if (!tabla) return;
    tabla->Filter("");
    if (tabla->RecordCount() == 0) return;
    tabla->MoveFirst();
    tabla->Find(tabla->Field(std::size_t{0}).nombre + "=" + std::string(Recortar(id)));
    if (!tabla->Bof() && !tabla->Eof()) texto = tabla->Texto(std::size_t{1});
  });
  return texto;
}

}  // namespace

Catalogo::Catalogo(const std::filesystem::path& carpeta)
    : parametros_(ArchivoDelPrograma(carpeta, "Parametros.xml")),
      unidades_(ArchivoDelPrograma(carpeta, "Unidades.xml")) {}

bool Catalogo::CargarParametros() {
  Cargar(parametros_);
  return true;
}

bool Catalogo::CargarUnidades() {
  Cargar(unidades_);
  return true;
}

TablaPtr Catalogo::Parametros() {
  return Cargar(parametros_);
}

TablaPtr Catalogo::Unidades() {
  return Cargar(unidades_);
}

std::string Catalogo::DescripcionParametro(std::string_view parametro, std::int16_t tipo) {
  const std::string texto = Buscar(Parametros(), parametro);
  return texto.empty() ? DescripcionTipo(std::to_string(tipo), 2) : texto;
}

std::string Catalogo::DescripcionUnidad(std::string_view unidad) {
  const std::string texto = Buscar(Unidades(), unidad);
  return texto.empty() ? " - " : texto;
}

TablaPtr Catalogo::Cargar(Ranura& ranura) {
  if (ranura.buscada) return ranura.tabla;
  ranura.buscada = true;
  if (!ExisteArchivo(ranura.archivo)) return nullptr;
  auto tabla = std::make_shared<Tabla>();
  if (IgnorandoErrores([&] { tabla->Open(ranura.archivo); })) ranura.tabla = std::move(tabla);
  return ranura.tabla;
}

}  // namespace utr
