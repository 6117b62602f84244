#include "segmentos_elf.h"

// The library that does this elsewhere is not to be had here. Both are held to the same files by the tests.
namespace morvane::console {

namespace {

/// The numbers of a file that is written with the highest byte first, or last.
class numeros {
 public:
  numeros(std::string_view contenido, bool alto_primero) : contenido_(contenido), alto_primero_(alto_primero) {}

  /// `ancho` bytes at `donde`; 0, and `bien` goes down, where the file ends before.
  std::uint64_t en(std::uint64_t donde, std::uint64_t ancho) {
    if (donde > contenido_.size() || ancho > contenido_.size() - donde) bien = false;
    std::uint64_t n = 0;
    for (std::uint64_t i = 0; bien && i < ancho; ++i) {
      const std::uint64_t cual = alto_primero_ ? i : ancho - 1 - i;
      n = n << 8 | static_cast<std::uint8_t>(contenido_[donde + cual]);
    }
    return n;
  }

  bool bien = true;

 private:
  std::string_view contenido_;
  bool alto_primero_;
};

/// Where things stand in files of 32 and of 64 bits.
struct disposicion {
  std::uint64_t palabra, tabla, medida, cuantos, en_fichero, direccion, bytes, entrada;
};
constexpr disposicion de_32{4, 28, 42, 44, 4, 12, 16, 32}, de_64{8, 32, 54, 56, 8, 24, 32, 56};

}  // namespace

std::optional<tabla_elf> leer_tabla_elf(std::string_view contenido) {
  constexpr std::size_t identidad = 16;
  constexpr char bits_32 = 1, bits_64 = 2, bajo_primero = 1, alto_primero = 2, version = 1;
  if (contenido.size() < identidad || contenido[6] != version) return std::nullopt;
  if (contenido[4] != bits_32 && contenido[4] != bits_64) return std::nullopt;
  if (contenido[5] != bajo_primero && contenido[5] != alto_primero) return std::nullopt;
  const disposicion& d = contenido[4] == bits_32 ? de_32 : de_64;
  numeros n(contenido, contenido[5] == alto_primero);
  tabla_elf t;
  t.procesador = static_cast<std::uint16_t>(n.en(18, 2));
  const std::uint64_t tabla = n.en(d.tabla, d.palabra), medida = n.en(d.medida, 2), cuantos = n.en(d.cuantos, 2);
  if (!n.bien || (cuantos > 0 && medida != d.entrada)) return std::nullopt;
  for (std::uint64_t i = 0; i < cuantos && n.bien; ++i) {
    const std::uint64_t aqui = tabla + i * d.entrada;
    if (aqui < tabla) return std::nullopt;
    t.segmentos.push_back({static_cast<std::uint32_t>(n.en(aqui, 4)), n.en(aqui + d.en_fichero, d.palabra),
                           n.en(aqui + d.direccion, d.palabra), n.en(aqui + d.bytes, d.palabra)});
  }
  return n.bien ? std::optional(t) : std::nullopt;
}

}  // namespace morvane::console
