#include "shell/windows/AccionesPpal.h"

#include "shell/windows/frmPpal.h"

namespace utr {

const std::array<AccionPpal, 9> kAcciones{{
    {.texto = "&Agenda", .icono = "agenda", .hacer = &frmPpal::ProcesarAgenda, .reconecta = true},
    {.texto = "&Eventos", .icono = "eventos", .hacer = &frmPpal::MostrarEventos, .reconecta = true},
    {.texto = "&Datos", .icono = "datos", .hacer = &frmPpal::MostrarDatos, .reconecta = true},
    {.texto = "&Parametrizar",
     .icono = "parametrizar",
     .hacer = &frmPpal::MostrarParametros,
     .reconecta = true,
     .olvida_predefinida = true},
    {.texto = "&Leer Configuracion",
     .icono = "leer-configuracion",
     .hacer = &frmPpal::LeerConfiguracion,
     .reconecta = true,
     .olvida_predefinida = true},
    {.texto = "Co&ntraseña", .icono = "contrasena", .hacer = &frmPpal::Contrasena, .reconecta = true},
    {.texto = "&Puesta en marcha UTR",
     .icono = "puesta-en-marcha",
     .hacer = &frmPpal::AsistenteParam,
     .reconecta = true},
    {.texto = "P&uerto", .icono = "puerto", .hacer = &frmPpal::ConfigurarPuerto},
    {.texto = "Salidas Digitales",
     .icono = "salidas-digitales",
     .hacer = &frmPpal::MostrarSalidasDigitales,
     .reconecta = true},
}};

const std::array<AccionPpal, 7> kAvanzadas{{
    {.texto = "Co&mandos", .icono = "comandos", .hacer = &frmPpal::MostrarComandos},
    {.texto = "C&onfigurar", .icono = "configurar", .hacer = &frmPpal::MostrarConfiguracion},
    {.texto = "&Recuperar Datos", .icono = "recuperar", .hacer = &frmPpal::RecuperarDatos},
    {.texto = "Proce&sar Datos", .icono = "procesar", .hacer = &frmPpal::ProcesarDatos},
    {.texto = "&Visualización de archivos", .icono = "visualizacion", .hacer = &frmPpal::VisualizarArchivos},
    {.texto = "Cola de &Transmisión", .icono = "cola-tx", .hacer = &frmPpal::ColaDeTransmicion},
    {.texto = "&Exportar configuración", .icono = "exportar-configuracion", .hacer = &frmPpal::ExportarConfiguracion},
}};

}  // namespace utr
