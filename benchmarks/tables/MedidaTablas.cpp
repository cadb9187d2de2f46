// Budgets of the table service, on tables as a station's records fill them.
#include <algorithm>
#include <cstdio>

#include "benchmarks/Presupuesto.h"
#include "benchmarks/tables/Referencias.h"

namespace {

using medida::Variedad;
namespace fs = std::filesystem;

// A folder of its own, which goes away afterwards.
class Carpeta {
 public:
  Carpeta() { fs::create_directories(ruta_); }
  ~Carpeta() { fs::remove_all(ruta_); }
  Carpeta(const Carpeta&) = delete;
  Carpeta& operator=(const Carpeta&) = delete;
  fs::path operator/(const char* nombre) const { return ruta_ / nombre; }

 private:
  fs::path ruta_ = fs::temp_directory_path() / fmt::format("adminutr-medida-{}", ::getpid());
};

struct Caso {
  const char* nombre;
  Variedad variedad;
  bool pendientes;
};
constexpr Caso kCasos[] = {{"cuentas", Variedad::kCuentas, false},
                           {"distintos", Variedad::kDistinta, false},
                           {"cuentas_pendientes", Variedad::kCuentas, true},
                           {"distintos_pendientes", Variedad::kDistinta, true}};

double Mebibytes(const utr::Tabla& tabla) {
  return static_cast<double>(tabla.Memoria()) / (1024.0 * 1024.0);
}

std::string Nombre(const char* que, const std::string& caso) {
  return fmt::format("tabla_{}_{}", que, caso);
}

bool MedirGuardar(const Carpeta& carpeta, const Caso& caso, const utr::Tabla& tabla) {
  const fs::path ruta = carpeta / "t.xml";
  const fs::path plano = carpeta / "plano.xml";
  medida::EscrituraMinima minima(tabla, caso.pendientes);
  const bool bien = medida::CompararTrabajo(
      Nombre("guardar", caso.nombre).c_str(), 1.0, [&] { tabla.GuardarSobre(ruta); }, [&] { minima.Escribir(plano); });
  if (medida::LeerTodo(plano) == medida::LeerTodo(ruta)) return bien;
  std::fprintf(stderr, "the compared work writes other bytes\n");
  return false;
}

// The same file as a document object writes it.
void CambiarComillas(const fs::path& de, const fs::path& a) {
  std::string texto = medida::LeerTodo(de);
  std::replace(texto.begin(), texto.end(), '\'', '"');
  std::ofstream(a, std::ios::binary) << texto;
}

template <medida::Busqueda kBusqueda>
bool SonIguales(const utr::Tabla& leida, const medida::LecturaMinima<kBusqueda>& minima) {
  if (leida.RecordCount() != minima.Filas() || leida.FieldCount() != minima.Columnas().size()) return false;
  for (std::size_t campo = 0; campo < leida.FieldCount(); ++campo) {
    const auto& columna = minima.Columnas()[campo];
    for (std::size_t fila = 0; fila < minima.Filas(); ++fila) {
      const std::uint32_t numero = columna.numeros[fila];
      if (leida.Filas().Texto(fila, campo) != (numero == 0 ? "" : columna.textos.Texto(numero))) return false;
    }
  }
  return true;
}

// Against whichever of the two ways to look texts up takes less for this file.
bool MedirAbrir(const std::string& caso, const fs::path& ruta) {
  using Enseguida = medida::LecturaMinima<medida::Busqueda::kEnseguida>;
  using Anticipada = medida::LecturaMinima<medida::Busqueda::kAnticipada>;
  std::size_t suma = 0;
  const bool bien =
      medida::CompararTrabajo(Nombre("abrir", caso).c_str(), 1.5,
                              [&] {
                                utr::Tabla leida;
                                leida.Open(ruta);
                                suma += leida.RecordCount();
                              },
                              {[&] { suma += Enseguida(ruta).Filas(); }, [&] { suma += Anticipada(ruta).Filas(); }});
  utr::Tabla leida;
  leida.Open(ruta);
  if (suma > 0 && SonIguales(leida, Enseguida(ruta)) && SonIguales(leida, Anticipada(ruta))) return bien;
  std::fprintf(stderr, "the compared work reads another table\n");
  return false;
}

bool MedirMemoria(const Caso& caso, utr::Tabla& tabla, const fs::path& ruta) {
  utr::Tabla leida;
  leida.Open(ruta);
  const double recien_leida = Mebibytes(leida);
  tabla.Filter("Valor='0.000'");
  tabla.Filter("");
  tabla.Sort("Valor");
  const double en_uso = Mebibytes(tabla);
  tabla.Sort("");
  const double limite = caso.variedad == Variedad::kCuentas ? 32 : 64;
  return medida::Informar(Nombre("memoria_mib", caso.nombre).c_str(), std::max(recien_leida, en_uso), limite);
}

// Every column with as many texts as a converter gives.
bool MedirMemoriaPeor() {
  utr::Tabla tabla;
  for (const char* campo : medida::kCampos) tabla.Append(campo, utr::TipoCampo::kVarChar, 50);
  tabla.Open();
  tabla.Reservar(medida::kFilas);
  for (std::size_t fila = 0; fila < medida::kFilas; ++fila) {
    tabla.AddNew();
    for (std::size_t campo = 0; campo < medida::kCampos.size(); ++campo)
      tabla.Set(campo, fmt::format("{:.3f}", medida::Medicion(fila, campo, Variedad::kCuentas) / 1000.0));
  }
  return medida::Informar("tabla_memoria_mib_31000_en_cada_campo", Mebibytes(tabla), 32);
}

bool MedirCaso(const Caso& caso) {
  const Carpeta carpeta;
  const auto tabla = medida::Construir(caso.variedad);
  if (!caso.pendientes) tabla->UpdateBatch();
  bool bien = MedirGuardar(carpeta, caso, *tabla);
  bien &= MedirMemoria(caso, *tabla, carpeta / "t.xml");
  bien &= MedirAbrir(caso.nombre, carpeta / "t.xml");
  CambiarComillas(carpeta / "t.xml", carpeta / "dobles.xml");
  return MedirAbrir(std::string(caso.nombre) + "_comillas_dobles", carpeta / "dobles.xml") && bien;
}

// One column without a text twice, of which every filter finds its row.
utr::TablaPtr Numerada(std::size_t filas) {
  auto tabla = std::make_shared<utr::Tabla>();
  tabla->Append("Valor", utr::TipoCampo::kVarChar, 10);
  tabla->Open();
  for (std::size_t fila = 0; fila < filas; ++fila) {
    tabla->AddNew();
    tabla->Set(0, std::to_string(fila));
  }
  tabla->UpdateBatch();
  return tabla;
}

constexpr std::size_t kFiltros = 20000;
constexpr int kTurnos = 31;  // they are short

// The row whose turn it is: one of a few that lie all over the table, however long it is. Not at distances of a power
// of two, which would have them push each other out of the cache.
std::size_t Turno(std::size_t i, std::size_t filas) {
  constexpr std::size_t kVisitadas = 64;
  const std::size_t visitada = i * 40503U % kVisitadas;
  const std::size_t distancia = filas / kVisitadas;
  return visitada * distancia + visitada * 37 % distancia;
}

void Filtrar(utr::Tabla& tabla, std::size_t filas) {
  for (std::size_t i = 0; i < kFiltros; ++i) {
    tabla.Filter("Valor='" + std::to_string(Turno(i, filas)) + "'");
    if (tabla.RecordCount() != 1) std::abort();
  }
}

// Each row that a filter finds gets another text and its former one again.
void FiltrarYCambiar(utr::Tabla& tabla, std::size_t filas) {
  for (std::size_t i = 0; i < kFiltros; ++i) {
    const std::string texto = std::to_string(Turno(i, filas));
    tabla.Filter("Valor='" + texto + "'");
    tabla.Set(0, "cambiado");
    tabla.Filter("Valor='cambiado'");
    if (tabla.RecordCount() != 1) std::abort();
    tabla.Set(0, texto);
  }
}

// What a filter costs doesn't depend on the rows that it doesn't find.
bool MedirFiltros() {
  constexpr std::size_t kPocas = medida::kFilas / 64;
  const auto muchas = Numerada(medida::kFilas);
  const auto pocas = Numerada(kPocas);
  const bool bien = medida::CompararTrabajo(
      "tabla_filtrar_64_veces_mas_filas", 1.5, [&] { Filtrar(*muchas, medida::kFilas); },
      [&] { Filtrar(*pocas, kPocas); }, kTurnos);
  return medida::CompararTrabajo(
             "tabla_filtrar_y_cambiar_64_veces_mas_filas", 1.5, [&] { FiltrarYCambiar(*muchas, medida::kFilas); },
             [&] { FiltrarYCambiar(*pocas, kPocas); }, kTurnos) &&
         bien;
}

}  // namespace

int main() {
  bool bien = true;
  for (const Caso& caso : kCasos) bien &= MedirCaso(caso);
  bien &= MedirMemoriaPeor();
  bien &= MedirFiltros();
  return bien ? 0 : 1;
}
