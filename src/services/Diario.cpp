#include "services/Diario.h"

#include <fmt/format.h>

#include <utility>

#include "services/RegistroErrores.h"

namespace utr {
namespace {

std::string Llamada(std::int32_t estacion) {
  return estacion == 0 ? "de la estación sin identificador" : fmt::format("de la estación {}", estacion);
}

}  // namespace

Diario::Tarea::Tarea(Diario& diario) : diario_(diario), estacion_(diario.Estacion()) {
  if (diario_.tareas_ == 0) diario_.Completar();
  diario_.ReunirPaginas();
  desde_ = diario_.llamadas_.size();
  ++diario_.tareas_;
}

Diario::Tarea::~Tarea() {
  IgnorandoErrores([this] { diario_.ReunirPaginas(); });
  if (--diario_.tareas_ > 0) return;
  for (Asiento& llamada : std::exchange(diario_.llamadas_, {})) {
    IgnorandoErrores([&] { diario_.Guardar(std::move(llamada)); });
  }
}

void Diario::Tarea::Anotar(Asiento asiento) {
  diario_.paginas_.reset();
  diario_.llamadas_.resize(desde_);
  asiento.estacion = estacion_;
  diario_.Guardar(std::move(asiento));
}

void Diario::Anotar(Asiento asiento) {
  if (tareas_ == 0) Completar();
  asiento.estacion = Estacion();
  Guardar(std::move(asiento));
}

void Diario::AnotarLlamada(Asiento asiento) {
  asiento.estacion = Estacion();
  ReunirPaginas();
  Reunir(std::move(asiento));
}

void Diario::AnotarPaginaFlash(bool respondida) {
  if (!paginas_) paginas_ = Paginas();
  ++(respondida ? paginas_->leidas : paginas_->fallidas);
}

void Diario::Completar() {
  ReunirPaginas();
}

void Diario::AnotarOtroIdentificador(std::int32_t anterior, std::int32_t nuevo) {
  const auto anotar = [&](std::int32_t estacion, std::string_view donde, std::int32_t otra) {
    Guardar({.momento = reloj_.Ahora(),
             .comando = "Cambio de identificador",
             .antes = std::to_string(anterior),
             .escrito = std::to_string(nuevo),
             .resultado = fmt::format("{} en la bitácora {}", donde, Llamada(otra)),
             .clase = ClaseAsiento::kNota,
             .estacion = estacion});
  };
  if (anterior == nuevo) return;
  anotar(anterior, "sigue", nuevo);
  anotar(nuevo, "lo anterior está", anterior);
}

void Diario::Guardar(Asiento asiento) {
  asientos_.push_back(std::move(asiento));
  if (aviso_) aviso_(asientos_.back());
}

void Diario::Reunir(Asiento asiento) {
  if (tareas_ == 0) return Guardar(std::move(asiento));
  llamadas_.push_back(std::move(asiento));
}

void Diario::ReunirPaginas() {
  if (!paginas_) return;
  const Paginas paginas = *std::exchange(paginas_, std::nullopt);
  Reunir({.momento = reloj_.Ahora(),
          .comando = "Lectura de la memoria flash",
          .antes = asiento::kNada,
          .escrito = asiento::kNada,
          .resultado = fmt::format("{} páginas leídas, {} sin respuesta", paginas.leidas, paginas.fallidas),
          .clase = ClaseAsiento::kLectura,
          .estacion = Estacion()});
}

TablaPtr Diario::ComoTabla() const {
  constexpr std::pair<const char*, std::uint32_t> kCampos[] = {
      {"Momento", 20}, {"Comando", 50}, {"Antes", 255}, {"Escrito", 255}, {"Resultado", 255}};
  auto tabla = std::make_shared<Tabla>();
  for (const auto& [nombre, tamano] : kCampos) tabla->Append(nombre, TipoCampo::kVarChar, tamano);
  tabla->Open();
  for (const Asiento& asiento : asientos_) {
    if (asiento.clase != ClaseAsiento::kEscritura) continue;
    tabla->AddNew();
    tabla->Set("Momento", TextoFechaHora(asiento.momento));
    tabla->Set("Comando", asiento.comando);
    tabla->Set("Antes", asiento.antes);
    tabla->Set("Escrito", asiento.escrito);
    tabla->Set("Resultado", asiento.resultado);
  }
  tabla->UpdateBatch();
  if (tabla->RecordCount() > 0) tabla->MoveFirst();
  return tabla;
}

}  // namespace utr
