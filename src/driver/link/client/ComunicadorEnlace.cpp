#include "driver/link/client/ComunicadorEnlace.h"

#include <algorithm>

#include "driver/ArchivosDelControlador.h"
#include "driver/Dias.h"
#include "driver/TablasDeUnidad.h"
#include "driver/Textos.h"
#include "driver/link/client/InteriorEnlace.h"

namespace utr {

using namespace protocolo;
using enlace::CualMemoria;

namespace {

bool EsPendiente(std::string_view desde, std::string_view hasta) {
  return desde.empty() && hasta.empty();
}

std::vector<std::uint16_t> Argumentos(const std::vector<int>& numeros) {
  std::vector<std::uint16_t> argumentos;
  argumentos.reserve(numeros.size());
  for (const int numero : numeros) argumentos.push_back(static_cast<std::uint16_t>(numero));
  return argumentos;
}

}  // namespace

ComunicadorEnlace::ComunicadorEnlace(Partes partes) : interior_(std::make_unique<Interior>(std::move(partes))) {}

ComunicadorEnlace::~ComunicadorEnlace() = default;

const enlace::Trafico& ComunicadorEnlace::Cuenta() const {
  return interior_->via.Cuenta();
}

std::optional<bool> ComunicadorEnlace::DePractica() {
  return interior_->Preguntar(
      std::optional<bool>(), [&] { return interior_->unidad.DePractica(); }, false);
}

// --- The way ---------------------------------------------------------------------------------------------------------

void ComunicadorEnlace::IdEquipo(std::int32_t identificador) {
  interior_->EnTurno([&] { interior_->unidad.Llamar(identificador); });
}

void ComunicadorEnlace::Conectar(std::string_view enlace, std::string_view puerto) {
  interior_->EnTurno([&] {
    interior_->unidad.Desconocer();
    interior_->via.Conectar(enlace, puerto);
  });
}

void ComunicadorEnlace::Desconectar() {
  interior_->EnTurno([&] {
    interior_->unidad.Desconocer();
    interior_->via.Desconectar();
  });
}

bool ComunicadorEnlace::LlamarTelefono(std::string_view numero, std::string_view comandos) {
  return interior_->EnTurno([&] {
    interior_->unidad.Desconocer();
    return interior_->via.Llamar(numero, comandos);
  });
}

bool ComunicadorEnlace::ModoConexion(bool activo) {
  return interior_->EnTurno([&] { return interior_->via.Rts(activo); });
}

void ComunicadorEnlace::PorIP(bool activo) {
  interior_->EnTurno([&] {
    if (interior_->via.PorIP(activo)) interior_->unidad.Desconocer();
  });
}

void ComunicadorEnlace::DireccionIP(std::string_view direccion) {
  interior_->EnTurno([&] {
    if (interior_->via.DireccionIP(direccion)) interior_->unidad.Desconocer();
  });
}

void ComunicadorEnlace::PuertoIP(std::string_view puerto) {
  interior_->EnTurno([&] {
    if (interior_->via.PuertoIP(puerto)) interior_->unidad.Desconocer();
  });
}

std::string ComunicadorEnlace::ObtenerPuertos() {
  return interior_->via.Ajustes();
}

bool ComunicadorEnlace::EstadoPuerto() {
  return interior_->via.HayPuerto();
}

bool ComunicadorEnlace::EstadoEnlace() {
  return interior_->via.Arriba();
}

void ComunicadorEnlace::Cancelar(bool activo) {
  if (!activo && interior_->en_curso) interior_->espera.Cancelar();
}

void ComunicadorEnlace::Pausa(std::int16_t segundos) {
  interior_->EnTurno([&] { interior_->espera.Pasar(segundos); });
}

// --- Reading ---------------------------------------------------------------------------------------------------------

TablaPtr ComunicadorEnlace::LeerInstantaneos() {
  return interior_->EnTurno([&]() -> TablaPtr {
    const auto trama = interior_->unidad.LeerRegistros(registro::kTrama, kLugaresDeTrama);
    if (!trama) return nullptr;
    return paginas::TablaInstantaneos(std::vector<std::int32_t>(trama->begin(), trama->end()));
  });
}

std::string ComunicadorEnlace::LeerFechaHora() {
  return interior_->Preguntar(std::string(), [&] {
    const auto registros = interior_->unidad.LeerRegistros(registro::kReloj, kLargoDeReloj);
    const auto reloj = registros ? LeerReloj(*registros) : std::nullopt;
    return reloj ? TextoFechaHora(*reloj) : std::string();
  });
}

std::int32_t ComunicadorEnlace::LeerEstado() {
  return interior_->Preguntar(std::int32_t{-1}, [&]() -> std::int32_t {
    const auto estado = interior_->unidad.LeerRegistros(registro::kEstado, 1);
    return estado ? estado->front() : -1;
  });
}

TablaPtr ComunicadorEnlace::LeerAgenda() {
  return interior_->Preguntar(TablaPtr(), [&]() -> TablaPtr {
    const auto imagen = interior_->unidad.LeerImagen(archivo::kAgenda);
    if (!imagen) return nullptr;
    const auto entradas = LeerImagenDeAgenda(*imagen);
    if (!entradas) throw Error(error_enlace::kOtraVersion, "Comunicador", "La UTR da una agenda que no se entiende");
    return TablaDeAgenda(*entradas);
  });
}

TablaPtr ComunicadorEnlace::ConfiguracionAlmacenada(bool) {
  return interior_->EnTurno([&] { return interior_->LeerCanales(); });
}

std::string ComunicadorEnlace::LeerPagina(std::string_view pagina, bool silencioso) {
  const auto numero = NumeroDePagina(pagina);
  if (!numero) return {};
  return interior_->Preguntar(std::string(), [&] {
    interior_->unidad.Intentos(silencioso ? 1 : interior_->partes.plazos.intentos);
    const auto alfinal = [&](void*) { interior_->unidad.Intentos(interior_->partes.plazos.intentos); };
    const std::unique_ptr<void, decltype(alfinal)> reponer(this, alfinal);
    const auto lugar = LugarDePaginaUTR(static_cast<std::uint16_t>(*numero));
    const enlace::Leido leido = interior_->unidad.LeerArchivos({{lugar.archivo, lugar.record, kRegistrosDePaginaUTR}});
    const auto bytes = leido.Bien() ? LeerRecordDePaginaUTR(leido.partes.front()) : std::nullopt;
    return bytes ? TextoPagina(*bytes) : std::string();
  });
}

std::string ComunicadorEnlace::LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) {
  const bool existe = pista >= 0 && pista < kPistasPorMemoria && pagina >= 0 && pagina < kPaginasPorPista;
  if (!existe) return {};
  return interior_->Preguntar(
      std::string(), [&] { return interior_->LeerPaginaFlash(pista, pagina); }, false);
}

