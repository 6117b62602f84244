#include "desktop/plataforma_qt.h"

#include "aplicacion.h"

namespace {

using namespace apoyo;

QWidget* delante() {
  return QApplication::activeModalWidget();
}
void pulsar_delante(int tecla, const QString& texto = {}, Qt::KeyboardModifiers con = Qt::NoModifier) {
  pulsar(delante()->focusWidget() != nullptr ? delante()->focusWidget() : delante(), tecla, texto, con);
}

struct plataforma_qt_test : testing::Test {
  QApplication& app = aplicacion();
  plataforma_qt plat;

  /// Shows `mensaje` and runs `mientras` while it is open.
  respuesta_caja preguntar(const caja& mensaje, std::function<void()> mientras) {
    QTimer::singleShot(0, &app, std::move(mientras));
    return plat.MsgBox(mensaje);
  }
};

TEST_F(plataforma_qt_test, a_box_shows_what_it_is_given_as_plain_text_that_can_be_copied) {
  preguntar({"", "a <b>&c\r\nd", botones::SiNoCancelar, icono::critico}, [] {
    auto* ventana = qobject_cast<QMessageBox*>(delante());
    EXPECT_TRUE(ventana->textFormat() == Qt::PlainText && ventana->icon() == QMessageBox::Critical);
    pulsar_delante(Qt::Key_C, {}, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Morvane\n\na <b>&c\nd");
    ventana->close();
  });
}

TEST_F(plataforma_qt_test, each_key_gives_its_answer_and_no_other_and_closing_gives_none) {
  const struct {
    botones teclas;
    int tecla;
    const char* texto;
    respuesta_caja respuesta;
  } casos[] = {{botones::Aceptar, Qt::Key_Return, "\r", vbOK},
               {botones::Aceptar, Qt::Key_Escape, "", vbOK},
               {botones::AceptarCancelar, Qt::Key_Escape, "", vbCancel},
               {botones::SiNo, Qt::Key_Return, "\r", vbYes},
               {botones::SiNo, Qt::Key_N, "n", vbNo},
               {botones::SiNoCancelar, Qt::Key_S, "s", vbYes},
               {botones::SiNoCancelar, Qt::Key_Escape, "", vbCancel},
               {botones::SiNo, Qt::Key_Escape, "", vbNinguna}};
  const auto cerrar = [] { delante()->close(); };
  for (const auto& c : casos) {
    const auto teclear = [&] {
      pulsar_delante(c.tecla, c.texto);
      EXPECT_EQ(delante() != nullptr, c.respuesta == vbNinguna);
      if (delante() != nullptr) cerrar();
    };
    EXPECT_EQ(preguntar({"t", "x", c.teclas}, teclear), c.respuesta) << c.tecla;
    EXPECT_EQ(preguntar({"t", "x", c.teclas}, cerrar), vbNinguna);
  }
}

TEST_F(plataforma_qt_test, a_box_waits_after_the_event_loop_was_told_to_end_and_an_abandoned_one_does_not) {
  const auto salir = [] {
    QCoreApplication::exit(0);
    QTimer::singleShot(20, [] { pulsar_delante(Qt::Key_Return, "\r"); });
  };
  QTimer::singleShot(0, &app, [&] { EXPECT_EQ(preguntar({"t", "x", botones::SiNo}, salir), vbYes); });
  QApplication::exec();
  EXPECT_EQ(preguntar({"t", "x", botones::SiNo}, [this] { plat.abandonar_cajas(); }), vbNinguna);
  EXPECT_EQ(plat.MsgBox({"t", "x", botones::SiNo}), vbNinguna) << "no more are shown";
  EXPECT_EQ(plat.ShowOpen({"cmd_buscar", ""}), "");
}

TEST_F(plataforma_qt_test, the_open_dialog_gives_the_path_in_either_case_of_the_extension) {
  const carpeta dir;
  const std::string fichero = dir.escribir("Señal.S19", "");
  const CommonDialog dialogo{"cmd_buscar", "S-Record (*.s19)|*.s19|Binario (*.bin)|*.bin", dir.ruta()};
  for (const std::string& elegido : {fichero, std::string()}) {
    QTimer::singleShot(0, &app, [&] {
      delante()->findChild<QLineEdit*>()->setText("Señal.S19");
      elegido.empty() ? pulsar_delante(Qt::Key_Escape) : pulsar_delante(Qt::Key_Return, "\r");
    });
    EXPECT_EQ(plat.ShowOpen(dialogo), elegido);
  }
}

}  // namespace
