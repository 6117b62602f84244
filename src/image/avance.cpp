#include "image/avance.h"

#include <cstdlib>

namespace morvane {

namespace {

constexpr int pasos = 25;

std::int64_t cociente_al_par(std::int64_t dividendo, std::int64_t divisor) {
  const std::int64_t entero = dividendo / divisor;
  const std::int64_t resto = dividendo % divisor;
  const std::int64_t falta = divisor - resto;
  const bool sube = resto > falta || (resto == falta && entero % 2 != 0);
  return sube ? entero + 1 : entero;
}

}  // namespace

avance::avance(contador_cambios& cambios)
    : Progress(cambios, "Progress", 0, pasos - 1), time_ini(cambios, "time_ini"), time_fin(cambios, "time_fin") {
  time_ini.Visible = false;
  time_fin.Visible = false;
}

void avanzar_progreso(avance& a, std::int64_t total, std::int64_t paso, std::int64_t& acumulado) {
  acumulado += paso;
  if (total <= 0) return;
  // Mostly the bar stays where it is, which is seen without a division: its step is nearer than half a step.
  if (std::abs(2 * (acumulado * pasos - a.Progress.Value * total)) < total) return;
  const std::int64_t valor = cociente_al_par(acumulado * pasos, total);
  if (valor <= a.Progress.Max) a.Progress.Value = static_cast<int>(valor);
}

labor_en_curso::labor_en_curso(avance& a, const plataforma& plat, labor::clase cual, std::int64_t total)
    : a_(a), plat_(plat) {
  labor& m = a_.labor;
  m.cual = cual;
  m.como = labor::final::interrumpida;
  m.donde = {};
  m.sin_confirmar = 0;
  m.en_curso = true;
  m.total = total;
  m.hechos = 0;
  m.inicio = plat_.ahora_sin_cajas();
  ++m.cuantas;
}

labor_en_curso::~labor_en_curso() {
  a_.labor.gastado += plat_.ahora_sin_cajas() - a_.labor.inicio;
  a_.labor.en_curso = false;
  a_.mapa.reposar();
}

}  // namespace morvane
