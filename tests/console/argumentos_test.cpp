#include "console/argumentos.h"

#include "console/banco_console.h"

namespace {

using namespace morvane::console;
using apoyo::banco_console;

TEST(argumentos, a_wrong_call_says_why_and_how_and_touches_nothing) {
  const struct {
    const char* llamada;
    const char* orden;
    const char* frase;
  } casos[] = {
      {"", "", "Falta la orden."},
      {"--json --velocidad 9600", "", "Falta la orden."},
      {"grabarr a.bin", "", "No hay orden «grabarr»."},
      {"Grabar a.bin", "", "No hay orden «Grabar»."},
      {"grabar", "grabar", "«grabar» necesita un archivo."},
      {"grabar a.bin b.bin", "grabar", "«grabar» lleva un solo archivo, y sobra «b.bin»."},
      {"convertir a.bin", "convertir", "«convertir» necesita dos archivos."},
      {"estado a.bin", "estado", "«estado» no lleva archivos, y sobra «a.bin»."},
      {"estado --nada", "estado", "No hay opción «--nada»."},
      {"estado -x", "estado", "No hay opción «-x»."},
      {"estado --todo", "estado", "--todo no es una opción de «estado»."},
      {"verificar --todo a.bin", "verificar", "--todo no es una opción de «verificar»."},
      {"borrar --si", "borrar", "--si no es una opción de «borrar»."},
      {"leer --en 0 a.bin", "leer", "--en no es una opción de «leer»."},
      {"proteger", "proteger", "«proteger» pide --si: el chip ya no se podrá leer."},
      {"estado --velocidad", "estado", "Falta el valor de --velocidad."},
      {"estado --puerto --traza", "estado", "Falta el valor de --puerto."},
      {"estado --ayuda --puerto --json", "estado", "Falta el valor de --puerto."},
      {"estado --puerto=", "estado", "Falta el valor de --puerto."},
      {"estado --puerto COM1 --puerto COM2", "estado", "--puerto se da una sola vez."},
      {"estado --puerto com12", "estado", "No hay puerto «com12»: van de COM0 a COM9."},
      {"grabar --todo=no a.bin", "grabar", "--todo no lleva ningún valor."},
      {"estado --velocidad 9600x", "estado", "«9600x» no es una velocidad: va de 50 a 4000000 baudios."},
      {"estado --velocidad 49", "estado", "«49» no es una velocidad: va de 50 a 4000000 baudios."},
      {"estado --velocidad 99999999999", "estado", "«99999999999» no es una velocidad: va de 50 a 4000000 baudios."},
      {"grabar --prueba ambas a.bin", "grabar", "«ambas» no es una prueba: es sumas o lectura."},
      {"leer --desde 3F00G a.bin", "leer", "«3F00G» no es una dirección hexadecimal (--desde)."},
      {"leer --desde 0x a.bin", "leer", "«0x» no es una dirección hexadecimal (--desde)."},
      {"leer --desde -1 a.bin", "leer", "«-1» no es una dirección hexadecimal (--desde)."},
      {"leer --hasta 123456789 a.bin", "leer", "«123456789» no es una dirección hexadecimal (--hasta)."},
      {"leer --hasta 40000 a.bin", "leer",
       "La dirección 40000 (--hasta) está fuera de la memoria, que termina en 3FFFF."},
      {"leer --desde 11 --hasta 0x10 a.bin", "leer", "El rango está al revés: --desde 11 va detrás de --hasta 10."},
      {"leer a.txt", "leer", "No se sabe en qué formato escribir «a.txt»: ha de terminar en .s19, .hex o .bin."},
      {"convertir a.s19 b.elf", "convertir",
       "No se sabe en qué formato escribir «b.elf»: ha de terminar en .s19, .hex o .bin."},
      {"grabar --en 100 a.s19", "grabar", "--en es solo para archivos .bin."},
  };
  banco_console b;
  for (const auto& c : casos) {
    const auto r = b.resultado(c.llamada);
    EXPECT_EQ(r["codigo"], 2) << c.llamada;
    EXPECT_EQ(r["orden"], c.orden) << c.llamada;
    EXPECT_EQ(r["texto"], c.frase) << c.llamada;
    const std::string forma = "morvane-cli " + std::string(c.orden);
    EXPECT_TRUE(r["forma"].get<std::string>().starts_with(forma)) << r["forma"];
  }
  EXPECT_EQ(b.correr("leer a.bin b.bin"), 2);
  EXPECT_EQ(b.sale.todo, "");
  EXPECT_EQ(b.yerra.todo,
            "morvane-cli leer: «leer» lleva un solo archivo, y sobra «b.bin».\n"
            "  Uso: morvane-cli leer [OPCIONES] [--desde A] [--hasta B] ARCHIVO\n"
            "  Más: morvane-cli leer --ayuda\n");
  EXPECT_EQ(b.aperturas, 0);
  EXPECT_TRUE(std::filesystem::is_empty(b.dir.ruta()));
}

argumentos bien(const std::vector<std::string>& palabras) {
  const auto leido = leer_argumentos(palabras);
  const auto* mal = std::get_if<mal_uso>(&leido);
  EXPECT_EQ(mal, nullptr) << mal->frase;
  return std::get<argumentos>(leido);
}

TEST(argumentos, options_stand_anywhere_and_addresses_are_hexadecimal) {
  const argumentos a = bien({"--velocidad=115200", "leer", "--hasta", "0x3f0", "x.S19", "--puerto", "com3", "-q"});
  EXPECT_EQ(a.que, orden::leer);
  EXPECT_EQ(a.velocidad, 115200);
  EXPECT_EQ(a.hasta, 0x3F0);
  EXPECT_FALSE(a.desde);
  EXPECT_EQ(a.puerto, "COM3");
  EXPECT_TRUE(a.callada);
  EXPECT_EQ(bien({"estado", "--puerto", "COM3x"}).puerto, "COM3x") << "it may be a file's name";
  EXPECT_EQ(bien({"leer", "--desde", "3ffff", "x.bin"}).desde, 0x3FFFF) << "a range of one byte";
  EXPECT_EQ(bien({"grabar", "--", "--json.bin"}).archivos.front(), "--json.bin");
  EXPECT_EQ(bien({"grabar", "estado"}).archivos.front(), "estado") << "an order's name may be a file's";
  EXPECT_EQ(bien({"identificar", "a", "b", "c"}).archivos.size(), 3U);
}

TEST(argumentos, help_is_there_for_all_and_for_each_order) {
  banco_console b;
  for (const std::string ayuda : {"-h", "--ayuda", "--help"}) {
    EXPECT_EQ(b.correr(ayuda), 0);
    EXPECT_NE(b.sale.todo.find("Uso: morvane-cli [OPCIONES] ORDEN"), std::string::npos);
    EXPECT_EQ(b.correr("proteger " + ayuda), 0);
    EXPECT_TRUE(b.sale.todo.starts_with("Uso: morvane-cli proteger [OPCIONES] --si\n"));
    EXPECT_NE(b.sale.todo.find("--velocidad N"), std::string::npos);
  }
  EXPECT_EQ(b.correr("--version"), 0);
  EXPECT_TRUE(b.sale.todo.starts_with("morvane-cli "));
  EXPECT_EQ(b.resultado("leer --ayuda")["desenlace"], "hecho");
  EXPECT_EQ(b.aperturas, 0);
}

TEST(argumentos, whatever_is_said_there_is_one_result_and_no_wrong_call_opens_a_port) {
  const std::vector<std::string> palabras = {
      "puertos", "estado",    "plan",         "borrar",  "grabar",   "verificar",     "leer",   "identificar",
      "reset",   "convertir", "proteger",     "medir",   "@a.bin",   "@b.hex",        "@c.txt", "comprobar",
      "--json",  "-q",        "--todo",       "--si",    "--puerto", "COM3",          "--en",   "--velocidad",
      "9600",    "--desde",   "3F000",        "--hasta", "-1",       "--prueba",      "sumas",  "--",
      "-",       "--traza=",  "--directorio", "[a,b]",   "--ayuda",  "--certificado", "ñ",      "--velocidad=9600",
      "\xFF",    "--version"};
  // What a trace or a certificate is named by chance is written here.
  const apoyo::carpeta aqui;
  const std::filesystem::path antes = std::filesystem::current_path();
  std::filesystem::current_path(aqui.ruta());
  std::minstd_rand azar(1);
  int bien = 0, mal = 0;
  for (int i = 0; i < 1500; ++i) {
    banco_console b;
    b.guardar("a.bin", {1, 2, 3, 4});
    std::string llamada = palabras[azar() % 16];
    for (auto n = azar() % 5; n > 0; --n) llamada += " " + palabras[azar() % palabras.size()];
    // What ends the options would end those that the test adds.
    if (llamada.find(" -- ") != std::string::npos || llamada.ends_with(" --")) continue;
    SCOPED_TRACE(llamada);
    const int codigo = b.resultado(llamada)["codigo"];
    ++(codigo == 2 ? mal : bien);
    EXPECT_TRUE(codigo != 2 || b.aperturas == 0) << llamada;
    EXPECT_NE(codigo, 1) << llamada;
  }
  EXPECT_TRUE(bien > 100 && mal > 100) << bien << " " << mal;
  std::filesystem::current_path(antes);
}

}  // namespace
