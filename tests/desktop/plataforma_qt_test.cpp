#include "desktop/plataforma_qt.h"

#include "aplicacion.h"

namespace {

using namespace apoyo;

QWidget* delante() {
  return QApplication::activeModalWidget();
}
void teclear_delante(const QString& texto) {
  teclear(delante()->focusWidget() != nullptr ? delante()->focusWidget() : delante(), texto);
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
    EXPECT_EQ(ventana->textFormat(), Qt::PlainText);
    EXPECT_EQ(ventana->icon(), QMessageBox::Critical);
    pulsar(ventana->focusWidget(), Qt::Key_C, {}, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Morvane\n\na <b>&c\nd");
    ventana->close();
  });
}

TEST_F(plataforma_qt_test, what_explains_a_box_stands_under_its_text_and_each_of_three_buttons_says_what_it_does) {
  QTimer::singleShot(0, &app, [] {
    auto* ventana = qobject_cast<QMessageBox*>(delante());
    EXPECT_LE(ventana->fontMetrics().horizontalAdvance(ventana->windowTitle()), ventana->width());
    QLabel* causa = nullptr;
    for (auto* rotulo : ventana->findChildren<QLabel*>()) causa = rotulo->text() == "✗ Falla: a < b" ? rotulo : causa;
    ASSERT_NE(causa, nullptr);
    EXPECT_TRUE(causa->isVisible());
    EXPECT_EQ(causa->textFormat(), Qt::PlainText);
    for (const auto* boton : ventana->buttons()) EXPECT_FALSE(boton->toolTip().isEmpty());
    pulsar(ventana->focusWidget(), Qt::Key_C, {}, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Atención respuesta del Chip\n\n\n\n✗ Falla: a < b");
    ventana->close();
  });
  plat.MsgBox({"Atención respuesta del Chip", "", botones::SiNoCancelar, icono::critico}, "✗ Falla: a < b");
}

TEST_F(plataforma_qt_test, the_open_dialog_takes_a_typed_file_of_any_of_its_kinds_and_no_other) {
  const carpeta dir;
  dir.escribir("a.hex", "");
  dir.escribir("b.BIN", "");
  for (const auto& [nombre, tomado] : {std::pair("a.hex", false), {"b.BIN", true}}) {
    QTimer::singleShot(0, &app, [&, nombre = nombre] {
      auto* dialogo = qobject_cast<QFileDialog*>(delante());
      dialogo->findChild<QLineEdit*>("fileNameEdit")->setText(nombre);
      QTimer::singleShot(0, dialogo, [dialogo] {
        const auto* caja = qobject_cast<QMessageBox*>(delante());
        if (caja == nullptr) return;
        EXPECT_EQ(caja->text(), "a.hex no es de un tipo que se pueda abrir: *.s19, *.bin");
        delante()->close();
        EXPECT_TRUE(dialogo->isVisible());
        dialogo->reject();
      });
      dialogo->metaObject()->invokeMethod(dialogo, "accept");
    });
    const std::string ruta =
        plat.ShowOpen({"cmd", "S-Record (*.s19)|*.s19|Binario (*.bin)|*.bin", dir.ruta().string()});
    EXPECT_EQ(ruta, tomado ? (dir.ruta() / nombre).string() : "");
  }
}

TEST_F(plataforma_qt_test, each_key_gives_its_answer_and_no_other_and_closing_gives_none) {
  const std::tuple<botones, const char*, respuesta_caja> casos[] = {{botones::Aceptar, "\r", vbOK},
                                                                    {botones::Aceptar, "\x1b", vbOK},
                                                                    {botones::AceptarCancelar, "\x1b", vbCancel},
                                                                    {botones::SiNo, "\r", vbYes},
                                                                    {botones::SiNo, "n", vbNo},
                                                                    {botones::SiNoCancelar, "s", vbYes},
                                                                    {botones::SiNoCancelar, "\x1b", vbCancel},
                                                                    {botones::SiNo, "\x1b", vbNinguna}};
  const auto cerrar = [] { delante()->close(); };
  for (const auto& [teclas, texto, respuesta] : casos) {
    const auto responder = [&, texto = texto, abierta = respuesta == vbNinguna] {
      teclear_delante(texto);
      EXPECT_EQ(delante() != nullptr, abierta);
      if (delante() != nullptr) cerrar();
    };
    EXPECT_EQ(preguntar({"t", "x", teclas}, responder), respuesta) << texto;
    EXPECT_EQ(preguntar({"t", "x", teclas}, cerrar), vbNinguna);
  }
}

TEST_F(plataforma_qt_test, a_box_waits_after_the_event_loop_was_told_to_end_and_an_abandoned_one_does_not) {
  const auto salir = [] {
    QCoreApplication::exit(0);
    QTimer::singleShot(20, [] { teclear_delante("\r"); });
  };
  QTimer::singleShot(0, &app, [&] { EXPECT_EQ(preguntar({"t", "x", botones::SiNo}, salir), vbYes); });
  QApplication::exec();
  EXPECT_EQ(preguntar({"t", "x", botones::SiNo}, [this] { plat.abandonar_cajas(); }), vbNinguna);
  EXPECT_EQ(plat.MsgBox({"t", "x", botones::SiNo}), vbNinguna) << "no more are shown";
  EXPECT_EQ(plat.ShowOpen({"cmd_buscar", ""}), "");
}

}  // namespace