TablaPtr ComunicadorEnlace::LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return interior_->EnTurno([&] { return interior_->LeerDatos(CualMemoria::kFlash, desde, hasta, canal + 1); });
}

TablaPtr ComunicadorEnlace::LeerEventos(std::string_view desde, std::string_view hasta) {
  return interior_->EnTurno([&] {
    return EsPendiente(desde, hasta) ? interior_->LeerPendientes()
                                     : interior_->LeerEventos(CualMemoria::kFlash, desde, hasta);
  });
}

TablaPtr ComunicadorEnlace::LeerColaTx(std::string_view desde, std::string_view hasta) {
  return interior_->EnTurno(
      [&] { return interior_->LeerCola(CualMemoria::kFlash, desde, hasta, EsPendiente(desde, hasta)); });
}

TablaPtr ComunicadorEnlace::LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) {
  return interior_->EnTurno([&] { return interior_->LeerDatos(CualMemoria::kCartucho, desde, hasta, canal + 1); });
}

TablaPtr ComunicadorEnlace::LeerEventosCartucho(std::string_view desde, std::string_view hasta) {
  return interior_->EnTurno([&] { return interior_->LeerEventos(CualMemoria::kCartucho, desde, hasta); });
}

TablaPtr ComunicadorEnlace::LeerColaTxCartucho(std::string_view desde, std::string_view hasta) {
  return interior_->EnTurno([&] { return interior_->LeerCola(CualMemoria::kCartucho, desde, hasta, false); });
}

// --- Orders ----------------------------------------------------------------------------------------------------------

bool ComunicadorEnlace::BorrarFlash() {
  return interior_->Ordenar(true, Codigo::kBorrarFlash);
}

bool ComunicadorEnlace::BorrarCartucho() {
  return interior_->Ordenar(true, Codigo::kBorrarCartucho);
}

bool ComunicadorEnlace::ReiniciarAgenda(std::string_view comando) {
  return interior_->Ordenar(comando == "41", Codigo::kReinicioDeAgenda);
}

bool ComunicadorEnlace::ReiniciarUTR(std::string_view comando) {
  return interior_->Ordenar(comando == "14" || comando == "44",
                            comando == "44" ? Codigo::kReinicioDePuesta : Codigo::kReinicio);
}

bool ComunicadorEnlace::GrabarFechaHora() {
  return interior_->Preguntar(false, [&] { return interior_->unidad.PonerEnHora(); });
}

