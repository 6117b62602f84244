#include "shell/frm_principal.h"

#include <utility>

#include "colores.h"
#include "frases/frases.h"
#include "link/puerto.h"
#include "shell/detalles.h"
#include "shell/historial.h"
#include "shell/ordenes.h"
#include "shell/proyecto.h"

namespace morvane {

namespace {

constexpr int ancho_ventana = 9465, alto_ventana = 4110;
constexpr int ancho_panel_ruta = 5550, ancho_panel_avance = 2565, ancho_panel_hora = 1350;

void conectar_menu(frm_principal& f) {
  f.menu.men_abrir.Click = [&f] { abrir_proyecto(f); };
  for (std::size_t i = 0; i < f.menu.men_dir.size(); ++i) {
    f.menu.men_dir.at(i).Click = [&f, i] { men_dir_Click(f, i + 1); };
  }
  f.menu.men_salir.Click = [&f] { men_salir_Click(f); };
  f.menu.men_ver_B_E.Click = [&f] { f.buffer_in.ventana.Show(); };
  f.menu.men_ver_B_S.Click = [&f] { f.buffer_out.ventana.Show(); };
  f.menu.men_acerca.Click = [&f] { f.about.ventana.Show(); };
  f.men_acerca_contextual.Click = f.menu.men_acerca.Click;
  for (Menu* entrada : {&f.men_comparar, &f.buffer_in.men_comparar, &f.buffer_out.men_comparar}) {
    entrada->Click = [&f] { mostrar_comparacion(f); };
  }
  f.menu.men_pto_s.Click = [&f] { f.cfg_pto_serial.ventana.Show(); };
  f.menu.men_borrar_t.Click = [&f] { men_borrar_t_Click(f); };
  f.menu.men_verific_t.Click = [&f] { men_verific_t_Click(f); };
  f.menu.men_verifi_t.Click = [&f] { men_verifi_t_Click(f); };
  f.menu.mn_verifi_t_f.Click = [&f] { mn_verifi_t_f_Click(f); };
  f.menu.men_reset.Click = [&f] { men_reset_Click(f); };
  f.menu.men_proteger_f.Click = [&f] { men_proteger_f_Click(f); };
  f.menu.men_leer_ft.Click = [&f] { men_leer_ft_Click(f); };
  f.menu.men_leer_fr.Click = [&f] { men_leer_fr_Click(f); };
  f.rango.btn_leer.Click = [&f] { btn_leer_Click(f); };
  f.menu.men_prog_t.Click = [&f] {
    if (!rechazada_por_carga(f) && hay_programa(f)) men_prog_t_Click(f);
  };
}

void llenar_barra(frm_principal& f) {
  f.barra.anadir("abrir", "Abrir");
  f.barra.anadir("borrar", "Borrar Flash");
  f.barra.anadir("programar", "Programar dispositivo");
  f.barra.anadir("verificar", "Chequear lo Programado");
  f.barra.anadir("reset", "Reset procesador");
  f.barra.anadir("detener", "Detener la ejecución de grabado o chequeado");
  f.barra.ButtonClick = [&f](int indice) { Toolbar_ButtonClick(f, indice); };
}

void llenar_estado(frm_principal& f) {
  f.estado.anadir(Panel::estilo::texto, ancho_panel_ruta);
  f.estado.anadir(Panel::estilo::texto, ancho_panel_avance).encima = &f.avance.Progress;
  f.estado.anadir(Panel::estilo::hora, ancho_panel_hora);
}

std::string por_que_no_hay_imagen(const frm_principal& f) {
  if (f.cargas == 0) return "No hay ningún archivo cargado";
  return f.v.carga.tramos.empty() ? frase_breve(f.v.carga) : "El archivo no llena ninguna fila de 16 bytes";
}

/// Keeps the pressed button disabled until its command has ended, however that ends.
class boton_pulsado {
 public:
  explicit boton_pulsado(Button& boton) : boton_(boton) { boton_.Enabled = false; }
  ~boton_pulsado() { boton_.Enabled = true; }
  boton_pulsado(const boton_pulsado&) = delete;
  boton_pulsado& operator=(const boton_pulsado&) = delete;

