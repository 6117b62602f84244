#include "segmentos_elf.h"

#include <gelf.h>

#include <memory>
#include <string>

namespace morvane::console {

namespace {

struct cerrar_elf {
  void operator()(Elf* e) const { elf_end(e); }
};
using elf_abierto = std::unique_ptr<Elf, cerrar_elf>;

}  // namespace

std::optional<tabla_elf> leer_tabla_elf(std::string_view contenido) {
  elf_version(EV_CURRENT);
  // The library asks for memory that it could write to, which it does not while it only reads.
  std::string copia(contenido);
  const elf_abierto e(elf_memory(copia.data(), copia.size()));
  GElf_Ehdr cabecera;
  if (!e || elf_kind(e.get()) != ELF_K_ELF || gelf_getehdr(e.get(), &cabecera) == nullptr) return std::nullopt;
  tabla_elf t{.procesador = cabecera.e_machine, .segmentos = {}};
  std::size_t cuantos = 0;
  if (elf_getphdrnum(e.get(), &cuantos) != 0) return std::nullopt;
  for (std::size_t i = 0; i < cuantos; ++i) {
    GElf_Phdr s;
    if (gelf_getphdr(e.get(), static_cast<int>(i), &s) == nullptr) return std::nullopt;
    t.segmentos.push_back({s.p_type, s.p_offset, s.p_paddr, s.p_filesz});
  }
  return t;
}

}  // namespace morvane::console
