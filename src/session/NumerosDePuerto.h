#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "session/ModRTU.h"

namespace utr {

// Something of this machine that can be opened as a serial port.
struct Dispositivo {
  std::string ruta;         // that is opened, and by which the device is remembered
  std::string descripcion;  // what it is, for the tip
};

// The lines of a station that runs on this machine: what is called COM and a number in its folder and leads to a
// device that is there; none once that station has ended, however it did.
std::vector<Dispositivo> LineasDeEstacion(const std::filesystem::path& carpeta);

// The name of a device that stays with it when others are plugged in or out: the link in `enlaces` (one of the system's
// folders of such links) that leads to it, else the name itself.
std::string NombreDuradero(const std::string& ruta, const std::filesystem::path& enlaces);

// Which device each port number stands for, from 1 to 10. A device that is seen for the first time takes the lowest
// number that is free (of its own name, "COM4", where that one is) and keeps it: the pairs are kept in a file beside
// the executable, "Puertos.toml", so that no device ever takes the number of another one, whether that one is there or
// not.
class NumerosDePuerto {
 public:
  // Reads the file. One that can't be understood is left alone: no port has a number then, since any of them may be a
  // device's, and Aviso says why.
  explicit NumerosDePuerto(std::filesystem::path archivo);

  // The ports to be offered, in the order of numbers: those in `simulados` that no device has, and the devices at hand,
  // "description, path" as their names. What is new is kept in the file. None without a file that can be understood.
  std::vector<PuertoSerie> Repartir(std::span<const PuertoSerie> simulados, std::vector<Dispositivo> presentes);

  // Whose each number is can be told.
  bool Legible() const noexcept { return legible_; }

  // No device has it or ever had it, so that it may be a port of the simulated station.
  bool EsDeNadie(int numero) const { return legible_ && !De(numero); }

  // The device of a number, at hand or not; nothing for a number that no device ever had.
  std::optional<std::string> De(int numero) const;

  // The same, to be opened now: nothing also for a line of a station that has ended, whose name may lead to a terminal
  // of somebody else. Raises kArchivo, with what Aviso says, when nobody knows whose the number is.
  std::optional<std::string> Abrible(int numero) const;

  // What the operator should know: that the file can't be read or written, or that no number is left. Empty: nothing.
  const std::string& Aviso() const noexcept { return aviso_; }

 private:
  void Leer();
  void Guardar();
  int NumeroDe(const std::string& ruta) const;
  int NumeroNuevo(const std::string& ruta, std::span<const PuertoSerie> simulados) const;

  std::filesystem::path archivo_;
  std::map<int, std::string> dispositivos_;
  bool legible_ = true;
  std::string aviso_;
};

}  // namespace utr
