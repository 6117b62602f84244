#include "serial/puertos.h"

#include <gtest/gtest.h>

#include "apoyo/carpeta.h"
#include "serial/adaptador.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

TEST(puertos, adapters_have_their_names_and_lines_without_a_circuit_are_left_out) {
  const apoyo::carpeta raiz;
  const auto linea = [&](const std::string& nombre, const std::string& aparato) {
    raiz.escribir("sys/class/tty/" + nombre + "/type", nombre == "ttyS1" ? "0\n" : "4\n");
    fs::create_directories(raiz.ruta() / aparato);
    fs::create_symlink(raiz.ruta() / aparato, raiz.ruta() / "sys/class/tty" / nombre / "device");
    raiz.escribir("dev/" + nombre, "");
  };
  linea("ttyUSB0", "sys/devices/usb1/1-2/1-2:1.0/ttyUSB0");
  raiz.escribir("sys/devices/usb1/1-2/product", "FT232R USB UART\n");
  raiz.escribir("sys/devices/usb1/1-2/manufacturer", "FTDI\n");
  raiz.escribir("sys/devices/usb1/1-2/serial", "A50285BI\n");
  linea("ttyS0", "sys/devices/placa");
  linea("ttyS1", "sys/devices/placa");
  raiz.escribir("sys/class/tty/tty0/type", "4\n");
  fs::create_directories(raiz.ruta() / "dev/serial/by-id");
  const fs::path estable = raiz.ruta() / "dev/serial/by-id/usb-FTDI-0";
  fs::create_symlink("../../ttyUSB0", estable);
  const auto todos = aparatos(raiz.ruta());
  ASSERT_EQ(todos.size(), 2U);
  EXPECT_EQ(todos[0].dispositivo.filename(), "ttyS0");
  EXPECT_TRUE(todos[0].nombre.empty());
  EXPECT_EQ(todos[1].nombre, "FT232R USB UART (FTDI)");
  EXPECT_EQ(adaptador_de("/dev/ttyUSB0", raiz.ruta()).serie, "A50285BI");
  EXPECT_EQ(todos[1].estable, estable) << "it follows the adapter";
}

TEST(puertos, a_link_replaces_a_link_and_nothing_else_is_taken_away) {
  const apoyo::carpeta dir;
  for (const char* destino : {"/dev/ttyUSB7", "/dev/null"}) {
    EXPECT_FALSE(enlazar_puerto(dir.ruta(), 3, destino));
    EXPECT_EQ(fs::read_symlink(dir.ruta() / "puertos/COM3"), destino);
  }
  EXPECT_FALSE(quitar_enlace(dir.ruta(), 3));
  dir.escribir("puertos/COM3", "mío");
  const causa_puerto ajeno{
      .cual = causa_puerto::clase::no_es_enlace, .puerto = 3, .enlace = dir.ruta() / "puertos/COM3"};
  EXPECT_TRUE(quitar_enlace(dir.ruta(), 3) == ajeno);
  EXPECT_TRUE(enlazar_puerto(dir.ruta(), 3, "/dev/null") == ajeno);
  EXPECT_EQ(dir.leer("puertos/COM3"), "mío");
}

}  // namespace
}  // namespace morvane
