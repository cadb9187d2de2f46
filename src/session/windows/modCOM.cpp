#include "session/windows/modCOM.h"

#include <QSerialPortInfo>

#include "session/Puertos.h"
#include "widgets/AyudaCombos.h"
#include "widgets/TextoQt.h"

namespace utr {

std::vector<PuertoSerie> PuertosDelEquipo::Listar() {
  std::vector<std::string> nombres;
  for (const QSerialPortInfo& puerto : QSerialPortInfo::availablePorts()) nombres.push_back(U(puerto.portName()));
  return NumerarPuertos(std::move(nombres));
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
