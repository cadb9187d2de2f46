#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// The names of the files that come of processing a recovery file. All of one run begin alike.
namespace utr {

class ArchivosResultado {
 public:
  // `recuperacion`: the recovery file; the results begin with its name less its last four characters. Raises kLlamada
  // for a name of less than four.
  ArchivosResultado(const std::filesystem::path& carpeta, const std::filesystem::path& recuperacion);

  std::filesystem::path Datos() const;  // no result has this name; those of the channels are made from it
  std::filesystem::path Canal(std::int16_t canal) const;
  std::filesystem::path Cola() const;
  std::filesystem::path Eventos() const;
  std::filesystem::path Informe() const;

  // The result files of that name that are in the folder, by name.
  std::vector<std::filesystem::path> Existentes() const;

 private:
  std::filesystem::path carpeta_;
  std::string base_;
};

// The report that belongs to a file with the name of a result, whether it is there or not; empty for any other name.
std::filesystem::path InformeDeResultado(const std::filesystem::path& resultado);

// True for a file with the name of a result that holds the queue of what is to be sent; downloads call theirs so, too.
bool EsResultadoDeCola(const std::filesystem::path& resultado);

}  // namespace utr
