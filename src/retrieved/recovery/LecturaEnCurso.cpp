#include "retrieved/recovery/LecturaEnCurso.h"

#include <fmt/format.h>

#include <utility>

#include "base/Error.h"

namespace utr {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kAnterior = ".anterior";
constexpr std::string_view kContinuacion = ".continuacion";

// "archivo.bkp.anterior", "archivo.bkp.anterior-2"...
fs::path Numerado(const fs::path& ruta, std::string_view agregado, int numero) {
  fs::path nombre = ruta;
  nombre += numero == 1 ? std::string(agregado) : fmt::format("{}-{}", agregado, numero);
  return nombre;
}

bool Existe(const fs::path& ruta) {
  std::error_code nada;
  return fs::exists(fs::symlink_status(ruta, nada));
}

fs::path Libre(const fs::path& ruta, std::string_view agregado) {
  int numero = 1;
  while (Existe(Numerado(ruta, agregado, numero))) ++numero;
  return Numerado(ruta, agregado, numero);
}

[[noreturn]] void Fallar(const fs::path& ruta, const std::error_code& falla) {
  throw Error(error::kArchivo, "Lectura de la memoria", "No se puede apartar el archivo " + ruta.string(),
              falla.value());
}

void Renombrar(const fs::path& de, const fs::path& a) {
  std::error_code falla;
  fs::rename(de, a, falla);
  if (falla) Fallar(de, falla);
}

// Gives the file a second name, so that it is never without the first; where the file system knows no second names it
// is renamed.
void DarOtroNombre(const fs::path& ruta, const fs::path& otro) {
  std::error_code falla;
  fs::create_hard_link(ruta, otro, falla);
  if (falla) Renombrar(ruta, otro);
}

// A file that takes another one's place is for the same people.
void TomarPermisos(const fs::path& ruta, const fs::path& anterior) {
  std::error_code nada;
  const fs::file_status suyo = fs::symlink_status(anterior, nada);
  if (fs::is_regular_file(suyo)) fs::permissions(ruta, suyo.permissions(), nada);
}

void Borrar(const fs::path& ruta) {
  std::error_code nada;
  fs::remove(ruta, nada);
}

}  // namespace

LecturaEnCurso::LecturaEnCurso(const ContextoLectura& contexto, Pedido pedido)
    : diario_(contexto.diario), reloj_(contexto.reloj), pedido_(std::move(pedido)) {
  pedido_.ruta = DestinoDe(pedido_.ruta);
  OpcionesLectura& opciones = pedido_.opciones;
  if (opciones.anterior != nullptr) opciones.seleccion = opciones.anterior->Ampliar(opciones.seleccion);
  const fs::path destino = opciones.anterior != nullptr ? Libre(pedido_.ruta, kContinuacion) : pedido_.ruta;
  if (opciones.anterior == nullptr) Apartar();
  AlFallar([&] { archivo_.emplace(destino, opciones.seleccion.PrimeraPista()); },
           [&] {
             if (!apartado_.empty()) Renombrar(apartado_, pedido_.ruta);
           });
  if (!apartado_.empty()) TomarPermisos(destino, apartado_);
  lector_.emplace(contexto, opciones, *archivo_);
}

void LecturaEnCurso::Apartar() {
  if (!Existe(pedido_.ruta)) return;
  if (fs::is_directory(pedido_.ruta)) Fallar(pedido_.ruta, std::make_error_code(std::errc::is_a_directory));
  const fs::path libre = Libre(pedido_.ruta, kAnterior);
  Renombrar(pedido_.ruta, libre);
  apartado_ = libre;
}

void LecturaEnCurso::Leer() {
  if (diario_ == nullptr) return LeerTodo();
  Diario::Tarea tarea(*diario_);
  const auto falla = FallaDe([this] { LeerTodo(); });
  Anotar(tarea, falla);
  if (falla) throw *falla;
}

void LecturaEnCurso::Anotar(Diario::Tarea& tarea, const std::optional<Error>& falla) const {
  const AvanceLectura& avance = lector_->Avance();
  const auto fallidas = static_cast<std::int64_t>(lector_->Fallidas().size());
  std::string fin = fmt::format("{} páginas leídas, {} sin respuesta", avance.leidas - fallidas, fallidas);
  if (lector_->Cancelada()) fin += "; cancelada por el operador";
  if (falla) fin += "; [" + falla->Descripcion() + "]";
  tarea.Anotar({.momento = reloj_.Ahora(),
                .comando = "Recuperación de la memoria flash",
                .antes = asiento::kNada,
                .escrito = pedido_.ruta.filename().string(),
                .resultado = std::move(fin),
                .clase = ClaseAsiento::kLectura});
}

void LecturaEnCurso::LeerTodo() {
  AlFallar([&] { lector_->Leer(); },
           [&] {
             if (pedido_.opciones.anterior == nullptr) IgnorandoErrores([&] { archivo_->Terminar(); });
             if (pedido_.opciones.anterior != nullptr && lector_->NadaPerdido()) Publicar();
           });
  if (pedido_.opciones.anterior != nullptr) return Publicar();
  archivo_->Terminar();
  // Pages that are lacking may stand in the former file.
  if (!lector_->Cancelada() && lector_->Fallidas().empty() && !apartado_.empty() && SobraLoApartado())
    Borrar(apartado_);
}

// The unit may have been erased since, or another part of it was read, and what bore that name may be no dump at all.
bool LecturaEnCurso::SobraLoApartado() const {
  bool sobra = false;
  IgnorandoErrores([&] { sobra = LecturaAnterior(pedido_.ruta).Contiene(LecturaAnterior(apartado_)); });
  return sobra;
}

void LecturaEnCurso::Publicar() {
  const fs::path anterior = Libre(pedido_.ruta, kAnterior);
  TomarPermisos(archivo_->Ruta(), pedido_.ruta);
  if (Existe(pedido_.ruta)) DarOtroNombre(pedido_.ruta, anterior);
  AlFallar([&] { archivo_->Terminar(pedido_.ruta); },
           [&] {
             if (!Existe(pedido_.ruta) && Existe(anterior)) Renombrar(anterior, pedido_.ruta);
           });
  for (const fs::path& continuacion : pedido_.continuaciones) Borrar(continuacion);
}

std::vector<fs::path> ContinuacionesDe(const fs::path& ruta, const LecturaAnterior& anterior) {
  std::vector<fs::path> halladas;
  for (int numero = 1; Existe(Numerado(ruta, kContinuacion, numero)); ++numero) {
    const fs::path continuacion = Numerado(ruta, kContinuacion, numero);
    bool es_suya = false;
    IgnorandoErrores([&] { es_suya = anterior.Concuerda(LecturaAnterior(continuacion)); });
    if (es_suya) halladas.push_back(continuacion);
  }
  return halladas;
}

bool ExportarConfiguracionLeida(Comunicador& comunicador, RegistroErrores& registro, Progreso& progreso,
                                const fs::path& ruta) {
  bool guardada = false;
  const auto exportar = [&] {
    const TablaPtr tabla = comunicador.ConfiguracionAlmacenada(true);
    if (!tabla || !tabla->Abierta() || tabla->RecordCount() == 0 || progreso.Cancelado()) return;
    tabla->GuardarSobre(ruta);
    guardada = true;
  };
  if (const std::optional<Error> falla = FallaDe(exportar))
    registro.RegistrarError(*falla, "frmLectorFlash", "GuardarLecturaFlash");
  return guardada;
}

}  // namespace utr
