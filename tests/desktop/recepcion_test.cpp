#include <QtWidgets>

#include "aplicacion.h"
#include "apoyo/banco.h"
#include "apoyo/guion.h"
#include "desktop/recepcion_qt.h"
#include "shell/frm_principal.h"

namespace {

using namespace apoyo;

struct recepcion : banco<guion> {
  QApplication& app = aplicacion();
  Variables_grab variables;
  frm_principal f{plat, ficheros, linea, variables};
  ventana_qt v{f.ventana, {}};
  std::string recibido;
  recepcion_qt r{v, [this](const std::string& ruta) { recibido = ruta; }};

  /// Drags `lugares` over a widget of the window and lets them fall. True if they would be taken.
  static bool soltar(QWidget& donde, const QList<QUrl>& lugares, Qt::DropActions como) {
    QMimeData oferta;
    oferta.setUrls(lugares);
    QDragEnterEvent entra(donde.rect().center(), como, &oferta, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&donde, &entra);
    QDropEvent cae(donde.rect().center(), como, &oferta, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&donde, &cae);
    EXPECT_EQ(entra.isAccepted(), cae.isAccepted());
    EXPECT_TRUE(!cae.isAccepted() || cae.dropAction() != Qt::MoveAction);
    return cae.isAccepted();
  }
};

TEST_F(recepcion, only_one_firmware_file_of_this_machine_is_taken) {
  v.show();
  const auto url = [](const std::string& ruta) { return QUrl::fromLocalFile(QString::fromStdString(ruta)); };
  const std::string bueno = dir.escribir("á b#%41.s19", "x"), otro = dir.escribir("c.BIN", "x");
  const std::string latino = dir.escribir("\xF1.s19", "x");
  std::filesystem::create_directory(dir.ruta() / "carpeta.s19");
  const std::string carpeta = (dir.ruta() / "carpeta.s19").string(), texto = dir.escribir("x.hex", "x");
  const QByteArray raiz = QByteArray::fromStdString(dir.ruta().string());
  const auto todas = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
  const struct {
    const char* que;
    QList<QUrl> lugares;
    Qt::DropActions como;
    std::string recibido;
  } casos[] = {
      {"a name with all sorts of characters", {url(bueno)}, todas, bueno},
      {"no UTF-8", {QUrl::fromEncoded("file://" + raiz + "/%F1.s19")}, todas, latino},
      {"this machine by name", {QUrl::fromEncoded("file://localhost" + raiz + "/c.BIN")}, Qt::LinkAction, otro},
      {"only to be moved away", {url(bueno)}, Qt::MoveAction, ""},
      {"two", {url(bueno), url(otro)}, todas, ""},
      {"none", {}, todas, ""},
      {"a folder", {url(carpeta)}, todas, ""},
      {"gone", {url(bueno + "/no.s19")}, todas, ""},
      {"no firmware", {url(texto)}, todas, ""},
      {"another machine", {QUrl::fromEncoded("file://lejos" + raiz + "/c.BIN")}, todas, ""},
      {"the web", {QUrl("http://localhost/c.bin")}, todas, ""},
  };
  for (const auto& c : casos) {
    recibido.clear();
    EXPECT_EQ(soltar(v, c.lugares, c.como), !c.recibido.empty()) << c.que;
    EXPECT_EQ(recibido, "") << "the program that it comes from waits for the drop to end";
    QApplication::processEvents();
    EXPECT_EQ(recibido, c.recibido) << c.que;
  }
  QMessageBox caja(&v);
  caja.open();
  EXPECT_FALSE(soltar(v, {url(bueno)}, todas)) << "a box is open";
}

}  // namespace
