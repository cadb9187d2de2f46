#pragma once

#include <QIcon>

namespace utr {

// The icon of that name (":/iconos/<nombre>.svg"), drawn in the text colour and the accents of the application's
// palette and following it when it changes; of one colour where it is selected or disabled. An unknown name gives an
// empty icon.
//
// Names: conectar, desconectar, abrir, guardar, imprimir, exportar, orden-ascendente, orden-descendente,
// iconos-grandes, iconos-pequenos, lista, detalles, ayuda, que-es-esto, salir, agenda, eventos, datos, parametrizar,
// leer-configuracion, contrasena, puesta-en-marcha, puerto, salidas-digitales, comandos, configurar, recuperar,
// procesar, visualizacion, cola-tx, exportar-configuracion, aviso, modificado,
// mensaje-informacion, mensaje-aviso, mensaje-error, mensaje-pregunta (of message boxes),
// horario-nuevo, periodo-nuevo, borrar, borrar-todo, adminutr (the program's own, in its own
// colours).
QIcon IconoDe(const char* nombre);

}  // namespace utr
