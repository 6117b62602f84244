#include "testigo.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "escena.h"

namespace morvane {
namespace {

void pulsar(QWidget& destino, int tecla, const QString& letra) {
  for (const auto clase : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent suceso(clase, tecla, Qt::NoModifier, letra);
    QApplication::sendEvent(&destino, &suceso);
  }
}

QAbstractButton* boton_de(const QMessageBox& caja, const std::string& rotulo) {
  for (QAbstractButton* boton : caja.buttons()) {
    if (boton->text().toStdString() == rotulo) return boton;
  }
  return nullptr;
}

}  // namespace

std::string en_una_linea(const QString& texto) {
  return QString(texto).replace(QLatin1String("\n"), QLatin1String(" ")).simplified().toStdString();
}

testigo::testigo(std::filesystem::path fotos) : fotos_(std::move(fotos)) {
  QObject::connect(&pulso_, &QTimer::timeout, &pulso_, [this] { mirar(); });
  pulso_.start(1);
}

void testigo::paso(const std::string& titulo, std::chrono::seconds limite) {
  std::printf("\n%d. %s\n\n", ++pasos_, titulo.c_str());
  std::fflush(stdout);
  limite_ = std::chrono::steady_clock::now() + limite;
}

void testigo::decir(const std::string& linea) {
  std::printf("   %s\n", linea.c_str());
  std::fflush(stdout);
}

void testigo::faltar(const std::string& linea) {
  ++faltas_;
  decir("FALTA: " + linea);
}

void testigo::cuando(std::function<bool()> condicion, std::function<void()> accion) {
  vigilancias_.push_back({std::move(condicion), std::move(accion)});
}

void testigo::comprobar() {
  for (const caja_esperada& una : cajas_) faltar("no ha salido la caja «" + una.texto + "»");
  for (const std::string& una : rutas_) faltar("no ha salido el diálogo para abrir " + una);
  if (!vigilancias_.empty()) faltar("no ha ocurrido todo lo que se esperaba durante este paso");
  cajas_.clear();
  rutas_.clear();
  vigilancias_.clear();
}

void testigo::foto(const std::string& nombre) {
  // What is shown beside the controls follows a little later.
  QElapsedTimer pose;
  for (pose.start(); !pose.hasExpired(150);) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  char numero[16];
  std::snprintf(numero, sizeof numero, "%02d-", ++fotos_hechas_);
  const std::filesystem::path destino = fotos_ / (numero + nombre + ".png");
  if (escena().save(QString::fromStdString(destino.string()))) {
    decir("      [" + destino.filename().string() + "]");
  } else {
    faltar("no se ha podido guardar la foto " + destino.string());
  }
}

QWidget& testigo::ventana(const std::string& titulo) {
  for (QWidget* una : QApplication::topLevelWidgets()) {
    if (una->isVisible() && una->windowTitle().toStdString() == titulo) return *una;
  }
  throw std::runtime_error("no está la ventana " + titulo);
}

void testigo::foto_de(const std::string& titulo, const std::string& nombre) {
  QWidget& una = ventana(titulo);
  una.activateWindow();
  foto(nombre);
  una.close();
}

void testigo::foto_de_menu(QMenu& menu, const std::string& nombre) {
  auto* barra = qobject_cast<QMenuBar*>(menu.parentWidget());
  const QWidget& padre = *menu.parentWidget();
  const QPoint donde =
      barra != nullptr ? barra->actionGeometry(menu.menuAction()).bottomLeft() : QPoint(2 * padre.width() / 5, 0);
  menu.popup(padre.mapToGlobal(donde + QPoint(0, barra != nullptr ? 0 : padre.height() / 2)));
  foto(nombre);
  menu.close();
}

void testigo::teclear(QLineEdit& destino, const QString& texto) {
  destino.clear();
  for (const QChar letra : texto) pulsar(destino, 0, letra);
}

void testigo::mirar() {
  QWidget* abierta = QApplication::activeModalWidget();
  if (auto* caja = qobject_cast<QMessageBox*>(abierta))
    contestar(*caja);
  else if (auto* dialogo = qobject_cast<QFileDialog*>(abierta))
    escribir_ruta(*dialogo);
  else
    atender_condiciones();
  atender_plazo();
}

void testigo::contestar(QMessageBox& caja) {
  decir("— " + caja.windowTitle().toStdString() + ": " + en_una_linea(caja.text()));
  QAbstractButton* boton = nullptr;
  if (!cajas_.empty() && caja.text().toStdString().find(cajas_.front().texto) != std::string::npos) {
    boton = boton_de(caja, cajas_.front().boton);
    if (!cajas_.front().retrato.empty()) foto(cajas_.front().retrato);
    cajas_.pop_front();
  }
  if (boton == nullptr) {
    faltar("no se esperaba esta caja o no tiene el botón; se cierra sin contestar");
    caja.close();
    return;
  }
  decir("— " + boton->text().toStdString() + ".");
  boton->click();
}

void testigo::escribir_ruta(QFileDialog& dialogo) {
  auto* linea = dialogo.findChild<QLineEdit*>();
  if (rutas_.empty() || linea == nullptr) {
    faltar("no se esperaba el diálogo «" + dialogo.windowTitle().toStdString() + "»; se cierra");
    dialogo.close();
    return;
  }
  // Without the focus the dialog would overwrite what is typed with what it selects.
  dialogo.activateWindow();
  linea->setFocus();
  if (!linea->hasFocus()) return;
  const QString ruta = QString::fromStdString(rutas_.front());
  rutas_.pop_front();
  // At once: what it completes while somebody types it in no time depends on how fast the folders are read.
  linea->clear();
  linea->insert(ruta);
  decir("Se teclea " + linea->text().toStdString() + ".");
  if (!dialogo_retratado_) foto("dialogo-abrir");
  dialogo_retratado_ = true;
  pulsar(*linea, Qt::Key_Return, QStringLiteral("\r"));
}

void testigo::atender_condiciones() {
  for (std::size_t i = 0; i < vigilancias_.size(); ++i) {
    if (!vigilancias_[i].condicion()) continue;
    // Not from here: what it does may bring up a box, and a timer is not heard again before its slot has returned.
    QMetaObject::invokeMethod(&pulso_, std::move(vigilancias_[i].accion), Qt::QueuedConnection);
    vigilancias_.erase(vigilancias_.begin() + static_cast<std::ptrdiff_t>(i));
    return;
  }
}

void testigo::atender_plazo() {
  if (std::chrono::steady_clock::now() < limite_) return;
  comprobar();
  std::printf("   El paso no ha terminado dentro de su plazo; el recorrido se abandona\n");
  std::fflush(stdout);
  std::_Exit(2);
}

}  // namespace morvane
