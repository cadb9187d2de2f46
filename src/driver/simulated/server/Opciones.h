#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Fechas.h"

namespace utr::simulada {

// What the command line of the station asks for.
struct Opciones {
  struct Red {
    std::string direccion = "127.0.0.1";
    std::uint16_t puerto = 0;  // 0: any that is free
  };
  std::filesystem::path carpeta;
  std::vector<Red> redes;
  std::vector<std::string> lineas;    // names of pseudo-terminals, "COM4"
  std::vector<std::string> modems;    // the same, behind a modem
  std::vector<std::string> seriales;  // devices of the machine
  bool control = false;
  std::optional<FechaHora> hora;  // at which the clock stands from the beginning, with --control
  bool ayuda = false;
  bool version = false;
};

// Reads the arguments behind the program's name. Without a listener among them the station has the usual ones: TCP
// 1502, COM4, and COM5 behind a modem. Raises kLlamada with a Spanish sentence for what makes no sense.
Opciones LeerOpciones(std::span<const std::string_view> argumentos);

// The text of --ayuda.
std::string_view Ayuda();

}  // namespace utr::simulada
