#include "files/lector_lineas.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "lectura.h"

namespace morvane {

namespace {

constexpr std::size_t bloque = std::size_t{64} * 1024;
constexpr std::uint64_t mebibyte = std::uint64_t{1024} * 1024;

std::string explicar(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return "el archivo no existe";
    case EACCES:
    case EPERM:
      return "no hay permiso para leerlo";
    case EISDIR:
    case ENODEV:
      return "no es un archivo normal";
    case ENAMETOOLONG:
      return "el nombre es demasiado largo";
    case ELOOP:
      return "sus enlaces se muerden la cola";
    case EIO:
      return "no se puede leer: el disco ha dado un error";
    default:
      return "no se puede leer: error " + std::to_string(error) + " del sistema";
  }
}

}  // namespace

struct lector_lineas::estado {
  lectura archivo;
  /// How much of it has been read.
  std::uint64_t leidos = 0;
  char fin_linea = '\r';
  /// The last line ended at a CR with nothing behind it in the buffer: an LF to come belongs to it.
  bool falta_lf = false;
  bool fallo = false;
  std::string motivo;
  std::string partida;
  std::size_t inicio = 0, fin = 0;
  std::array<char, bloque> datos;

  bool fallar(std::string por_que);
  bool fallar(int error) { return fallar(explicar(error)); }
  bool rellenar();
  bool buscar_final(finales como);
  bool preparar_lectura();
  bool linea_partida(linea& destino);
  void pasar_final(std::size_t donde);
  const char* final_en_bloque() const;
};

bool lector_lineas::estado::fallar(std::string por_que) {
  fallo = true;
  motivo = std::move(por_que);
  inicio = fin = 0;
  archivo.cerrar();
  return false;
}

/// Reads the next block over the old one. False at the end of the file and after an error.
bool lector_lineas::estado::rellenar() {
  inicio = fin = 0;
  if (!archivo.abierta()) return false;
  const std::int64_t hechos = archivo.leer(datos.data(), datos.size());
  if (hechos < 0) return fallar(archivo.error());
  leidos += static_cast<std::uint64_t>(hechos);
  if (hechos == 0 ? !archivo.sigue_igual() : leidos > archivo.tamano()) return fallar("ha cambiado mientras se leía");
  if (hechos == 0) archivo.cerrar();
  fin = static_cast<std::size_t>(hechos);
  return fin > 0;
}

/// Settles what ends a line, and goes back to the beginning. False after an error.
bool lector_lineas::estado::buscar_final(finales como) {
  fin_linea = '\r';
  if (como == finales::cr) return true;
  bool hay_cr = false;
  // No further than the file reached: one that somebody writes to might have no end.
  for (std::uint64_t vistos = 0; !hay_cr && vistos < archivo.tamano();) {
    const std::int64_t hechos = archivo.leer(datos.data(), datos.size());
    if (hechos < 0) return fallar(archivo.error());
    if (hechos == 0) break;
    hay_cr = std::memchr(datos.data(), '\r', static_cast<std::size_t>(hechos)) != nullptr;
    vistos += static_cast<std::uint64_t>(hechos);
  }
  if (!hay_cr) fin_linea = '\n';
  const int error = archivo.volver();
  return error == 0 || fallar(error);
}

inline const char* lector_lineas::estado::final_en_bloque() const {
  return static_cast<const char*>(std::memchr(datos.data() + inicio, fin_linea, fin - inicio));
}

/// Goes on behind the line end at `donde`.
inline void lector_lineas::estado::pasar_final(std::size_t donde) {
  inicio = donde + 1;
  if (fin_linea != '\r') return;
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
    const char* final = final_en_bloque();
    completa = final != nullptr;
    const std::size_t donde = completa ? static_cast<std::size_t>(final - datos.data()) : fin;
    partida.append(datos.data() + inicio, std::min(donde - inicio, maximo - partida.size()));
    destino.largo += donde - inicio;
    if (completa) pasar_final(donde);
  } while (!completa && rellenar());
  destino.texto = partida;
  return !fallo;
}

lector_lineas::lector_lineas() : e_(std::make_unique_for_overwrite<estado>()) {}
lector_lineas::~lector_lineas() = default;

bool lector_lineas::abrir(const std::string& ruta, finales como) {
  e_->inicio = e_->fin = 0;
  e_->leidos = 0;
  e_->falta_lf = e_->fallo = false;
  e_->motivo.clear();
  if (const int error = e_->archivo.abrir(ruta)) return e_->fallar(error);
  if (e_->archivo.tamano() > tamano_maximo) {
    return e_->fallar("es demasiado grande: el máximo son " + std::to_string(tamano_maximo / mebibyte) + " MiB");
  }
  return e_->buscar_final(como);
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
  const char* final = e.final_en_bloque();
  if (final == nullptr) return e.linea_partida(destino);
  const auto donde = static_cast<std::size_t>(final - e.datos.data());
  destino.largo = donde - e.inicio;
  destino.texto = {e.datos.data() + e.inicio, std::min(donde - e.inicio, maximo)};
  e.pasar_final(donde);
  return true;
}

bool lector_lineas::fallo() const {
  return e_->fallo;
}
const std::string& lector_lineas::motivo() const {
  return e_->motivo;
}

}  // namespace morvane
