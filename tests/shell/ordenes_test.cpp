// The commands from the click to the chip, frame by frame and box by box.

#include "banco_ordenes.h"
#include "files/texto.h"

using namespace apoyo;

namespace {

const std::string habilitacion = "A a c d2E c a c", titulo_problema = "Atención ocurrió un problema";
const std::string texto_borrado = "¡Ha terminado de borrar!", texto_leido = "¡Ha terminado de Leer!";
const std::string texto_vacia = "La Flash ha sido verificada, está borrada";
const std::string titulo_no = "No es posible Verificar";

caja informar(const std::string& texto, const std::string& titulo = "Atención") {
  return {titulo, texto, botones::Aceptar, icono::informacion};
}
std::string bloques(int cuantos) {
  std::string texto;
  for (int i = 0; i < cuantos; ++i) texto += " C" + hex(static_cast<std::uint32_t>(i) * 0x8000, 6) + "007FFF";
  return texto;
}

const caja borrado{"Atención", texto_borrado}, exito{"Atención", "La verificación ha sido exitosa"},
    distintos{"Error en verificación", "Los datos no coinciden"},
    vacio{titulo_no, "Imposible verificar, no ha cargado ningún programa en el buffer"},
    otro{titulo_no,
         "          Es posible que la informacion cargada en el buffer sea diferente de la flash\n\r"
         "Debe abrir el archivo que corresponda al programa de la flash o programar nuevamente la flash"},
    pregunta{titulo_no, "No se ha programado la flash en esta sesión, desea verificar de todas formas",
             botones::AceptarCancelar, icono::informacion},
    borrada = informar(texto_vacia), con_datos = informar("La Flash contiene datos, no está borrada"),
    correcto = informar("El programa de la Flash ha sido verificado, está correcto"),
    difiere = informar("El programa contenido en la Flash difiere del cargado en el buffer"),
    protegida = informar("Se ha protegido la memoria flash!", titulo_problema),
    sin_proteger = critica(titulo_problema, "No es posible proteger la memoria flash!"),
    sin_config = critica(titulo_problema, texto_sin_config);

using ordenes = banco_ordenes;

// Programming stands in docs/protocol.md, which is replayed.
TEST_F(ordenes, a_command_sends_these_frames_and_shows_these_boxes_where_a_bracket_stands) {
  const orden comprobar = men_verific_t_Click, sumar = mn_verifi_t_f_Click, comparar = men_verifi_t_Click;
  const std::string examen = habilitacion + " C000000000000", suma = habilitacion + " C000000000400";
  const std::string dos = " e00000016 e00001016", proteccion = habilitacion + " g000414FFFF4AC8 D A c [] D";
  // An erased chip with a 0 at `dato`; an image whose last byte is at `tope`, which the chip holds as well.
  const struct {
    orden cual;
    std::uint32_t dato;
    std::int32_t tope, grabada;
    std::string flujo;
    std::vector<caja> cajas;
  } casos[] = {{men_borrar_t_Click, 9, 9, 0, habilitacion + " i c c c [] D", {borrado}},
               {men_reset_Click, 9, 9, 0, "A a c d2E c j D", {}},
               {men_proteger_f_Click, 0x414, 9, 0, proteccion, {sin_proteger}},
               {men_proteger_f_Click, 0x413, 9, 0, proteccion, {protegida}},
               {comprobar, 0, 0, 0, examen + " [] D", {con_datos}},
               {comprobar, 0x3FFFF, 0, 0, examen + bloques(8) + " [] D", {con_datos}},
               {comprobar, 0x40000, 0, 0, examen + bloques(9) + " D []", {borrada}},
               {sumar, 0x40000, 0x3FFFF, 0, suma + bloques(8) + " [] D", {correcto}},
               {sumar, 0x40000, 0x40001, 0, suma + bloques(8) + " D []", {correcto}},
               {sumar, 0x400, 99, 0, suma + " [] D", {difiere}},
               {sumar, 0x401, 99, 0, suma + bloques(1) + " [] D", {difiere}},
               {sumar, 0x8000, 0x7FFF, 0, suma + bloques(1) + " [] D", {correcto}},
               {sumar, 0xFFFF, 0x8000, 0, suma + bloques(2) + " [] D", {difiere}},
               {comparar, 99, 0, 9, "A []", {vacio}},
               {comparar, 99, 9, 8, "A []", {otro}},
               {comparar, 99, 16, 0, "A []" + dos + " [] D", {pregunta, exito}},
               {comparar, 16, 17, 17, "A" + dos + " [] e00002016 D", {distintos}},
               {comparar, 15, 16, 16, "A e00000016 [] e00001016 D", {distintos}}};
  lejos.chip.modo.sondeos_de_borrado = 2;
  plat.usuario = [this](const caja&) { return lejos.comandos.emplace_back("[]"), vbOK; };
  for (const auto& c : casos) {
    const auto ultimo = static_cast<std::size_t>(c.tope);
    llenar(0xFF);
    limpiar_buffer_salida(v);
    v.dir_max = c.tope;
    v.dir_max_grabada = c.grabada;
    if (c.tope > 0) v.buffer_salida[ultimo] = 0x12;
    if (c.tope > 0 && c.tope < total_flash) lejos.chip.flash()[ultimo] = 0x12;
    if (c.dato < total_flash) lejos.chip.flash()[c.dato] = 0;
    f.avance.cancelar = true;
    EXPECT_EQ(correr(c.cual), c.flujo);
    EXPECT_EQ(plat.cajas, c.cajas) << c.flujo;
  }
  plat.usuario = nullptr;
  v.dir_max_grabada = 0;
  EXPECT_EQ(correr(comparar), "A") << "the question was answered with Cancel";
  lejos.chip.modo.falla_config = true;
  f.avance.Progress.Value = 5;
  for (const orden cual : {men_borrar_t_Click, men_reset_Click, sumar}) {
    EXPECT_EQ(correr(cual), "A a c d2E c D");
    EXPECT_EQ(plat.cajas, std::vector{sin_config});
    EXPECT_EQ(f.avance.Progress.Value, cual == sumar ? 0 : 5);
  }
}

TEST_F(ordenes, what_an_earlier_cancel_left_gives_no_verdict_and_the_repetition_works) {
  llenar(0xFF);
  f.avance.Progress.Value = 5;
  correr(men_borrar_t_Click, {.muda_desde = 1});
  EXPECT_EQ(f.avance.Progress.Value, 5) << "a time-out leaves the bar alone";
  EXPECT_TRUE(f.link.tiempo_agotado);
  f.link.bit_wen = f.link.bit_config = 1;
  for (const std::string& dicho : {texto_interrumpida, texto_vacia}) {
    correr(men_verific_t_Click);
    EXPECT_EQ(textos(), dicho);
  }
  f.link.tiempo_agotado = true;
  correr(men_proteger_f_Click);
  EXPECT_EQ(linea.escrito().find("\x02g"), std::string::npos) << "no word is written";
}

TEST_F(ordenes, what_a_comparison_had_asked_for_when_it_stopped_does_not_answer_the_next_command) {
  llenar(0);
  v.dir_max_grabada = v.dir_max;
  plat.cajas.clear();
  lejos.placa.averiar({.retrasa_todas = true, .retraso_ms = 900});
  men_verifi_t_Click(f);
  men_reset_Click(f);
  EXPECT_EQ(lejos.flujo(), "A e00000016 e00001016 D A a c d2E c j D");
  EXPECT_EQ(textos(), "Los datos no coinciden");
}

// The program is killed, the board loses its power, the device vanishes. The write loop looks at no reply, so a board
// that comes back in it is found by the verification alone.
TEST_F(ordenes, a_programming_cut_off_at_any_frame_is_told_or_found_and_the_next_one_mends_it) {
  struct muerto {};
  correr(men_prog_t_Click);
  const std::size_t tramas = lejos.comandos.size();
  for (std::size_t n = 1; n < 3 * tramas - 2; ++n) {
    SCOPED_TRACE(n);
    const std::uint64_t cual = n / 3 + 1;
    if (n % 3 == 0) {
      tras(cual, [] { throw muerto{}; });
      EXPECT_THROW(men_prog_t_Click(f), muerto);
    } else {
      correr(men_prog_t_Click, {.rearranca_en = n % 3 == 1 ? cual : 0, .cuelga_en = n % 3 == 2 ? cual : 0});
    }
    const bool dicho = n % 3 != 2 || textos().ends_with(texto_interrumpida);
    const std::string diario = dir.leer("unidades/c/Datos/TORVAX-m68k/memoria.txt");
    EXPECT_TRUE(diario.empty() || diario.ends_with("\x03\r\n")) << "only whole frames";
    correr(mn_verifi_t_f_Click);
    const auto flash = lejos.chip.flash().first(0x400);
    const bool entera = std::ranges::equal(flash, std::span(v.buffer_salida).first(0x400));
    EXPECT_TRUE(entera || (dicho && !textos().ends_with("está correcto"))) << textos();
    correr(men_prog_t_Click);
    EXPECT_EQ(textos(), texto_grabado);
    EXPECT_TRUE(std::ranges::equal(flash, std::span(v.buffer_salida).first(0x400)));
  }
}

TEST_F(ordenes, what_cannot_be_now_is_refused_and_wipes_a_pending_stop) {
  const std::string sin_nada = "Debe cargar un programa antes de grabar";
  tras(16, [this] {
    for (const int boton : {6, 2, 1}) f.barra.ButtonClick(boton);
    f.menu.men_dir[0].Click();
    EXPECT_FALSE(f.avance.cancelar);
    EXPECT_TRUE(f.barra.boton(2).Enabled);
    EXPECT_FALSE(f.barra.boton(3).Enabled);
  });
  f.barra.ButtonClick(3);
  EXPECT_EQ(textos(), texto_ocupado + "|" + texto_en_curso + "|" + texto_en_curso + "|" + texto_grabado);
  EXPECT_EQ(lejos.chip.flash()[0x107], 8);
  EXPECT_EQ(v.dir_max_grabada, 0x107);
  tras(0, [this] { f.barra.ButtonClick(2); });
  f.menu.men_dir[0].Click();
  EXPECT_EQ(textos(), "Se está cargando un archivo. Espere a que termine la carga|" + texto_cargado);
  v.dir_max = 0;
  f.barra.ButtonClick(3);
  EXPECT_EQ(ultima().texto, sin_nada) << textos();
  EXPECT_TRUE(lejos.comandos.empty()) << textos();
}

TEST_F(ordenes, button_six_stops_a_reading_and_the_block_under_way_is_stored) {
  lejos.chip.flash()[0x103] = 4;
  v.buffer_entrada[0x200] = 5;
  v.dir_max_grabada = v.dir_max;
  tras(10, [this] { f.barra.ButtonClick(6); });
  f.menu.men_leer_ft.Click();
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención", "El proceso de Upload ha sido detenido por el usuario"}}));
  EXPECT_EQ(std::tuple(lejos.comandos.size(), v.buffer_entrada[0x103], v.buffer_entrada[0x200], f.avance.cancelar),
            std::tuple(11, 4, 0, false));
}

TEST_F(ordenes, a_command_that_ends_by_an_exception_leaves_an_idle_window) {
  tras(1, [] { throw std::runtime_error("roto"); });
  EXPECT_THROW(f.barra.ButtonClick(2), std::runtime_error);
  EXPECT_TRUE(en_reposo());
  EXPECT_EQ(f.link.espera, nullptr);
  EXPECT_TRUE(f.barra.boton(2).Enabled);
}

TEST_F(ordenes, ranges_are_corrected_as_the_boxes_then_show) {
  const struct {
    std::string desde, hasta, queda, flujo;
    std::int32_t fin;
  } casos[] = {{"25", "40", "25-40", "A e00002020 e00004020", 0x40},
               {"1225", "1234", "1225-1234", "A e00122020 e00124020 e00126020", 0x1234},
               {"5", "20", "000000-20", "A e00000020 e00002020", 0x20},
               {"3ffe0", "3FFF8", "3ffe0-03FFFF", "A e03FFE020 e04000020", 0x3FFFF},
               {"3FFE0", "40000", "3FFE0-03FFFF", "A e03FFE020 e04000020", 0x3FFFF},
               {"40", "20", "40-20", "A e00004020", 0x20},
               {"FFFFFFF0", "20", "FFFFFFF0-20", "A", 0x20}};
  for (const auto& c : casos) {
    f.menu.men_leer_fr.Click();
    f.rango.txt_desde.Text = c.desde;
    f.rango.txt_hasta.Text = "  ";
    EXPECT_EQ(correr(btn_leer_Click), "") << "an empty box starts nothing";
    f.rango.txt_hasta.Text = c.hasta;
    f.avance.cancelar = true;
    EXPECT_EQ(correr(btn_leer_Click), c.flujo);
    EXPECT_EQ(f.rango.txt_desde.Text.valor() + "-" + f.rango.txt_hasta.Text.valor(), c.queda);
    EXPECT_EQ(v.dir_fin_lectura, c.fin) << c.queda;
    EXPECT_FALSE(f.rango.fra_rango.Visible) << c.queda;
    EXPECT_EQ(textos(), texto_leido) << c.queda;
  }
  const struct {
    const char *desde, *hasta, *texto;
    bool dudosa;
  } previstas[] = {{"25", "40", "Se leerá 000020–00005F", false},
                   {"3ffe0", "40000", "Se leerá 03FFE0–03FFFF", false},
                   {"40", "2G", "Se leerá 000040–00005F", true},
                   {"40", "20", "Se leerá 000040–00005F", true},
                   {"FFFFFFF0", "20", "No se leerá nada: no es de la flash", true},
                   {" ", "20", "Escriba las dos direcciones", false}};
  for (const auto& p : previstas) {
    EXPECT_EQ(prever_lectura(p.desde, p.hasta).texto, p.texto);
    EXPECT_EQ(prever_lectura(p.desde, p.hasta).dudosa, p.dudosa);
  }
  f.rango.txt_hasta.Text = "40";
  tras(1, [this] { f.rango.txt_hasta.Text = "60"; });
  btn_leer_Click(f);
  EXPECT_EQ(v.dir_fin_lectura, 0x40) << "the end is that of the moment of the click";
}

TEST_F(ordenes, what_was_programmed_is_read_or_a_range_is_offered) {
  EXPECT_EQ(correr(men_leer_ft_Click), "A");
  EXPECT_TRUE(f.rango.fra_rango.Visible);
  EXPECT_TRUE(plat.cajas.empty());
  v.dir_max_grabada = 0x21;
  f.avance.cancelar = true;
  EXPECT_EQ(correr(men_leer_ft_Click), "A e00000020 e00002020 e00004020 D");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"", texto_leido}}));
}

