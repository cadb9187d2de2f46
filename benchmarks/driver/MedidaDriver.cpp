// Budgets of the simulated station: what a whole reading of the flash and its decoding may cost, the memory that the
// station holds at rest, and the CPU time that it adds to the start of the program.
#include <malloc.h>

#include <charconv>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "base/Reloj.h"
#include "benchmarks/Presupuesto.h"
#include "driver/Pagina.h"
#include "driver/TablasRegistros.h"
#include "driver/Textos.h"
#include "driver/simulated/driver/ComunicadorSimulado.h"

namespace {

constexpr int kPistas = 32;
constexpr int kPistasDeDatos = 27;
constexpr int kPaginas = 1024;

// A folder of its own, empty at the beginning and gone at the end.
class CarpetaDeMedida {
 public:
  CarpetaDeMedida()
      : ruta_(std::filesystem::temp_directory_path() / ("medida_driver_" + std::to_string(::time(nullptr)))) {
    std::filesystem::remove_all(ruta_);
    std::filesystem::create_directories(ruta_);
    std::ofstream(ruta_ / "UTRSimulada.toml") << "[tiempos]\nfactor = 0\n";  // the work alone, not the line
  }
  ~CarpetaDeMedida() { std::filesystem::remove_all(ruta_); }
  const std::filesystem::path& Ruta() const { return ruta_; }

 private:
  std::filesystem::path ruta_;
};

double MebibytesEnUso() {
  return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd) / (1024 * 1024);
}

double SegundosDeCpu() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Page texts as a recovery file holds them, turned into reply frames.
std::vector<std::vector<std::uint8_t>> RespuestasDeDatos(utr::Comunicador& comunicador) {
  std::vector<std::vector<std::uint8_t>> respuestas;
  for (int pista = 0; pista < kPistasDeDatos; ++pista) {
    for (int pagina = 0; pagina < kPaginas; ++pagina) {
      const auto bytes = utr::LeerTextoPagina(
          comunicador.LeerPaginaFlash(static_cast<std::int16_t>(pista), static_cast<std::int16_t>(pagina)));
      std::vector<std::uint8_t> respuesta(13);
      respuesta.insert(respuesta.end(), bytes->begin(), bytes->begin() + 65);
      if (respuesta[13] != 255) respuestas.push_back(std::move(respuesta));
    }
  }
  return respuestas;
}

struct FilaSuelta {
  std::string fecha, hora, canal, valor, maximo, minimo, validacion, cola;
};

// The rows of a page, made with nothing but what is in the samples: the work that no decoder can do without.
utr::TablaPtr FilasSinMas(const std::vector<FilaSuelta>& filas) {
  auto tabla = std::make_shared<utr::Tabla>();
  for (const char* campo : {"Fecha", "Hora", "Canal", "Valor", "Maximo", "Minimo", "Validacion", "ColaTX"}) {
    tabla->Append(campo, utr::TipoCampo::kVarChar, 50);
  }
  tabla->Open();
  for (const FilaSuelta& fila : filas) {
    tabla->AddNew();
    if (!fila.fecha.empty()) {
      tabla->Set(0, fila.fecha);
      continue;
    }
    tabla->Set(1, fila.hora);
    tabla->Set(2, fila.canal);
    tabla->Set(3, fila.valor);
    if (!fila.maximo.empty()) tabla->Set(4, fila.maximo);
    if (!fila.minimo.empty()) tabla->Set(5, fila.minimo);
    tabla->Set(6, fila.validacion);
    tabla->Set(7, fila.cola);
  }
  tabla->UpdateBatch();
  return tabla;
}

std::vector<std::vector<FilaSuelta>> FilasDe(utr::Comunicador& comunicador,
                                             const std::vector<std::vector<std::uint8_t>>& respuestas) {
  std::vector<std::vector<FilaSuelta>> todas;
  for (const auto& respuesta : respuestas) {
    const utr::TablaPtr tabla = comunicador.DecodificarPagina(respuesta, "0#0#1024#0#64", "01/01/2001");
    std::vector<FilaSuelta> filas;
    for (; !tabla->Eof(); tabla->MoveNext()) {
      filas.push_back({tabla->Texto(0), tabla->Texto(1), tabla->Texto(2), tabla->Texto(3), tabla->Texto(4),
                       tabla->Texto(5), tabla->Texto(6), tabla->Texto(7)});
    }
    todas.push_back(std::move(filas));
  }
  return todas;
}

