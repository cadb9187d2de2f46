#include "driver/simulated/ArchivosDelControlador.h"

#include "base/Error.h"
#include "base/Texto.h"
#include "driver/TablasEntregadas.h"
#include "driver/simulated/Canales.h"

namespace utr::simulada {

namespace {

constexpr std::string_view kOpcional = "Modificado";

struct CampoImp {
  const char* nombre;
  const char* origen;
  std::uint32_t tamano;
};
constexpr CampoImp kDatos[] = {{"canal", "Canal", 10},
                               {"Valor", "Valor", 50},
                               {"Maximo", "Maximo", 50},
                               {"Minimo", "Minimo", 50},
                               {"Validacion", "Validacion", 3}};
constexpr CampoImp kEventos[] = {{"Codigo", "Codigo", 50}, {"Valor1", "Valor1", 50}, {"Valor2", "Valor2", 50}};

std::string TextoSiEsta(const Tabla& tabla, const char* campo) {
  const int lugar = tabla.BuscarCampo(campo);
  return lugar < 0 ? std::string{} : tabla.Texto(static_cast<std::size_t>(lugar));
}

// Date and time of a row, as far as it has them.
std::string FechaDeFila(const Tabla& tabla) {
  const std::string fecha = TextoSiEsta(tabla, "Fecha") + " " + TextoSiEsta(tabla, "Hora");
  return std::string{Recortar(fecha)};
}

}  // namespace

TablaPtr LeerIcf(const std::filesystem::path& ruta) {
  auto tabla = std::make_shared<Tabla>();
  tabla->Open(ruta);
  for (const ColumnaCanal& columna : kColumnasDeCanal) {
    if (columna.nombre == kOpcional || tabla->BuscarCampo(columna.nombre) >= 0) continue;
    throw Error(error::kArchivo, "Comunicador",
                "El archivo de configuración no tiene la columna " + std::string{columna.nombre});
  }
  return tabla;
}

bool EscribirImp(Tabla& tabla, const std::filesystem::path& ruta, int tipo) {
  if (tipo != 0 && tipo != 1) return false;
  const std::span<const CampoImp> campos =
      tipo == 1 ? std::span<const CampoImp>{kDatos} : std::span<const CampoImp>{kEventos};
  Tabla imp;
  imp.Append("Tipo", TipoCampo::kEntero, 4);
  imp.Append("Fecha", TipoCampo::kVarChar, 36);
  for (const CampoImp& campo : campos) imp.Append(campo.nombre, TipoCampo::kVarChar, campo.tamano);
  imp.Open();
  imp.Reservar(tabla.RecordCount());
  for (const TablaPtr filas = ALaVista(tabla); !filas->Eof(); filas->MoveNext()) {
    imp.AddNew();
    imp.Set("Tipo", Valor{std::int64_t{tipo}});
    imp.Set("Fecha", FechaDeFila(*filas));
    for (const CampoImp& campo : campos) imp.Set(campo.nombre, TextoSiEsta(*filas, campo.origen));
  }
  imp.UpdateBatch();
  imp.GuardarSobre(ruta);
  return true;
}

}  // namespace utr::simulada
