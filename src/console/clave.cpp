#include "console/clave.h"

#include <sodium.h>

#include <algorithm>

#include "frases/frases.h"
#include "platform/rutas.h"

namespace morvane::console {

namespace {

template <std::size_t n>
std::string en_hexadecimal(const std::array<unsigned char, n>& bytes) {
  std::array<char, 2 * n + 1> texto{};
  return sodium_bin2hex(texto.data(), texto.size(), bytes.data(), bytes.size());
}

/// False unless `texto` is the one form of such bytes: lower case, nothing before or behind.
template <std::size_t n>
bool de_hexadecimal(std::string_view texto, std::array<unsigned char, n>& bytes) {
  std::size_t largo = 0;
  const bool leido =
      sodium_hex2bin(bytes.data(), bytes.size(), texto.data(), texto.size(), nullptr, &largo, nullptr) == 0;
  return leido && largo == n && en_hexadecimal(bytes) == texto;
}

const unsigned char* sin_signo(std::string_view texto) {
  return reinterpret_cast<const unsigned char*>(texto.data());
}

}  // namespace

clave::clave(const std::array<std::uint8_t, 32>& semilla) {
  crypto_sign_seed_keypair(publica_.data(), secreta_.data(), semilla.data());
}

clave::~clave() {
  sodium_memzero(secreta_.data(), secreta_.size());
}

std::string clave::publica() const {
  return en_hexadecimal(publica_);
}

std::string clave::firma(std::string_view texto) const {
  std::array<unsigned char, crypto_sign_BYTES> firma{};
  crypto_sign_detached(firma.data(), nullptr, sin_signo(texto), texto.size(), secreta_.data());
  return en_hexadecimal(firma);
}

bool clave::comprobar(std::string_view texto, std::string_view firma, std::string_view publica) {
  std::array<unsigned char, crypto_sign_BYTES> f{};
  std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> p{};
  return de_hexadecimal(firma, f) && de_hexadecimal(publica, p) &&
         crypto_sign_verify_detached(f.data(), sin_signo(texto), texto.size(), p.data()) == 0;
}

std::string frase(const fallo_clave& fallo) {
  using clase = fallo_clave::clase;
  const std::string ruta = "la clave " + texto_de(fallo.ruta);
  switch (fallo.cual) {
    case clase::sin_carpeta:
      return "no hay dónde guardar la clave con que se firma: este usuario no tiene carpeta propia";
    case clase::leer:
      return "no se puede leer " + ruta + ": " + frase(fallo.archivo);
    case clase::escribir:
      return "no se puede crear " + ruta + ": " + frase_de_escritura(fallo.archivo);
    case clase::danada:
      return ruta + " está dañada; si no tiene copia, apártela y se creará otra";
    case clase::ajena:
      return ruta + " es de otro usuario";
    case clase::abierta:
      return ruta + " la pueden leer otros: ejecute «chmod 600» sobre ella, o apártela y se creará otra";
  }
  return {};
}

}  // namespace morvane::console
