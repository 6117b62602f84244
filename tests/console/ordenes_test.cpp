#include "bridge/traza.h"
#include "console/banco_console.h"

namespace {

using namespace morvane;
using apoyo::banco_console;
using apoyo::ruidosos;
using nlohmann::json;

/// A board that holds the file a.bin, 300 bytes from 0.
struct banco_grabado : banco_console {
  explicit banco_grabado(unsigned baudios = 0) : banco_console(baudios) {
    guardar("a.bin", datos);
    std::ranges::copy(datos, lejos.chip.flash().begin());
  }
  std::vector<std::uint8_t> datos = ruidosos(300);
};

TEST(ordenes, each_order_tells_what_it_found) {
  banco_grabado b;
  const auto caso = [&](const std::string& llamada, const json& quiero) {
    json r = b.resultado(llamada);
    EXPECT_EQ(r["codigo"], 0) << r.dump();
    for (const auto& [clave, valor] : quiero.items()) EXPECT_EQ(r[clave], valor) << llamada << ": " << clave;
    return r;
  };
  caso("estado", {{"orden", "estado"},
                  {"desenlace", "hecho"},
                  {"puerto", "COM1"},
                  {"protegido", false},
                  {"dispositivo", "/dev/ttyUSB7"},
                  {"velocidad", 57600}});
  caso("verificar @a.bin", {{"prueba", "sumas"}, {"diferencias", json::array()}});
  const std::string archivo = (b.dir.ruta() / "a.bin").string();
  caso("identificar @a.bin", {{"identificado", archivo}, {"en_blanco", false}});
  caso("medir", {});
  caso("leer --desde 4 --hasta 7 @corto.bin", {{"bytes", 4}, {"desde", 4}, {"hasta", 7}});
  EXPECT_EQ(b.dir.leer("corto.bin"), std::string(b.datos.begin() + 4, b.datos.begin() + 8));
  const json todo = caso("leer @todo.bin", {{"bytes", 0x40000}});
  const json g = caso("grabar --prueba lectura @a.bin", {{"borrado", true}, {"palabras", 75}, {"prueba", "lectura"}});
  EXPECT_EQ(g["sha256"], todo["sha256"]) << "what is read back is what was to be written";
  EXPECT_EQ(g["archivo"], archivo);
  caso("reset", {{"orden", "reset"}});
  caso("borrar", {{"borrado", true}});
  caso("borrar", {{"borrado", false}});
  b.guardar("cola.bin", {1, 2, 3, 4, 0xFF, 0xFF, 0xFF, 0xFF, 5, 6, 7, 8, 9, 10, 11, 12});
  const json p = caso("plan @a.bin --velocidad 115200", {{"palabras", 75}, {"caracteres", 0}, {"velocidad", 115200}});
  EXPECT_LE(p["previsto"]["caracteres"], 34 * 75 + 1500);
  EXPECT_EQ(p["sha256"], todo["sha256"]);
  caso("convertir @a.bin @a.hex", {{"bytes", 300}});
  EXPECT_EQ(caso("convertir @a.hex @b.bin", {})["sha256"], todo["sha256"]);
  EXPECT_EQ(b.dir.leer("b.bin"), b.dir.leer("a.bin"));
  caso("convertir --en 3FA @cola.bin @conf.s19", {{"bytes", 16}});
  EXPECT_NE(b.sale.todo.find("\"configuracion_no_pasa\""), std::string::npos) << b.sale.todo;
  caso("leer --desde 3FFFE @punta.s19", {{"bytes", 2}});
  caso("plan @punta.s19", {{"palabras", 0}});
  caso("grabar --todo --en 3FFF0 @cola.bin", {{"borrado", false}, {"palabras", 4}});
}

TEST(ordenes, exit_codes_say_what_is_wrong_with_the_board) {
  const struct {
    const char* llamada;
    int codigo;
    const char* desenlace;
    std::function<void(banco_grabado&)> estropear;
  } casos[] = {
      {"estado", 5, "silencio", [](auto& b) { b.lejos.placa.fallos.muda_desde = 1; }},
      {"estado", 6, "linea", [](auto& b) { b.lejos.placa.fallos.balbuceo_desde = 1; }},
      {"verificar @a.bin", 6, "linea", [](auto& b) { b.lejos.placa.fallos.cuelga_en = 5; }},
      {"estado", 7, "rechazada", [](auto& b) { b.lejos.chip.modo.mudo = true; }},
      {"leer @x.bin", 8, "protegida",
       [](auto& b) { std::ranges::copy(puente::chip::palabra, &b.lejos.chip.flash()[0x414]); }},
      {"verificar @a.bin", 9, "distinta", [](auto& b) { b.lejos.chip.flash()[0x100] ^= 0x10; }},
      {"proteger --si", 9, "distinta", [](auto& b) { b.lejos.chip.flash()[0x414] = 0; }},
      {"borrar", 10, "chip", [](auto& b) { b.lejos.chip.modo.falla_borrado = true; }},
      {"grabar @a.bin", 10, "chip",
       [](auto& b) {
         b.lejos.chip.modo.celda_a_0 = 0;
         b.lejos.chip.modo.celda_a_1 = 4;
       }},
      {"estado", 1, "interno", [](auto& b) { b.lanza = true; }},
      {"convertir @a.bin @no/hay.hex", 3, "archivo", [](auto&) {}},
      {"grabar @falta.bin", 3, "archivo", [](auto&) {}},
      {"leer @no/hay.bin", 3, "archivo", [](auto&) {}},
      {"identificar", 3, "archivo", [](auto&) {}},
      {"estado --directorio @no", 3, "archivo", [](auto&) {}},
  };
  for (const auto& c : casos) {
    banco_grabado b;
    c.estropear(b);
    const json r = b.resultado(c.llamada);
    EXPECT_EQ(r["codigo"], c.codigo) << r.dump();
    EXPECT_EQ(r["desenlace"], c.desenlace);
    EXPECT_EQ(b.aperturas, c.codigo == 3 ? 0 : 1) << c.llamada;
    EXPECT_FALSE(std::filesystem::exists(b.dir.ruta() / "x.bin"));
    EXPECT_NE(b.correr(c.llamada), 0);
    EXPECT_EQ(b.sale.todo, "") << "a person reads failures on the other output";
    EXPECT_NE(b.yerra.todo.find("morvane-cli "), std::string::npos) << b.yerra.todo;
  }
}

TEST(ordenes, a_port_that_cannot_be_opened_is_told_with_its_cause) {
  banco_console b;
  b.sin_linea = causa_puerto{
      .cual = causa_puerto::clase::ocupado, .puerto = 3, .ruta = "/dev/ttyUSB7", .quien = "minicom (pid 7)"};
  const json r = b.resultado("estado --puerto COM3");
  EXPECT_EQ(r["codigo"], 4);
  EXPECT_EQ(r["desenlace"], "puerto");
  EXPECT_EQ(r["puerto"], "COM3");
  EXPECT_EQ(r["texto"], "No se puede abrir COM3: /dev/ttyUSB7: ocupado por minicom (pid 7).");
}

TEST(ordenes, port_and_speed_are_those_of_the_settings_unless_they_are_given) {
  banco_console b;
  const auto abre = [&](const std::string& llamada, int codigo = 0) {
    EXPECT_EQ(b.correr(llamada), codigo) << b.yerra.todo;
    return b.hilo().linea();
  };
  EXPECT_EQ(abre("estado"), (parametros_linea{57600, 'n', 8, 2}));
  EXPECT_EQ(b.ultimo.numero, 1);
  b.dir.escribir("Settings.txt", "\"19200\",\"e\",\"7\",\"2\"\r\n\"com4\"\r\n");
  EXPECT_EQ(abre("estado"), (parametros_linea{19200, 'e', 7, 4}));
  EXPECT_EQ(b.ultimo.numero, 4);
  EXPECT_EQ(abre("estado --velocidad 115200 --puerto COM2"), (parametros_linea{115200, 'e', 7, 4}));
  EXPECT_EQ(b.ultimo.numero, 2);
  abre("estado --puerto /dev/serial/by-id/x");
  EXPECT_EQ(b.ultimo.numero, causa_puerto::sin_numero);
  EXPECT_EQ(b.ultimo.ruta, "/dev/serial/by-id/x");
  const int antes = b.aperturas;
  b.dir.escribir("Settings.txt", "\"rápido\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n");
  abre("estado", 3);
  abre("estado --velocidad 9600");
  b.dir.escribir("Settings.txt", "\"9600\",\"n\",\"8\",\"1\"\r\n\"LPT1\"\r\n");
  abre("estado", 3);
  EXPECT_EQ(b.aperturas, antes + 1) << "settings that make no sense open no port";
  EXPECT_EQ(std::ranges::distance(std::filesystem::directory_iterator(b.dir.ruta())), 1) << "nothing is written there";
}

TEST(ordenes, a_stop_leaves_a_closed_chip_and_the_code_of_its_signal) {
  for (const int senal : {2, 15, 1}) {
    banco_grabado b;
    b.senal_de_fin = senal;
    b.mundo_.para = 30;
    const json r = b.resultado("grabar @a.bin");
    EXPECT_EQ(r["codigo"], senal == 2 ? 130 : 143);
    EXPECT_EQ(r["desenlace"], "detenido");
    EXPECT_EQ(r["chip_cerrado"], true);
    EXPECT_FALSE(b.lejos.chip.abierto());
  }
  banco_grabado b;
  b.lejos.placa.fallos.muda_desde = 4;
  b.mundo_.para = 20;
  b.mundo_.para_del_todo = 21;
  const auto antes = b.plat.ahora();
  EXPECT_EQ(b.resultado("grabar @a.bin")["codigo"], 130);
  EXPECT_LT(b.plat.ahora() - antes, std::chrono::seconds{60});
}

TEST(ordenes, differences_have_ranges_shapes_and_the_name_of_what_is_there) {
  banco_grabado b;
  b.lejos.chip.flash()[0x10000] = 0x55;
  json r = b.resultado("verificar @a.bin");
  EXPECT_EQ(r["diferencias"], json::parse(R"([{"desde":65536,"hasta":65536,"clase":"no_borrado"}])"));
  EXPECT_EQ(r["direccion"], 65536);
  EXPECT_EQ(r["texto"], "El chip difiere de a.bin en 010000 (1 byte): no borrado.");
  auto otro = b.datos;
  otro.resize(400, 0x21);
  b.guardar("otro.bin", otro);
  b.dir.escribir("MENU.TXT", "\"/no/hay.bin\"\r\n\"" + (b.dir.ruta() / "otro.bin").string() + "\"\r\n");
  b.lejos.chip.flash()[0x10000] = 0xFF;
  std::ranges::copy(otro, b.lejos.chip.flash().begin());
  for (const char* prueba : {"sumas", "lectura"}) {
    r = b.resultado(std::string("verificar @a.bin --prueba ") + prueba);
    EXPECT_EQ(r["codigo"], 9);
    EXPECT_EQ(r["identificado"], (b.dir.ruta() / "otro.bin").string());
  }
  r = b.resultado("identificar");
  EXPECT_EQ(r["identificado"], (b.dir.ruta() / "otro.bin").string());
  EXPECT_EQ(r["omitidos"], json::array({"/no/hay.bin"}));
  std::ranges::fill(b.lejos.chip.flash(), std::uint8_t{0xFF});
  EXPECT_EQ(b.resultado("verificar @a.bin")["en_blanco"], true);
  EXPECT_EQ(b.resultado("identificar @a.bin")["texto"], "El chip está en blanco.");
}

TEST(ordenes, no_failed_reading_leaves_half_a_file_or_spoils_a_whole_one) {
  banco_grabado b;
  b.dir.escribir("viejo.bin", "lo de antes");
  b.lejos.placa.fallos.cuelga_en = 400;
  EXPECT_EQ(b.correr("leer @viejo.bin"), 6);
  EXPECT_EQ(b.dir.leer("viejo.bin"), "lo de antes");
  EXPECT_EQ(std::ranges::distance(std::filesystem::directory_iterator(b.dir.ruta())), 2);
}

TEST(ordenes, an_output_that_takes_nothing_is_no_success_and_stops_no_run) {
  for (const char* json : {"", " --json"}) {
    banco_grabado b;
    std::ranges::fill(b.lejos.chip.flash(), std::uint8_t{0xFF});
    b.sale.cabe = 20;
    EXPECT_EQ(b.correr(std::string("grabar @a.bin") + json), 3);
    EXPECT_TRUE(std::ranges::equal(b.datos, b.lejos.chip.flash().first(b.datos.size())));
    EXPECT_NE(b.yerra.todo.find("no se puede escribir en la salida"), std::string::npos);
    b.lejos.chip.flash()[0] ^= 1;
    EXPECT_EQ(b.correr(std::string("verificar @a.bin") + json), 9) << "what is worse stays";
  }
}

TEST(ordenes, a_certificate_tells_what_was_done_and_of_which_file) {
  banco_grabado b;
  b.guardar("otro.bin", {1, 2, 3});
  EXPECT_EQ(b.resultado("verificar @otro.bin --certificado @c.json")["codigo"], 9);
  EXPECT_FALSE(std::filesystem::exists(b.dir.ruta() / "c.json")) << "nothing is certified that was not proved";
  for (const char* prueba : {"sumas", "lectura"}) {
    const json g = b.resultado(std::string("grabar @a.bin --certificado @c.json --prueba ") + prueba);
    EXPECT_EQ(g["codigo"], 0) << g.dump();
    const json r = b.resultado("comprobar @c.json @a.bin");
    EXPECT_EQ(r["codigo"], 0) << r.dump();
    const json& h = r["hechos"];
    for (const char* campo : {"sha256", "prueba", "palabras", "borrado", "caracteres"}) EXPECT_EQ(h[campo], g[campo]);
    EXPECT_EQ(h["adaptador"]["serie"], "A50285BI");
    EXPECT_EQ(h.value("sha256_leido", h["sha256"]), h["sha256"]) << "what was read is what was to be written";
    EXPECT_EQ(h.contains("sha256_leido"), g["prueba"] == "lectura");
    EXPECT_EQ(h.contains("sumas"), g["prueba"] == "sumas");
  }
  EXPECT_EQ(b.resultado("convertir @a.bin @a.hex")["codigo"], 0);
  EXPECT_EQ(b.resultado("comprobar @c.json @otro.bin")["codigo"], 11);
  const json r = b.resultado("comprobar @c.json @a.hex");
  EXPECT_EQ(r["desenlace"], "certificado");
  EXPECT_TRUE(r["texto"].get<std::string>().ends_with("que deja el chip igual.")) << r["texto"];
  EXPECT_TRUE(b.resultado("comprobar @c.json")["clave_propia"]);
  EXPECT_EQ(b.resultado("verificar @otro.bin --certificado @c.json")["codigo"], 9);
  EXPECT_FALSE(std::filesystem::exists(b.dir.ruta() / "c.json")) << "what an earlier one says holds no longer";
  const std::string firmware = b.dir.leer("a.bin");
  EXPECT_EQ(b.resultado("grabar @a.bin --certificado @a.bin")["codigo"], 3);
  EXPECT_EQ(b.dir.leer("a.bin"), firmware) << "only certificates are replaced";
  EXPECT_EQ(b.resultado("grabar @a.bin --certificado @c.json")["codigo"], 0);
  b.dir.escribir("c.json", b.dir.leer("c.json") + " ");
  EXPECT_EQ(b.resultado("comprobar @c.json")["codigo"], 11);
  EXPECT_EQ(b.resultado("comprobar @no.json")["codigo"], 3);
  b.dir.escribir("claves/firma.clave", "rota");
  const int antes = b.aperturas;
  EXPECT_EQ(b.resultado("grabar @a.bin --certificado @d.json")["codigo"], 3);
  EXPECT_EQ(b.aperturas, antes) << "without a key nothing is begun";
}

TEST(ordenes, the_trace_is_that_of_the_board) {
  banco_grabado b(57600);
  std::string suya;
  b.lejos.placa.traza = [&](char direccion, std::string_view trama, puente::instante cuando) {
    suya += puente::renglon_de_traza(direccion, trama, cuando) + "\n";
  };
  b.lejos.placa.fallos.suma_mala_en = 2;
  b.lejos.placa.fallos.ruido_en = 5;
  b.lejos.placa.fallos.ruido = 3;
  EXPECT_EQ(b.correr("verificar --traza @t.txt @a.bin"), 0);
  const auto sin_horas = [](const std::string& t) {
    std::istringstream renglones(t);
    std::string todo;
    for (std::string r; std::getline(renglones, r);) todo += r.substr(14) + "\n";
    return todo;
  };
  const std::string mia = b.dir.leer("t.txt");
  EXPECT_EQ(sin_horas(mia), sin_horas(suya));
  EXPECT_TRUE(mia.starts_with("     0.000000 > <STX>A41<ETX>\n")) << mia.substr(0, 60);
  EXPECT_EQ(b.correr("estado --traza /dev/full"), 3);
  EXPECT_NE(b.yerra.todo.find("falta traza"), std::string::npos);
  const int antes = b.aperturas;
  EXPECT_EQ(b.correr("estado --traza @no/hay.txt"), 3);
  EXPECT_EQ(b.aperturas, antes);
}

TEST(ordenes, a_person_reads_one_line_or_a_bar_and_colour_on_a_terminal_alone) {
  banco_grabado b(115200);
  EXPECT_EQ(b.correr("verificar @a.bin"), 0);
  EXPECT_EQ(std::ranges::count(b.sale.todo, '\n'), 1);
  EXPECT_EQ(b.sale.todo.find_first_of("\r\x1b"), std::string::npos);
  EXPECT_EQ(b.correr("verificar @a.bin -q"), 0);
  EXPECT_EQ(b.sale.todo + b.yerra.todo, "");
  b.sale.terminal = b.yerra.terminal = true;
  EXPECT_EQ(b.correr("leer @x.bin"), 0);
  EXPECT_NE(b.sale.todo.find("\rLeyendo  [###"), std::string::npos);
  EXPECT_EQ(b.sale.todo.find('\x1b'), std::string::npos);
  b.sale.color = b.yerra.color = true;
  EXPECT_EQ(b.correr("verificar @a.bin"), 0);
  EXPECT_NE(b.sale.todo.find("\x1b[32mEl chip es igual"), std::string::npos);
  b.lejos.chip.flash()[0] ^= 1;
  EXPECT_EQ(b.correr("verificar @a.bin -q"), 9);
  EXPECT_EQ(b.sale.todo, "");
  EXPECT_TRUE(b.yerra.todo.starts_with("\x1b[31mmorvane-cli verificar: \x1b[0mEl chip difiere"));
  b.lejos.placa.fallos.muda_desde = 1;
  EXPECT_EQ(b.correr("estado"), 5);
  EXPECT_NE(b.yerra.todo.find("Comando: A\n"), std::string::npos);
  EXPECT_NE(b.yerra.todo.find("Puerto: COM1 (/dev/ttyUSB7), 57600 baudios"), std::string::npos);
}

}  // namespace
