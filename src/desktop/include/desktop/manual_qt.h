#pragma once

#include <QWidget>
#include <memory>

class QTextBrowser;

namespace morvane {

/// A place in the manual: a heading, word for word, and a text behind it that is looked for from there; either may be
/// empty.
struct lugar_del_manual {
  QString titulo, texto;
};

/// The manual in a window of its own, with its pictures, out of the program itself. Escape closes it. No box ever
/// belongs to it.
class manual_qt final : public QWidget {
 public:
  manual_qt();

  /// Shows the window, in front of `encima` and usable beside it if that is a box; it stays when the box goes. False,
  /// and the manual stands at its beginning, if there is no such heading; a text that is not found leaves it there.
  bool abrir(const lugar_del_manual& donde, QWidget* encima);

 protected:
  void keyPressEvent(QKeyEvent* tecla) override;
  bool eventFilter(QObject* quien, QEvent* suceso) override;

 private:
  void seguir(const QUrl& enlace);
  bool ir_a(const QString& titulo);
  void buscar(const QString& texto);
  void soltar();

  QTextBrowser* hoja_;
};

/// The place for what is in front of the user: the box or dialog that is open, by its text; else `ventana`, of which
/// the part that has the focus counts.
lugar_del_manual lugar_para_lo_de_delante(const QWidget& ventana);

/// Opens the manual whenever F1 is pressed in a window of the program.
class ayuda_f1 final : public QObject {
 public:
  /// `principal`: F1 has to wait until it is there, and the manual closes with it.
  explicit ayuda_f1(QWidget& principal);
  ~ayuda_f1() override;
  ayuda_f1(const ayuda_f1&) = delete;
  ayuda_f1& operator=(const ayuda_f1&) = delete;

  void cerrar();

 protected:
  bool eventFilter(QObject* quien, QEvent* suceso) override;

 private:
  QWidget& principal_;
  std::unique_ptr<manual_qt> manual_;
};

}  // namespace morvane
