#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/Fechas.h"
#include "base/Texto.h"

namespace utr::prueba {

// The station as a process of its own, under the hand of a test: its clock and its situations come from here. Nothing
// waits by time: it is ready when it has said so, and an order was obeyed when it was answered. It ends with this
// object.
class ProcesoEstacion {
 public:
  // Starts it; the listeners are options of its command line, "--tcp 0" or "--linea COM4". Whatever it says until it is
  // ready is kept. Raises for a station that doesn't start, with what it said.
  ProcesoEstacion(std::string carpeta, const std::vector<std::string>& escuchas) : carpeta_(std::move(carpeta)) {
    std::vector<std::string> argumentos{PROGRAMA_ESTACION, "--control", "--carpeta", carpeta_};
    argumentos.insert(argumentos.end(), escuchas.begin(), escuchas.end());
    Lanzar(argumentos);
    while (!dicho_.ends_with("lista\n")) {
      const std::string linea = Leer();
      if (linea.empty()) {
        Terminar(0);
        throw std::runtime_error("utr-estacion: " + dicho_);
      }
      dicho_ += linea.starts_with("La estación está lista") ? "lista\n" : linea;
    }
  }
  ~ProcesoEstacion() { Terminar(SIGKILL); }
  ProcesoEstacion(const ProcesoEstacion&) = delete;
  ProcesoEstacion& operator=(const ProcesoEstacion&) = delete;

  const std::string& Dicho() const { return dicho_; }
  std::string Linea(const std::string& nombre) const { return carpeta_ + "/" + nombre; }

  // The TCP port that it listens on.
  int Puerto() const {
    const std::size_t lugar = dicho_.find(", puerto ");
    return lugar == std::string::npos ? 0 : std::stoi(dicho_.substr(lugar + 9));
  }

  // An order; gives its answer without the line's end, "bien" when it was obeyed.
  std::string Mandar(std::string_view orden) {
    const std::string texto = std::string(orden) + "\n";
    if (::write(entrada_, texto.data(), texto.size()) != static_cast<ssize_t>(texto.size())) return {};
    const std::string respuesta = Leer();
    return respuesta.substr(0, respuesta.find('\n'));
  }
  std::string Hora(const FechaHora& fecha) { return Mandar("hora " + TextoFechaHora(fecha)); }
  std::string Avanzar(double segundos) { return Mandar("avanzar " + std::to_string(segundos)); }
  std::string Escenario(const std::string& texto) {
    const auto renglones = std::count(texto.begin(), texto.end(), '\n');
    return Mandar("escenario " + std::to_string(renglones) +
                  (renglones == 0 ? "" : "\n" + texto.substr(0, texto.size() - 1)));
  }

  // Ends it by a signal and gives its exit status, -1 for one that died of the signal. SIGTERM lets it save its state.
  int Terminar(int senial) {
    if (proceso_ <= 0) return -1;
    if (senial != 0) ::kill(proceso_, senial);
    int estado = 0;
    ::waitpid(proceso_, &estado, 0);
    proceso_ = 0;
    ::close(entrada_);
    std::fclose(salida_);
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
  }

 private:
  void Lanzar(std::vector<std::string>& argumentos) {
    int ida[2];
    int vuelta[2];
    if (::pipe2(ida, O_CLOEXEC) != 0 || ::pipe2(vuelta, O_CLOEXEC) != 0) throw std::runtime_error("pipe2");
    posix_spawn_file_actions_t acciones;
    posix_spawn_file_actions_init(&acciones);
    posix_spawn_file_actions_adddup2(&acciones, ida[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&acciones, vuelta[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&acciones, vuelta[1], STDERR_FILENO);
    std::vector<char*> punteros;
    for (std::string& argumento : argumentos) punteros.push_back(argumento.data());
    punteros.push_back(nullptr);
    const int falla = ::posix_spawn(&proceso_, punteros[0], &acciones, nullptr, punteros.data(), environ);
    posix_spawn_file_actions_destroy(&acciones);
    ::close(ida[0]);
    ::close(vuelta[1]);
    entrada_ = ida[1];
    salida_ = ::fdopen(vuelta[0], "r");
    if (falla != 0) throw std::runtime_error("posix_spawn");
  }

  // The next line with its end; empty when there are no more.
  std::string Leer() {
    std::string linea;
    for (int letra = std::fgetc(salida_); letra != EOF; letra = std::fgetc(salida_)) {
      linea += static_cast<char>(letra);
      if (letra == '\n') break;
    }
    return linea;
  }

  std::string carpeta_;
  std::string dicho_;
  pid_t proceso_ = 0;
  int entrada_ = -1;
  std::FILE* salida_ = nullptr;
};

}  // namespace utr::prueba