bool MedirLectura(utr::Comunicador& comunicador) {
  std::vector<std::uint8_t> numeros;
  for (int pista = 0; pista < kPistas; ++pista) {
    for (int pagina = 0; pagina < kPaginas; ++pagina) {
      const auto bytes = utr::LeerTextoPagina(
          comunicador.LeerPaginaFlash(static_cast<std::int16_t>(pista), static_cast<std::int16_t>(pagina)));
      numeros.insert(numeros.end(), bytes->begin(), bytes->end());
    }
  }
  std::size_t leidos = 0;
  std::vector<char> bufer(numeros.size() * 4);
  std::size_t escritos = 0;
  return medida::CompararTrabajo(
      "leer_32768_paginas_de_flash", 2.0,
      [&] {
        for (int pista = 0; pista < kPistas; ++pista) {
          for (int pagina = 0; pagina < kPaginas; ++pagina) {
            leidos +=
                comunicador.LeerPaginaFlash(static_cast<std::int16_t>(pista), static_cast<std::int16_t>(pagina)).size();
          }
        }
      },
      [&] {
        char* lugar = bufer.data();
        for (const std::uint8_t numero : numeros) {
          lugar = std::to_chars(lugar, lugar + 4, numero).ptr;
          *lugar++ = ',';
        }
        escritos += static_cast<std::size_t>(lugar - bufer.data());
      },
      31);
}

bool MedirDecodificacion(utr::Comunicador& comunicador) {
  const auto respuestas = RespuestasDeDatos(comunicador);
  const auto filas = FilasDe(comunicador, respuestas);
  std::size_t cuenta = 0;
  return medida::CompararTrabajo(
      "decodificar_las_paginas_de_datos", 2.0,
      [&] {
        for (const auto& respuesta : respuestas) {
          cuenta += comunicador.DecodificarPagina(respuesta, "0#0#1024#0#64", "01/01/2001")->RecordCount();
        }
      },
      [&] {
        for (const auto& pagina : filas) cuenta += FilasSinMas(pagina)->RecordCount();
      },
      7);
}

// The station from nothing and from its state file, in CPU milliseconds: the larger of the two medians.
bool MedirInicio(const std::filesystem::path& carpeta, utr::Reloj& reloj) {
  std::vector<double> de_nuevo;
  std::vector<double> guardada;
  for (int i = 0; i < 7; ++i) {
    std::filesystem::remove(carpeta / "UTRSimulada.estado");
    for (auto* tiempos : {&de_nuevo, &guardada}) {
      const double antes = SegundosDeCpu();
      const utr::ComunicadorSimulado comunicador(carpeta, reloj, {});
      tiempos->push_back((SegundosDeCpu() - antes) * 1000);
    }
  }
  const bool nueva_bien = medida::Informar("inicio_de_la_estacion_nueva_ms", medida::Mediana(de_nuevo), 100);
  return medida::Informar("inicio_de_la_estacion_guardada_ms", medida::Mediana(guardada), 100) && nueva_bien;
}

}  // namespace

int main() {
  utr::RelojSistema reloj;
  const CarpetaDeMedida carpeta;
  const double antes = MebibytesEnUso();
  utr::ComunicadorSimulado comunicador(carpeta.Ruta(), reloj, {});
  bool bien = medida::Informar("memoria_de_la_estacion_en_reposo_mib", MebibytesEnUso() - antes, 24);
  comunicador.Conectar("9600,n,8,1", "1");
  bien = MedirLectura(comunicador) && bien;
  bien = MedirDecodificacion(comunicador) && bien;
  bien = MedirInicio(carpeta.Ruta(), reloj) && bien;
  return bien ? 0 : 1;
}
