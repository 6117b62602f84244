#include "barra.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "files/texto.h"
#include "frases/numeros.h"

namespace morvane::console {

namespace {

constexpr job::tiempo para_saber_el_ritmo = std::chrono::milliseconds{500};
constexpr double bytes_por_kib = 1024;

double segundos(job::tiempo t) {
  return std::chrono::duration<double>(t).count();
}

}  // namespace

std::string duracion(job::tiempo t) {
  constexpr double en_enteros = 10;
  constexpr std::int64_t minuto = 60;
  const double s = segundos(t);
  if (s < en_enteros) return decimal(s) + " s";
  const std::int64_t n = std::lround(s);
  if (n < minuto) return std::to_string(n) + " s";
  return std::to_string(n / minuto) + " min " + std::to_string(n % minuto) + " s";
}

namespace {

/// Rate and time left, as far as anything is known of them.
std::string ritmo_y_resto(std::int64_t hechos, std::int64_t total, job::tiempo gastado) {
  if (gastado < para_saber_el_ritmo || hechos <= 0) return {};
  const double ritmo = static_cast<double>(hechos) / segundos(gastado);
  const auto quedan = job::tiempo{std::llround(static_cast<double>(total - hechos) / ritmo * 1e6)};
  return "  " + decimal(ritmo / bytes_por_kib) + " KiB/s  quedan " + duracion(quedan);
}

std::string dibujo(double parte, int largo) {
  const auto llenos = static_cast<std::size_t>(parte * largo), todos = static_cast<std::size_t>(largo);
  return "  [" + std::string(llenos, '#') + std::string(todos - llenos, '.') + "]";
}

}  // namespace

std::string texto_de_barra(std::string_view nombre, std::int64_t hechos, std::int64_t total, job::tiempo gastado,
                           int ancho) {
  constexpr int barra_maxima = 30, barra_minima = 4, adornos = 4;
  std::string t(nombre);
  const auto cabe = [&](const std::string& mas) { return static_cast<int>(longitud(t) + longitud(mas)) <= ancho; };
  if (total <= 0) return cabe("…") ? t + "…" : std::string(trozo(t, 1, static_cast<std::size_t>(ancho)));
  const double parte = std::clamp(static_cast<double>(hechos) / static_cast<double>(total), 0.0, 1.0);
  const std::string tanto = " " + std::to_string(static_cast<int>(parte * 100)) + " %";
  std::string cola = tanto + ritmo_y_resto(hechos, total, gastado);
  if (!cabe(cola)) cola = tanto;
  const int libre = ancho - adornos - static_cast<int>(longitud(t) + longitud(cola));
  if (libre >= barra_minima) return t + dibujo(parte, std::min(libre, barra_maxima)) + cola;
  t += cola;
  return std::string(trozo(t, 1, static_cast<std::size_t>(ancho)));
}

}  // namespace morvane::console
