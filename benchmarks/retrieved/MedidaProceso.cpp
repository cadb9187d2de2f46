// Budgets of the processing of recovery files: one of a whole flash against the work that nobody can do without, and
// ten of them against one.
#include <charconv>
#include <cstdio>
#include <cstdlib>

#include "base/Archivos.h"
#include "base/Numeros.h"
#include "benchmarks/Presupuesto.h"
#include "benchmarks/retrieved/Volcado.h"

namespace {

constexpr int kVarios = 10;

// A cell of a result: a number of three decimals still to be formatted, or a text that lies ready.
struct Celda {
  std::string texto;
  double numero = 0;
  bool es_numero = false;
};

// The rows of a result file, and its fields.
struct Resultado {
  std::vector<std::string> campos;
  std::vector<Celda> celdas;
};

Celda CeldaDe(const std::string& texto) {
  const bool es_numero = texto.size() > 4 && texto[texto.size() - 4] == '.' && utr::EsNumerico(texto);
  return {texto, es_numero ? utr::LeerDoble(texto) : 0, es_numero};
}

std::vector<Resultado> LeerResultados(const std::filesystem::path& carpeta) {
  std::vector<Resultado> todos;
  for (const auto& entrada : std::filesystem::directory_iterator(carpeta)) {
    if (entrada.path().extension() != ".xml") continue;
    utr::Tabla tabla;
    tabla.Open(entrada.path());
    Resultado& resultado = todos.emplace_back();
    for (std::size_t campo = 0; campo < tabla.FieldCount(); ++campo)
      resultado.campos.push_back(" " + tabla.Field(campo).nombre + "='");
    for (std::size_t fila = 0; fila < tabla.RecordCount(); ++fila) {
      for (std::size_t campo = 0; campo < tabla.FieldCount(); ++campo)
        resultado.celdas.push_back(CeldaDe(tabla.Filas().Texto(fila, campo)));
    }
  }
  return todos;
}

std::string LeerTodo(const std::filesystem::path& ruta) {
  std::string texto(std::filesystem::file_size(ruta), '\0');
  std::ifstream(ruta, std::ios::binary).read(texto.data(), static_cast<std::streamsize>(texto.size()));
  return texto;
}

// The numbers of a line as bytes of a reply; where the text goes on behind them.
const char* LeerNumeros(const char* lugar, std::array<std::uint8_t, 78>& respuesta) {
  std::size_t byte = 13;
  unsigned numero = 0;
  for (;; ++lugar) {
    if (*lugar >= '0' && *lugar <= '9') {
      numero = numero * 10 + static_cast<unsigned>(*lugar - '0');
    } else if (*lugar == ',' || *lugar == '#') {
      if (*lugar == '#') return lugar + 1;
      respuesta[byte++] = static_cast<std::uint8_t>(numero);
      numero = 0;
    }
  }
}

// Reads the file, turns its numbers into bytes and has them decoded, nothing else.
std::size_t LeerYDecodificar(const std::filesystem::path& ruta, utr::Comunicador& comunicador) {
  const std::string texto = LeerTodo(ruta);
  std::array<std::uint8_t, 78> respuesta{};
  std::size_t filas = 0;
  const char* fin = texto.data() + texto.size();
  for (const char* lugar = texto.data(); lugar < fin; ++lugar) {
    const char* salto = lugar;
    while (*salto != '\n') ++salto;
    if (salto - lugar > 50) {
      const int pista = std::atoi(LeerNumeros(lugar, respuesta));
      const bool cola = pista >= 27 && pista < 30;
      filas += (cola ? comunicador.DecodificarPaginaCola(respuesta, "1#0#1024#0#64", "01/01/2001")
                     : comunicador.DecodificarPagina(respuesta, "1#0#1024#0#64", "01/01/2001"))
                   ->RecordCount();
    }
    lugar = salto;
  }
  return filas;
}

void Agregar(const Celda& celda, std::string& texto) {
  if (!celda.es_numero) {
    texto += celda.texto;
    return;
  }
  char cifras[32];
  texto.append(cifras, std::to_chars(cifras, cifras + sizeof cifras, celda.numero, std::chars_format::fixed, 3).ptr);
}

// Formats the rows into one buffer and writes it as the results are written: whole, and on the disk.
void FormatearYEscribir(const Resultado& resultado, const std::filesystem::path& ruta) {
  std::string texto;
  const std::size_t n = resultado.campos.size();
  for (std::size_t celda = 0; celda < resultado.celdas.size();) {
    texto += "\t\t<z:row";
    for (std::size_t campo = 0; campo < n; ++campo, ++celda) {
      texto += resultado.campos[campo];
      Agregar(resultado.celdas[celda], texto);
      texto += '\'';
    }
    texto += "/>\r\n";
  }
  utr::EscribirEntero(
      ruta, [&](std::ostream& salida) { salida.write(texto.data(), static_cast<std::streamsize>(texto.size())); });
}

}  // namespace

int main() {
  medida::Taller taller;
  for (int orden = 0; orden < kVarios; ++orden) medida::Volcar(taller.Archivo(orden), orden);
  const utr::ResultadoProceso una = taller.Procesar(1);
  const auto filas = una.informe.Filas();
  if (una.informe.Lineas()[utr::FinLinea::kDatos] != utr::kPaginasFlash || !una.informe.FilasCuadran() ||
      filas[utr::FinFila::kGuardada] != 27U * 1024 * 6 + 3U * 1024 * 5 + 2U * 1024 * 6) {
    std::fprintf(stderr, "the files aren't what they should be\n");
    return 2;
  }
  const std::vector<Resultado> resultados = LeerResultados(taller.Resultados());
  std::size_t suma = 0;
  bool bien = medida::Comparar(
      "procesar_una_flash_entera", 2.0, [&] { taller.Procesar(1); },
      [&] {
        suma += LeerYDecodificar(taller.Archivo(0), taller.Driver());
        for (std::size_t i = 0; i < resultados.size(); ++i)
          FormatearYEscribir(resultados[i], taller.Resultados() / fmt::format("plano{}", i));
      },
      7);
  bien &= medida::Comparar(
      "procesar_diez_archivos_contra_uno", 11.0, [&] { taller.Procesar(kVarios); }, [&] { taller.Procesar(1); }, 3);
  return bien && suma > 0 ? 0 : 1;
}
