#include "services/Diario.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "services/RegistroErrores.h"

namespace utr {
namespace {

std::string Llamada(std::int32_t estacion) {
  return estacion == 0 ? "de la estación sin identificador" : fmt::format("de la estación {}", estacion);
}

std::string DeQuien(const Asiento& asiento) {
  const std::string cual = asiento.estacion == 0 ? "sin identificador" : std::to_string(asiento.estacion);
  return asiento.unidad.empty() ? cual : cual + ", " + asiento.unidad;
}

// An answer takes its time, and what was read that long ago is as good as read now.
constexpr std::int64_t kReciente = 2;  // seconds

}  // namespace

std::string HoraLeida(const std::string& hora, const FechaHora& leida_el, const FechaHora& ahora) {
  const std::int64_t hace = Segundos(ahora) - Segundos(leida_el);
  const bool reciente = hace >= 0 && hace <= kReciente;  // a computer's clock may be set back meanwhile
  return reciente ? hora : fmt::format("{}, leída el {}", hora, TextoFechaHora(leida_el));
}

Diario::Tarea::Tarea(Diario& diario) : diario_(diario), estacion_(diario.Estacion()) {
  diario_.ReunirPaginas();
  desde_ = diario_.proximo_;
  ++diario_.tareas_;
}

Diario::Tarea::~Tarea() {
  IgnorandoErrores([this] { diario_.ReunirPaginas(); });
  if (--diario_.tareas_ == 0) diario_.Afirmar();
}

void Diario::Tarea::Anotar(Asiento asiento) {
  diario_.paginas_.reset();
  std::vector<std::uint64_t> suyas;
  for (const Asiento& llamada : diario_.asientos_) {
    if (llamada.provisional && llamada.orden >= desde_) suyas.push_back(llamada.orden);
  }
  asiento.estacion = estacion_;
  diario_.Poner(std::move(asiento), suyas);
}

void Diario::Anotar(Asiento asiento) {
  if (tareas_ == 0) Completar();
  asiento.estacion = Estacion();
  Poner(std::move(asiento));
}

void Diario::AnotarLlamada(Asiento asiento) {
  ReunirPaginas();
  asiento.estacion = Estacion();
  asiento.provisional = tareas_ > 0;
  Poner(std::move(asiento));
}

std::uint64_t Diario::Empezar(Asiento asiento) {
  ReunirPaginas();
  asiento.estacion = Estacion();
  asiento.provisional = true;
  return Poner(std::move(asiento));
}

void Diario::Terminar(std::uint64_t empezado, Asiento asiento) {
  const auto suyo =
      std::find_if(asientos_.begin(), asientos_.end(), [&](const Asiento& uno) { return uno.orden == empezado; });
  asiento.estacion = suyo == asientos_.end() ? Estacion() : suyo->estacion;
  asiento.provisional = tareas_ > 0;
  Poner(std::move(asiento), {empezado});
}

void Diario::AnotarPaginaFlash(bool respondida) {
  if (!paginas_) paginas_ = Paginas{.empezado = Empezar(LecturaDePaginas("sin terminar"))};
  ++(respondida ? paginas_->leidas : paginas_->fallidas);
}

void Diario::Completar() {
  ReunirPaginas();
}

void Diario::AnotarOtroIdentificador(std::int32_t anterior, std::int32_t nuevo) {
  const auto anotar = [&](std::int32_t estacion, std::string_view donde, std::int32_t otra) {
    Poner({.momento = reloj_.Ahora(),
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

std::uint64_t Diario::Poner(Asiento asiento, const std::vector<std::uint64_t>& retirados) {
  asiento.orden = proximo_++;
  if (unidad_) asiento.unidad = unidad_();
  std::erase_if(asientos_, [&](const Asiento& uno) {
    return std::find(retirados.begin(), retirados.end(), uno.orden) != retirados.end();
  });
  asientos_.push_back(std::move(asiento));
  const Asiento nuevo = asientos_.back();  // whoever is told may let events run
  if (aviso_) aviso_({retirados, &nuevo});
  return nuevo.orden;
}

void Diario::Afirmar() {
  bool habia = false;
  for (Asiento& asiento : asientos_) habia = std::exchange(asiento.provisional, false) || habia;
  if (habia && aviso_) IgnorandoErrores([this] { aviso_({}); });
}

Asiento Diario::LecturaDePaginas(std::string resultado) const {
  return {.momento = reloj_.Ahora(),
          .comando = "Lectura de la memoria flash",
          .antes = asiento::kNada,
          .escrito = asiento::kNada,
          .resultado = std::move(resultado),
          .clase = ClaseAsiento::kLectura};
}

void Diario::ReunirPaginas() {
  if (!paginas_) return;
  const Paginas paginas = *std::exchange(paginas_, std::nullopt);
  Terminar(paginas.empezado,
           LecturaDePaginas(fmt::format("{} páginas leídas, {} sin respuesta", paginas.leidas, paginas.fallidas)));
}

TablaPtr Diario::ComoTabla() const {
  constexpr std::pair<const char*, std::uint32_t> kCampos[] = {{"Momento", 20}, {"UTR", 40},      {"Comando", 50},
                                                               {"Antes", 255},  {"Escrito", 255}, {"Resultado", 255}};
  auto tabla = std::make_shared<Tabla>();
  for (const auto& [nombre, tamano] : kCampos) tabla->Append(nombre, TipoCampo::kVarChar, tamano);
  tabla->Open();
  for (const Asiento& asiento : asientos_) {
    if (asiento.clase != ClaseAsiento::kEscritura) continue;
    tabla->AddNew();
    tabla->Set("Momento", TextoFechaHora(asiento.momento));
    tabla->Set("UTR", DeQuien(asiento));
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
