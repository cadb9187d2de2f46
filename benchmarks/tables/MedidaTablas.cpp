#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <pugixml.hpp>

#include "benchmarks/Presupuesto.h"
#include "tables/Tabla.h"

// Budgets of the table service, on a table like the one that a month of records fills.
namespace {

constexpr std::size_t kFilas = 262144;
constexpr double kMebibyte = 1024.0 * 1024.0;

const char* const kCampos[] = {"Fecha",  "Hora",       "Canal",  "Valor",       "Maximo",
                               "Minimo", "Validacion", "ColaTX", "Descripcion", "Unidad"};

// The text of one cell: dates and names repeat by the thousand, values follow a daily curve in three decimals.
std::string Celda(std::size_t fila, std::size_t campo) {
  const auto valor = [&](std::size_t mas) {
    return fmt::format("{}.{:03}", (fila * 7 + mas) % 31, (fila * 13 + mas) % 1000);
  };
  switch (campo) {
    case 0:
      return fmt::format("{:02}/{:02}/2026", fila / 1440 % 28 + 1, fila / 40320 % 12 + 1);
    case 1:
      return fmt::format("{:02}:{:02}:00", fila / 60 % 24, fila % 60);
    case 2:
      return fmt::format("EA{:02}", fila % 9 + 1);
    case 3:
    case 4:
    case 5:
      return valor(campo);
    case 8:
      return "Temperatura del aire";
    case 9:
      return "°C";
    default:
      return "1";
  }
}

utr::TablaPtr Construir() {
  auto tabla = std::make_shared<utr::Tabla>();
  for (const char* campo : kCampos) tabla->Append(campo, utr::TipoCampo::kVarChar, 50);
  tabla->Open();
  tabla->Reservar(kFilas);
  for (std::size_t fila = 0; fila < kFilas; ++fila) {
    tabla->AddNew();
    for (std::size_t campo = 0; campo < std::size(kCampos); ++campo) tabla->Set(campo, Celda(fila, campo));
  }
  tabla->UpdateBatch();
  return tabla;
}

// The rows of the file, formatted into one buffer and written: what a program does that has nothing but texts.
void FormatearYEscribir(const std::vector<std::string>& celdas, const std::filesystem::path& ruta) {
  fmt::memory_buffer buffer;
  const std::size_t n = std::size(kCampos);
  for (std::size_t fila = 0; fila < kFilas; ++fila) {
    fmt::format_to(std::back_inserter(buffer), "\t<z:row");
    for (std::size_t campo = 0; campo < n; ++campo) {
      fmt::format_to(std::back_inserter(buffer), " {}='{}'", kCampos[campo], celdas[fila * n + campo]);
    }
    fmt::format_to(std::back_inserter(buffer), "/>\r\n");
  }
  std::ofstream(ruta, std::ios::binary).write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
}

std::size_t CargarYRecorrer(const std::filesystem::path& ruta) {
  pugi::xml_document documento;
  if (!documento.load_file(ruta.c_str())) std::abort();
  std::size_t bytes = 0;
  for (const auto fila : documento.document_element().child("rs:data").children()) {
    for (const auto atributo : fila.attributes()) bytes += std::char_traits<char>::length(atributo.value());
  }
  return bytes;
}

}  // namespace

int main() {
  const auto carpeta = std::filesystem::temp_directory_path() / fmt::format("adminutr-medida-{}", ::getpid());
  std::filesystem::create_directories(carpeta);
  const auto tabla = Construir();
  std::vector<std::string> celdas;
  celdas.reserve(kFilas * std::size(kCampos));
  for (std::size_t fila = 0; fila < kFilas; ++fila) {
    for (std::size_t campo = 0; campo < std::size(kCampos); ++campo) celdas.push_back(Celda(fila, campo));
  }

  bool bien = medida::Informar("tabla_memoria_mib", static_cast<double>(tabla->Memoria()) / kMebibyte, 32);
  bien &= medida::Comparar(
      "tabla_guardar", 1.5,
      [&] {
        std::filesystem::remove(carpeta / "t.xml");
        tabla->Save(carpeta / "t.xml");
      },
      [&] { FormatearYEscribir(celdas, carpeta / "plano.xml"); }, 7);
  std::size_t suma = 0;
  bien &= medida::Comparar(
      "tabla_abrir", 1.5,
      [&] {
        utr::Tabla leida;
        leida.Open(carpeta / "t.xml");
        suma += leida.RecordCount();
      },
      [&] { suma += CargarYRecorrer(carpeta / "t.xml"); }, 7);
  if (suma == 0) return 2;

  // A filter once a record stays constant: the same number of filters over ten times the rows.
  const auto chica = std::make_shared<utr::Tabla>();
  chica->Append("Hora", utr::TipoCampo::kVarChar, 10);
  chica->Open();
  for (std::size_t fila = 0; fila < kFilas / 64; ++fila) {
    chica->AddNew();
    chica->Set(0, Celda(fila % 1440, 1));
  }
  const auto filtrar = [](utr::Tabla& t, std::size_t cada) {
    for (std::size_t i = 0; i < 20000; ++i) {
      t.Filter("Hora='" + std::to_string(i % cada) + "'");
      if (!t.Eof()) std::abort();
    }
  };
  tabla->Filter("Hora='x'");
  bien &= medida::Comparar(
      "tabla_filtrar_64_veces_mas_filas", 1.5, [&] { filtrar(*tabla, 997); }, [&] { filtrar(*chica, 997); });
  std::filesystem::remove_all(carpeta);
  return bien ? 0 : 1;
}
