#pragma once

#include <sys/resource.h>

#include <csignal>
#include <cstdint>

namespace utr {

// For the span of a scope no file can grow beyond that many bytes: a disk that is full in the middle of a write.
class DispositivoLleno {
 public:
  explicit DispositivoLleno(std::uint64_t bytes) {
    getrlimit(RLIMIT_FSIZE, &anterior_);
    senal_ = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limite = anterior_;
    limite.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limite);
  }
  ~DispositivoLleno() {
    setrlimit(RLIMIT_FSIZE, &anterior_);
    std::signal(SIGXFSZ, senal_);
  }
  DispositivoLleno(const DispositivoLleno&) = delete;
  DispositivoLleno& operator=(const DispositivoLleno&) = delete;

 private:
  rlimit anterior_{};
  void (*senal_)(int) = nullptr;
};

}  // namespace utr
