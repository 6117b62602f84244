#include "bridge/placa.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <sstream>

#include "bridge/adaptador.h"
#include "bridge/opciones.h"
#include "bridge/traza.h"

namespace puente {
namespace {

/// In literals '<' stands for STX and '>' for ETX.
std::string hilo(std::string texto) {
  std::ranges::replace(texto, '<', '\x02');
  std::ranges::replace(texto, '>', '\x03');
  return texto;
}
std::vector<std::string> partes(const std::string& texto) {
  std::istringstream palabras(texto);
  return {std::istream_iterator<std::string>(palabras), {}};
}
std::string en_trama(const std::string& texto) {
  return "\x02" + texto + suma(texto) + "\x03";
}

/// Gives so many characters at each of these times.
class fuente final : public extremo {
 public:
  explicit fuente(const std::vector<std::pair<int, int>>& llegadas) {
    for (const auto& [cuando, cuantos] : llegadas) cola_.emplace_back(instante{cuando}, cuantos);
  }
  void entra(std::string_view /*datos*/, instante /*ahora*/) override {}
  std::optional<instante> proximo() const override {
    return cola_.empty() ? std::nullopt : std::optional(cola_.front().first);
  }
  std::string sale(instante ahora, std::size_t /*cuantos*/) override {
    std::string todo;
    for (; !cola_.empty() && cola_.front().first <= ahora; cola_.pop_front()) todo.append(cola_.front().second, 'x');
    return todo;
  }
  std::size_t hueco() const override { return 1; }
  bool colgada() const override { return false; }
  void abierta(instante /*ahora*/) override {}

