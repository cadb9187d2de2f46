#include "session/windows/modCOM.h"

#include <unistd.h>

#include <QSerialPortInfo>
#include <cerrno>

#include "session/Puertos.h"
#include "widgets/AyudaCombos.h"
#include "widgets/TextoQt.h"

namespace utr {

namespace {

// What the operator should know ahead of trying: serial ports belong to a group that new users aren't in.
QString Permiso(const QString& ruta) {
  const bool negado = ::access(ruta.toLocal8Bit().constData(), R_OK | W_OK) != 0 && errno == EACCES;
  return negado ? QStringLiteral(" (sin permiso: grupo dialout)") : QString();
}

}  // namespace

std::vector<Dispositivo> DispositivosDelEquipo() {
  std::vector<Dispositivo> dispositivos;
  for (const QSerialPortInfo& puerto : QSerialPortInfo::availablePorts()) {
    const QString descripcion = puerto.description().isEmpty() ? QStringLiteral("Puerto serie") : puerto.description();
    // Adapters of a kind that have no serial number share their name by identity, and only where they are plugged in
    // tells one from the other.
    const char* enlaces = puerto.serialNumber().isEmpty() ? "/dev/serial/by-path" : "/dev/serial/by-id";
    dispositivos.push_back(
        {NombreDuradero(U(puerto.systemLocation()), enlaces), U(descripcion + Permiso(puerto.systemLocation()))});
  }
  return dispositivos;
}

void CargarPuertos(QComboBox& lista, const std::vector<PuertoSerie>& puertos) {
  lista.clear();
  for (const PuertoSerie& puerto : puertos) {
    AgregarEntrada(lista, Q(TextoPuerto(puerto.numero)), puerto.numero, Q(puerto.nombre));
  }
}

void ElegirEnlace(QComboBox& puertos, QComboBox& velocidades, const EntradaEnlace& entrada) {
  const auto ofrecer = [&](QComboBox& lista, std::int32_t numero, const std::string& texto) {
    if (!entrada.por_ip && numero > 0 && lista.findData(numero) < 0) AgregarAjena(lista, Q(texto), numero);
    SeleccionarValor(lista, numero);
    MostrarAyudaDelElegido(lista);
  };
  ofrecer(puertos, entrada.puerto, TextoPuerto(entrada.puerto));
  ofrecer(velocidades, entrada.velocidad, std::to_string(entrada.velocidad));
}

}  // namespace utr