 private:
  Button& boton_;
};

void ejecutar_boton(frm_principal& f, int indice) {
  switch (indice) {
    case 1:
      abrir_proyecto(f);
      break;
    case 2:
      men_borrar_t_Click(f);
      break;
    case 3:
      if (!rechazada_por_carga(f) && hay_programa(f)) men_prog_t_Click(f);
      break;
    case 4:
      mn_verifi_t_f_Click(f);
      break;
    case 5:
      men_reset_Click(f);
      break;
    case 6:
      f.avance.cancelar = true;
      break;
    default:
      break;
  }
}

}  // namespace

panel_rango::panel_rango(contador_cambios& c)
    : fra_rango(c, "fra_rango", "Rango de lectura", {2100, 1080, 5265, 1875}),
      Label1(c, "Label1", "Dirección desde:", {240, 420, 1800, 285}),
      Label2(c, "Label2", "Dirección hasta:", {240, 900, 1800, 285}),
      txt_desde(c, "txt_desde", {2100, 375, 1440, 360}, &Label1),
      txt_hasta(c, "txt_hasta", {2100, 855, 1440, 360}, &Label2),
      btn_leer(c, "btn_leer", "", {3840, 375, 1185, 840}),
      btn_salir(c, "btn_salir", "Salir", {3840, 1320, 1185, 405}) {
  btn_leer.ToolTipText = "Leer";
  btn_leer.Picture = "leer";
  fra_rango.Visible = false;
  fra_rango.Controls = {&Label1, &txt_desde, &Label2, &txt_hasta, &btn_leer, &btn_salir};
  btn_salir.Click = [this] { fra_rango.Visible = false; };
}

frm_principal::frm_principal(plataforma& plataforma_, archivos& ficheros, transporte& linea, Variables_grab& variables)
    : ventana("frm_principal", "Morvane", ancho_ventana, alto_ventana),
      plat(plataforma_),
      v(variables),
      serial(plataforma_, linea),
      link(plataforma_, ficheros, serial),
      avance(ventana.cambios),
      menu(ventana.cambios),
      barra(ventana.cambios, "Toolbar"),
      estado(ventana.cambios, "StatusBar", "Lucida Console"),
      rango(ventana.cambios),
      cmd_buscar{"cmd_buscar", filtro_de_firmware()},
      cfg_pto_serial(link),
      buffer_out(
          "frm_buffer_out", "Buffer de Salida", 4560,
          [this] { return filas_de_volcado(v.buffer_salida, std::int64_t{v.dir_max} + 1); },
          [this] { return por_que_no_hay_imagen(*this); }),
      buffer_in(
          "frm_buffer_in", "Buffer de Entrada", 4545,
          [this] {
            return filas_de_volcado(v.buffer_entrada, std::int64_t{v.dir_fin_lectura} + 1, avance.mapa.leido());
          },
          [] { return std::string("Todavía no se ha leído nada del chip"); }),
      buffer_comp(plataforma_, variables, avance.mapa),
      about(plataforma_),
      men_comparar(ventana.cambios, "men_comparar", "Comparar los buffer"),
      men_acerca_contextual(ventana.cambios, "men_acerca_contextual", "&Acerca de...") {
  link.explicar = [this](const hechos& de_que) { return detalles(*this, de_que); };
  ventana.BackColor = gris_claro;
  ventana.fija = true;
  ventana.menus = menu.barra();
  ventana.contextual = {&men_comparar, &men_acerca_contextual};
  avance.time_ini.Visible = false;
  avance.time_fin.Visible = false;
  llenar_barra(*this);
  llenar_estado(*this);
  conectar_menu(*this);
  ventana.Controls = {&barra, &rango.fra_rango, &avance.time_ini, &avance.time_fin, &estado};
}

std::vector<Form*> frm_principal::otras_ventanas() {
  return {&cfg_pto_serial.ventana, &buffer_out.ventana, &buffer_in.ventana, &buffer_comp.ventana, &about.ventana};
}

orden_en_curso::orden_en_curso(frm_principal& f) : f_(f) {
  if (f_.ordenes++ > 0) return;
  f_.avance.labor.gastado = instante{0};
  f_.labores_antes = f_.avance.labor.cuantas;
  empezar_contacto(f_);
  if (std::exchange(f_.puerto_del_mapa, f_.link.valores.puerto) != f_.link.valores.puerto) {
    f_.avance.mapa.olvidar_chip();
  }
}

orden_en_curso::~orden_en_curso() {
  if (--f_.ordenes > 0) return;
  if (f_.link.operacion.perdida) f_.avance.mapa.olvidar_chip();
  f_.cargando = false;
  cerrar_puerto(f_.link);
  acabar_contacto(f_);
}

void mostrar_comparacion(frm_principal& f) {
  f.buffer_comp.ventana.Show();
}

void Toolbar_ButtonClick(frm_principal& f, int indice) {
  const boton_pulsado pulsado(f.barra.boton(indice));
  ejecutar_boton(f, indice);
}

bool desea_cerrar(frm_principal& f) {
  const labor& m = f.avance.labor;
  const bool a_medias = m.en_curso && (m.cual == labor::clase::borrar || m.cual == labor::clase::grabar);
  if (!a_medias || f.link.peticiones_cierre > 0) return true;
  const std::string que = m.cual == labor::clase::borrar ? "borrando" : "grabando";
  return f.plat.MsgBox({"Atención", "Se está " + que + " el chip. ¿Desea cerrar el programa y dejarlo a medias?",
                        botones::SiNo, icono::exclamacion}) == vbYes;
}

bool pedir_cierre(frm_principal& f) {
  if (f.ordenes == 0) return true;
  ++f.link.peticiones_cierre;
  return false;
}

bool debe_cerrarse(const frm_principal& f) {
  return f.ordenes == 0 && f.link.peticiones_cierre > 0;
}

}  // namespace morvane
