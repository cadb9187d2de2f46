#include <fcntl.h>
#include <unistd.h>

#include <charconv>
#include <cstring>

#include "benchmarks/Presupuesto.h"
#include "benchmarks/retrieved/Muestras.h"
#include "driver/ComunicadorReenviado.h"
#include "driver/Textos.h"
#include "retrieved/recovery/LecturaEnCurso.h"

// What reading a whole flash costs beside the unit, which answers at once here.
namespace {

using namespace utr;

constexpr std::size_t kItems = 66;

// The items of all pages, full of data.
std::vector<std::uint8_t> Bytes() {
  std::vector<std::uint8_t> bytes(kPaginasFlash * kItems);
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::uint8_t>(i % kItems < 64 ? medida::Crudo(i / kItems, i % kItems) : 0);
  return bytes;
}

std::vector<std::string> Textos(const std::vector<std::uint8_t>& bytes) {
  std::vector<std::string> textos;
  for (std::size_t i = 0; i < kPaginasFlash; ++i) textos.push_back(TextoPagina({bytes.data() + i * kItems, kItems}));
  return textos;
}

class UnidadInmediata : public ComunicadorReenviado {
 public:
  UnidadInmediata(Comunicador& otro, const std::vector<std::string>& paginas)
      : ComunicadorReenviado(otro), paginas_(paginas) {}

  std::string LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) override {
    return paginas_[IndiceDePagina({pista, pagina})];
  }

 private:
  const std::vector<std::string>& paginas_;
};

// The lines, formatted into one buffer from the bytes and written, and nothing else.
void EscribirLineas(const std::filesystem::path& ruta, const std::vector<std::uint8_t>& bytes) {
  const int archivo = ::open(ruta.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  std::vector<char> bufer(std::size_t{512} * EscritorRecuperacion::kPaginasPorTanda);
  char* lugar = bufer.data();
  const auto poner = [&](std::string_view texto) {
    std::memcpy(lugar, texto.data(), texto.size());
    lugar += texto.size();
  };
  const auto al_disco = [&] {
    if (::write(archivo, bufer.data(), static_cast<std::size_t>(lugar - bufer.data())) < 0) std::abort();
    ::fsync(archivo);
    lugar = bufer.data();
  };
  poner("\"0/31\"\r\n");
  al_disco();
  for (int pista = 0; pista < kPistas; ++pista) {
    for (int pagina = 0; pagina < kPaginasPista; ++pagina) {
      *lugar = '"';  // and each comma over the one that ended the item before
      for (std::size_t item = 0; item < kItems; ++item, *lugar = ',')
        lugar = std::to_chars(lugar + 1, lugar + 5, bytes[IndiceDePagina({pista, pagina}) * kItems + item]).ptr;
      *lugar++ = '#';
      lugar = std::to_chars(lugar, lugar + 4, pista).ptr;
      poner(",");
      lugar = std::to_chars(lugar, lugar + 4, pagina).ptr;
      poner("\"\r\n");
      if ((pagina + 1) % EscritorRecuperacion::kPaginasPorTanda == 0) al_disco();
    }
    poner("\"EOT\"\r\n");
    al_disco();
  }
  ::close(archivo);
}

bool MedirLectura(const ContextoRegistros& contexto) {
  const std::vector<std::uint8_t> bytes = Bytes();
  const std::vector<std::string> paginas = Textos(bytes);
  UnidadInmediata unidad(contexto.comunicador, paginas);
  // Beside the program, which lies on a disk; the folder of temporary files may not.
  const auto carpeta = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  const std::filesystem::path ruta = carpeta / fmt::format("medida-{}.bkp", ::getpid());
  const std::filesystem::path comparada = carpeta / fmt::format("medida-{}.txt", ::getpid());
  SinProgreso progreso;
  MapaMemoria mapa(UsoMapa::kLectura);
  const SeleccionFlash todo{.cola = true, .eventos = true, .completa = true};
  const bool bien = medida::Comparar(
      "lector_de_flash_32768_paginas", 2.0,
      [&] {
        std::filesystem::remove(ruta);
        LecturaEnCurso lectura({.comunicador = unidad, .reloj = contexto.reloj, .progreso = progreso, .mapa = mapa},
                               {.ruta = ruta, .opciones = {todo}});
        lectura.Leer();
      },
      [&] {
        std::filesystem::remove(comparada);
        EscribirLineas(comparada, bytes);
      },
      9);
  std::filesystem::remove(ruta);
  std::filesystem::remove(comparada);
  return bien;
}

}  // namespace

int main() {
  return medida::ConContexto(MedirLectura) ? 0 : 1;
}
