#pragma once

#include <QString>
#include <memory>

namespace utr {

// Keeps the computer from falling asleep for the span of a scope, by the login service of the system. Where nobody is
// there to be asked nothing happens, and nothing waits for an answer.
class SinDormir {
 public:
  // `porque` is what the desktop shows as the reason.
  explicit SinDormir(const QString& porque);
  ~SinDormir();
  SinDormir(const SinDormir&) = delete;
  SinDormir& operator=(const SinDormir&) = delete;

 private:
  struct Pedido;
  std::unique_ptr<Pedido> pedido_;
};

}  // namespace utr
