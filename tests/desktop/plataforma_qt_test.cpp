#include "desktop/plataforma_qt.h"

#include <gtest/gtest.h>

#include <QtWidgets>
#include <set>

#include "aplicacion.h"

namespace morvane {
namespace {

void pulsar(int tecla, const char* texto = "") {
  QWidget* ventana = QApplication::activeModalWidget();
  QWidget* destino = ventana->focusWidget() != nullptr ? ventana->focusWidget() : ventana;
  for (const QEvent::Type tipo : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent suceso(tipo, tecla, Qt::NoModifier, texto);
    QApplication::sendEvent(destino, &suceso);
  }
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

TEST_F(plataforma_qt_test, a_box_shows_what_it_is_given_as_plain_text) {
  preguntar({"", "a <b>&c\r\nd", botones::SiNoCancelar, icono::critico}, [] {
    auto* ventana = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(ventana, nullptr);
    EXPECT_EQ(ventana->windowTitle(), "Morvane");
    EXPECT_EQ(ventana->text(), "a <b>&c\nd");
    EXPECT_EQ(ventana->textFormat(), Qt::PlainText);
    EXPECT_EQ(ventana->icon(), QMessageBox::Critical);
    std::set<QString> rotulos;
    for (const auto* boton : ventana->buttons()) rotulos.insert(boton->text());
    EXPECT_EQ(rotulos, (std::set<QString>{"Cancelar", "No", "Sí"}));
    ventana->close();
  });
}

TEST_F(plataforma_qt_test, each_key_gives_its_answer_and_no_other_and_closing_gives_none) {
  const struct {
    botones teclas;
    int tecla;
    const char* texto;
    respuesta_caja respuesta;
  } casos[] = {
      {botones::Aceptar, Qt::Key_Return, "\r", vbOK},
      {botones::Aceptar, Qt::Key_Escape, "", vbOK},
      {botones::AceptarCancelar, Qt::Key_Escape, "", vbCancel},
      {botones::SiNo, Qt::Key_Return, "\r", vbYes},
      {botones::SiNo, Qt::Key_N, "n", vbNo},
      {botones::SiNoCancelar, Qt::Key_S, "s", vbYes},
      {botones::SiNoCancelar, Qt::Key_Escape, "", vbCancel},
      {botones::SiNo, Qt::Key_Escape, "", vbNinguna},
  };
  const auto cerrar = [] { QApplication::activeModalWidget()->close(); };
  for (const auto& c : casos) {
    const auto teclear = [&] {
      pulsar(c.tecla, c.texto);
      EXPECT_EQ(QApplication::activeModalWidget() != nullptr, c.respuesta == vbNinguna);
      if (c.respuesta == vbNinguna) cerrar();
    };
    EXPECT_EQ(preguntar({"t", "x", c.teclas}, teclear), c.respuesta) << c.tecla;
    EXPECT_EQ(preguntar({"t", "x", c.teclas}, cerrar), vbNinguna);
  }
}

TEST_F(plataforma_qt_test, the_text_of_a_box_can_be_copied_as_a_whole_and_in_part) {
  preguntar({"Atención", "uno dos", botones::Aceptar, icono::critico}, [] {
    const auto copiar = [] {
      QWidget* ventana = QApplication::activeModalWidget();
      QKeyEvent suceso(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
      QApplication::sendEvent(ventana->focusWidget(), &suceso);
      return QGuiApplication::clipboard()->text();
    };
    auto* ventana = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    EXPECT_EQ(copiar(), "Atención\n\nuno dos");
    pulsar(Qt::Key_Tab);
    auto* texto = qobject_cast<QLabel*>(ventana->focusWidget());
    ASSERT_TRUE(texto != nullptr && texto->text() == "uno dos") << "the keyboard reaches the text";
    texto->setSelection(4, 3);
    EXPECT_EQ(copiar(), "dos");
    ventana->close();
  });
}

TEST_F(plataforma_qt_test, a_box_waits_for_its_answer_after_the_event_loop_was_told_to_end) {
  const auto salir = [] {
    QCoreApplication::exit(0);
    QTimer::singleShot(20, [] { pulsar(Qt::Key_Return, "\r"); });
  };
  QTimer::singleShot(0, &app, [&] { EXPECT_EQ(preguntar({"t", "x", botones::SiNo}, salir), vbYes); });
  QApplication::exec();
}

TEST_F(plataforma_qt_test, abandoned_boxes_answer_nothing_and_no_more_are_shown) {
  const auto abandonar = [this] { plat.abandonar_cajas(); };
  EXPECT_EQ(preguntar({"t", "x", botones::SiNo}, abandonar), vbNinguna);
  EXPECT_EQ(plat.MsgBox({"t", "x", botones::SiNo}), vbNinguna);
  EXPECT_EQ(plat.ShowOpen({"cmd_buscar", ""}), "");
}

TEST_F(plataforma_qt_test, the_open_dialog_gives_the_path_in_either_case_of_the_extension) {
  QTemporaryDir carpeta;
  QFile fichero(carpeta.filePath("Señal.S19"));
  ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
  const CommonDialog dialogo{"cmd_buscar", "S-Record (*.s19)|*.s19|Binario (*.bin)|*.bin",
                             carpeta.path().toStdString()};
  QTimer::singleShot(0, &app, [&] {
    auto* ventana = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(ventana, nullptr);
    EXPECT_EQ(ventana->windowTitle(), "Abrir");
    EXPECT_EQ(ventana->nameFilters(), (QStringList{"S-Record (*.s19)", "Binario (*.bin)"}));
    EXPECT_EQ(ventana->directory(), QDir(carpeta.path()));
    ventana->findChild<QLineEdit*>()->setText(fichero.fileName());
    pulsar(Qt::Key_Return, "\r");
  });
  EXPECT_EQ(plat.ShowOpen(dialogo), fichero.fileName().toStdString());
  QTimer::singleShot(0, &app, [] { pulsar(Qt::Key_Escape); });
  EXPECT_EQ(plat.ShowOpen(dialogo), "");
}

}  // namespace
}  // namespace morvane
