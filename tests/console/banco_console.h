#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "apoyo/carpeta.h"
#include "console/programa.h"
#include "job/banco_job.h"

namespace apoyo {

/// Keeps what is written, up to `cabe` characters; then it is a full disk.
struct salida_texto final : morvane::console::salida {
  void escribir(std::string_view texto) override {
    if (llena || todo.size() + texto.size() > cabe) {
      llena = true;
    } else {
      todo += texto;
    }
  }
  bool fallida() const override { return llena; }

  std::string todo;
  std::size_t cabe = SIZE_MAX;
  bool llena = false;
};

/// The program's world in memory: a board, a folder of its own, captured outputs.
class banco_console : public morvane::console::exterior {
 public:
  explicit banco_console(unsigned baudios = 0) : lejos(baudios) {}

  morvane::console::salida& normal() override { return sale; }
  morvane::console::salida& errores() override { return yerra; }
  morvane::job::entorno& mundo() override { return mundo_; }
  int senal() const override { return mundo_.miradas >= mundo_.para ? senal_de_fin : 0; }
  std::string hora() const override { return "2026-11-23T22:10:52Z"; }
  std::filesystem::path carpeta_de_claves() const override { return dir.ruta() / "claves"; }
  morvane::adaptador aparato() const override {
    return {.fabricante = "FTDI",
            .producto = "FT232R",
            .serie = "A50285BI",
            .identidad = "0403:6001",
            .conductor = "ftdi_sio",
            .retencion_ms = 1};
  }
  std::filesystem::path carpeta() const override { return dir.ruta(); }
  std::optional<morvane::causa_puerto> abrir(const morvane::console::destino_puerto& adonde,
                                             const morvane::parametros_linea& como) override {
    ++aperturas;
    ultimo = adonde;
    if (lanza) throw std::bad_alloc();
    if (sin_linea) return sin_linea;
    linea_.abrir(1, como);
    return std::nullopt;
  }
  morvane::transporte& linea() override { return linea_; }
  std::filesystem::path dispositivo() const override { return "/dev/ttyUSB7"; }

  /// Runs the program with the words in `texto`; "@name" is that file in the folder. What it says is that of this run.
  int correr(const std::string& texto) {
    std::vector<std::string> palabras;
    std::istringstream partes(texto);
    for (std::string p; partes >> p;) {
      palabras.push_back(p.starts_with('@') ? (dir.ruta() / p.substr(1)).string() : p);
    }
    sale.todo.clear();
    yerra.todo.clear();
    const int codigo = morvane::console::correr(palabras, *this);
    EXPECT_FALSE(linea_.abierta()) << texto;
    return codigo;
  }

  /// The same with `--json`: checks what holds for every run, and gives the result.
  nlohmann::json resultado(const std::string& texto) {
    const int codigo = correr(texto + " --json");
    std::istringstream renglones(sale.todo);
    todos.clear();
    for (std::string r; std::getline(renglones, r);) todos.push_back(nlohmann::json::parse(r));
    EXPECT_EQ(sale.todo.back(), '\n');
    EXPECT_EQ(yerra.todo, "") << texto;
    const auto es_fin = [](const nlohmann::json& j) { return j.at("tipo") == "resultado"; };
    EXPECT_EQ(std::ranges::count_if(todos, es_fin), 1) << texto;
    EXPECT_TRUE(es_fin(todos.back())) << texto;
    EXPECT_EQ(todos.back().at("codigo"), codigo);
    for (const char* campo : {"orden", "desenlace", "texto"}) EXPECT_TRUE(todos.back().at(campo).is_string()) << campo;
    for (const char* campo : {"segundos", "caracteres"}) EXPECT_TRUE(todos.back().at(campo).is_number()) << campo;
    return todos.back();
  }

  void guardar(const std::string& nombre, const std::vector<std::uint8_t>& bytes) {
    dir.escribir(nombre, std::string(bytes.begin(), bytes.end()));
  }

  /// The lines that `resultado` has read last.
  std::vector<nlohmann::json> todos;
  morvane::gemelo plat;
  placa_lejos lejos;
  salida_texto sale, yerra;
  apoyo::carpeta dir;
  std::optional<morvane::causa_puerto> sin_linea;
  morvane::console::destino_puerto ultimo;
  bool lanza = false;
  int aperturas = 0, senal_de_fin = 2;

 private:
  morvane::transporte_memoria linea_{plat, lejos};

 public:
  mundo_de_guion mundo_{plat, lejos};
  const morvane::transporte_memoria& hilo() const { return linea_; }
};

}  // namespace apoyo
