#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "session/AjustesEnlace.h"
#include "support/ModPrueba.h"

namespace utr {
namespace {

std::vector<std::string> Reparos(const EntradaEnlace& entrada) {
  std::vector<std::string> textos;
  for (const Reparo& reparo : ValidarDatos(entrada)) textos.push_back(reparo.texto);
  return textos;
}

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kSinTelefono = "Debe especificar un número de teléfono";
constexpr const char* kDireccionInvalida = "Dirección IP inválida";
constexpr const char* kPuertoBajo = "El puerto debe ser superior a 10";
constexpr const char* kSinIdentificador = "Debe indicar un identificador de UTR o cero (0) si desconoce el mismo";
constexpr const char* kIdentificadorFuera = "El identificador debe estar comprendido entre 1 y 65535";

EntradaEnlace PorIP(const char* direccion, const char* puerto) {
  EntradaEnlace entrada;
  entrada.por_ip = true;
  entrada.direccion = direccion;
  entrada.puerto_ip = puerto;
  return entrada;
}

TEST(AjustesEnlace, ReparosDelIdentificador) {
  const struct {
    const char* identificador;
    const char* reparo;  // empty: accepted
  } casos[] = {{"0", ""},
               {"1", ""},
               {"65535", ""},
               {"65536", kIdentificadorFuera},
               {"999999999", kIdentificadorFuera},
               {"-1", kIdentificadorFuera},
               {"", kSinIdentificador}};
  for (const auto& caso : casos) {
    EntradaEnlace entrada;
    entrada.identificador = caso.identificador;
    const auto reparos = Reparos(entrada);
    EXPECT_EQ(reparos.empty() ? "" : reparos.front(), caso.reparo) << caso.identificador;
  }
}

TEST(AjustesEnlace, ReparosDelEnlacePorIP) {
  EXPECT_THAT(Reparos(PorIP("192.168.0.1", "1000")), IsEmpty());
  EXPECT_THAT(Reparos(PorIP("192.168.0.1", "10")), IsEmpty()) << "10 passes, whatever the sentence says";
  EXPECT_THAT(Reparos(PorIP("192.168.0.1", "9")), ElementsAre(kPuertoBajo));
  EXPECT_THAT(Reparos(PorIP("192.168.0.1", "")), ElementsAre(kPuertoBajo));
  for (const char* direccion : {"", "192.168.0", "192.168.0.256", "a.b.c.d", "1.2.3.4.5"}) {
    EXPECT_THAT(Reparos(PorIP(direccion, "1000")), ElementsAre(kDireccionInvalida)) << direccion;
  }
}

TEST(AjustesEnlace, TodosLosReparosEnSuOrden) {
  EntradaEnlace entrada = PorIP("x", "1");
  entrada.telefono = true;
  entrada.identificador = "";
  EXPECT_THAT(Reparos(entrada), ElementsAre(kSinTelefono, kDireccionInvalida, kPuertoBajo, kSinIdentificador));
  entrada.por_ip = false;
  entrada.identificador = "70000";
  EXPECT_THAT(Reparos(entrada), ElementsAre(kSinTelefono, kIdentificadorFuera));
}

class Ajustes : public prueba::ModPrueba, public testing::Test {
 protected:
  // What the next start of the program reads.
  EntradaEnlace Siguiente(const EntradaEnlace& entrada) {
    EscribirEntrada(propiedades, entrada);
    propiedades.GrabarYRecargar();
    return LeerEntrada(propiedades);
  }
};

TEST_F(Ajustes, SinArchivoElEnlaceEsSerie) {
  const EntradaEnlace entrada = LeerEntrada(propiedades);
  EXPECT_FALSE(entrada.por_ip);
  EXPECT_EQ(entrada.puerto, 1);
  EXPECT_EQ(entrada.velocidad, 9600);
  EXPECT_EQ(entrada.puerto_ip, "1000");
  EXPECT_EQ(entrada.identificador, "0");
}

TEST_F(Ajustes, LaEntradaSerieVuelve) {
  EntradaEnlace entrada;
  entrada.puerto = 3;
  entrada.velocidad = 19200;
  entrada.telefono = true;
  entrada.numero_telefono = "0343-4112233";
  entrada.comandos = "AT&F0";
  entrada.identificador = "65535";
  const EntradaEnlace leida = Siguiente(entrada);
  EXPECT_FALSE(leida.por_ip);
  EXPECT_EQ(leida.puerto, 3);
  EXPECT_EQ(leida.velocidad, 19200);
  EXPECT_TRUE(leida.telefono);
  EXPECT_EQ(leida.numero_telefono, "0343-4112233");
  EXPECT_EQ(leida.comandos, "AT&F0");
  EXPECT_EQ(leida.identificador, "65535");
  EXPECT_EQ(TextoEnlace(propiedades.LeerTexto(clave::kVelocidad, "9600")), "19200,n,8,1");
}

TEST_F(Ajustes, SinNadaElegidoSeEscribenLosDefectos) {
  EntradaEnlace entrada;
  entrada.puerto = 0;
  entrada.velocidad = 0;
  EXPECT_EQ(Siguiente(entrada).puerto, 1);
  EXPECT_EQ(LeerEntrada(propiedades).velocidad, 9600);
}

TEST_F(Ajustes, LaEntradaPorIPVuelve) {
  // The address and port that equal the defaults must come back as IP too.
  for (const auto& [direccion, puerto] : {std::pair{"192.168.0.1", "1000"}, std::pair{"10.0.0.7", "11"}}) {
    const EntradaEnlace leida = Siguiente(PorIP(direccion, puerto));
    EXPECT_TRUE(leida.por_ip);
    EXPECT_EQ(leida.direccion, direccion);
    EXPECT_EQ(leida.puerto_ip, puerto);
    EXPECT_EQ(leida.velocidad, 9600) << "the speed that is selected meanwhile";
    EXPECT_FALSE(HayPuertoSerie(propiedades));
  }
}

TEST_F(Ajustes, ElPuertoIPDiezVuelveComoSerieSinVelocidad) {
  const EntradaEnlace leida = Siguiente(PorIP("192.168.0.1", "10"));
  EXPECT_FALSE(leida.por_ip);
  EXPECT_EQ(leida.puerto, 10);
  EXPECT_EQ(leida.velocidad, 0) << "an address selects no speed";
  EXPECT_TRUE(HayPuertoSerie(propiedades));
}

TEST_F(Ajustes, PorIPSeOlvidaElTelefono) {
  EntradaEnlace serie;
  serie.telefono = true;
  serie.numero_telefono = "4";
  Siguiente(serie);
  Siguiente(PorIP("192.168.0.1", "2000"));
  EXPECT_FALSE(propiedades.LeerLogico(clave::kPorTelefono, false));
  EXPECT_EQ(propiedades.LeerTexto(clave::kNumeroTelefono, ""), "");
}

TEST_F(Ajustes, ElDialogoDePuertoEscribeTextos) {
  EscribirPuerto(propiedades, "4", "300");
  propiedades.GrabarYRecargar();
  EXPECT_NE(prueba::LeerTodo(propiedades.Archivo()).find("\"4\""), std::string::npos);
  EXPECT_EQ(LeerEntrada(propiedades).puerto, 4);
  EXPECT_EQ(LeerEntrada(propiedades).velocidad, 300);
}

TEST_F(Ajustes, ElTituloLlevaElIdentificadorSalvoCero) {
  EXPECT_FALSE(TituloTrasLectura(propiedades));
  EntradaEnlace entrada;
  entrada.identificador = "123";
  Siguiente(entrada);
  EXPECT_EQ(TituloTrasLectura(propiedades), "Administración y configuración - KV7340 : Identificador: 123");
}

TEST_F(Ajustes, UnGuardadoQueFallaSeDiceYSeSigueConLaMemoria) {
  std::filesystem::remove_all(carpeta.Ruta());
  EntradaEnlace entrada;
  entrada.puerto = 5;
  EscribirEntrada(propiedades, entrada);
  const std::string motivo = "No se puede escribir el archivo " + propiedades.Archivo().string();
  operador.Espera(
      Mensaje{TextoFalla(Redaccion::kCompletada, motivo), "Configuración", Icono::kCritico, Botones::kAceptar});
  GuardarAjustes(mod, "frmPuerto", "CmdOK_Click", "Configuración");
  EXPECT_EQ(LeerEntrada(propiedades).puerto, 5);
}

}  // namespace
}  // namespace utr
