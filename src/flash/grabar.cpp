#include "flash/grabar.h"

#include <string_view>

#include "files/texto.h"
#include "flash/borrar.h"
#include "flash/habilitar.h"
#include "link/envio.h"
#include "link/esperas.h"
#include "link/puerto.h"

namespace morvane {

namespace {

constexpr std::int32_t bytes_por_grupo = 4;
/// Code and sum of a reply without data.
constexpr std::string_view confirmacion = "030";
constexpr const char* carpeta_diario = "C:\\Datos\\TORVAX-m68k\\";
constexpr const char* nombre_diario = "memoria.txt";

/// The first marked address, rounded down to a whole group; behind `dir_max` if nothing up to there is marked.
std::int32_t primera_direccion(const Variables_grab& v) {
  std::int32_t dir = 0;
  while (dir <= v.dir_max && v.mascara_salida[static_cast<std::size_t>(dir)] == 0) ++dir;
  return dir - dir % bytes_por_grupo;
}

/// The command that writes the group at `dir`. What lies beyond the flash goes out as erased.
void poner_comando(std::string& comando, const Variables_grab& v, std::int32_t dir) {
  std::uint32_t grupo = 0;
  for (std::int32_t i = dir; i < dir + bytes_por_grupo; ++i) {
    const std::uint8_t byte = dir < total_flash ? v.buffer_salida[static_cast<std::size_t>(i)] : 0xFF;
    grupo = grupo << 8 | byte;
  }
  comando.assign(1, 'g');
  anadir_hex(comando, static_cast<std::uint32_t>(dir), 6);
  anadir_hex(comando, grupo, std::size_t{2} * bytes_por_grupo);
}

/// Writes group after group and keeps the work on the PC's side within the time in which a reply is under way.
class bucle_de_grabado {
 public:
  bucle_de_grabado(enlace& e, const Variables_grab& v, avance& a) : e_(e), v_(v), a_(a), total_(v.dir_max) {}

  void correr(fichero& diario) {
    const std::int32_t primera = primera_direccion(v_);
    std::int32_t dir = primera;
    const labor_en_curso en_curso(a_, e_.plat, labor::clase::grabar, v_.dir_max + 1 - dir);
    a_.mapa.empezar_escritura(dir);
    while (dir <= v_.dir_max && !a_.cancelar && puede_seguir(e_)) {
      a_.mapa.escribir(dir);
      grupo(dir, diario);
      dir += bytes_por_grupo;
      a_.labor.hechos += bytes_por_grupo;
    }
    a_.mapa.fin_de_escritura(dir, e_.operacion.interrumpida);
    // The last group of a run that was broken off may or may not have been written.
    a_.labor.donde = {primera, e_.operacion.interrumpida && dir > primera ? dir - bytes_por_grupo : dir};
    if (puede_seguir(e_)) a_.labor.como = a_.cancelar ? labor::final::detenida : labor::final::hecha;
  }

 private:
  void grupo(std::int32_t dir, fichero& diario) {
    enviar_comando(e_, "a");
    poner_comando(comando_, v_, dir);
    esperar_datos_rapido(e_);
    const bool permitida = confirmada();
    enviar_comando_log(e_, comando_, diario);
    avanzar_progreso(a_, total_, bytes_por_grupo, escritos_);
    esperar_datos_rapido(e_);
    if (permitida && confirmada()) return;
    ++a_.labor.sin_confirmar;
    a_.mapa.sin_confirmacion();
  }

  /// What came last says that the command was carried out. One that was given up is no matter of the chip's.
  bool confirmada() const { return e_.respuesta == confirmacion || !puede_seguir(e_) || e_.operacion.sin_respuesta; }

  enlace& e_;
  const Variables_grab& v_;
  avance& a_;
  const std::int64_t total_;
  std::int64_t escritos_ = 0;
  std::string comando_;
};

void avisar_diario(enlace& e) {
  if (!puede_seguir(e)) return;
  preguntar(e,
            {"Atención", std::string("No se ha podido escribir completo el fichero: ") + carpeta_diario + nombre_diario,
             botones::Aceptar, icono::critico},
            {.que = asunto::sin_diario});
}

void avisar_fin_grabacion(enlace& e, const avance& a) {
  if (!puede_seguir(e)) return;
  const tramo donde = a.labor.donde;
  preguntar(e,
            {"", a.cancelar ? "El proceso de grabación ha sido detenido por el usuario" : "¡Ha terminado de grabar!"},
            {.que = a.cancelar ? asunto::grabado_detenido : asunto::grabada,
             .desde = donde.desde,
             .hasta = donde.hasta,
             .hay = static_cast<std::uint32_t>(a.labor.sin_confirmar)});
}

bool acepta_borrar_protegida(enlace& e) {
  return preguntar(e, {"Atención Memoria Protegida",
                       "La Flash del microcontrolador se encuentra protegida, desea borrarla para grabar un programa "
                       "nuevo?",
                       botones::SiNo, icono::critico}) == vbYes;
}

}  // namespace

void borrar_y_programar(enlace& e, Variables_grab& v, avance& a) {
  if (borrar_flash(e, a)) programar_flash(e, v, a);
}

void programar_flash(enlace& e, Variables_grab& v, avance& a) {
  if (!paso(e, "c")) return;
  const bool lista = e.bit_fs != 0 ? acepta_borrar_protegida(e) && borrar_flash(e, a) : habilitar_flash_reset(e);
  if (lista) return grabar_flash(e, v, a);
  // Erased, it may be, but not programmed.
  a.labor.cual = labor::clase::grabar;
  a.labor.como = labor::final::fallida;
}

void grabar_flash(enlace& e, Variables_grab& v, avance& a) {
  a.time_fin.Text = "";
  a.time_ini.Text = e.plat.hora();
  std::optional<fichero> abierto;
  fichero sin_diario;
  {
    const modo_fijo modo(e.control_serie, 0, 5);
    abierto = abrir_fichero(e, carpeta_diario, nombre_diario, modo_fichero::escribir);
    bucle_de_grabado(e, v, a).correr(abierto ? *abierto : sin_diario);
  }
  a.time_fin.Text = e.plat.hora();
  if (abierto && !abierto->abierto()) avisar_diario(e);
  avisar_fin_grabacion(e, a);
  a.Progress.Value = 0;
  a.cancelar = false;
  v.dir_max_grabada = v.dir_max;
}

}  // namespace morvane
