#include "driver/simulated/station/Despachador.h"

#include <algorithm>

#include "base/Error.h"
#include "driver/simulated/station/Ejecutor.h"

namespace utr::simulada {

using namespace protocolo;

namespace {

constexpr std::uint16_t kMayorRegistroDeOrden = kRegistrosDeOrden + kMayorArgumentos + 2;
constexpr std::size_t kPrimerLugarDeSalidas = 35;  // of the frame: SD1, and the two outputs behind it

std::uint16_t Registro(std::int64_t numero) {
  return static_cast<std::uint16_t>(std::clamp<std::int64_t>(numero, 0, 0xFFFF));
}

// A run of bytes out of what `record` gives for each record, from the first register of one on.
template <class Record>
Bytes Juntar(const PedidoDeArchivo& parte, const Record& record) {
  Bytes bytes;
  for (std::size_t n = parte.record; bytes.size() < 2 * std::size_t{parte.registros}; ++n) {
    const auto siguiente = record(n);
    bytes.insert(bytes.end(), siguiente.begin(), siguiente.end());
  }
  bytes.resize(2 * std::size_t{parte.registros});
  return bytes;
}

// Whether a part lies within a file of so many records.
bool Cabe(const PedidoDeArchivo& parte, std::size_t records, std::size_t registros_por_record) {
  return parte.registros > 0 && parte.record < records &&
         parte.record * registros_por_record + parte.registros <= records * registros_por_record;
}

std::optional<Bytes> ParteDe(const PedidoDeArchivo& parte, const Bytes& archivo) {
  if (!Cabe(parte, archivo.size() / kBytesPorPieza, kRegistrosPorPagina)) return std::nullopt;
  const auto desde = archivo.begin() + static_cast<std::ptrdiff_t>(parte.record * kBytesPorPieza);
  return Bytes(desde, desde + 2 * std::ptrdiff_t{parte.registros});
}

std::optional<Bytes> ParteDePista(const PedidoDeArchivo& parte, const Memoria& memoria, int pista) {
  if (!Cabe(parte, kPaginasPorPista, kRegistrosPorPagina)) return std::nullopt;
  return Juntar(parte, [&](std::size_t pagina) { return memoria.PaginaEn(pista, static_cast<int>(pagina)); });
}

Bytes ArchivoDeCanales(Canales& canales) {
  const FilasDeCanales filas{std::vector<bool>(ColumnasDeUnidad().size(), true), canales.Filas()};
  return ArchivoDe(ImagenDe(filas).value_or(Bytes{}));
}

}  // namespace

Despachador::Despachador(EstacionViva& viva) : viva_(viva), libro_(viva.estado.ordenes) {
  if (!libro_.HayEnCurso()) return;
  libro_.Resolver(EstadoDeOrden::kRechazada, Motivo::kInterrumpida);
  viva_.Guardar();
}

int Despachador::Velocidad() const {
  return reinicio_ ? reinicio_->velocidad : viva_.Unidad().velocidad;
}

int Despachador::Identificador() const {
  return reinicio_ ? reinicio_->identificador : viva_.Unidad().identificador;
}

bool Despachador::Presente() const {
  return Milisegundos() >= ausente_hasta_ && !viva_.escenario.lineas.muda;
}

std::optional<Bytes> Despachador::Responder(std::uint8_t direccion, VistaBytes pdu, bool por_ip) {
  viva_.Comenzar();
  Pasar();
  if (pdu.empty() || !Presente() || !Atiende(Identificador(), direccion, por_ip)) return std::nullopt;
  const Respuesta respuesta = Atender(pdu);
  if (const auto* excepcion = std::get_if<Excepcion>(&respuesta)) return PduDeExcepcion(pdu[0], *excepcion);
  return std::get<Bytes>(respuesta);
}

Despachador::Respuesta Despachador::Atender(VistaBytes pdu) {
  switch (pdu[0]) {
    case funcion::kLeerSalidas:
    case funcion::kLeerEntradas:
      return LeerBits(pdu);
    case funcion::kLeerRegistros:
      return LeerRegistros(pdu);
    case funcion::kConmutarSalida:
    case funcion::kConmutarSalidas:
      return Conmutar(pdu);
    case funcion::kEscribirRegistros:
      return Ordenar(pdu);
    case funcion::kLeerArchivos:
      return LeerArchivos(pdu);
    case funcion::kEscribirArchivos:
      return EscribirArchivos(pdu);
    default:
      return Excepcion::kFuncion;
  }
}

void Despachador::Pasar() {
  const std::int64_t ahora = Milisegundos();
  if (reinicio_ && ahora >= reinicio_->hasta) TomarFuerza();
  if (!en_curso_ || ahora < en_curso_->hasta) return;
  const Orden orden = std::move(en_curso_->orden);
  en_curso_.reset();
  Llevar(orden);
}

void Despachador::TomarFuerza() {
  const Estacion& unidad = viva_.Unidad();
  const bool cambia = unidad.velocidad != reinicio_->velocidad || unidad.identificador != reinicio_->identificador;
  ausente_hasta_ = reinicio_->hasta + viva_.escenario.tiempos.Ausencia(reinicio_->de_puesta, cambia);
  borrador_.Vaciar();
  reinicio_.reset();
}

// --- Bits and registers ----------------------------------------------------------------------------------------------

Despachador::Respuesta Despachador::LeerBits(VistaBytes pdu) const {
  const auto tramo = LeerPedidoDeTramo(pdu);
  const bool salidas = pdu[0] == funcion::kLeerSalidas;
  const int hay = salidas ? kSalidas : kEntradasDiscretas;
  if (!tramo || tramo->cuantos == 0) return Excepcion::kValor;
  if (tramo->desde + tramo->cuantos > hay) return Excepcion::kDireccion;
  const auto trama = viva_.Unidad().Instantaneos(viva_.ahora);
  std::vector<bool> bits;
  for (std::size_t i = 0; i < tramo->cuantos; ++i) {
    bits.push_back(trama[kPrimerLugarDeSalidas + (salidas ? 1 : 0) + tramo->desde + i] != 0);
  }
  return RespuestaDeBits(pdu[0], bits);
}

Despachador::Respuesta Despachador::LeerRegistros(VistaBytes pdu) {
  const auto tramo = LeerPedidoDeTramo(pdu);
  if (!tramo || tramo->cuantos == 0 || tramo->cuantos > kMayorLecturaDeRegistros) return Excepcion::kValor;
  const auto registros = Registros(*tramo);
  if (!registros) return Excepcion::kDireccion;
  return RespuestaDeRegistros(*registros);
}

// A part of a block. Whoever reads the result of a restart lets it take force.
std::optional<std::vector<std::uint16_t>> Despachador::Registros(Tramo tramo) {
  constexpr Bloque kBloques[] = {{registro::kIdentificador, registro::kReloj + kLargoDeReloj},
                                 {registro::kTrama, kLugaresDeTrama},
                                 {registro::kAnillos, kRegistrosDeCabezales},
                                 {registro::kPilas, kLargoDePilas},
                                 {registro::kAnillosDelCartucho, kRegistrosDeCabezales},
                                 {registro::kOrdenes, kResultados * kRegistrosPorResultado}};
  for (const Bloque& bloque : kBloques) {
    if (tramo.desde < bloque.desde || tramo.desde + tramo.cuantos > bloque.desde + bloque.cuantos) continue;
    const auto todo = BloqueEn(bloque.desde);
    if (!todo) return std::nullopt;
    const auto desde = todo->begin() + (tramo.desde - bloque.desde);
    if (bloque.desde == registro::kOrdenes && reinicio_) reinicio_->hasta = Milisegundos();
    return std::vector<std::uint16_t>(desde, desde + tramo.cuantos);
  }
  return std::nullopt;
}

std::optional<std::vector<std::uint16_t>> Despachador::BloqueEn(std::uint16_t desde) {
  Estacion& unidad = viva_.Unidad();
  switch (desde) {
    case registro::kIdentificador: {
      std::vector<std::uint16_t> bloque{Registro(Identificador()), kVersionDelMapa, 1, Registro(unidad.Estado()),
                                        Registro(unidad.TieneCartucho() ? 1 : 0)};
      const auto reloj = RegistrosDeReloj(FechaDeSegundos(unidad.Reloj(viva_.ahora)));
      bloque.insert(bloque.end(), reloj.begin(), reloj.end());
      return bloque;
    }
    case registro::kTrama: {
      std::vector<std::uint16_t> bloque;
      for (const std::int32_t valor : unidad.Instantaneos(viva_.ahora)) bloque.push_back(Registro(valor));
      return bloque;
    }
    case registro::kAnillos:
      return RegistrosDeCabezales(CabezalesDe(unidad.memoria, true));
    case registro::kPilas: {
      std::vector<std::uint16_t> bloque;
      for (int canal = 1; canal <= static_cast<int>(kLargoDePilas); ++canal)
        bloque.push_back(Registro(unidad.canales.PilaDe(canal)));
      return bloque;
    }
    case registro::kAnillosDelCartucho:
      if (!unidad.TieneCartucho()) return std::nullopt;
      return RegistrosDeCabezales(CabezalesDe(unidad.cartucho, false));
    default:
      return RegistrosDeResultados(libro_.Resultados());
  }
}

Cabezales Despachador::CabezalesDe(const Memoria& memoria, bool sabe_pendientes) const {
  Cabezales cabezales;
  for (std::size_t i = 0; i < cabezales.size(); ++i) {
    const Memoria::Situacion s = memoria.SituacionDe(i);
    cabezales[i] = {Registro(s.siguiente), s.lleno, s.asciende,
                    sabe_pendientes && s.pendiente ? Registro(*s.pendiente) : kSinPendiente, Registro(s.cuantas)};
  }
  return cabezales;
}

Despachador::Respuesta Despachador::Conmutar(VistaBytes pdu) {
  const auto escritura = LeerPedidoDeSalidas(pdu);
  if (!escritura) return Excepcion::kValor;
  if (escritura->desde + escritura->bits.size() > kSalidas) return Excepcion::kDireccion;
  const auto estan = viva_.Unidad().salidas;
  bool cambia = false;
  const bool hecha = viva_.Cumplir([&] {
    for (std::size_t i = 0; i < escritura->bits.size(); ++i) {
      const std::size_t salida = escritura->desde + i;
      if (estan[salida] == escritura->bits[i]) continue;
      viva_.Unidad().ConmutarSalida(static_cast<int>(salida) + 1, escritura->bits[i], viva_.ahora);
      cambia = true;
    }
    return cambia;
  });
  if (cambia && !hecha) return Excepcion::kFalla;
  return AcuseDe(pdu);
}

// --- Orders ----------------------------------------------------------------------------------------------------------

Despachador::Respuesta Despachador::Ordenar(VistaBytes pdu) {
  const auto escritura = LeerPedidoDeEscritura(pdu);
  if (!escritura) return Excepcion::kValor;
  if (escritura->desde + escritura->registros.size() > kMayorRegistroDeOrden) return Excepcion::kDireccion;
  const auto orden = escritura->desde == 0 ? LeerBloque(escritura->registros) : std::nullopt;
  if (!orden || orden->sesion == 0) return Excepcion::kValor;
  const int propio = Identificador();
  if (orden->identificador != 0 && propio != 0 && orden->identificador != propio) return Excepcion::kValor;
  switch (libro_.TratoDe(*orden)) {
    case LibroDeOrdenes::Trato::kOtroContenido:
      return Excepcion::kValor;
    case LibroDeOrdenes::Trato::kConocida:
      return AcuseDe(pdu);
    case LibroDeOrdenes::Trato::kNueva:
      break;
  }
  if (en_curso_) return Excepcion::kOcupada;
  if (EsLarga(orden->codigo) && viva_.escenario.tiempos.Borrado() > 0) {
    Empezar(*orden);
  } else {
    libro_.Anotar(*orden, EstadoDeOrden::kHecha, Motivo::kNinguno);
    Llevar(*orden);
  }
  return AcuseDe(pdu);
}

void Despachador::Empezar(const Orden& orden) {
  libro_.Anotar(orden, EstadoDeOrden::kEnCurso, Motivo::kNinguno);
  if (viva_.Guardar()) {
    en_curso_ = {orden, Milisegundos() + viva_.escenario.tiempos.Borrado()};
  } else {
    libro_.Resolver(EstadoDeOrden::kRechazada, Motivo::kNoGuardada);
  }
}

// The newest order of the book. Its result goes to the disk together with what it did.
void Despachador::Llevar(const Orden& orden) {
  const Reinicio como_estaba{Milisegundos() + kReinicioSinLeer, Velocidad(), Identificador(),
                             orden.codigo == Codigo::kReinicioDePuesta};
  Motivo motivo = Motivo::kNoGuardada;
  libro_.Resolver(EstadoDeOrden::kHecha, Motivo::kNinguno);
  const bool hecha = viva_.Cumplir([&] {
    const Motivo suyo = Ejecutar(viva_, borrador_, orden, Milisegundos());
    if (suyo != Motivo::kNinguno) motivo = suyo;
    return suyo == Motivo::kNinguno;
  });
  if (hecha && EsReinicio(orden.codigo)) reinicio_ = como_estaba;
  if (hecha) return;
  libro_.Resolver(EstadoDeOrden::kRechazada, motivo);
  viva_.Guardar();
}

// --- Files -----------------------------------------------------------------------------------------------------------

Despachador::Respuesta Despachador::LeerArchivos(VistaBytes pdu) {
  const auto pedidas = LeerPedidoDeArchivos(pdu);
  if (!pedidas || CuentaDeRespuesta(*pedidas) > kMayorCuentaDeArchivos) return Excepcion::kValor;
  std::vector<Bytes> partes;
  for (const PedidoDeArchivo& pedida : *pedidas) {
    auto parte = ParteDeArchivo(pedida);
    if (!parte) return Excepcion::kDireccion;
    partes.push_back(std::move(*parte));
  }
  return RespuestaDeArchivos(partes);
}

std::optional<Bytes> Despachador::ParteDeArchivo(const PedidoDeArchivo& parte) {
  Estacion& unidad = viva_.Unidad();
  const int numero = parte.archivo;
  if (numero >= archivo::kFlash && numero < archivo::kFlash + kPistas) {
    return ParteDePista(parte, unidad.memoria, numero - archivo::kFlash);
  }
  if (numero >= archivo::kCartucho && numero < archivo::kCartucho + kPistas) {
    if (!unidad.TieneCartucho()) return std::nullopt;
    return ParteDePista(parte, unidad.cartucho, numero - archivo::kCartucho);
  }
  if (numero >= archivo::kPaginas && numero < archivo::kCanales) {
    if (!Cabe(parte, kPaginasPorArchivo, kRegistrosDePaginaUTR)) return std::nullopt;
    const int primera = (numero - archivo::kPaginas) * kPaginasPorArchivo;
    return Juntar(parte, [&](std::size_t record) {
      return RecordDePaginaUTR(unidad.LeerPagina(primera + static_cast<int>(record)));
    });
  }
  switch (numero) {
    case archivo::kEco: {
      if (!Cabe(parte, std::size_t{kMayorRecord} + 1, 1)) return std::nullopt;
      Bytes ecos;
      for (std::uint16_t i = 0; i < parte.registros; ++i) Poner16(ecos, static_cast<std::uint16_t>(parte.record + i));
      return ecos;
    }
    case archivo::kRegistros: {
      const auto registros = parte.registros > 0 ? Registros({parte.record, parte.registros}) : std::nullopt;
      if (!registros) return std::nullopt;
      return BytesDe(*registros);
    }
    case archivo::kCanales:
      return ParteDe(parte, ArchivoDeCanales(unidad.canales));
    case archivo::kAgenda:
      return ParteDe(parte, ArchivoDe(ImagenDe(unidad.agenda.Entradas()).value_or(Bytes{})));
    default:
      return std::nullopt;
  }
}

Despachador::Respuesta Despachador::EscribirArchivos(VistaBytes pdu) {
  constexpr std::size_t kLargoDeSesion = 4;
  const auto partes = LeerPedidoDeEscrituraDeArchivos(pdu);
  if (!partes || partes->empty()) return Excepcion::kValor;
  const bool del_borrador = std::all_of(partes->begin(), partes->end(), [](const EscrituraDeArchivo& parte) {
    return parte.archivo == archivo::kBorrador && parte.record <= kMayorImagen / kBytesPorPieza;
  });
  if (!del_borrador) return Excepcion::kDireccion;
  const EscrituraDeArchivo& primera = partes->front();
  const std::uint32_t sesion = primera.datos.size() == kLargoDeSesion ? Leer32(primera.datos, 0) : 0;
  if (primera.record != 0 || sesion == 0) return Excepcion::kValor;
  const std::span piezas = std::span{*partes}.subspan(1);
  for (const EscrituraDeArchivo& parte : piezas) {
    const std::size_t cuantas = parte.datos.size() / kBytesPorPieza;
    if (parte.record == 0 || cuantas == 0 || parte.datos.size() % kBytesPorPieza != 0) return Excepcion::kValor;
    if (parte.record - 1 + cuantas > kMayorImagen / kBytesPorPieza) return Excepcion::kDireccion;
  }
  if (!borrador_.Admite(sesion, Milisegundos())) return Excepcion::kOcupada;
  for (const EscrituraDeArchivo& parte : piezas) {
    borrador_.Escribir(sesion, Milisegundos(), parte.record - 1U, parte.datos);
  }
  return Bytes(pdu.begin(), pdu.end());
}

}  // namespace utr::simulada
