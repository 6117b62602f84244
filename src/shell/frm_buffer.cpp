#include "shell/frm_buffer.h"

#include <algorithm>
#include <cstdlib>

#include "colores.h"
#include "files/texto.h"
#include "frases/numeros.h"

namespace morvane {

namespace {

const letra consola{"Lucida Console", 9.75};

std::string cuenta_de(std::size_t diferencias, std::int32_t tope) {
  return std::to_string(diferencias) + (diferencias == 1 ? " diferencia" : " diferencias") + " hasta " +
         hex(static_cast<std::uint32_t>(tope), 6);
}

/// Nothing where all that is compared was read.
std::string lo_que_falta_leer(tramo leido, std::int32_t tope) {
  if (tope < 1) return "⚠ Atención: no hay ningún archivo cargado con que comparar";
  if (leido.vacio()) return "⚠ Atención: no se ha leído nada del chip; lo que se compara son los ceros del buffer";
  if (leido.contiene({0, std::min(tope + 1, total_flash)})) return {};
  return "⚠ Atención: solo se ha leído " + direcciones(leido) + "; lo demás, en gris, son ceros del buffer";
}

void vestir(Label& rotulo, color fondo) {
  rotulo.Font = consola;
  rotulo.BackColor = fondo;
}

}  // namespace

frm_buffer::frm_buffer(std::string nombre, std::string texto, int alto,
                       std::function<std::shared_ptr<const volcado>()> fuente,
                       std::function<std::string()> por_que_vacio)
    : ventana(std::move(nombre), std::move(texto), 9450, alto),
      Label3(ventana.cambios, "Label3", "Dirección", {120, 120, 855, 255}),
      Label2(ventana.cambios, "Label2", " 0  1  2  3  4  5  6  7  8  9  A  B  C  D  E  F", {960, 120, 5895, 255}),
      Label4(ventana.cambios, "Label4", " 0123456789ABCDEF", {6855, 120, 2535, 255}),
      lst_buf_salida(ventana.cambios, "lst_buf_salida", {120, 360, 9255, 3765}, consola),
      men_comparar(ventana.cambios, "men_comparar", "Comparar los buffer"),
      fuente_(std::move(fuente)),
      por_que_vacio_(std::move(por_que_vacio)) {
  vestir(Label3, cian);
  vestir(Label2, naranja);
  vestir(Label4, crema);
  lst_buf_salida.Visible = false;
  ventana.BackColor = 0xE0E0E0;
  ventana.contextual = {&men_comparar};
  ventana.Controls = {&Label3, &Label2, &Label4, &lst_buf_salida};
  ventana.Load = [this] {
    llenar_lista();
    lst_buf_salida.Visible = true;
  };
  ventana.AlDescargar = [this] { poner(nullptr); };
  ventana.Resize = [this](int ancho, int alto_nuevo) {
    lugar sitio = lst_buf_salida.sitio;
    sitio.Width = std::abs(ancho - 300);
    sitio.Height = std::abs(alto_nuevo - 850);
    lst_buf_salida.sitio = sitio;
  };
}

void frm_buffer::llenar_lista() {
  poner(fuente_());
}

void frm_buffer::poner(std::shared_ptr<const volcado> nuevas) {
  busca.mirar(nuevas);
  si_vacio = nuevas && nuevas->cuantas() == 0 ? por_que_vacio_() : std::string();
  primera_fila = nuevas ? nuevas->primera_conocida() : 0;
  lst_buf_salida.List = std::move(nuevas);
}

frm_buffer_comp::frm_buffer_comp(plataforma& plat, const Variables_grab& v, const mapa_flash& mapa)
    : ventana("frm_buffer_comp", "Resultado Comparación de buffer", 4575, 6375),
      Label3(ventana.cambios, "Label3", "Dirección", {360, 240, 1095, 255}),
      Label2(ventana.cambios, "Label2", "In   Out", {1440, 240, 2655, 255}),
      lst_compara(ventana.cambios, "lst_compara", {360, 480, 3735, 5520}, consola),
      lbl_cuenta(ventana.cambios, "lbl_cuenta", "", {360, 6045, 3735, 285}),
      plat_(plat),
      v_(v),
      mapa_(mapa) {
  vestir(Label3, cian);
  vestir(Label2, naranja);
  lst_compara.Visible = false;
  ventana.BackColor = 0xE0E0E0;
  ventana.Controls = {&Label3, &Label2, &lst_compara, &lbl_cuenta};
  ventana.Load = [this] {
    comparar_buffers();
    lst_compara.Visible = true;
  };
  ventana.AlDescargar = [this] { lst_compara.List = filas = nullptr; };
}

void frm_buffer_comp::comparar_buffers() {
  filas = filas_de_comparacion(v_, v_.dir_max, mapa_.leido());
  lbl_cuenta.Caption = cuenta_de(filas->cuantas(), v_.dir_max);
  lst_compara.List = filas;
  plat_.MsgBox({"Atención", "Ha finalizado la comparación de los buffer de entrada y salida", botones::Aceptar,
                icono::informacion},
               lo_que_falta_leer(mapa_.leido(), v_.dir_max));
}

}  // namespace morvane
