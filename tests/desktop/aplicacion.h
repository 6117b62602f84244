#pragma once

#include <QtWidgets>

#include "apoyo/banco.h"
#include "apoyo/guion.h"
#include "desktop/seguimiento.h"

namespace apoyo {

/// The one QApplication of the test program, made when a test first needs it.
inline QApplication& aplicacion() {
  static int cuantos = 1;
  static char nombre[] = "prueba";
  static char* argumentos[] = {nombre, nullptr};
  static auto* unica = new QApplication(cuantos, argumentos);
  return *unica;
}

inline void pulsar(QWidget* donde, int tecla, const QString& texto = {}, Qt::KeyboardModifiers con = Qt::NoModifier) {
  for (const QEvent::Type tipo : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent suceso(tipo, tecla, con, texto);
    QApplication::sendEvent(donde, &suceso);
  }
}
/// As the desktop does it: the key comes to the window first.
inline void pulsar_en(QWidget& ventana, int tecla) {
  QKeyEvent suceso(QEvent::KeyPress, tecla, Qt::NoModifier);
  QApplication::sendEvent(ventana.windowHandle(), &suceso);
}
/// Return is \r and Escape \x1b.
inline void teclear(QWidget* donde, const QString& texto) {
  for (const QChar letra : texto) {
    const int especial = letra == '\r' ? Qt::Key_Return : Qt::Key_Escape;
    pulsar(donde, letra < ' ' ? especial : letra.toUpper().unicode(), letra);
  }
}

/// The main window with its map, on the twin.
struct banco_ventana : banco<guion> {
  QApplication& app = aplicacion();
  Variables_grab variables;
  frm_principal f{plat, ficheros, linea, variables};
  ventana_qt v{f.ventana, [this] { s.al_volver(); }};
  seguimiento s{f, plat, v, [this] { return f.link.valores.puerto + " · a board"; }};

  void SetUp() override {
    v.al_empezar = [this] { s.al_empezar(); };
    v.show();
    v.activateWindow();
    QApplication::processEvents();
  }
  template <class W = QWidget>
  W& hijo(const char* nombre) {
    auto* encontrado = v.findChild<W*>(QString::fromUtf8(nombre));
    return encontrado != nullptr ? *encontrado : throw std::runtime_error(nombre);
  }
};

}  // namespace apoyo
