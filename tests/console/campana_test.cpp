#include <cstdlib>
#include <iostream>
#include <map>

#include "bridge/averias.h"
#include "console/banco_console.h"
#include "job/objetivo.h"

namespace {

using namespace morvane;
using apoyo::banco_console;
using nlohmann::json;
using puente::azar;

/// A whole call of the program in a world of its own: random files, a random chip, a random fault.
class mundo {
 public:
  explicit mundo(std::uint64_t semilla) : azar_(semilla) {
    for (const char* nombre : {"a.bin", "b.bin"}) b_.guardar(nombre, sortear());
    const job::objetivo antes = de_archivo(azar_.una_de(2) ? "a.bin" : "b.bin");
    if (!azar_.una_de(3)) std::ranges::copy(antes.bytes, flash().begin());
    if (azar_.una_de(3)) flash()[azar_.hasta(0x40000)] ^= static_cast<std::uint8_t>(1 << azar_.hasta(8));
    averia = puente::averia_al_azar(b_.lejos.placa.fallos, b_.lejos.chip.modo, azar_).nombre;
    b_.lejos.placa.averiar(b_.lejos.placa.fallos);
    // A cell that is stuck is so before the order, too.
    b_.lejos.chip.abrir();
    b_.lejos.chip.cerrar();
  }

  /// What is wrong with what the program says; empty if nothing is.
  std::string juzgar() {
    const std::vector<std::uint8_t> antes(flash().begin(), flash().end());
    const std::string prueba = azar_.una_de(20) ? "lectura" : "sumas";
    const std::string ordenes[] = {"grabar @a.bin --certificado @c.json --prueba " + prueba,
                                   "grabar @a.bin --todo",
                                   "verificar @a.bin --prueba " + prueba,
                                   "identificar @a.bin @b.bin",
                                   "leer --desde 10 --hasta 2FF @l.bin",
                                   "borrar",
                                   "estado"};
    orden = ordenes[azar_.hasta(std::size(ordenes))];
    const json r = b_.resultado(orden);
    codigo = r["codigo"];
    const bool escribe = orden.starts_with("grabar") || orden == "borrar";
    if (!escribe && !std::ranges::equal(antes, flash())) return "a reading order has changed the chip";
    const bool hay = std::filesystem::exists(b_.dir.ruta() / "c.json");
    if (hay != (codigo == 0 && orden.find("certificado") != std::string::npos))
      return "a certificate of nothing, or none";
    if (codigo == 1) return "a fault of its own: " + r.dump();
    return codigo != 0 || verdad(r, prueba) ? "" : "exit code 0 on another chip: " + r.dump();
  }

  std::string averia, orden;
  int codigo = 0;

 private:
  std::span<std::uint8_t> flash() { return b_.lejos.chip.flash(); }

  std::vector<std::uint8_t> sortear() {
    const auto semilla = static_cast<std::uint32_t>(azar_.hasta(1'000'000));
    std::vector<std::uint8_t> d = apoyo::ruidosos(1 + azar_.hasta(azar_.una_de(3) ? 2'000 : 200), semilla);
    if (azar_.una_de(3)) std::fill_n(d.begin(), d.size() / 2, std::uint8_t{0xFF});
    return d;
  }
  job::objetivo de_archivo(const std::string& nombre) {
    Variables_grab v = apoyo::imagen_vacia();
    const std::string bytes = b_.dir.leer(nombre);
    apoyo::poner(v, 0, {bytes.begin(), bytes.end()});
    return job::objetivo(v);
  }
  job::objetivo del_chip() {
    job::objetivo o;
    o.bytes.assign(flash().begin(), flash().end());
    return o;
  }

  bool verdad(const json& r, const std::string& prueba) {
    const job::objetivo a = de_archivo("a.bin"), chip = del_chip();
    if (orden == "estado") return true;
    if (orden == "borrar") return chip.sumas() == job::firma::en_blanco();
    if (orden.starts_with("leer")) {
      const std::string leido = b_.dir.leer("l.bin");
      return std::ranges::equal(leido, flash().subspan(0x10, 0x2F0),
                                [](char c, std::uint8_t f) { return static_cast<std::uint8_t>(c) == f; });
    }
    if (orden.starts_with("identificar")) {
      const std::string nombre = std::filesystem::path(r["identificado"].get<std::string>()).filename().string();
      return de_archivo(nombre).sumas() == chip.sumas();
    }
    return prueba == "lectura" && orden.find("prueba") != std::string::npos ? a.bytes == chip.bytes
                                                                            : a.sumas() == chip.sumas();
  }

  azar azar_;
  banco_console b_;
};

// Random calls on boards with random faults. CONSOLA_SEED and CONSOLA_WORLDS run other ones; then the exit codes are
// told by fault.
TEST(console_campaign, exit_code_0_is_true_whatever_the_board_does) {
  const char *semilla = std::getenv("CONSOLA_SEED"), *mundos = std::getenv("CONSOLA_WORLDS");
  const std::uint64_t desde = semilla != nullptr ? std::strtoull(semilla, nullptr, 10) : 1;
  const std::uint64_t cuantos = mundos != nullptr ? std::strtoull(mundos, nullptr, 10) : 150;
  std::map<std::string, std::map<int, int>> fines;
  int malos = 0;
  for (std::uint64_t s = desde; s < desde + cuantos && malos < 20; ++s) {
    mundo m(s);
    const std::string mal = m.juzgar();
    ++fines[m.averia][m.codigo];
    if (mal.empty()) continue;
    ++malos;
    ADD_FAILURE() << "seed " << s << ", " << m.averia << ", " << m.orden << ": " << mal;
  }
  if (mundos == nullptr) return;
  for (const auto& [averia, cuenta] : fines) {
    std::cout << averia;
    for (const auto& [fin, veces] : cuenta) std::cout << "  " << fin << ":" << veces;
    std::cout << "\n";
  }
}

}  // namespace
