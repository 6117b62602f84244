#include "image/mapa_flash.h"

#include <algorithm>

namespace morvane {

namespace {

/// Numbers of cells, the last one excluded.
struct celdas {
  int primera, fin;
};

tramo en_la_flash(tramo t) {
  return {std::clamp(t.desde, 0, total_flash), std::clamp(t.hasta, 0, total_flash)};
}

int celda_de(std::int32_t dir) {
  return dir / bytes_por_celda;
}

int celda_desde(std::int32_t dir) {
  return (dir + bytes_por_celda - 1) / bytes_por_celda;
}

celdas tocadas(tramo t) {
  const tramo dentro = en_la_flash(t);
  return dentro.vacio() ? celdas{0, 0} : celdas{celda_de(dentro.desde), celda_desde(dentro.hasta)};
}

celdas enteras(tramo t) {
  const tramo dentro = en_la_flash(t);
  return {celda_desde(dentro.desde), celda_de(dentro.hasta)};
}

bool hay_datos(const std::vector<std::uint8_t>& bytes, tramo t) {
  return std::any_of(bytes.begin() + t.desde, bytes.begin() + t.hasta, [](std::uint8_t b) { return b != 0xFF; });
}

}  // namespace

void mapa_flash::quitar(unsigned hechos) {
  for (unsigned& una : celdas_) una &= ~hechos;
  ++cambios_;
}

/// Replaces what is known of the chip there.
void mapa_flash::poner(int celda, unsigned nuevos) {
  unsigned& una = celdas_[static_cast<std::size_t>(celda)];
  una = (una & bit(saber::imagen)) | nuevos;
}

void mapa_flash::nueva_imagen(const std::vector<std::uint8_t>& buffer_salida) {
  quitar(bit(saber::imagen) | bit(saber::igual) | bit(saber::distinta));
  escrito_ = {};
  for (int i = 0; i < celdas_del_mapa; ++i) {
    unsigned& una = celdas_[static_cast<std::size_t>(i)];
    if (sabe(i, saber::escrita)) una ^= bit(saber::escrita) | bit(saber::escrita_antes);
    if (hay_datos(buffer_salida, tramo_de_celda(i))) una |= bit(saber::imagen);
  }
}

void mapa_flash::olvidar_chip() {
  escrito_ = leido_ = cabeza_ = {};
  quitar(~bit(saber::imagen));
}

void mapa_flash::olvidar(tramo donde) {
  const celdas cuales = tocadas(donde);
  for (int i = cuales.primera; i < cuales.fin; ++i) poner(i, 0);
  ++cambios_;
}

void mapa_flash::borrado(tramo donde) {
  const celdas cuales = enteras(donde);
  for (int i = cuales.primera; i < cuales.fin; ++i) {
    const bool leida = sabe(i, saber::leida);
    poner(i, bit(saber::borrada) | (leida ? bit(saber::leida) : 0));
  }
  ++cambios_;
}

/// Cells that were written account for it; where there are none, something else has happened to the chip.
void mapa_flash::no_borrado(tramo donde) {
  const celdas cuales = tocadas(donde);
  for (int i = cuales.primera; i < cuales.fin; ++i) {
    if (sabe(i, saber::escrita) || sabe(i, saber::escrita_antes)) return;
  }
  olvidar(donde);
}

void mapa_flash::empezar_escritura(std::int32_t dir) {
  escrito_ = en_la_flash({dir, dir});
  cabeza_ = {};
  borde_ = 0;
}

void mapa_flash::pasar_a(std::int32_t dir) {
  if (!cabeza_.vacio()) dejar_escrita();
  escrito_.hasta = std::min(dir, total_flash);
  cabeza_ = {};
  borde_ = (dir / bytes_por_celda + 1) * bytes_por_celda;
  if (dir < total_flash) {
    poner(celda_de(dir), 0);
    cabeza_ = tramo_de_celda(celda_de(dir));
  }
  ++cambios_;
}

/// The cell at the head.
void mapa_flash::dejar_escrita() {
  const int celda = celda_de(cabeza_.desde);
  poner(celda, bit(saber::escrita) | (sabe(celda, saber::sin_confirmar) ? bit(saber::sin_confirmar) : 0));
}

void mapa_flash::sin_confirmacion() {
  if (cabeza_.vacio()) return;
  poner(celda_de(cabeza_.desde), bit(saber::sin_confirmar));
  ++cambios_;
}

void mapa_flash::fin_de_escritura(std::int32_t dir, bool rota) {
  if (!cabeza_.vacio() && !rota) {
    dejar_escrita();
    escrito_.hasta = std::min(dir, total_flash);
  }
  reposar();
}

void mapa_flash::empezar_lectura() {
  leido_ = {};
  quitar(bit(saber::leida));
}

void mapa_flash::lectura(tramo donde) {
  donde = en_la_flash(donde);
  if (donde.vacio()) return;
  // Behind a part that could not be read nothing is said of what lies before it.
  if (!leido_.vacio() && donde.desde != leido_.hasta) empezar_lectura();
  const celdas cuales = tocadas(donde);
  for (int i = cuales.primera; i < cuales.fin; ++i) celdas_[static_cast<std::size_t>(i)] |= bit(saber::leida);
  leido_ = {leido_.vacio() ? donde.desde : leido_.desde, donde.hasta};
  cabeza_ = donde;
  ++cambios_;
}

void mapa_flash::empezar_verificacion() {
  quitar(bit(saber::igual) | bit(saber::distinta));
}

void mapa_flash::examinar(tramo donde) {
  cabeza_ = en_la_flash(donde);
  ++cambios_;
}

void mapa_flash::comparado(tramo donde, bool igual) {
  const celdas cuales = igual ? enteras(donde) : tocadas(donde);
  for (int i = cuales.primera; i < cuales.fin; ++i) {
    unsigned& una = celdas_[static_cast<std::size_t>(i)];
    una &= ~(bit(saber::igual) | bit(saber::distinta));
    una |= bit(igual ? saber::igual : saber::distinta);
  }
  ++cambios_;
}

void mapa_flash::reposar() {
  cabeza_ = {};
  ++cambios_;
}

}  // namespace morvane
