#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "tables/Tabla.h"

namespace utr {

// The contract of the driver: all talk with the remote unit goes through it. The system hands it link settings, page
// numbers, page texts, tables and date ranges, and gets texts and tables back; how bytes travel is the driver's alone.
//
// Forms of text: a *page text* is decimal bytes joined by "," without blanks, empty when the page couldn't be read. A
// *pair text* is a 16-bit value as two decimal numbers, low byte first, "/" between: 300 is "44/1". A *link settings
// text* is the speed and ",n,8,1"; the forms "9600n,8,1" and, over IP, "192.168.0.1,n,8,1" are understood too. A *date
// text* is day first: "01/01/2001", "01/01/2001 13:05:00".
//
// An operation fails in one of three ways: by its result (false, an empty page text, a negative state), by raising
// Error, or by giving no table (null) or a table without rows, where a table without rows is a success of the read.
// Unless an operation says otherwise, a unit that doesn't answer means false or an empty text, and a broken driver
// raises. Reads of records, of present values and of the configuration raise kSinRespuesta (8020) for a unit that
// doesn't answer: silence must not read as "no data". No table (null) is what they give for a unit that answers without
// data.
//
// A table that is handed over is taken as it shows itself: the rows that pass its filter, in the order of its sort.
// What a filter leaves out never goes to the unit or into a file. The driver keeps no hold of the table and leaves its
// cursor where it is.
//
// Calls block the one thread of the program; the driver may let events of the interface run inside a long operation.
// Cancelar is the only operation that may be called while another one runs.
class Comunicador {
 public:
  virtual ~Comunicador() = default;

  // 1. Identifier used on the link from now on; 0 addresses any unit, and a unit whose own one is 0 answers any.
  virtual void IdEquipo(std::int32_t identificador) = 0;

  // 2. Erases the data of the unit's flash. False: not erased.
  virtual bool BorrarFlash() = 0;

  // 3. Restarts the schedule of the unit; `comando` is "41". False: no answer or another command.
  virtual bool ReiniciarAgenda(std::string_view comando) = 0;

  // 4. Restarts the unit: "14" after a change of speed, identifier or configuration, "44" at the end of commissioning.
  // The unit goes away for a while; callers wait before they talk to it again. False: not restarted.
  virtual bool ReiniciarUTR(std::string_view comando) = 0;

  // 5. Decodes a page of data or events. `pagina`: a reply frame of up to 78 bytes whose bytes from index 13 on are the
  // 64 bytes of the page. `descriptor`: five numbers joined by "#", "canal#0#1024#0#64" for data (channel from 0),
  // "1#0#1024#0#64" for events. `fecha`: date text of a page without a date of its own. Gives rows in the form of
  // LeerDatos or LeerEventos, marker rows included; null or no rows for a page that can't be decoded.
  virtual TablaPtr DecodificarPagina(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                     std::string_view fecha) = 0;

  // 6. The same for a page of the transmission queue: descriptor "1#pagina#1024#0#64"; rows in the form of LeerColaTx.
  virtual TablaPtr DecodificarPaginaCola(std::span<const std::uint8_t> pagina, std::string_view descriptor,
                                         std::string_view fecha) = 0;

  // 7. The present values of all channels: rows with a field `Valor`; joined by "/" in order they are one frame of raw
  // values (place 0 to 13: channels 1 to 14; 14, 15: 22, 23; 28: 15; 29 to 34: 16 to 21; 35 to 37: the outputs).
  // Raises kSinRespuesta without an answer; null when the unit answers without values.
  virtual TablaPtr LeerInstantaneos() = 0;

  // 8. Date text of a day number, the inverse of DescribirCodigo. Needs no link.
  virtual std::string ConvertirA(std::int16_t numero) = 0;

  // 9. Pair text of a 16-bit integer: 0 is "0/0", 1440 is "160/5". A negative value is taken as its unsigned twin.
  virtual std::string ConvertirDe(std::int16_t valor) = 0;

  // 10. Appends a line to the driver's log; callers prefix date and time. Never fails.
  virtual void EscribirLog(std::string_view linea) noexcept = 0;

  // 11. Day number of a date text. Raises error 13 for a text that is no date. Needs no link.
  virtual std::int32_t DescribirCodigo(std::string_view fecha) = 0;

  // 12. The schedule: fields HorarioInteger, Descripcion, TCond, TOblig, TWind; an entry counts where Descripcion is
  // "OK". Null when it can't be read, silence included.
  virtual TablaPtr LeerAgenda() = 0;

  // 13. Page text of a flash page (track 0 to 31, page 0 to 1023): 64 bytes and two trailing items that are never 255,
  // 66 items in all. An erased byte is 255. Empty when the page can't be read.
  virtual std::string LeerPaginaFlash(std::int16_t pista, std::int16_t pagina) = 0;

  // 14. Waits that many seconds, keeping the interface alive.
  virtual void Pausa(std::int16_t segundos) = 0;

  // 15. Writes the schedule from a table with the fields of LeerAgenda's entries (HorarioInteger, TOblig, TWind,
  // TCond). False: not written.
  virtual bool GrabarAgenda(Tabla& tabla) = 0;

  // 16. The table of channels as the unit holds it; `desdeUTR` is always true. Raises kSinRespuesta without an answer;
  // null when the unit answers without a configuration.
  virtual TablaPtr ConfiguracionAlmacenada(bool desdeUTR) = 0;

  // 17. The table of channels held in a configuration file (.icf). Raises for a file that it can't read or understand.
  virtual TablaPtr LeerArchivoConfiguracion(std::string_view ruta) = 0;

  // 18. Writes the parametrization of the channels in the table; channels that it doesn't show stay as they are. False:
  // failed, or refused with nothing written: a channel that the unit doesn't have, or a value that it can't work with.
  virtual bool GrabarParametrizacion(Tabla& tabla) = 0;

