#pragma once

#include <cstdint>
#include <string>

// The day numbers of DescribirCodigo and ConvertirA: days from 01/01/2000, which is 0; earlier days are negative.
namespace utr {

// Day number of a moment in seconds from 01/01/1970, and the seconds of a day's midnight.
std::int32_t DiaDe(std::int64_t segundos);
std::int64_t SegundosDeDia(std::int32_t dia);

// Date text of a day number.
std::string FechaDeDia(std::int32_t dia);

}  // namespace utr
