#include "schedule/FDLHorarios.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/Error.h"
#include "base/Texto.h"

namespace utr {
namespace {

constexpr const char* kModulo = "FDLHorarios";

const char* SiNo(bool valor) {
  return valor ? "Si" : "No";
}

TablaPtr TablaVacia() {
  auto tabla = std::make_shared<Tabla>();
  tabla->Append("key", TipoCampo::kVarChar, 100);
  tabla->Append("Horario", TipoCampo::kVarChar, 100);
  for (const char* clase : {"TOblig", "TWind", "TCond"}) tabla->Append(clase, TipoCampo::kVarChar, 3);
  tabla->Append("HorarioInteger", TipoCampo::kEntero, 4);
  tabla->Open();
  return tabla;
}

void AgregarFila(Tabla& tabla, const FDLHoraro& horario) {
  tabla.AddNew();
  tabla.Set("key", Reemplazar(horario.Key, "C", ""));
  tabla.Set("Horario", TextoHorario(horario.Horario) + ":00");
  tabla.Set("TOblig", SiNo(horario.TOblig));
  tabla.Set("TWind", SiNo(horario.TWind));
  tabla.Set("TCond", SiNo(horario.TCond));
  tabla.Set("HorarioInteger", Valor{std::int64_t{horario.Horario}});
  tabla.UpdateBatch();
}

}  // namespace

std::string TextoHorario(int minuto) {
  const int del_dia = MinutoDelDia(minuto);
  return fmt::format("{:02}:{:02}", del_dia / 60, del_dia % 60);
}

FDLHorarios::FDLHorarios(const FDLHorarios& otro) : DuracionVentana(otro.DuracionVentana), claves_(otro.claves_) {
  for (const FDLHoraroPtr& horario : otro) elementos_.push_back(std::make_shared<FDLHoraro>(*horario));
}

FDLHorarios& FDLHorarios::operator=(const FDLHorarios& otro) {
  if (this != &otro) *this = FDLHorarios(otro);
  return *this;
}

FDLHoraroPtr FDLHorarios::Add(std::int16_t Horario, std::string_view sKey) {
  if (FDLHoraroPtr presente = Buscar(Horario)) return presente;
  auto nuevo = std::make_shared<FDLHoraro>(FDLHoraro{
      .Horario = Horario, .TWind = true, .TCond = true, .TOblig = true, .Key = std::to_string(Horario) + 'C'});
  const std::string clave = sKey.empty() ? nuevo->Key : std::string(sKey);
  if (EnClave(clave)) Lanzar(error::kLlamada, kModulo);
  claves_.push_back(clave);
  elementos_.push_back(nuevo);
  return nuevo;
}

FDLHoraroPtr FDLHorarios::Item(std::string_view minuto) const {
  FDLHoraroPtr horario = Buscar(minuto);
  if (!horario) Lanzar(error::kLlamada, kModulo);
  return horario;
}

void FDLHorarios::Remove(std::string_view clave) {
  const std::size_t lugar = Lugar(clave);
  if (lugar == elementos_.size()) Lanzar(error::kLlamada, kModulo);
  elementos_.erase(elementos_.begin() + static_cast<std::ptrdiff_t>(lugar));
  claves_.erase(claves_.begin() + static_cast<std::ptrdiff_t>(lugar));
}

TablaPtr FDLHorarios::GetRecMembers() const {
  TablaPtr tabla = TablaVacia();
  for (const FDLHoraroPtr& horario : elementos_) AgregarFila(*tabla, *horario);
  if (tabla->RecordCount() > 0) {
    tabla->Sort("HorarioInteger ASC");
    tabla->MoveFirst();
  }
  return tabla;
}

std::size_t FDLHorarios::Lugar(std::string_view clave) const {
  return static_cast<std::size_t>(std::find(claves_.begin(), claves_.end(), clave) - claves_.begin());
}

FDLHoraroPtr FDLHorarios::EnClave(std::string_view clave) const {
  const std::size_t lugar = Lugar(clave);
  return lugar == elementos_.size() ? nullptr : elementos_[lugar];
}

}  // namespace utr