bool ComunicadorEnlace::GrabarEstado(std::string_view flags) {
  const auto bits = LeerPar(flags);
  return interior_->Ordenar(bits && *bits <= 255, Codigo::kEstado, {bits.value_or(std::uint16_t{0})});
}

bool ComunicadorEnlace::EscribirPagina(std::string_view pagina, std::string_view datos) {
  const auto numero = NumeroDePagina(pagina);
  const auto bytes = LeerTextoPagina(datos);
  const bool valida = numero && bytes && !bytes->empty() && bytes->size() <= paginas::kBytesPagina;
  if (!valida) return false;
  const PaginaEscrita escrita{static_cast<std::uint16_t>(*numero), *bytes};
  return interior_->Ordenar(true, Codigo::kPagina, ArgumentosDe(escrita));
}

bool ComunicadorEnlace::GrabarEvento(std::string_view comando, std::string_view datos) {
  const auto pares = LeerDosPares(datos);
  if (comando != "1" || !pares || pares->first > 255) return false;
  return interior_->Ordenar(true, Codigo::kSuceso, {pares->first, pares->second});
}

// No argument at all leaves the stacks as the unit has dealt them out.
bool ComunicadorEnlace::GrabarPilaCanal(std::string_view comando, std::string_view datos) {
  const auto canales = LeerNumeros(datos == "Nada" ? "" : datos, '$', kUltimaEntrada);
  if (comando != "7" || !canales || canales->size() > kMayorArgumentos - 1) return false;
  auto argumentos = Argumentos(*canales);
  if (!datos.empty()) argumentos.insert(argumentos.begin(), static_cast<std::uint16_t>(canales->size()));
  return interior_->Ordenar(true, Codigo::kPilas, argumentos);
}

bool ComunicadorEnlace::GrabarCanalesModificar(std::string_view comando, std::string_view datos) {
  const auto canales = LeerNumeros(datos, '#', kUltimaEntrada);
  const bool valida = comando == "33" && canales && (datos.empty() || datos.back() == '#');
  if (!valida || canales->size() > kMayorArgumentos) return false;
  return interior_->Ordenar(true, Codigo::kCanalesModificar, Argumentos(*canales));
}

bool ComunicadorEnlace::GrabarSalidaDigital(int salida, bool encender) {
  const bool valida = salida == 1 || salida == 2;
  return interior_->Ordenar(valida, Codigo::kSalida,
                            {static_cast<std::uint16_t>(salida), static_cast<std::uint16_t>(encender ? 1 : 0)});
}

bool ComunicadorEnlace::GrabarAgenda(Tabla& tabla) {
  return interior_->Entregar(Codigo::kTomarAgenda, tabla);
}

bool ComunicadorEnlace::GrabarParametrizacion(Tabla& tabla) {
  return interior_->Entregar(Codigo::kTomarParametrizacion, tabla);
}

bool ComunicadorEnlace::GrabarConfiguracion(Tabla& tabla) {
  return interior_->Entregar(Codigo::kTomarConfiguracion, tabla);
}

// --- What needs no link ----------------------------------------------------------------------------------------------

TablaPtr ComunicadorEnlace::DecodificarPagina(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                              std::string_view fecha) {
  return paginas::DecodificarPagina(pagina, descriptor, fecha);
}

TablaPtr ComunicadorEnlace::DecodificarPaginaCola(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                                  std::string_view fecha) {
  return paginas::DecodificarPaginaCola(pagina, descriptor, fecha);
}

std::string ComunicadorEnlace::ConvertirA(std::int16_t numero) {
  return FechaDeDia(numero);
}

std::string ComunicadorEnlace::ConvertirDe(std::int16_t valor) {
  return TextoPar(static_cast<std::uint16_t>(valor));
}

std::int32_t ComunicadorEnlace::DescribirCodigo(std::string_view fecha) {
  return DiaDe(Segundos(ConvertirAFecha(fecha)));
}

void ComunicadorEnlace::EscribirLog(std::string_view linea) noexcept {
  interior_->partes.bitacora.Linea(linea);
}

TablaPtr ComunicadorEnlace::LeerArchivoConfiguracion(std::string_view ruta) {
  return LeerIcf(ruta);
}

TablaPtr ComunicadorEnlace::CargarConfiguracion(std::string_view ruta) {
  return LeerIcf(ruta);
}

bool ComunicadorEnlace::ExportarImp(Tabla& tabla, std::string_view ruta, int tipo) {
  return EscribirImp(tabla, ruta, tipo);
}

}  // namespace utr
