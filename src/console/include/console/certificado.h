#pragma once

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <variant>

#include "console/clave.h"
#include "files/causa_archivo.h"

/// What was done to a chip, in JSON that nobody can change without its being found.
namespace morvane::console {

/// The contents of a certificate: what was done, as fields in the order in which they stand there, and signed. Its
/// bytes follow from the fields alone. Numbers in it are whole.
std::string certificado_firmado(const nlohmann::ordered_json& hechos, const clave& con);

/// Why a certificate does not hold.
struct fallo_certificado {
  enum class clase : std::uint8_t {
    /// It cannot be read: `archivo`.
    leer,
    /// It is no certificate at all, or of a form of later.
    no_es,
    /// It was changed after it was signed: its bytes are not those that its fields give; its signature is not of them.
    cambiado,
    firma_mala,
  };
  clase cual = clase::no_es;
  causa_archivo archivo{};
};

struct certificado_leido {
  nlohmann::ordered_json hechos;
  /// The public half of the key that signed it.
  std::string clave;
};

/// Reads a certificate and proves it whole, byte for byte.
std::variant<certificado_leido, fallo_certificado> comprobar_certificado(const std::filesystem::path& ruta);
/// The same of its contents.
std::variant<certificado_leido, fallo_certificado> comprobar_contenido(std::string_view contenido);

/// In Spanish, without capital and full stop.
std::string frase(const fallo_certificado& fallo);

}  // namespace morvane::console
