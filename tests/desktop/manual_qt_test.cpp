#include "desktop/manual_qt.h"

#include "aplicacion.h"

namespace {

using namespace apoyo;

/// The paragraph that the manual has been brought to, if it is in sight.
QString a_la_vista(const manual_qt& manual) {
  const auto* hoja = manual.findChild<QTextBrowser*>();
  const bool dentro = hoja->viewport()->rect().intersects(hoja->cursorRect());
  return dentro ? hoja->textCursor().block().text() : QString();
}

TEST(manual_qt_test, each_window_has_its_place_in_the_manual) {
  aplicacion();
  manual_qt manual;
  for (const char* nombre :
       {"frm_principal", "frm_cfg_pto_serial", "frm_buffer_out", "frm_buffer_in", "frm_buffer_comp", "frmAbout"}) {
    QMainWindow ventana;
    ventana.setObjectName(nombre);
    ventana.show();
    const lugar_del_manual donde = lugar_para_lo_de_delante(ventana);
    EXPECT_FALSE(donde.titulo.isEmpty()) << nombre;
    EXPECT_TRUE(manual.abrir(donde, nullptr)) << nombre;
    EXPECT_EQ(a_la_vista(manual), donde.titulo) << nombre;
    manual.hide();
  }
  QFile texto(":/manual/manual.md");
  EXPECT_TRUE(texto.open(QIODevice::ReadOnly));
  const QString todo = QString::fromUtf8(texto.readAll());
  static const QRegularExpression figura(R"(!\[[^\]]*\]\(([^)]*)\))");
  for (const auto& una : figura.globalMatch(todo)) {
    EXPECT_TRUE(QFile::exists(":/manual/" + una.captured(1))) << qPrintable(una.captured(1));
  }
  EXPECT_FALSE(manual.abrir({}, nullptr));
  EXPECT_EQ(a_la_vista(manual), "Manual de Morvane");
}

TEST(manual_qt_test, over_a_box_it_opens_at_its_text_and_stays_when_the_box_goes) {
  aplicacion();
  QWidget principal;
  principal.show();
  ayuda_f1 ayuda(principal);
  auto caja = std::make_unique<QMessageBox>();
  caja->setText("No hay respuesta del Dispositivo, verifique la conexión con el puerto.\nDesea");
  caja->setWindowModality(Qt::ApplicationModal);
  caja->show();
  QApplication::processEvents();
  pulsar_en(*caja, Qt::Key_F1);
  QWidget* manual = nullptr;
  for (QWidget* una : QApplication::topLevelWidgets()) manual = una->objectName() == "manual" ? una : manual;
  ASSERT_NE(manual, nullptr);
  auto& hoja = *manual->findChild<QTextBrowser*>();
  EXPECT_TRUE(hoja.textCursor().selectedText().startsWith("No hay respuesta del Dispositivo"));
  EXPECT_TRUE(manual->isVisible());
  caja->hide();
  caja.reset();
  EXPECT_TRUE(manual->isVisible());
  emit hoja.anchorClicked(QUrl("#8-hasta-dónde-llega-cada-frase-de-éxito"));
  EXPECT_TRUE(hoja.textCursor().block().text().startsWith("8. ")) << qPrintable(hoja.textCursor().block().text());
  emit hoja.anchorClicked(QUrl("linea-de-ordenes.md"));
  EXPECT_TRUE(hoja.document()->characterCount() > 1000);
  pulsar(&hoja, Qt::Key_Escape);
  EXPECT_FALSE(manual->isVisible());
}

}  // namespace
