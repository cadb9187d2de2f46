#include <gtest/gtest.h>

#include "widgets/Recuerdos.h"

namespace utr {
namespace {

TEST(Recuerdos, LosGruposNoSeMezclan) {
  Recuerdos datos("frmPrueba");
  Recuerdos otra("frmOtra");
  datos.Guardar("canal", QStringLiteral("EA1_Nivel, cañada"));
  datos.Guardar("anchos", QStringList{"80", "1,5"});
  EXPECT_EQ(Recuerdos("frmPrueba").Texto("canal"), QStringLiteral("EA1_Nivel, cañada"));
  EXPECT_EQ(Recuerdos("frmPrueba").Textos("anchos"), (QStringList{"80", "1,5"}));
  EXPECT_EQ(otra.Texto("canal", "ninguno"), "ninguno");
  EXPECT_FALSE(Recuerdos({}).Valor("canal").isValid());
  datos.Olvidar("canal");
  EXPECT_FALSE(Recuerdos("frmPrueba").Valor("canal").isValid());
}

TEST(Recuerdos, LoQueNoEsDeSuClaseCuentaComoNuncaGuardado) {
  Recuerdos recuerdos("frmClases");
  struct Caso {
    QVariant guardado;
    int entero;
    bool marcado;
  };
  for (const Caso& caso : {Caso{{}, 7, true}, Caso{"cien", 7, true}, Caso{9, 7, true}, Caso{10, 10, true},
                           Caso{3600, 3600, true}, Caso{3601, 7, true}, Caso{false, 7, false}}) {
    recuerdos.Olvidar("uno");
    if (caso.guardado.isValid()) recuerdos.Guardar("uno", caso.guardado);
    EXPECT_EQ(recuerdos.Entero("uno", 7, 10, 3600), caso.entero) << caso.guardado.toString().toStdString();
    EXPECT_EQ(recuerdos.Marcado("uno", true), caso.marcado) << caso.guardado.toString().toStdString();
  }
  recuerdos.Guardar("uno", true);
  EXPECT_TRUE(recuerdos.Marcado("uno", false));
}

}  // namespace
}  // namespace utr