TEST_F(ordenes, a_device_that_vanishes_at_the_closing_does_not_undo_what_was_said_but_the_map_forgets_the_chip) {
  correr(men_prog_t_Click);
  for (const orden cual : {men_prog_t_Click, men_verifi_t_Click, mn_verifi_t_f_Click, men_verific_t_Click,
                           men_leer_ft_Click, men_reset_Click, men_proteger_f_Click, men_borrar_t_Click}) {
    llenar(0xFF);
    const std::string flujo = correr(cual);
    const auto cajas = plat.cajas;
    f.avance.mapa.borrado();
    const auto ultima_trama = static_cast<std::uint64_t>(std::ranges::count(flujo, ' ')) + 1;
    llenar(0xFF);
    EXPECT_EQ(correr(cual, {.cuelga_en = ultima_trama}), flujo);
    EXPECT_EQ(plat.cajas, cajas) << flujo;
    EXPECT_TRUE(f.avance.mapa.ignora(0)) << flujo;
    EXPECT_TRUE(f.avance.mapa.ignora(511)) << flujo;
  }
}

TEST_F(ordenes, a_loopback_plug_ends_in_no_praise) {
  const orden todas[] = {men_borrar_t_Click, men_prog_t_Click, men_verific_t_Click,  mn_verifi_t_f_Click,
                         btn_leer_Click,     men_reset_Click,  men_proteger_f_Click, men_verifi_t_Click};
  f.rango.txt_desde.Text = "0";
  f.rango.txt_hasta.Text = "0";
  for (const orden cual : todas) {
    f.menu.men_leer_fr.Click();
    EXPECT_EQ(correr(cual, {.eco_desde = 1}), "A");
    EXPECT_EQ(textos(), texto_interrumpida);
    EXPECT_TRUE(f.rango.fra_rango.Visible) << "nothing was read";
  }
  correr(btn_leer_Click, {.calla_en = 2});
  EXPECT_EQ(textos(), texto_pregunta + "|" + texto_interrumpida);
  EXPECT_FALSE(f.rango.fra_rango.Visible) << "a reading that was broken off ends like any other";
}

}  // namespace
