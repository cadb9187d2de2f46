#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "configuration/Catalogo.h"
#include "plots/windows/GraficosALaVista.h"
#include "services/ComunicadorConDiario.h"
#include "session/BitacoraVisita.h"
#include "session/ModRTU.h"
#include "session/RelojUTR.h"
#include "session/SituacionDelEnlace.h"

namespace utr {

class Apariencia;

// What the program is given to run on.
struct Entorno {
  Comunicador& comunicador;
  ListaDePuertos& puertos;
  Impresora& impresora;
  Operador& operador;
  Reloj& reloj;
  Atender atender;
  std::filesystem::path carpeta;            // where the program writes (CarpetaDeDatos)
  std::string nombre;                       // its name, without extension
  std::string aviso{};                      // what panel 1 of the status bar says at the beginning
  SituacionDelEnlace* situacion = nullptr;  // who is at the other end; none: the simulated station
};

// The program's run: settings, password, main window. It makes the shared state and holds it to the end.
class Main {
 public:
  explicit Main(const Entorno& entorno);
  ~Main();

  // Loads the settings and asks the password. False: it wasn't given, and the program ends without a main window.
  bool Entrar();

  // Shows the main window and runs until it is closed. Gives the exit code. Theme and size of text are offered where
  // `apariencia` is given.
  int Correr(Apariencia* apariencia = nullptr);

  // Tries once more to keep the journal, and offers another place for what can't be kept.
  void CerrarBitacora();

  ModRTU& Mod() { return mod_; }

 private:
  bool GuardarEnOtroLado(std::int32_t estacion);

  Propiedades propiedades_;
  RegistroErrores registro_;
  Catalogo catalogo_;
  RelojUTR reloj_utr_;
  ComunicadorConReloj con_reloj_;
  Diario diario_;
  BitacoraVisita bitacora_;
  ComunicadorConDiario comunicador_;
  Conexion conexion_;
  GraficosALaVista graficos_;
  ModRTU mod_;
  std::string aviso_;
  SituacionDelEnlace* situacion_;
};

// The whole program over a QApplication. Gives the exit code.
int Ejecutar(const Entorno& entorno);

}  // namespace utr
