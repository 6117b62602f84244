#include "barra.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "files/texto.h"

namespace morvane::console {

namespace {

constexpr job::tiempo para_saber_el_ritmo = std::chrono::milliseconds{500};
constexpr double bytes_por_kib = 1024;

double segundos(job::tiempo t) {
  return std::chrono::duration<double>(t).count();
}

}  // namespace

std::string decimal(double x) {
  std::string t(32, '\0');
  const int n = std::snprintf(t.data(), t.size(), "%.1f", x);
  t.resize(static_cast<std::size_t>(std::max(n, 0)));
  std::ranges::replace(t, '.', ',');
  return t;
}

std::string entero(std::int64_t n) {
  std::string t = std::to_string(n);
  constexpr std::size_t grupo = 3, minimo = 5;
  if (t.size() < minimo) return t;
  for (std::size_t i = t.size() - grupo; i > 0 && i<t.size(); i = i> grupo ? i - grupo : 0) t.insert(i, ".");
  return t;
}

std::string duracion(job::tiempo t) {
  constexpr double en_enteros = 10;
  constexpr std::int64_t minuto = 60;
  const double s = segundos(t);
  if (s < en_enteros) return decimal(s) + " s";
  const std::int64_t n = std::lround(s);
  if (n < minuto) return std::to_string(n) + " s";
  return std::to_string(n / minuto) + " min " + std::to_string(n % minuto) + " s";
}

std::string texto_de_barra(std::string_view nombre, std::int64_t hechos, std::int64_t total, job::tiempo gastado,
                           int ancho) {
  std::string t(nombre);
  if (total <= 0) return t + "…";
  const double parte = std::clamp(static_cast<double>(hechos) / static_cast<double>(total), 0.0, 1.0);
  std::string cola = " " + std::to_string(static_cast<int>(parte * 100)) + " %";
  if (gastado >= para_saber_el_ritmo && hechos > 0) {
    const double ritmo = static_cast<double>(hechos) / segundos(gastado);
    const auto quedan = job::tiempo{static_cast<std::int64_t>(static_cast<double>(total - hechos) / ritmo * 1e6)};
    cola += "  " + decimal(ritmo / bytes_por_kib) + " KiB/s  quedan " + duracion(quedan);
  }
  constexpr int maximo = 30, adornos = 4;
  const int libre = ancho - adornos - static_cast<int>(longitud(t) + longitud(cola));
  const int largo = std::min(libre, maximo);
  if (largo < 4) return t + cola;
  const int llenos = static_cast<int>(parte * largo);
  t.append("  [").append(static_cast<std::size_t>(llenos), '#').append(static_cast<std::size_t>(largo - llenos), '.');
  return t.append("]").append(cola);
}

}  // namespace morvane::console
