#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
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

// The median ratio of `pares` pairs, each measured one after the other, after one pair that isn't counted.
inline bool Comparar(const char* nombre, double limite, const std::function<void()>& nuestro,
                     const std::function<void()>& comparado, int pares = 5, Reloj reloj = Segundos) {
  nuestro();
  comparado();
  std::vector<double> razones;
  for (int i = 0; i < pares; ++i) {
    const double a = reloj(nuestro);
    const double b = reloj(comparado);
    razones.push_back(a / b);
  }
  return Informar(nombre, Mediana(razones), limite);
}

// Comparar by the time of the processor, for works that wait for nobody.
inline bool CompararTrabajo(const char* nombre, double limite, const std::function<void()>& nuestro,
                            const std::function<void()>& comparado, int pares = 9) {
  return Comparar(nombre, limite, nuestro, comparado, pares, SegundosDeProcesador);
}

}  // namespace medida