  // 19. Events between two date texts, both ends included; two empty texts ask for the pending ones. Fields Fecha,
  // Hora, Codigo, Valor1, Valor2; a row with a Fecha is a marker. Raises kSinRespuesta without an answer; null when the
  // unit answers without events.
  virtual TablaPtr LeerEventos(std::string_view desde, std::string_view hasta) = 0;

  // 20. Historic records of a channel, counted from 0, between two date texts. Fields Fecha, Hora, Canal, Valor,
  // Maximo, Minimo, Validacion, ColaTX; a row whose Fecha is a date is a marker. Raises kSinRespuesta without an
  // answer; null when the unit answers without data.
  virtual TablaPtr LeerDatos(std::string_view desde, std::string_view hasta, std::int16_t canal) = 0;

  // 21. Transmission queue between two date texts, or what is pending for two empty texts. Fields of LeerDatos; a row
  // may carry date and sample together. Raises kSinRespuesta without an answer; null when the unit answers without
  // data.
  virtual TablaPtr LeerColaTx(std::string_view desde, std::string_view hasta) = 0;

  // 22. The unit's clock, "dd/mm/yyyy HH:mm:ss"; empty without an answer.
  virtual std::string LeerFechaHora() = 0;

  // 23. The unit's state flags in the reading layout; negative without an answer.
  virtual std::int32_t LeerEstado() = 0;

  // 24. Sets the unit's clock to the computer's present time. False: not set.
  virtual bool GrabarFechaHora() = 0;

  // 25. Writes the state flags (pair text, writing layout). False: not written.
  virtual bool GrabarEstado(std::string_view flags) = 0;

  // 26. Writes a page (number as text, page text). False: not written.
  virtual bool EscribirPagina(std::string_view pagina, std::string_view datos) = 0;

  // 27. Leaves an event in the unit: "1" and "128/0/40/0". False: not written.
  virtual bool GrabarEvento(std::string_view comando, std::string_view datos) = 0;

  // 28. Writes the relation of stacks and channels: "7" and channels joined by "$", or an empty text. False: failed.
  virtual bool GrabarPilaCanal(std::string_view comando, std::string_view datos) = 0;

  // 29. Writes the channels to change: "33" and channel numbers, each followed by "#"; may be empty. False: failed.
  virtual bool GrabarCanalesModificar(std::string_view comando, std::string_view datos) = 0;

  // 30. Page text of a page of the unit; empty on failure. `silencioso`: a missing answer is the ordinary case.
  virtual std::string LeerPagina(std::string_view pagina, bool silencioso) = 0;

  // 31. Opens the link: link settings text, port number as text (over IP: the address with its tail, the TCP port). A
  // second call replaces the first. Raises 8005 when another holder has the port, another number for any other failure.
  virtual void Conectar(std::string_view enlace, std::string_view puerto) = 0;

  // 32. Switches the RTS line. True: the change took place.
  virtual bool ModoConexion(bool activo) = 0;

  // 33. Writes a file for manual insertion (.imp) from a table, whole or not at all: `tipo` 0 events, 1 data and queue.
  // The channel goes by its short code ("EA01") though the table hold its number. Replaces a file that exists. False:
  // refused, for another `tipo`. Raises kArchivo, with the reason, for a file that can't be written. Needs no link.
  virtual bool ExportarImp(Tabla& tabla, std::string_view ruta, int tipo) = 0;

  // 34. The table of channels of a configuration file, for commissioning. As LeerArchivoConfiguracion.
  virtual TablaPtr CargarConfiguracion(std::string_view ruta) = 0;

  // 35. The link settings text in force; empty when no port was ever opened.
  virtual std::string ObtenerPuertos() = 0;

  // 36. Closes the link and ends a telephone call.
  virtual void Desconectar() = 0;

  // 37. The serial port is open.
  virtual bool EstadoPuerto() = 0;

  // 38. to 39. Address and TCP port of the remote end, set before a read over IP.
  virtual void DireccionIP(std::string_view direccion) = 0;
  virtual void PuertoIP(std::string_view puerto) = 0;

  // 40. The link is up.
  virtual bool EstadoEnlace() = 0;

  // 41. The next read goes over IP (true) or over the serial port (false). Of this and the IP form of Conectar the
  // later one wins.
  virtual void PorIP(bool activo) = 0;

  // 42. Initialises the modem on the open port with `comandos` and dials. True: the call stands. Lets events run.
  virtual bool LlamarTelefono(std::string_view numero, std::string_view comandos) = 0;

  // 43. True before a call is placed; false abandons a call in progress.
  virtual void Cancelar(bool activo) = 0;

  // 44. Switches output 1 or 2. False: not switched.
  virtual bool GrabarSalidaDigital(int salida, bool encender) = 0;

  // 45. to 47. As LeerDatos, LeerEventos and LeerColaTx, from the unit's cartridge, which doesn't know what is pending:
  // two empty texts ask for everything in it. Raise kSinRespuesta without an answer; null without a cartridge.
  virtual TablaPtr LeerDatosCartucho(std::string_view desde, std::string_view hasta, std::int16_t canal) = 0;
  virtual TablaPtr LeerEventosCartucho(std::string_view desde, std::string_view hasta) = 0;
  virtual TablaPtr LeerColaTxCartucho(std::string_view desde, std::string_view hasta) = 0;

  // 48. Erases the cartridge. False: not erased.
  virtual bool BorrarCartucho() = 0;

  // 49. Writes the whole channel configuration: channels that the table doesn't show become disabled. False: refused as
  // in GrabarParametrizacion, or not written.
  virtual bool GrabarConfiguracion(Tabla& tabla) = 0;
};

}  // namespace utr
