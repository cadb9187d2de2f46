#include "configuration/ListaCanales.h"

#include <array>

#include "base/Numeros.h"
#include "configuration/Canales.h"
#include "configuration/FilasDeCanales.h"

namespace utr {
namespace {

constexpr std::string_view kSinValor = " - ";
constexpr std::uint32_t kAncho = 50;

// Titles and the fields of the list's own table.
constexpr std::array<std::pair<const char*, const char*>, 8> kColumnas = {{
    {"NroCanal", "NroCanal"},
    {"Canal", "Canal"},
    {"Tipo de Entrada", "TipoEntrada"},
    {"Tipo de Sensor", "TipoSensor"},
    {"Parámetro", "Parametro"},
    {"Unidad", "Unidad"},
    {"Alarma", "Alarma"},
    {"Habilitado", "Habilitado"},
}};

std::string_view SiNo(bool si) {
  return si ? "Si" : "No";
}

// A kind beyond 16 bits is as unknown as any other that stands for none.
std::int16_t NumeroDeTipo(std::string_view tipo) {
  constexpr std::int16_t kDesconocido = -1;
  const double numero = Val(tipo);
  return numero >= 0 && numero <= 32767 ? Entero16(numero) : kDesconocido;
}

void AgregarFila(Tabla& lista, const Tabla& canales, std::int16_t canal, Catalogo& catalogo) {
  const std::string tipo = canales.Texto("Tipo");
  const std::string parametro = canales.Texto("Parametro");
  const std::uint8_t flags = LeerFlags(canales.Texto("Flags"));
  const std::array<std::string, kColumnas.size()> celdas = {
      std::to_string(canal),
      NombreCanal(canal),
      TipoEntrada(canal),
      tipo.empty() ? std::string(kSinValor) : DescripcionTipo(tipo, canal),
      parametro.empty() ? std::string(kSinValor) : catalogo.DescripcionParametro(parametro, NumeroDeTipo(tipo)),
      catalogo.DescripcionUnidad(canales.Texto("Unidad")),
      std::string(SiNo(AlarmaHabilitada(flags))),
      std::string(SiNo(CanalHabilitado(flags))),
  };
  lista.AddNew();
  for (std::size_t campo = 0; campo < celdas.size(); ++campo) lista.Set(campo, celdas[campo]);
}

}  // namespace

Columnas ColumnasDeCanales() {
  Columnas columnas;
  for (const auto& [titulo, campo] : kColumnas) columnas.push_back({.titulo = titulo, .campo = campo});
  columnas.front().orden = ClaseOrden::kNumero;
  return columnas;
}

TablaPtr TablaDeLista(Tabla& canales, Catalogo& catalogo) {
  auto lista = std::make_shared<Tabla>();
  for (const auto& [titulo, campo] : kColumnas) lista->Append(campo, TipoCampo::kVarChar, kAncho);
  lista->Open();
  if (canales.RecordCount() > 0) canales.MoveFirst();
  for (; !canales.Eof(); canales.MoveNext()) {
    if (const auto canal = NumeroDeFila(canales.Texto("Canal"))) AgregarFila(*lista, canales, *canal, catalogo);
  }
  lista->UpdateBatch();
  return lista;
}

}  // namespace utr
