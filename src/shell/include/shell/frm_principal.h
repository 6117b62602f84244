#pragma once

#include <array>
#include <functional>

#include "image/avance.h"
#include "image/variables_grab.h"
#include "link/enlace.h"
#include "platform/controles.h"
#include "shell/contacto.h"
#include "shell/frm_about.h"
#include "shell/frm_buffer.h"
#include "shell/frm_cfg_pto_serial.h"

namespace morvane {

/// The menu of the main window, in the order in which it is shown.
struct menu_principal {
  explicit menu_principal(contador_cambios& c);
  /// The entries of the menu bar, each with its list.
  std::vector<Menu*> barra();

  Menu men_archivo, men_abrir, separa_1;
  /// `men_dir_1` to `men_dir_10`.
  std::array<Menu, 10> men_dir;
  Menu separa_2, men_salir;
  Menu men_ver, men_ver_B_E, men_ver_B_S;
  Menu men_dispositivo, men_seleccion, men_reset;
  Menu men_memoria_f, men_borrar_t, men_verific_t, separa_3, men_prog_t, men_verifi_t, mn_verifi_t_f;
  Menu men_upload, men_leer_ft, men_leer_fr;
  Menu men_opciones, men_pto_s, men_proteger_f;
  Menu men_ayuda, men_contenido, men_acerca;
};

/// The panel in which the user types a range to read.
struct panel_rango {
  explicit panel_rango(contador_cambios& c);

  Frame fra_rango;
  Label Label1, Label2;
  TextBox txt_desde, txt_hasta;
  CommandButton btn_leer, btn_salir;
};

/// The main window: its controls, and the state that the rooms below work on.
struct frm_principal {
  /// All must outlive the window.
  frm_principal(plataforma& plat, archivos& ficheros, transporte& linea, Variables_grab& v);
  frm_principal(const frm_principal&) = delete;
  frm_principal& operator=(const frm_principal&) = delete;

  Form ventana;
  plataforma& plat;
  Variables_grab& v;

  MSComm serial;
  enlace link;
  morvane::avance avance;

  menu_principal menu;
  Toolbar barra;
  StatusBar estado;
  panel_rango rango;
  CommonDialog cmd_buscar;

  frm_cfg_pto_serial cfg_pto_serial;
  frm_buffer buffer_out, buffer_in;
  frm_buffer_comp buffer_comp;
  frmAbout about;
  /// Entries of the context menu of the window's surface.
  Menu men_comparar, men_acerca_contextual;
  /// The windows beside this one.
  std::vector<Form*> otras_ventanas();

  /// Paths of the last files: slots 1 to 10 are the list, 11 and 12 only what a file edited by hand puts there, 0 is
  /// never used. An empty slot ends the list.
  std::array<std::string, 13> historial;
  /// MENU.TXT as this program has read or written it last.
  std::string historial_leido;
  /// The last file that was opened, in whatever way; empty before the first one.
  std::string ultimo_archivo;

  /// The port to whose chip the map belongs.
  std::string puerto_del_mapa;
  /// The port of the settings and what is at it, in a line; not set where nobody can tell.
  std::function<std::string()> describir_puerto;
  /// The board, as the last command has found it.
  contacto placa;
  /// Handlers that are running a command or a load, nested ones included.
  int ordenes = 0;
  /// `avance.labor.cuantas` when the running command began.
  unsigned labores_antes = 0;
  /// Loads that have ended, and files that were given up.
  unsigned cargas = 0;
  /// A load is running.
  bool cargando = false;
};

/// Marks a command or a load as running for as long as it lives. The end of the last one leaves the port closed and no
/// load running, also when it ends by an exception. The map forgets the chip where another one may be in its place.
class orden_en_curso {
 public:
  explicit orden_en_curso(frm_principal& f);
  ~orden_en_curso();
  orden_en_curso(const orden_en_curso&) = delete;
  orden_en_curso& operator=(const orden_en_curso&) = delete;

 private:
  frm_principal& f_;
};

/// The load event: reads the settings and probes the bridge. The window may be shown when it has returned, whatever the
/// probe found.
void Form_Load(frm_principal& f);

/// Shows the window that compares the buffers.
void mostrar_comparacion(frm_principal& f);

/// A press of the toolbar's button `indice`, 1 to 6. The button stays disabled until its command has ended.
void Toolbar_ButtonClick(frm_principal& f, int indice);

/// The user wants the main window closed. While the chip is being erased or written the user is asked whether to leave
/// it half done, once. False if not.
bool desea_cerrar(frm_principal& f);

/// The user, or the desktop, wants the main window closed. True if it may go now. False while a command or a load runs:
/// it will end soon, and `debe_cerrarse` then says so; a second request ends the wait in progress as well.
bool pedir_cierre(frm_principal& f);

/// True when a request to close could not be met at once and nothing stands in its way any more.
bool debe_cerrarse(const frm_principal& f);

}  // namespace morvane
