#include "driver/TablasDeUnidad.h"

#include <cmath>

#include "base/Numeros.h"
#include "base/Texto.h"
#include "driver/TablasEntregadas.h"

namespace utr {

namespace {

constexpr int kMinutosDia = 1440;

std::vector<ColumnaCanal> ArmarColumnas() {
  std::vector<ColumnaCanal> columnas(kColumnasDeCanal.begin(), kColumnasDeCanal.end());
  columnas.push_back({"Nombre", TipoCampo::kVarChar, 30});
  for (const char* marca : {"TDirV", "TVelV"}) columnas.push_back({marca, TipoCampo::kVarChar, 2});
  return columnas;
}

const char* SiNo(bool valor) {
  return valor ? "Si" : "No";
}

// A table whose rows are all in, posted and on its first row.
TablaPtr Terminada(TablaPtr tabla) {
  tabla->UpdateBatch();
  if (tabla->RecordCount() > 0) tabla->MoveFirst();
  return tabla;
}

}  // namespace

const std::vector<ColumnaCanal>& ColumnasDeUnidad() {
  static const std::vector<ColumnaCanal> kColumnas = ArmarColumnas();
  return kColumnas;
}

std::size_t LugarDeColumna(std::string_view columna) {
  const auto& columnas = ColumnasDeUnidad();
  for (std::size_t i = 0; i < columnas.size(); ++i) {
    if (IgualSinCaso(columnas[i].nombre, columna)) return i;
  }
  return columnas.size();
}

double NumeroDeTexto(std::string_view texto) {
  return Val(Reemplazar(texto, ",", "."));
}

TablaPtr TablaDeCanales(std::span<const std::vector<std::string>> filas) {
  const auto& columnas = ColumnasDeUnidad();
  const std::size_t tipo = LugarDeColumna("Tipo");
  const std::size_t lluvia = LugarDeColumna("CtePluvi");
  auto tabla = std::make_shared<Tabla>();
  for (const ColumnaCanal& columna : columnas) tabla->Append(columna.nombre, columna.tipo, columna.tamano);
  tabla->Open();
  for (const auto& fila : filas) {
    tabla->AddNew();
    for (std::size_t c = 0; c < columnas.size(); ++c) {
      if (columnas[c].tipo == TipoCampo::kVarChar) tabla->Set(c, fila[c]);
    }
    tabla->Set(lluvia, Valor{NumeroDeTexto(fila[lluvia])});
    tabla->Set("Modificado", Valor{false});
    tabla->Set("TDirV", SiNo(LeerTipo(fila[tipo]) == TipoSensor::kDireccionViento));
    tabla->Set("TVelV", SiNo(LeerTipo(fila[tipo]) == TipoSensor::kVelocidadViento));
  }
  return Terminada(std::move(tabla));
}

TablaPtr TablaDeAgenda(std::span<const EntradaAgenda> entradas) {
  auto tabla = std::make_shared<Tabla>();
  tabla->Append("HorarioInteger", TipoCampo::kEntero, 4);
  tabla->Append("Descripcion", TipoCampo::kVarChar, 50);
  for (const char* campo : {"TCond", "TOblig", "TWind"}) tabla->Append(campo, TipoCampo::kVarChar, 3);
  tabla->Open();
  for (const EntradaAgenda& e : entradas) {
    tabla->AddNew();
    if (e.minuto >= 0) tabla->Set("HorarioInteger", Valor{std::int64_t{e.minuto}});
    tabla->Set("Descripcion", e.descripcion);
    tabla->Set("TCond", SiNo(e.condicional));
    tabla->Set("TOblig", SiNo(e.obligatoria));
    tabla->Set("TWind", SiNo(e.ventana));
  }
  return Terminada(std::move(tabla));
}

std::optional<std::vector<EntradaAgenda>> LeerEntradasDeAgenda(const Tabla& tabla) {
  const TablaPtr clon = ALaVista(tabla);
  const std::size_t campo_minuto = clon->IndiceCampo("HorarioInteger");
  std::vector<EntradaAgenda> entradas;
  for (; !clon->Eof(); clon->MoveNext()) {
    const std::string texto = clon->Texto(campo_minuto);
    const double minuto = EsNumerico(texto) ? LeerDoble(texto) : -1;
    if (minuto < 0 || minuto >= kMinutosDia || minuto != std::floor(minuto)) return std::nullopt;
    entradas.push_back({.minuto = static_cast<int>(minuto),
                        .obligatoria = clon->Texto("TOblig") == "Si",
                        .ventana = clon->Texto("TWind") == "Si",
                        .condicional = clon->Texto("TCond") == "Si"});
  }
  return entradas;
}

}  // namespace utr
