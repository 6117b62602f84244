#include "job/plan.h"

#include <algorithm>

#include "job/mandato.h"

namespace morvane::job {

namespace {

/// What stands around the words in a run: opening, readiness, the nine sums of the proof, and the closing.
std::int64_t coste_fijo() {
  const std::int64_t a = permitir_escritura().coste(), c = ver_estado().coste();
  const std::int64_t apertura = abrir_chip().coste() + c + a + configurar().coste() + a + c;
  const std::int64_t sumas = examinar(0, ventana_corta).coste() + bloques_de_flash * examinar(0, ventana_larga).coste();
  return apertura + sumas + a + c + cerrar_chip().coste();
}

/// All blocks looked at, and the look behind them.
std::int64_t coste_de_mirar(int bloques) {
  return bloques * examinar(0, ventana_larga).coste() + ver_estado().coste();
}

class planificador {
 public:
  explicit planificador(const Variables_grab& v) : v_(v), que_(v) {}

  plan correr() {
    p_.escrito = que_.escrito;
    repartir();
    contar_palabras();
    contar_caracteres();
    mirar_arranque();
    mirar_configuracion();
    mirar_ventana();
    if (v_.dir_max >= chip.flash && marcado_entre({chip.flash, v_.dir_max + 1})) dudar(duda::fuera_de_flash);
    return std::move(p_);
  }

 private:
  void dudar(duda d) { p_.dudas.push_back(d); }
  bool marcado(std::int32_t dir) const { return v_.mascara_salida[static_cast<std::size_t>(dir)] != 0; }
  bool marcado_entre(tramo t) const {
    return std::any_of(v_.mascara_salida.begin() + t.desde, v_.mascara_salida.begin() + t.hasta,
                       [](std::uint8_t m) { return m != 0; });
  }

  void repartir() {
    for (std::int32_t dir = que_.escrito.desde; dir < que_.escrito.hasta;) {
      const bool hay = marcado(dir);
      const std::int32_t desde = dir;
      while (dir < que_.escrito.hasta && marcado(dir) == hay) ++dir;
      (hay ? p_.datos : p_.huecos).push_back({desde, dir});
    }
    if (que_.escrito.vacio()) dudar(duda::vacia);
  }

  void contar_palabras() {
    for (std::int32_t dir = que_.escrito.desde; dir < que_.escrito.hasta; dir += bytes_por_palabra) {
      ++(que_.palabra(dir) == palabra_en_blanco ? p_.palabras_ff : p_.palabras);
    }
    if (!que_.escrito.vacio() && p_.palabras == 0) dudar(duda::solo_ff);
  }

  void contar_caracteres() {
    const std::int64_t a = permitir_escritura().coste(), c = ver_estado().coste(), g = grabar(0, 0).coste();
    // The write enable that readiness has left serves the first word of a blank chip, or the erase.
    p_.caracteres_en_blanco = coste_fijo() + coste_de_mirar(bloques_de_flash) + p_.palabras * (a + g) - a;
    p_.caracteres = coste_fijo() + coste_de_mirar(1) + borrar_todo().coste() + c + a +
                    coste_de_mirar(bloques_de_flash) + p_.palabras * (a + g) - a;
    const std::int64_t listo = 2 * a + configurar().coste() + 3 * c;
    p_.caracteres_ventana = abrir_chip().coste() + listo + borrar_todo().coste() + c + (listo - a - c) +
                            (p_.palabras + p_.palabras_ff) * (a + g) + cerrar_chip().coste();
  }

  void mirar_arranque() {
    const auto en_blanco = [&](std::int32_t dir) { return que_.palabra(dir) == palabra_en_blanco; };
    const tramo t = chip.arranque;
    if (p_.palabras > 0 && en_blanco(t.desde) && en_blanco(t.hasta - bytes_por_palabra)) dudar(duda::sin_arranque);
  }

  void mirar_configuracion() {
    const tramo t = chip.configuracion;
    p_.configuracion.assign(que_.bytes.begin() + t.desde, que_.bytes.begin() + t.hasta);
    if (marcado_entre(t)) dudar(duda::datos_en_configuracion);
    const bool escribe = std::ranges::any_of(p_.configuracion, [](std::uint8_t b) { return b != 0xFF; });
    if (escribe) dudar(duda::escribe_configuracion);
    if (que_.protege()) dudar(duda::protegera);
  }

  /// The window sums the image's cells themselves: the first 1,025, and whole blocks up to the one of `dir_max`.
  void mirar_ventana() {
    const std::int32_t mira = std::min(v_.dir_max / ventana_larga + 1, bloques_de_flash) * ventana_larga;
    if (mira < chip.flash) {
      p_.sin_mirar = {mira, chip.flash};
      dudar(duda::ventana_no_mira_todo);
    }
    bool distinta = suma_de_celdas({0, ventana_corta}) != que_.suma({0, ventana_corta});
    bool en_blanco = true;
    for (std::int32_t dir = 0; dir < mira; dir += ventana_larga) {
      const tramo t{dir, dir + ventana_larga};
      const std::uint32_t celdas = suma_de_celdas(t);
      distinta = distinta || celdas != que_.suma(t);
      en_blanco = en_blanco && celdas == 0xFF * static_cast<std::uint32_t>(ventana_larga);
    }
    if (distinta) dudar(duda::ventana_dira_distinta);
    if (en_blanco) dudar(duda::ventana_no_distingue_de_blanco);
  }

  std::uint32_t suma_de_celdas(tramo t) const {
    std::uint32_t s = 0;
    for (std::int32_t dir = t.desde; dir < t.hasta; ++dir) s += v_.buffer_salida[static_cast<std::size_t>(dir)];
    return s;
  }

  const Variables_grab& v_;
  const objetivo que_;
  plan p_;
};

}  // namespace

plan planear(const Variables_grab& v) {
  return planificador(v).correr();
}

}  // namespace morvane::job