 private:
  std::deque<std::pair<instante, int>> cola_;
};

struct banco {
  explicit banco(faltas f = {}, ritmo paso = {}) : p(c, paso, f) {}
  std::string crudo(std::string_view datos) {
    p.entra(datos, instante{0});
    return p.sale(instante{0});
  }
  std::string manda(const std::string& comando) { return crudo(en_trama(comando)); }
  /// What has come by `cuando` to one who looks whenever `proximo` says.
  std::string hasta(instante cuando) {
    std::string todo;
    while (p.proximo() && *p.proximo() <= cuando) todo += p.sale(*p.proximo());
    return todo;
  }
  chip c;
  placa p;
};

// Written out to the last character, so that no routine of the board vouches for another: closed, open, status, each
// refusal, and noise around a frame.
TEST(placa, each_frame_gets_its_reply_and_each_bad_one_its_code) {
  const std::pair<const char*, const char*> casos[] = {
      {"<c63>", "<737>"},  {"<A41>", "<030>"},  {"<c63>", "<00090>"},        {"<g0004001234ABCD5F>", "<636>"},
      {"<A42>", "<333>"},  {"<j6a>", "<333>"},  {"<41>", "<434>"},           {"<>", "<434>"},
      {"<A172>", "<232>"}, {"<d296>", "<434>"}, {"<d2eFB>", "<535>"},        {"<Z5A>", "<636>"},
      {"<b62>", "<838>"},  {"<a61>", "<030>"},  {"x>y<cc<c63>z>", "<00292>"}};
  banco b;
  for (const auto& [entra, sale] : casos) EXPECT_EQ(b.crudo(hilo(entra)), hilo(sale)) << entra;
  EXPECT_EQ(renglon_de_traza('>', hilo("<A41>\n"), instante{1'234'567}), "     1.234567 > <STX>A41<ETX><0A>");
}

// Commands, each with "=" and what its reply says if that is not "0". A flash with 0x7F at 5 and 0x0A at the end.
TEST(placa, the_chip_keeps_its_order_of_steps_its_cells_and_its_sums) {
  const std::string ff(32, 'F'), ff5 = "FFFFFFFFFF7F" + std::string(20, 'F');
  const std::string guiones[] = {
      "A a c=002 d2E c=020 a c=022 i c=021 c=021 c=021 c=020 a c=022 d2E a g000000FFFFAABB e00000005=0FFFFAABBFF",
      "A a d2E a g00000000000000 c=020 g00000400000000=6 i=6 d2E=6 e00000006=000000000FF7F",
      "A a g00000000000000=6 i=6 c=002",
      "A a d2E a g0000000FF0AA55 a g000000F0FF0FFF e00000004=000F00A55",
      "A a d2E a g04000000000000=9 g00000100000000=9 gFFFFFC00000000=9 c=022",
      "A a d2E a i a=6 d2E=6 e00000020=6 C000000007FFF=6 g00000000000000=6 i=6 c=021 A c=000 e03FFFE03=0FF0AFF",
      "A a d2E a j c=7 D A c=000",
      std::string("A a d2E a g000414FFFF4AC8 c=020 e00041404=0FFFF4AC8 D A c=080 e00041404=6 C000000000000=6 ") +
          "a d2E a g00000000000000=6 c=0A2 i c=021 c=021 c=021 c=020 e00041404=0FFFFFFFF D A c=000",
      "A e04000001=0FF e00000080=9 e00000000=9 e0000057F=07F" + std::string(252, 'F'),
      "A C000005000000=07F0000007F C000000000400=07F00003FC7F C000000000FFF=07F0000FEF80",
      "A C000000007FFF=0" + ff5 + "7F007F7F80 C038000007FFF=0" + ff + "0A007F7F0B C000006007FFF=0" + ff + "FF007F8000",
      "A C000000001000=0" + ff5 + "7F000FF07F C040000007FFF=0" + ff + "FF007F8000"};
  for (const std::string& guion : guiones) {
    banco b;
    b.c.flash()[5] = 0x7F;
    b.c.flash()[0x3FFFF] = 0x0A;
    for (const std::string& paso : partes(guion)) {
      const std::size_t igual = paso.find('=');
      EXPECT_EQ(b.manda(paso.substr(0, igual)), en_trama(igual == paso.npos ? "0" : paso.substr(igual + 1))) << paso;
    }
  }
}

// An erase by the clock, of a second: commands with their milliseconds.
TEST(placa, an_erase_by_the_clock_goes_on_while_the_chip_is_closed_and_a_reset_cuts_it_off) {
  banco b;
  b.c.modo.borrado_dura = std::chrono::seconds{1};
  std::ranges::fill(b.c.flash(), std::uint8_t{0});
  std::ranges::copy(chip::palabra, b.c.flash().begin() + chip::dir_proteccion);
  const std::string guion =
      "0:A 0:c=080 0:a 0:d2E 0:a 0:i 0:c=021 1:D 1:A 500:c=001 500:a=6 500:e00000001=6 999:c=001 1000:c=000 "
      "1000:e03FFFE02=0FFFF 2000:a 2000:d2E 2000:a 2000:g03FFFC00000000 2000:a 2000:i 2250:j 2250:A 2250:c=000 "
      "5000:e03FFFE02=00000 5000:e01000001=0FF";
  for (const std::string& paso : partes(guion)) {
    const std::size_t dos = paso.find(':'), igual = paso.find('=');
    const instante cuando = std::chrono::milliseconds{std::stoi(paso)};
    b.p.entra(en_trama(paso.substr(dos + 1, igual == paso.npos ? igual : igual - dos - 1)), cuando);
    EXPECT_EQ(b.p.sale(cuando), en_trama(igual == paso.npos ? "0" : paso.substr(igual + 1))) << paso;
  }
}

// Replies to a word to program, the fifth frame, and to its first byte read back.
TEST(faltas, each_one_strikes_in_its_frame) {
  const std::pair<faltas, std::array<std::string, 2>> casos[] = {
      {{}, {"<030>", "<0ABB3>"}},
      {{.muda_desde = 5}, {"", ""}},
      {{.calla_en = 5}, {"", "<0ABB3>"}},
      {{.cortada_en = 5, .cortada_tras = 3}, {"<03", "<0ABB3>"}},
      {{.suma_mala_en = 5}, {"<031>", "<0ABB3>"}},
      {{.suma_minuscula_en = 6}, {"<030>", "<0ABb3>"}},
      {{.error_en = 5, .codigo_error = 'X'}, {"<X58>", "<0FFBC>"}},
      {{.reset_en = 5, .reset_repetido = 2}, {"<1RESETB4><1RESETB4>", "<737>"}},
      {{.reset_suelto_en = 5}, {"<1RESETB4><737>", "<737>"}},
      {{.duplicada_en = 5}, {"<030><030>", "<0ABB3>"}},
      {{.suelta_en = 6}, {"<030>", "<030><0ABB3>"}},
      {{.altera = 22}, {"<!30>", "<0ABB3>"}},
      {{.pierde = 23}, {"<00>", "<0ABB3>"}},
      {{.altera_ida = 24}, {"<333>", "<0FFBC>"}},
      {{.pierde_ida = 24}, {"<333>", "<0FFBC>"}},
      {{.rearranca_en = 5}, {"<737>", "<737>"}},
      {{.por_mil_sin_grabar = 1000}, {"<030>", "<0FFBC>"}},
      {{.cuelga_en = 5}, {"", ""}}};
  for (const auto& [f, respuestas] : casos) {
    banco b(f);
    for (const std::string& paso : partes("A a d2E a")) b.manda(paso);
    EXPECT_EQ(b.manda("g000000AB000000"), hilo(respuestas[0]));
    EXPECT_EQ(b.manda("e00000001"), hilo(respuestas[1]));
    EXPECT_EQ((b.c.flash()[0] == 0xAB), (respuestas[1].find("<0AB") != std::string::npos));
    EXPECT_EQ(b.p.colgada(), (f.cuelga_en != 0));
  }
  const auto ruidosa = [](std::uint64_t n) {
    return banco({.semilla = n, .ruido = 500, .ruido_detras = 9}).manda("A");
  };
  EXPECT_EQ(ruidosa(7).find_first_of("\x02\x03"), 500);
  EXPECT_EQ(ruidosa(7).find_last_of("\x02\x03"), 504);
  EXPECT_EQ(ruidosa(7).size(), 514U);
  EXPECT_EQ(ruidosa(7), ruidosa(7));
  EXPECT_TRUE(ruidosa(7) != ruidosa(8));
}

TEST(faltas, a_cell_with_a_stuck_bit_holds_no_other_and_repairing_brings_back_a_board_that_hung_up) {
  banco b({.saluda = true, .cuelga_en = 7});
  b.c.modo = {.celda_a_0 = 1, .celda_a_1 = 2};
  b.p.abierta(instante{0});
  EXPECT_EQ(b.crudo(""), hilo("<030>"));
  for (const std::string& paso : partes("A a d2E a g0000000FFF00F0")) b.manda(paso);
  EXPECT_EQ(b.manda("e00000004"), en_trama("00FFE01F0"));
  EXPECT_TRUE(b.manda("c").empty());
  EXPECT_TRUE(b.p.colgada());
  b.p.reparar();
  b.p.abierta(instante{0});
  EXPECT_EQ(b.manda("c"), hilo("<737>"));
}

TEST(faltas, what_is_open_in_the_protocol_comes_in_more_than_one_way_and_noise_in_one_reply_alone) {
  const std::string ff(32, 'F');
  banco fija({.formas_fijas = true}), entera({.bloques_enteros = true}), ruidosa({.ruido = 3, .ruido_en = 2}),
      corta({.cortos_desde_cero = true, .lecturas_cortas = true});
  for (const std::string& paso : partes("A C000000000000=0FF000000FF C000000000400=0FF00003FCFF e0000017F=9 "
                                        "C000001000400=9 C000001007FFF=9 e00000110=9 e00000116=0")) {
    const std::size_t igual = paso.find('=');
    const std::string sale = fija.manda(paso.substr(0, igual));
    EXPECT_TRUE(sale.starts_with("\x02" + (igual == paso.npos ? "0" : paso.substr(igual + 1)))) << paso << sale;
  }
  entera.c.flash()[1] = 0;
  entera.manda("A");
  EXPECT_EQ(entera.manda("C000002007FFF"), en_trama("0FF00" + ff.substr(4) + "00007F7F01"));
  corta.c.flash()[0] = 0;
  corta.manda("A");
  EXPECT_EQ(corta.manda("C000100000400"), en_trama("00000003FC00"));
  EXPECT_EQ(corta.manda("C000100007FFF"), en_trama("0" + ff + "FF007F8000"));
  EXPECT_EQ(corta.manda("e00000021"), corta.manda("e00000020"));
  EXPECT_EQ(corta.manda("e00000002"), en_trama("000FF"));
  EXPECT_EQ(ruidosa.manda("A").size(), 5U);
  EXPECT_EQ(ruidosa.manda("A").size(), 8U);
  EXPECT_EQ(ruidosa.manda("A").size(), 5U);
}

// 10,000 bits a second are a character in a millisecond; at 57,600 the roundings must not add up.
TEST(ritmo, a_reply_comes_neither_early_nor_late_and_overtakes_none) {
  const struct {
    faltas f;
    unsigned baudios;
    std::int64_t al_fin;
  } casos[] = {{{.retrasada_en = 1, .retraso_ms = 1500}, 0, 1'500'000},
               {{.retrasa_todas = true, .retraso_ms = 9}, 0, 9'000},
               {{.goteo_ms = 10}, 0, 780'000},
               {{}, 10'000, 94'000},
               {{}, 57'600, 16'319}};
  for (const auto& c : casos) {
    banco b(c.f, {c.baudios});
    b.p.entra(en_trama("A") + en_trama("e00001020") + en_trama("c"), instante{0});
    const std::string antes = b.hasta(instante{c.al_fin - 3});
    EXPECT_LT(antes.size(), 81U);
    EXPECT_EQ(antes + b.hasta(instante{c.al_fin + 1}),
              hilo("<030>") + en_trama("0" + std::string(64, 'F')) + hilo("<00090>"));
  }
}

TEST(ritmo, a_reset_of_its_own_holds_no_reply_up) {
  banco b({.reset_suelto_en = 1, .reset_suelto_ms = 50});
  b.p.entra(en_trama("A") + en_trama("A"), instante{0});
  EXPECT_EQ(b.hasta(instante{49'999}), hilo("<030><030>"));
  EXPECT_EQ(b.hasta(instante{50'000}), hilo("<1RESETB4>"));
}

TEST(ritmo, babble_goes_by_the_clock_and_closing_the_line_does_not_cure_it) {
  banco b({.balbuceo_desde = 1});
  b.manda("A");
  const std::string s = b.p.sale(std::chrono::milliseconds{100});
  EXPECT_NEAR(static_cast<double>(s.size()), 1152, 12);
  EXPECT_EQ(s.find_first_of("\x02\x03"), s.npos);
  EXPECT_FALSE(b.c.abierto());
  EXPECT_LE(b.p.sale(std::chrono::hours{1000}).size(), 5000U);
  b.p.vaciar();
  EXPECT_TRUE(b.p.proximo());
}

TEST(ritmo, a_closed_line_loses_half_a_frame_and_a_flooded_one_takes_no_more_than_it_holds) {
  banco b({}, {10'000});
  b.p.entra(hilo("<A4"), instante{0});
  b.hasta(instante{4000});
  b.p.vaciar();
  b.p.entra(hilo("1>"), instante{5000});
  EXPECT_EQ(b.hasta(instante{50'000}), "");
  b.p.entra(std::string(3 * placa::capacidad, 'x'), instante{50'000});
  EXPECT_EQ(b.p.hueco(), 0U);
  banco otro;
  EXPECT_EQ(otro.crudo("\x02" + std::string(1'000'000, 'A') + "\x03"), hilo("<232>"));
  for (int i = 0; i < 20'000; ++i) otro.p.entra(en_trama("c"), instante{0});
  EXPECT_EQ(otro.p.sale(instante{0}).size(), placa::capacidad);
  EXPECT_EQ(otro.manda("A"), hilo("<030>"));
}

lectura_opciones lee(const std::string& orden) {
  const auto palabras = partes(orden);
  std::vector<const char*> argumentos(palabras.size());
  std::ranges::transform(palabras, argumentos.begin(), &std::string::c_str);
  return leer_opciones(argumentos);
}

TEST(opciones, none_lands_in_the_place_of_another_and_what_is_wrong_is_named) {
  const auto [o, error] =
      lee("--enlace p/COM1 --baudios=9600 --flash f --traza=t=1 --falla-config --sondeos-borrado 17 --muda-desde 1 "
          "--calla-en 2 --cortada-en 3 --cortada-tras 4 --retrasada-en 5 --retraso-ms 6 --suma-mala-en 7 "
          "--suma-minuscula-en 8 --error-en 9 --codigo-error X --borrado-ms 29 --reset-en 10 --reset-repetido 11 "
          "--ruido 12 "
          "--balbuceo-desde 13 "
          "--reset-suelto-en 17 --reset-suelto-ms 18 --duplicada-en 19 --suelta-en 20 --ruido-detras 21 --altera 22 "
          "--pierde 23 --altera-ida 24 --pierde-ida 25 --rearranca-en 26 --bit-a-0 27 --bit-a-1 28 --goteo-ms 14 "
          "--por-mil-sin-grabar 15 --cuelga-en 16 --semilla 18446744073709551615");
  EXPECT_EQ(error + o.enlace + o.flash + o.traza, "p/COM1ft=1");
  const faltas& f = o.fallos;
  const std::uint64_t hay[] = {f.muda_desde,
                               f.calla_en,
                               f.cortada_en,
                               f.cortada_tras,
                               f.retrasada_en,
                               f.retraso_ms,
                               f.suma_mala_en,
                               f.suma_minuscula_en,
                               f.error_en,
                               f.reset_en,
                               f.reset_repetido,
                               f.ruido,
                               f.balbuceo_desde,
                               f.goteo_ms,
                               f.por_mil_sin_grabar,
                               f.cuelga_en,
                               f.reset_suelto_en,
                               f.reset_suelto_ms,
                               f.duplicada_en,
                               f.suelta_en,
                               f.ruido_detras,
                               f.altera,
                               f.pierde,
                               f.altera_ida,
                               f.pierde_ida,
                               f.rearranca_en,
                               *o.modo.celda_a_0,
                               *o.modo.celda_a_1};
  for (std::uint64_t i = 0; i < std::size(hay); ++i) EXPECT_EQ(hay[i], i + 1);
  EXPECT_EQ(f.codigo_error, 'X');
  EXPECT_EQ(f.semilla, UINT64_MAX);
  EXPECT_EQ(o.baudios, 9600);
  EXPECT_EQ(o.modo.sondeos_de_borrado, 17);
  EXPECT_EQ(o.modo.borrado_dura, std::chrono::milliseconds{29});
  EXPECT_TRUE(o.modo.falla_config);
  EXPECT_FALSE((o.modo.falla_borrado || o.modo.falla_permiso || o.modo.mudo || o.protegida));
  EXPECT_EQ(lee("--baudios 9600 --sin-ritmo").valores.baudios, 0);
  EXPECT_TRUE(lee("--help --nada").valores.ayuda);
  EXPECT_EQ(lee("--averia 1").valores.averia, lee("--averia 1").valores.averia);
  EXPECT_TRUE(lee("--saluda").valores.averia.empty());
  const std::pair<const char*, const char*> errores[] = {
      {"--nada", "opción desconocida: --nada"},
      {"--enlace", "falta el valor de la opción --enlace"},
      {"--mudo=1", "la opción --mudo no lleva valor"},
      {"--baudios 57600x", "valor no válido para la opción --baudios: 57600x"},
      {"--calla-en 0", "valor no válido para la opción --calla-en: 0"},
      {"--cortada-tras 3", "--cortada-tras requiere --cortada-en"},
      {"--bit-a-0 262144", "valor no válido para la opción --bit-a-0: 262144"},
      {"--reset-suelto-ms 3", "--reset-suelto-ms requiere --reset-suelto-en"},
      {"--balbuceo-etx", "--balbuceo-etx requiere --balbuceo-desde"}};
  for (const auto& [argumentos, texto] : errores) EXPECT_EQ(lee(argumentos).error, texto);
}

// When what comes at a time is handed to the host, in microseconds; a line end stands for the one behind the last.
TEST(adaptador, each_holds_back_what_comes_as_its_clock_its_packets_and_the_frames_of_the_bus_have_it) {
  const struct {
    const char* cual;
    std::vector<std::pair<int, int>> llegadas;
    std::vector<std::pair<int, int>> entregas;
  } casos[] = {{"ftdi", {{100, 5}, {15'900, 1}, {16'100, 2}}, {{16'000, 6}, {32'000, 2}}},
               {"ftdi", {{200, 61}, {300, 3}}, {{1'000, 62}, {17'000, 2}}},
               {"ftdi-1ms", {{100, 5}, {1'100, 5}}, {{1'000, 5}, {2'000, 5}}},
               {"ch340", {{100, 5}, {900, 5}, {2'500, 40}}, {{2'000, 10}, {3'000, 32}, {4'000, 8}}},
               {"cp2102", {{100, 5}}, {{3'000, 5}}},
               {"acm", {{100, 5}, {1'000, 5}, {1'001, 1}}, {{1'000, 10}, {2'000, 1}}}};
  for (const auto& c : casos) {
    fuente f(c.llegadas);
    adaptador a(f, adaptador_de(c.cual));
    std::vector<std::pair<int, int>> entregas;
    while (const auto cuando = a.proximo()) {
      const std::string parte = a.sale(*cuando);
      if (!parte.empty()) entregas.emplace_back(cuando->count(), parte.size());
    }
    EXPECT_EQ(entregas, c.entregas) << c.cual;
  }
  EXPECT_FALSE(adaptador_de("otro").has_value());
}

}  // namespace
}  // namespace puente
