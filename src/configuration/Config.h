#pragma once

#include <memory>
#include <string>

namespace utr {

// Everything that the unit knows about one measuring channel. The names are those of the channel table's columns.
// Nearly every value is a text, even where it holds a number: it travels as text between driver, files and dialogs, and
// is converted only where it is compared or computed on. Times are minutes, limits and alarms engineering units, span
// and zero counts of the converter.
struct Config {
  std::string Nombre;
  std::string Tipo;   // kind of sensor, "0" to "5" and "7"
  std::string Pila;   // stack of the flash that stores the channel
  std::string Flags;  // decimal of the option bits
  std::string TMed;
  std::string TRead;
  std::string TEval;
  std::string TStorage;
  std::string TDiscret;
  std::string TCero;
  std::string TResetAlarma;
  std::string MaxValid;
  std::string MinValid;
  std::string MaxSubVal;
  std::string MaxBajVal;
  std::string MaxSubTx;
  std::string MaxBajTx;
  std::string AMax;
  std::string AMin;
  std::string AlSub;
  std::string AlBaj;
  std::string AlMaxPico;
  std::string AlMinPico;
  std::string RangoMax;
  std::string RangoMin;
  std::string Rango;
  std::string Span;
  std::string Cero;
  std::string Bits;
  std::string Pagina;
  std::string Descripcion;
  std::string Canal;       // channel number, the identity of the record
  std::string Resolucion;  // "1" to "4": 1, 0.1, 0.01, 0.001
  double CtePluvi = 0;     // millimetres of rain for one tip of the gauge
  std::string NivRefLmn = "0";
  std::string Key;  // "C" and the channel number; never a column
  bool Modificado = false;
  std::string Parametro = "0";
  std::string Unidad;
  std::string RangoNegativo;  // "55" negative slope, "66" otherwise
};

using ConfigPtr = std::shared_ptr<Config>;

}  // namespace utr
