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
class QLineEdit;
class QMenu;
class QMessageBox;

namespace morvane {

/// Sits in front of the program while its handlers run: answers the boxes that are expected, chooses files, takes
/// pictures, and tells on standard output what happens. When something does not come in time it ends the process with
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

  /// A box whose text holds `texto` will come, and is answered with the button `boton`; with a picture of this name,
  /// and of the details if the box has any, unless it is empty.
  void esperar_caja(std::string texto, std::string boton, std::string retrato) {
    cajas_.push_back({std::move(texto), std::move(boton), std::move(retrato)});
  }
  /// The open dialog will come, and `ruta` is typed into it.
  void elegir(std::string ruta) { rutas_.push_back(std::move(ruta)); }
  /// Runs `accion` once, as soon as `condicion` holds.
  void cuando(std::function<bool()> condicion, std::function<void()> accion);
  /// Counts as a fault what was expected in this step and has not come.
  void comprobar();

  /// Types a text, key by key.
  static void teclear(QLineEdit& destino, const QString& texto);
  /// The visible window of this title.
  QWidget& ventana(const std::string& titulo);

  /// A picture of all windows as they stand on the screen.
  void foto(const std::string& nombre);
  /// The same, and then closes the window of this title, which must be there.
  void foto_de(const std::string& titulo, const std::string& nombre);
  /// The same with this menu open, which belongs to a bar or to a whole window.
  void foto_de_menu(QMenu& menu, const std::string& nombre);

 private:
  struct caja_esperada {
    std::string texto, boton, retrato;
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
  int pasos_ = 0;
  int fotos_hechas_ = 0;
  int faltas_ = 0;
  bool dialogo_retratado_ = false;
};

/// A text of several lines in one.
std::string en_una_linea(const QString& texto);

}  // namespace morvane
