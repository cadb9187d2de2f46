#include "driver/simulated/server/Servidor.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ostream>

#include "base/Archivos.h"
#include "base/Error.h"
#include "base/Numeros.h"
#include "base/Texto.h"

namespace utr::simulada {

namespace {

constexpr const char* kEscenario = "Estacion.toml";
constexpr const char* kEstado = "Estacion.estado";
constexpr int kMayorPuerto = 10;              // that a line may be called after
constexpr std::int64_t kMayorPlazo = 250;     // milliseconds that the loop sleeps at most
constexpr std::int64_t kEntreMiradas = 1000;  // between two looks at scenario and clock while nobody asks

// A new station gets the scenario that is shipped, for somebody to edit. It does without one where that fails, and says
// so: there is nothing to edit then.
void CopiarModelo(const std::filesystem::path& modelo, const std::filesystem::path& carpeta, const Voces& voces) {
  std::error_code no_se_ve;
  if (modelo.empty() || std::filesystem::exists(carpeta / kEscenario, no_se_ve)) return;
  try {
    std::string texto = Reemplazar(LeerTextoEscenario(modelo), "UTRSimulada.estado", kEstado);
    texto = Reemplazar(Reemplazar(texto, "se anota en Comunicador.log", "se dice donde corre utr-estacion"),
                       "con el programa\n# cerrado", "con la\n# estación detenida");
    EscribirNuevo(carpeta / kEscenario, [&texto](std::ostream& salida) { salida << texto; });
  } catch (const Error& falla) {
    voces.advertir("Sin escenario para editar: no se puede copiar " + modelo.string() + " (" + falla.Descripcion() +
                   "). La estación es la de fábrica");
  }
}

// Lines that a station left when it was killed lead to nobody, or to a terminal that is somebody else's by now.
void QuitarLineasAjenas(const std::filesystem::path& carpeta) {
  std::error_code falla;
  for (int numero = 1; numero <= kMayorPuerto; ++numero) {
    const std::filesystem::path linea = carpeta / ("COM" + std::to_string(numero));
    if (std::filesystem::is_symlink(linea, falla)) std::filesystem::remove(linea, falla);
  }
}

const std::filesystem::path& Preparada(const Opciones& opciones, const std::filesystem::path& modelo,
                                       const Voces& voces) {
  CopiarModelo(modelo, opciones.carpeta, voces);
  QuitarLineasAjenas(opciones.carpeta);
  return opciones.carpeta;
}

}  // namespace

Servidor::Servidor(const Opciones& opciones, const std::filesystem::path& escenario_modelo, const Voces& voces)
    : candado_(opciones.carpeta),
      reloj_(opciones.hora),
      viva_(Preparada(opciones, escenario_modelo, voces), {kEscenario, kEstado}, reloj_, {},
            [&voces](const FechaHora& cuando, std::string_view linea) {
              voces.decir(TextoFechaHora(cuando) + " " + std::string(linea));
            }),
      unidad_(viva_) {
  const Servida servida{viva_, unidad_, voces};
  for (const auto& red : opciones.redes) escuchas_.push_back(EscucharRed(red, servida));
  for (const auto& linea : opciones.lineas) escuchas_.push_back(TenderLinea(opciones.carpeta, linea, false, servida));
  for (const auto& linea : opciones.modems) escuchas_.push_back(TenderLinea(opciones.carpeta, linea, true, servida));
  for (const auto& serie : opciones.seriales) escuchas_.push_back(EscucharSerie(serie, servida));
  if (!viva_.aviso.empty()) voces.advertir(viva_.aviso);
  for (const auto& escucha : escuchas_) voces.decir(escucha->Nombre());
  voces.decir("Escenario: " + (opciones.carpeta / kEscenario).string());
  voces.decir("La estación está lista: identificador " + std::to_string(viva_.Unidad().identificador) + ", " +
              std::to_string(viva_.Unidad().velocidad) + " bps");
}

// How long the loop may sleep.
int Servidor::Plazo() const {
  const std::int64_t ahora = reloj_.Milisegundos();
  std::int64_t plazo = kMayorPlazo;
  for (const auto& escucha : escuchas_) {
    if (const auto proximo = escucha->Proximo(ahora)) plazo = std::min(plazo, *proximo - ahora);
  }
  return static_cast<int>(std::max<std::int64_t>(plazo, 0));
}

void Servidor::Correr(int parar, int ordenes, const std::function<void(std::string_view)>& contestar) {
  std::int64_t mirada = 0;
  std::vector<pollfd> vigilados;
  for (;;) {
    vigilados = {{parar, POLLIN, 0}, {ordenes, POLLIN, 0}};
    for (const auto& escucha : escuchas_) escucha->Vigilar(vigilados);
    if (::poll(vigilados.data(), vigilados.size(), Plazo()) < 0 && errno != EINTR) {
      throw Error(error::kLlamada, "utr-estacion", "El sistema no deja atender las líneas", errno);
    }
    if (vigilados[0].revents != 0) return;
    if (vigilados[1].revents != 0 && !LeerOrdenes(ordenes, contestar)) return;
    const std::int64_t ahora = reloj_.Milisegundos();
    if (ahora - mirada >= kEntreMiradas) {
      mirada = ahora;
      viva_.Comenzar();
    }
    unidad_.Pasar();
    for (const auto& escucha : escuchas_) escucha->Atender(ahora);
  }
}

// False: whoever gave them has gone.
bool Servidor::LeerOrdenes(int ordenes, const std::function<void(std::string_view)>& contestar) {
  std::array<char, 4096> bytes;
  const ssize_t leidos = ::read(ordenes, bytes.data(), bytes.size());
  if (leidos <= 0) return leidos < 0 && (errno == EAGAIN || errno == EINTR);
  recibido_.append(bytes.data(), static_cast<std::size_t>(leidos));
  for (std::size_t fin = recibido_.find('\n'); fin != std::string::npos; fin = recibido_.find('\n')) {
    const std::string linea = recibido_.substr(0, fin);
    recibido_.erase(0, fin + 1);
    try {
      Cumplir(linea, contestar);
    } catch (...) {
      contestar("mal " + ErrorActual().Descripcion());
    }
  }
  return true;
}

// "hora dd/mm/yyyy HH:mm:ss", "avanzar SEGUNDOS", "escenario RENGLONES" and so many lines.
void Servidor::Cumplir(std::string_view orden, const std::function<void(std::string_view)>& contestar) {
  if (renglones_ > 0) {
    escenario_ += std::string(orden) + "\n";
    if (--renglones_ > 0) return;
    viva_.Escenificar(std::exchange(escenario_, {}));
    return contestar("bien");
  }
  const std::size_t corte = orden.find(' ');
  const std::string_view nombre = orden.substr(0, corte);
  const std::string_view valor = corte == std::string_view::npos ? std::string_view{} : orden.substr(corte + 1);
  if (nombre == "escenario") {
    renglones_ = LeerEntero16(valor);
    if (renglones_ > 0) return;
    viva_.Escenificar({});
  } else if (nombre == "hora") {
    reloj_.Fijar(ConvertirAFecha(valor));
    viva_.Comenzar();
  } else if (nombre == "avanzar") {
    reloj_.Adelantar(static_cast<std::int64_t>(LeerDoble(valor) * 1000));
    viva_.Comenzar();
    unidad_.Pasar();
  } else {
    return contestar("mal no conoce la orden \"" + std::string(nombre) + "\"");
  }
  contestar("bien");
}

}  // namespace utr::simulada
