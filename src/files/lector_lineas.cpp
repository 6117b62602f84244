#include "files/lector_lineas.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "lectura.h"

namespace morvane {

namespace {

constexpr std::size_t bloque = std::size_t{64} * 1024;
constexpr std::string_view marca_utf8 = "\xEF\xBB\xBF";

}  // namespace

struct lector_lineas::estado {
  lectura archivo;
  /// How much of it has been read.
  std::uint64_t leidos = 0;
  /// LF alone ends a line too.
  bool tambien_lf = false;
  /// The last line ended at a CR with nothing behind it in the buffer: an LF to come belongs to it.
  bool falta_lf = false;
  /// Of no class until reading fails.
  causa_archivo causa;
  std::string partida;
  std::size_t inicio = 0, fin = 0;
  /// The first of each in the buffer that is not behind `inicio`, as far as that has been looked for; `fin` for none.
  std::size_t cr = 0, lf = 0;
  std::array<char, bloque> datos;

  bool fallo() const { return causa.cual != causa_archivo::clase::ninguna; }
  bool fallar(const causa_archivo& por_que);
  bool rellenar();
  bool pasar_marca();
  bool preparar_lectura();
  bool linea_partida(linea& destino);
  void pasar_final(std::size_t donde);
  std::size_t buscar(std::size_t desde, char cual) const;
  std::size_t final_en_bloque();
};

bool lector_lineas::estado::fallar(const causa_archivo& por_que) {
  causa = por_que;
  inicio = fin = 0;
  archivo.cerrar();
  return false;
}

/// Reads the next block over the old one. False at the end of the file and after an error.
bool lector_lineas::estado::rellenar() {
  inicio = fin = 0;
  if (!archivo.abierta()) return false;
  const std::int64_t hechos = archivo.leer(datos.data(), datos.size());
  if (hechos < 0) return fallar(causa_de_lectura(archivo.error()));
  leidos += static_cast<std::uint64_t>(hechos);
  const bool cambiado = hechos == 0 ? !archivo.sigue_igual() : leidos > archivo.tamano();
  if (cambiado) return fallar({causa_archivo::clase::ha_cambiado});
  if (hechos == 0) archivo.cerrar();
  fin = static_cast<std::size_t>(hechos);
  cr = buscar(0, '\r');
  lf = tambien_lf ? buscar(0, '\n') : fin;
  return fin > 0;
}

/// Goes on behind the mark that says UTF-8, if the file begins with it. False after an error.
bool lector_lineas::estado::pasar_marca() {
  if (!rellenar()) return !fallo();
  if (std::string_view(datos.data(), fin).starts_with(marca_utf8)) inicio = marca_utf8.size();
  return true;
}

inline std::size_t lector_lineas::estado::buscar(std::size_t desde, char cual) const {
  const void* donde = std::memchr(datos.data() + desde, cual, fin - desde);
  return donde == nullptr ? fin : static_cast<std::size_t>(static_cast<const char*>(donde) - datos.data());
}

/// Where the next line ends; `fin` if not in this block. Each character is looked at once for each kind of end.
inline std::size_t lector_lineas::estado::final_en_bloque() {
  if (cr < inicio) cr = buscar(inicio, '\r');
  if (lf < inicio) lf = buscar(inicio, '\n');
  return std::min(cr, lf);
}

/// Goes on behind the line end at `donde`.
inline void lector_lineas::estado::pasar_final(std::size_t donde) {
  inicio = donde + 1;
  if (datos[donde] != '\r') return;
  falta_lf = inicio == fin;
  if (!falta_lf && datos[inicio] == '\n') ++inicio;
}

/// Makes sure that there is a character of the next line in the buffer. False if there is none.
bool lector_lineas::estado::preparar_lectura() {
  if (inicio == fin && !rellenar()) return false;
  const bool lf_pendiente = falta_lf && datos[inicio] == '\n';
  falta_lf = false;
  if (!lf_pendiente) return true;
  ++inicio;
  return inicio < fin || rellenar();
}

/// Takes a line that goes beyond the end of the buffer. False after an error.
bool lector_lineas::estado::linea_partida(linea& destino) {
  partida.clear();
  destino.largo = 0;
  bool completa = false;
  do {
    const std::size_t donde = final_en_bloque();
    completa = donde < fin;
    partida.append(datos.data() + inicio, std::min(donde - inicio, maximo - partida.size()));
    destino.largo += donde - inicio;
    if (completa) pasar_final(donde);
  } while (!completa && rellenar());
  destino.texto = partida;
  return !fallo();
}

lector_lineas::lector_lineas() : e_(std::make_unique_for_overwrite<estado>()) {}
lector_lineas::~lector_lineas() = default;

bool lector_lineas::abrir(const std::string& ruta, finales como) {
  e_->inicio = e_->fin = 0;
  e_->leidos = 0;
  e_->falta_lf = false;
  e_->causa = {};
  if (const int error = e_->archivo.abrir(ruta)) return e_->fallar(causa_de_lectura(error));
  if (e_->archivo.tamano() > tamano_maximo) {
    return e_->fallar({causa_archivo::clase::demasiado_grande, 0, tamano_maximo});
  }
  e_->tambien_lf = como == finales::todos;
  return como == finales::cr || e_->pasar_marca();
}

std::uint64_t lector_lineas::tamano() const {
  return e_->archivo.tamano();
}

bool lector_lineas::siguiente(linea& destino) {
  estado& e = *e_;
  if ((e.inicio == e.fin || e.falta_lf) && !e.preparar_lectura()) {
    destino = {};
    return false;
  }
  // A line that ends within the buffer is not copied.
  const std::size_t donde = e.final_en_bloque();
  if (donde == e.fin) return e.linea_partida(destino);
  destino.largo = donde - e.inicio;
  destino.texto = {e.datos.data() + e.inicio, std::min(donde - e.inicio, maximo)};
  e.pasar_final(donde);
  return true;
}

bool lector_lineas::fallo() const {
  return e_->fallo();
}
const causa_archivo& lector_lineas::causa() const {
  return e_->causa;
}

}  // namespace morvane
