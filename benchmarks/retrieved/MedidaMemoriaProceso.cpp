// The memory that processing a recovery file of a whole flash adds at its peak, as a multiple of the text. Every
// allocation of the program is counted, which is why this isn't measured beside the times.
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include "benchmarks/Presupuesto.h"
#include "benchmarks/retrieved/Volcado.h"

namespace {

std::size_t en_uso = 0;
std::size_t maximo = 0;

void* Pedir(std::size_t bytes) {
  void* lugar = std::malloc(bytes);
  if (lugar == nullptr) throw std::bad_alloc();
  en_uso += ::malloc_usable_size(lugar);
  maximo = std::max(maximo, en_uso);
  return lugar;
}

void Devolver(void* lugar) noexcept {
  en_uso -= ::malloc_usable_size(lugar);
  std::free(lugar);
}

}  // namespace

void* operator new(std::size_t bytes) {
  return Pedir(bytes);
}
void* operator new[](std::size_t bytes) {
  return Pedir(bytes);
}
void operator delete(void* lugar) noexcept {
  Devolver(lugar);
}
void operator delete[](void* lugar) noexcept {
  Devolver(lugar);
}
void operator delete(void* lugar, std::size_t) noexcept {
  Devolver(lugar);
}
void operator delete[](void* lugar, std::size_t) noexcept {
  Devolver(lugar);
}

int main() {
  medida::Taller taller;
  const std::uint64_t texto = medida::Volcar(taller.Archivo(0), 0);
  taller.Procesar(1);  // what the first use of anything takes isn't counted
  const std::size_t antes = en_uso;
  maximo = en_uso;
  taller.Procesar(1);
  const double veces = static_cast<double>(maximo - antes) / static_cast<double>(texto);
  return medida::Informar("procesar_memoria_por_texto", veces, 6.0) ? 0 : 1;
}
