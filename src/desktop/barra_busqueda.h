#pragma once

#include <QWidget>
#include <functional>

#include "shell/frm_buffer.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace morvane {

class lista_filas;

/// A bar along the lower edge of a dump: in one of its forms it asks for an address, in the other for bytes or a text.
/// What it leads to is chosen and marked in the list, how that went stands in the bar. The place of the list stays as
/// it is; while the bar is shown the list keeps its rows clear of it.
class barra_busqueda final : public QWidget {
 public:
  /// `lista` shows the list of `vista`; both must outlive the bar. It is hidden at first, and again when the list gets
  /// other rows.
  barra_busqueda(lista_filas& lista, frm_buffer& vista);

  void pedir_direccion();
  void pedir_busqueda();
  /// Looks for the same again; without anything to look for it asks.
  void repetir(sentido hacia);
  /// Goes out of sight; the list gets the focus.
  void cerrar();

 protected:
  bool eventFilter(QObject* quien, QEvent* suceso) override;

 private:
  QWidget* hacer_direccion();
  QWidget* hacer_busqueda();
  void atajo(const QKeySequence& tecla, QWidget* donde, std::function<void()> accion);
  void abrir(QWidget* forma);
  void colocar();
  void olvidar();
  void ir();
  void buscar(sentido hacia);
  int fila_hallada() const;
  void cambiar_clase(clase_busqueda nueva);
  void decir(bool bien);

  lista_filas& lista_;
  frm_buffer& vista_;
  buscador& busca_;
  QGridLayout* rejilla_;
  QLineEdit *direccion_, *que_;
  QRadioButton *bytes_, *texto_;
  QLabel* mensaje_;
  QWidget *de_direccion_, *de_busqueda_;
  clase_busqueda clase_ = clase_busqueda::bytes;
  /// What was last typed to be looked for as text while bytes are, and the other way round.
  QString otro_;
};

}  // namespace morvane
