#pragma once

#include <numeric>
#include <optional>

#include "console/firmware.h"
#include "files/texto.h"
#include "fuzz/mesa.h"

/// What the targets for files of records share.
namespace apoyo {

/// The bytes of the digits behind the first `tras` characters; nothing if other characters stand there.
inline std::optional<std::vector<int>> octetos(const std::string& linea, std::size_t tras) {
  std::vector<int> todos;
  for (std::size_t i = tras; i + 1 < linea.size(); i += 2) {
    const int alta = morvane::digito_hex(linea[i]), baja = morvane::digito_hex(linea[i + 1]);
    if (alta < 0 || baja < 0) return std::nullopt;
    todos.push_back(16 * alta + baja);
  }
  return (linea.size() - tras) % 2 == 0 ? std::optional(todos) : std::nullopt;
}

/// Sets count and sum right in each line that has digits only, since chance never would. `tras`: what stands in front
/// of the count, `aparte`: bytes that it does not count, `base`: what all bytes and the sum come to.
inline std::string con_sumas_buenas(const std::string& texto, std::size_t tras, int aparte, int base) {
  std::string mejor;
  for (const std::string& linea : lineas_de(texto, "\r\n")) {
    auto todos = octetos(linea, std::min(tras, linea.size()));
    if (!todos || todos->size() < 3) {
      mejor += linea + "\n";
      continue;
    }
    todos->front() = (static_cast<int>(todos->size()) - aparte) & 0xFF;
    todos->back() = (base - std::accumulate(todos->begin(), todos->end() - 1, 0)) & 0xFF;
    mejor += linea.substr(0, tras);
    for (const int o : *todos) morvane::anadir_hex(mejor, static_cast<std::uint32_t>(o), 2);
    mejor += "\n";
  }
  return mejor;
}

/// A file of records from the fuzzer's bytes, as they are or with counts and sums set right.
inline std::string registros_de(const std::uint8_t* datos, std::size_t largo, std::size_t tras, int aparte, int base) {
  const std::string texto = archivo_de(datos, largo);
  return largo > 0 && datos[0] % 2 != 0 ? con_sumas_buenas(texto, tras, aparte, base) : texto;
}

}  // namespace apoyo
