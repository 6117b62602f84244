#include "shell/frm_cfg_pto_serial.h"

#include "colores.h"
#include "link/puerto.h"

namespace morvane {

namespace {

constexpr int ancho_opciones = 4800, alto_opciones = 2310;

std::string velocidad_de(const campos_ajustes& a) {
  return a.velocidad.empty() ? "velocidad sin elegir" : a.velocidad + " baudios";
}

void guardar_si_abre(enlace& e) {
  if (!abrir_puerto(e)) return;
  guardar_ajustes(e);
  cerrar_puerto(e);
}

}  // namespace

frm_cfg_pto_serial::frm_cfg_pto_serial(enlace& e)
    : ventana("frm_cfg_pto_serial", "Opciones del puerto serial", ancho_opciones, alto_opciones),
      Label1(ventana.cambios, "Label1", "Velocidad de transmisión", {240, 285, 2580, 285}),
      Label2(ventana.cambios, "Label2", "Puerto serie", {240, 885, 2580, 285}),
      cmb_s_velocity(ventana.cambios, "cmb_s_velocity",
                     {"110", "1200", "2400", "4800", "9600", "19200", "28800", "57600", "115200"},
                     {2880, 240, 1680, 375}, &Label1),
      cmb_s_puerto(ventana.cambios, "cmb_s_puerto", {"COM1", "COM2", "COM3", "COM4", "COM5"}, {2880, 840, 1680, 375},
                   &Label2),
      btn_guardar(ventana.cambios, "btn_guardar", "Guardar", {1560, 1620, 1440, 450}),
      btn_salir(ventana.cambios, "btn_salir", "Salir", {3120, 1620, 1440, 450}),
      e_(e) {
  ventana.BackColor = gris_claro;
  ventana.fija = true;
  ventana.Controls = {&Label1, &cmb_s_velocity, &Label2, &cmb_s_puerto, &btn_guardar, &btn_salir};
  cmb_s_velocity.Text = "57600";
  cmb_s_puerto.Text = "COM1";
  ventana.Load = [this, &e] {
    leer_ajustes(e);
    mostrar_valores();
  };
  cmb_s_velocity.Click = [this, &e] { e.valores.velocidad = cmb_s_velocity.Text; };
  cmb_s_puerto.Click = [this, &e] { e.valores.puerto = cmb_s_puerto.Text; };
  btn_guardar.Click = [&e] { guardar_si_abre(e); };
  btn_salir.Click = [this] { ventana.Unload(); };
}

void frm_cfg_pto_serial::mostrar_valores() {
  cmb_s_velocity.Text = e_.valores.velocidad;
  cmb_s_puerto.Text = e_.valores.puerto;
}

void frm_cfg_pto_serial::crear_fichero() {
  crear_ajustes(e_);
  mostrar_valores();
}

frm_cfg_pto_serial::situacion frm_cfg_pto_serial::describir() const {
  const campos_ajustes& a = e_.valores;
  const std::string vale =
      a.puerto.empty() ? "No hay puerto elegido" : "En vigor: " + a.puerto + " a " + velocidad_de(a);
  if (cmb_s_velocity.Text.valor() != a.velocidad || cmb_s_puerto.Text.valor() != a.puerto) {
    return {"Lo escrito no cuenta: elija en la lista. " + vale, true};
  }
  if (faltan_ajustes(e_)) return {vale + ". No hay SETTINGS.TXT: no se guardará (Más > Crear SETTINGS.TXT)", true};
  const auto guardados = ajustes_guardados(e_);
  const bool igual = guardados && guardados->puerto == a.puerto && guardados->velocidad == a.velocidad;
  return {vale + (igual ? ", guardado" : ", sin guardar"), false};
}

}  // namespace morvane
