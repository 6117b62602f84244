#include "image/cargar_s19.h"

#include "files/lector_lineas.h"

namespace morvane {

namespace {

/// Number of address digits of a data line, 0 for any other line.
std::uint8_t ancho_de_tipo(std::string_view linea) {
  if (linea.size() < 2 || linea[0] != 'S' || linea[1] < '1' || linea[1] > '3') return 0;
  return static_cast<std::uint8_t>(2 * (linea[1] - '1') + 4);
}

std::optional<fallo_carga> leer_registros(Variables_grab& v, avance& a) {
  lector_lineas lector;
  if (!lector.abrir(v.ruta_archivo, lector_lineas::finales::todos)) return fallo_de_archivo(lector.causa());
  const auto total = static_cast<std::int64_t>(lector.tamano());
  std::int64_t acumulado = 0;
  lector_lineas::linea linea;
  for (std::uint64_t numero = 1; !a.cancelar && lector.siguiente(linea); ++numero) {
    avanzar_progreso(a, total, static_cast<std::int64_t>(linea.largo), acumulado);
    const std::uint8_t ancho_dir = ancho_de_tipo(linea.texto);
    if (ancho_dir == 0) {
      v.carga.anotar_ajena(linea.texto, numero);
      continue;
    }
    if (const auto fallo = cargar_registro_s(v, linea.texto, linea.largo, ancho_dir)) {
      return fallo_en_linea(numero, *fallo);
    }
    v.carga.anotar_registro(linea.texto, ancho_dir, numero);
  }
  if (lector.fallo()) return fallo_de_archivo(lector.causa());
  return std::nullopt;
}

}  // namespace

std::optional<fallo_carga> cargar_s19(plataforma& plat, Variables_grab& v, avance& a) {
  a.time_ini.Text = plat.hora();
  a.Progress.Value = 0;
  plat.DoEvents();
  v.dir_max = 0;
  v.carga = {};
  auto fallo = leer_registros(v, a);
  if (fallo) {
    desechar_carga(v);
  } else {
    v.carga.como = a.cancelar ? informe_carga::estado::detenido : informe_carga::estado::entero;
  }
  a.time_fin.Text = plat.hora();
  return fallo;
}

}  // namespace morvane
