#include "configuration/VerificacionEscritura.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "base/Texto.h"
#include "configuration/CambiosConfiguracion.h"
#include "configuration/FilasDeCanales.h"

namespace utr {
namespace {

constexpr std::string_view kSinComparar[] = {"Modificado", "Pila", "Pagina", "Canal"};
constexpr std::size_t kDiferenciasALaVista = 20;

bool SeCompara(std::string_view columna) {
  return std::none_of(std::begin(kSinComparar), std::end(kSinComparar),
                      [columna](std::string_view otra) { return IgualSinCaso(columna, otra); });
}

struct ColumnaComparada {
  std::string nombre;
  std::size_t escrita;
  int releida;    // -1: the unit's table lacks it
  bool con_coma;  // a number in the written table: its text may bear the comma of another machine
};

std::vector<ColumnaComparada> ColumnasDe(const Tabla& escrita, const Tabla& releida) {
  std::vector<ColumnaComparada> columnas;
  for (std::size_t i = 0; i < escrita.FieldCount(); ++i) {
    const Campo& campo = escrita.Field(i);
    if (!SeCompara(campo.nombre)) continue;
    columnas.push_back({campo.nombre, i, releida.BuscarCampo(campo.nombre), ClaseDe(campo.tipo) == Clase::kDoble});
  }
  return columnas;
}

// The first row of each channel; none in a table that doesn't tell channels.
std::map<std::int16_t, std::size_t> FilasPorCanal(Tabla& tabla) {
  std::map<std::int16_t, std::size_t> filas;
  if (tabla.BuscarCampo("Canal") < 0) return filas;
  for (; !tabla.Eof(); tabla.MoveNext()) {
    if (const auto canal = NumeroDeFila(tabla.Texto("Canal"))) filas.emplace(*canal, tabla.Filas().Actual());
  }
  return filas;
}

class Comparacion {
 public:
  Comparacion(const Tabla& escrita, const Tabla& releida)
      : escrita_(escrita.Clone()), releida_(releida.Clone()), columnas_(ColumnasDe(escrita, releida)) {}

  VerificacionEscritura Hacer() {
    const auto releidas = FilasPorCanal(*releida_);
    for (const auto& [canal, fila] : FilasPorCanal(*escrita_)) {
      const auto releida = releidas.find(canal);
      if (releida == releidas.end()) {
        resultado_.diferencias.push_back({canal, RotuloDeColumna("Canal"), std::to_string(canal), "no está"});
      } else {
        CompararFila(canal, fila, releida->second);
      }
      resultado_.valores += columnas_.size();
    }
    return std::move(resultado_);
  }

 private:
  void CompararFila(std::int16_t canal, std::size_t escrita, std::size_t releida) {
    for (const ColumnaComparada& columna : columnas_) {
      const std::string escrito = escrita_->Filas().Texto(escrita, columna.escrita);
      if (columna.releida < 0) {
        resultado_.diferencias.push_back({canal, RotuloDeColumna(columna.nombre), escrito, "no está"});
        continue;
      }
      const std::string leido = releida_->Filas().Texto(releida, static_cast<std::size_t>(columna.releida));
      if (!MismoValor(escrito, columna.con_coma ? Reemplazar(leido, ",", ".") : leido))
        resultado_.diferencias.push_back({canal, RotuloDeColumna(columna.nombre), escrito, leido});
    }
  }

  TablaPtr escrita_;
  TablaPtr releida_;
  std::vector<ColumnaComparada> columnas_;
  VerificacionEscritura resultado_;
};

std::string Linea(const DiferenciaEscritura& diferencia) {
  return fmt::format("{} - {} escrito \"{}\", leído \"{}\"\n", NombreCanal(diferencia.canal),
                     Recortar(diferencia.campo), diferencia.escrito, diferencia.leido);
}

std::string Lineas(const std::vector<DiferenciaEscritura>& diferencias) {
  if (diferencias.empty()) return {};
  std::string texto = diferencias.size() == 1
                          ? "Un valor releído de la UTR difiere de lo escrito:\n"
                          : fmt::format("{} valores releídos de la UTR difieren de lo escrito:\n", diferencias.size());
  const std::size_t vistas = std::min(diferencias.size(), kDiferenciasALaVista);
  for (std::size_t i = 0; i < vistas; ++i) texto += Linea(diferencias[i]);
  if (diferencias.size() > vistas) texto += fmt::format("... y {} más\n", diferencias.size() - vistas);
  return texto;
}

}  // namespace

VerificacionEscritura Verificar(const Tabla& escrita, const Tabla& releida) {
  return Comparacion(escrita, releida).Hacer();
}

std::string LineaVerificada(const VerificacionEscritura& verificacion) {
  return fmt::format("{} valores escritos y verificados", verificacion.valores);
}

std::string AvisoDeVerificacion(const VerificacionEscritura& verificacion, std::optional<PasoEscritura> fallo,
                                const std::filesystem::path& respaldo) {
  if (!fallo && verificacion.Iguales()) return {};
  std::string texto;
  if (fallo) texto += fmt::format("La escritura no está completa: falló el paso \"{}\"\n", NombreDePaso(*fallo));
  texto += Lineas(verificacion.diferencias);
  return texto + (respaldo.empty() ? "No hay un respaldo de la configuración anterior"
                                   : "La configuración anterior está respaldada en " + respaldo.string());
}

}  // namespace utr
