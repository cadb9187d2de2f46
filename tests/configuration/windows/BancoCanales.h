#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLineEdit>
#include <functional>

#include "configuration/windows/frmParametrizacion.h"
#include "support/GuionVentanas.h"
#include "support/ModPrueba.h"
#include "support/Tablas.h"
#include "widgets/TextoQt.h"

namespace utr {

// A station that was read: a level sensor whose values obey the rules, a digital input, and an analogue one that is
// disabled. It keeps what it is written and gives that back.
class BancoCanales : public prueba::ModPrueba, public testing::Test {
 protected:
  static inline const FilaDeCanal kNivel = {
      {"Canal", "1"},         {"Tipo", "0"},          {"Pila", "1"},           {"Flags", "1"},      {"TMed", "1"},
      {"TRead", "10"},        {"TEval", "60"},        {"TStorage", "60"},      {"TDiscret", "60"},  {"TCero", "0"},
      {"TResetAlarma", "60"}, {"MaxValid", "10"},     {"MinValid", "0"},       {"MaxSubVal", "2"},  {"MaxBajVal", "2"},
      {"MaxSubTx", "1"},      {"MaxBajTx", "1"},      {"AMax", "9"},           {"AMin", "1"},       {"AlSub", "1"},
      {"AlBaj", "1"},         {"AlMaxPico", "9"},     {"AlMinPico", "1"},      {"Bits", "10"},      {"Pagina", "0"},
      {"Resolucion", "3"},    {"Descripcion", "Río"}, {"RangoNegativo", "66"}, {"CtePluvi", "0.25"}};
  static inline const FilaDeCanal kDigital = {{"Canal", "16"},        {"Tipo", "7"},          {"Flags", "1"},
                                              {"TEval", "10"},        {"TResetAlarma", "60"}, {"Resolucion", "1"},
                                              {"RangoNegativo", "66"}};
  static inline const FilaDeCanal kApagado = {{"Canal", "4"}, {"Flags", "0"}, {"Resolucion", "1"}};

  BancoCanales() {
    leida = TablaDeCanales({kNivel, kDigital, kApagado});
    comunicador.Devuelve("ConfiguracionAlmacenada", [this](const std::string&) -> TablaPtr {
      const std::vector<TablaPtr> escritas = comunicador.Recibidas("GrabarParametrizacion");
      return escritas.empty() ? leida : escritas.back();
    });
  }

  void LeerDeLaUTR() {
    lectura.Preparar(std::string(kFuenteUTR));
    comunicador.llamadas.clear();
  }

  void EsperarClave(const char* clave = "Pampas") {
    ventanas.Espera("frmLogin", [clave](QDialog& d) {
      Hallar<QLineEdit>(d, "txtPassword").setText(clave);
      Hallar<QAbstractButton>(d, clave[0] == 'P' ? "CmdOK" : "CmdCancel").click();
    });
  }

  // The sensor dialog comes, takes a text in a field and is accepted.
  void EsperarEdicion(const char* campo, const char* texto) {
    ventanas.Espera("frmParamCfg", [campo, texto](QDialog& d) {
      Hallar<QLineEdit>(d, campo).setText(texto);
      Hallar<QAbstractButton>(d, "cmd(0)").click();
    });
  }

  TablaPtr leida;
  LecturaConfiguracion lectura{mod};
  GuionVentanas ventanas;
};

}  // namespace utr
