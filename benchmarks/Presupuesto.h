#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <limits>
#include <vector>

// Budgets are ratios of two works measured in turn in one process, so that they hold on any machine.
namespace medida {

inline double Segundos(const std::function<void()>& trabajo) {
  const auto antes = std::chrono::steady_clock::now();
  trabajo();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - antes).count();
}

// Of the processor, its work for the system's calls included: what else the machine does meanwhile doesn't count, and
// neither does waiting for a disk.
inline double SegundosDeProcesador(const std::function<void()>& trabajo) {
  const auto leer = [] {
    timespec ahora{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ahora);
    return static_cast<double>(ahora.tv_sec) + static_cast<double>(ahora.tv_nsec) * 1e-9;
  };
  const double antes = leer();
  trabajo();
  return leer() - antes;
}

inline double Mediana(std::vector<double> valores) {
  std::sort(valores.begin(), valores.end());
  return valores[valores.size() / 2];
}

// Prints "name ratio limit ok|over" and gives true when the value is within its limit.
inline bool Informar(const char* nombre, double valor, double limite) {
  const bool bien = valor <= limite;
  std::printf("%s %.3f %.3f %s\n", nombre, valor, limite, bien ? "ok" : "over");
  std::fflush(stdout);
  return bien;
}

using Reloj = double (*)(const std::function<void()>&);

using Trabajo = std::function<void()>;

// The ratio of the least that each took in `turnos` turns, one after the other, after one that isn't counted: what else
// the machine does only adds. Of several compared works the quickest counts.
inline bool Comparar(const char* nombre, double limite, const Trabajo& nuestro, const std::vector<Trabajo>& comparados,
                     int turnos = 7, Reloj reloj = Segundos) {
  double menor = std::numeric_limits<double>::infinity();
  double menor_comparado = menor;
  for (int i = 0; i <= turnos; ++i) {
    const double suyo = reloj(nuestro);
    if (i > 0) menor = std::min(menor, suyo);
    for (const Trabajo& comparado : comparados) {
      const double otro = reloj(comparado);
      if (i > 0) menor_comparado = std::min(menor_comparado, otro);
    }
  }
  return Informar(nombre, menor / menor_comparado, limite);
}

inline bool Comparar(const char* nombre, double limite, const Trabajo& nuestro, const Trabajo& comparado,
                     int turnos = 7) {
  return Comparar(nombre, limite, nuestro, std::vector<Trabajo>{comparado}, turnos);
}

// Comparar by the time of the processor, for works that wait for nobody.
inline bool CompararTrabajo(const char* nombre, double limite, const Trabajo& nuestro,
                            const std::vector<Trabajo>& comparados, int turnos = 15) {
  return Comparar(nombre, limite, nuestro, comparados, turnos, SegundosDeProcesador);
}

inline bool CompararTrabajo(const char* nombre, double limite, const Trabajo& nuestro, const Trabajo& comparado,
                            int turnos = 15) {
  return CompararTrabajo(nombre, limite, nuestro, std::vector<Trabajo>{comparado}, turnos);
}

}  // namespace medida
