#include "driver/simulated/unit/CanalesDeFabrica.h"

namespace utr::simulada {

const char* const kComunesDeFabrica =
    "Tipo=0;Pila=255;Flags=0;TMed=1;TRead=10;TEval=10;TStorage=10;TDiscret=60;TCero=1440;TResetAlarma=60;"
    "MaxValid=0;MinValid=0;MaxSubVal=0;MaxBajVal=0;MaxSubTx=0;MaxBajTx=0;AMax=0;AMin=0;AlSub=0;AlBaj=0;"
    "AlMaxPico=0;AlMinPico=0;RangoMax=100;RangoMin=0;Rango=100;Span=4095;Cero=0;Bits=7;Pagina=0;CtePluvi=0;"
    "NivRefLmn=0;Resolucion=1;Descripcion=;Parametro=0;Unidad=0;RangoNegativo=66;Nombre=";

// Times, limits and alarms keep the rules of each kind of sensor, so that every row is accepted again as it stands.
const std::array<const char*, kCanales> kCanalesDeFabrica = {
    // 1: river level, with wave filter and level reference
    "Pila=0;Flags=19;MaxValid=12.15;MinValid=2.15;MaxSubVal=1.5;MaxBajVal=1.5;MaxSubTx=0.2;MaxBajTx=0.15;AMax=6.5;"
    "AMin=2.5;AlSub=0.15;AlBaj=0.03;AlMaxPico=6.5;AlMinPico=2.5;RangoMax=10;RangoMin=0;Rango=10;Span=3277;Cero=819;"
    "Bits=10;NivRefLmn=2.15;Resolucion=3;Descripcion=Nivel del río;Parametro=2;Unidad=1;Nombre=Limnímetro",
    // 2 and 3: wind speed and direction, with the same reading and storage times
    "Tipo=2;Pila=1;Flags=3;MaxValid=60;MinValid=0;MaxSubTx=8;AMax=25;AMin=0;AlSub=10;AlBaj=10;AlMaxPico=35;"
    "AlMinPico=0.1;RangoMax=60;RangoMin=0;Rango=60;Bits=10;Resolucion=2;Descripcion=Velocidad del viento;Parametro=5;"
    "Unidad=5;Nombre=Anemómetro",
    "Tipo=3;Pila=2;Flags=1;MaxValid=360;MinValid=0;MaxSubTx=90;AMax=360;AMin=0;AlSub=180;AlBaj=180;AlMaxPico=360;"
    "AlMinPico=1;RangoMax=360;RangoMin=0;Rango=360;Bits=9;Descripcion=Dirección del viento;Parametro=6;Unidad=6;"
    "Nombre=Veleta",
    // 4 to 7: air temperature, humidity, pressure, radiation
    "Tipo=1;Pila=3;Flags=3;MaxValid=60;MinValid=-40;MaxSubTx=3;AMax=38;AMin=-5;AlSub=8;AlBaj=8;AlMaxPico=40;"
    "AlMinPico=-8;RangoMax=60;RangoMin=-40;Rango=100;Bits=10;Resolucion=2;Descripcion=Temperatura del aire;"
    "Parametro=1;Unidad=3;Nombre=Termómetro",
    "Tipo=1;Pila=4;Flags=1;MaxValid=100;MinValid=0;MaxSubTx=15;AMax=100;AMin=10;AlSub=40;AlBaj=40;AlMaxPico=100;"
    "AlMinPico=5;Descripcion=Humedad relativa;Parametro=4;Unidad=4;Nombre=Higrómetro",
    "Tipo=1;Pila=5;Flags=1;MaxValid=1100;MinValid=800;MaxSubTx=3;AMax=1040;AMin=985;AlSub=10;AlBaj=10;"
    "AlMaxPico=1045;AlMinPico=980;RangoMax=1100;RangoMin=800;Rango=300;Bits=12;Resolucion=2;"
    "Descripcion=Presión atmosférica;Parametro=7;Unidad=7;Nombre=Barómetro",
    "Tipo=1;Pila=6;Flags=1;MaxValid=1500;MinValid=0;MaxSubTx=500;AMax=1400;AMin=0;AlSub=1000;AlBaj=1000;"
    "AlMaxPico=1450;AlMinPico=0;RangoMax=1500;RangoMin=0;Rango=1500;Bits=11;Descripcion=Radiación solar;"
    "Parametro=8;Unidad=8;Nombre=Piranómetro",
    // 8: depth of the water table, a sensor of negative slope
    "Pila=7;Flags=1;MaxValid=5;MinValid=0;MaxSubVal=0.5;MaxBajVal=0.5;MaxSubTx=0.1;MaxBajTx=0.1;AMax=4.5;AMin=0.3;"
    "AlSub=0.2;AlBaj=0.2;AlMaxPico=4.5;AlMinPico=0.3;RangoMax=0;RangoMin=5;Rango=5;Span=3277;Cero=819;Bits=9;"
    "Resolucion=3;Descripcion=Nivel de napa;Parametro=11;Unidad=1;RangoNegativo=55;Nombre=Freatímetro",
    // 9: wired, not enabled
    "Tipo=1;MaxValid=40;MinValid=0;RangoMax=40;RangoMin=0;Rango=40;Bits=9;Resolucion=2;"
    "Descripcion=Temperatura del agua;Parametro=12;Unidad=3;Nombre=Agua",
    // 10: the battery, supervised
    "Tipo=4;Flags=3;TRead=1;TEval=1;TStorage=0;TDiscret=0;MaxValid=20;MinValid=0;AMax=15;AMin=11.5;RangoMax=20;"
    "RangoMin=0;Rango=20;Bits=8;Resolucion=2;Descripcion=Tensión de batería;Parametro=9;Unidad=9;Nombre=Batería",
    "Descripcion=Libre", "Descripcion=Libre", "Descripcion=Libre", "Descripcion=Libre",
    // 15: the rain gauge; its range equals its span, since events are scaled through both
    "Tipo=5;Pila=8;Flags=9;TMed=10;TResetAlarma=60;MaxValid=40;MaxSubTx=5;RangoMax=4095;RangoMin=0;Rango=4095;"
    "Bits=12;CtePluvi=0.2;Descripcion=Precipitación;Parametro=3;Unidad=2;Nombre=Pluviómetro",
    // 16 and 17: door and float
    "Tipo=7;Flags=7;TRead=1;TEval=1;TStorage=0;TDiscret=0;RangoMax=0;Rango=0;Span=0;Bits=0;"
    "Descripcion=Puerta del gabinete;Parametro=10;Nombre=Puerta",
    "Tipo=7;Flags=3;TRead=1;TEval=1;TStorage=0;TDiscret=0;RangoMax=0;Rango=0;Span=0;Bits=0;"
    "Descripcion=Boya de nivel;Parametro=14;Nombre=Boya",
    "Tipo=7;RangoMax=0;Rango=0;Span=0;Bits=0;Descripcion=Libre",
    "Tipo=7;RangoMax=0;Rango=0;Span=0;Bits=0;Descripcion=Libre",
    "Tipo=7;RangoMax=0;Rango=0;Span=0;Bits=0;Descripcion=Libre",
    "Tipo=7;RangoMax=0;Rango=0;Span=0;Bits=0;Descripcion=Libre", "Descripcion=Libre", "Descripcion=Libre"};

}  // namespace utr::simulada
