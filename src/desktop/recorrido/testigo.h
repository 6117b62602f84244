#pragma once

#include <QTimer>
#include <QWidget>
#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

class QFileDialog;
class QMessageBox;

namespace morvane {

/// Sits in front of the program while its handlers run: answers the boxes that are expected, chooses files, takes
/// pictures, and says on standard output what it sees. When something does not come in time it ends the process with
/// code 2.
class testigo {
 public:
  explicit testigo(std::filesystem::path fotos);

  /// Begins a step: announces it, and gives it a time limit.
  void paso(const std::string& titulo, std::chrono::seconds limite);
  void decir(const std::string& linea);
  /// Something was not as it should be; the tour goes on.
  void faltar(const std::string& linea);
  int faltas() const { return faltas_; }

  /// A box whose text holds `texto` will come, and is answered with the button `boton`.
  void esperar_caja(std::string texto, std::string boton) { cajas_.push_back({std::move(texto), std::move(boton)}); }
  /// The open dialog will come, and `ruta` is typed into it.
  void elegir(std::string ruta) { rutas_.push_back(std::move(ruta)); }
  /// Runs `accion` once, as soon as `condicion` holds.
  void cuando(std::function<bool()> condicion, std::function<void()> accion);
  /// Counts as a fault what was expected in this step and has not come.
  void comprobar();

  void foto(QWidget& ventana, const std::string& nombre);

 private:
  struct caja_esperada {
    std::string texto, boton;
  };
  struct vigilancia {
    std::function<bool()> condicion;
    std::function<void()> accion;
  };
  void mirar();
  void contestar(QMessageBox& caja);
  void escribir_ruta(QFileDialog& dialogo);
  void atender_condiciones();
  void atender_plazo();

  std::filesystem::path fotos_;
  QTimer pulso_;
  std::chrono::steady_clock::time_point limite_;
  std::deque<caja_esperada> cajas_;
  std::deque<std::string> rutas_;
  std::vector<vigilancia> vigilancias_;
  int fotos_hechas_ = 0;
  int faltas_ = 0;
};

}  // namespace morvane
