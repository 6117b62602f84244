#include "desktop/plataforma_qt.h"

#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QTime>
#include <chrono>
#include <cstdlib>

#include "dialogos.h"
#include "platform/proceso.h"

namespace morvane {

instante plataforma_qt::ahora() const {
  return std::chrono::duration_cast<instante>(std::chrono::steady_clock::now().time_since_epoch());
}

std::string plataforma_qt::hora() const {
  return QTime::currentTime().toString(QStringLiteral("HH:mm:ss")).toStdString();
}

void plataforma_qt::terminar() {
  std::_Exit(0);
}

// Over the open dialog Qt may have boxes and menus of its own, which wait in loops of their own.
void plataforma_qt::abandonar_cajas() {
  desatendida_ = true;
  const auto cerrar = [](QWidget* encima) { return encima != nullptr && encima->close() && !encima->isVisible(); };
  while (cerrar(QApplication::activePopupWidget()) || cerrar(QApplication::activeModalWidget())) {
  }
}

void plataforma_qt::eventos() {
  if (sincronizar) sincronizar();
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}

// Not QDialog::exec: that one returns at once, unanswered, when the event loop has been told to end.
void plataforma_qt::esperar_a(QDialog& dialogo) {
  dialogo.setWindowModality(Qt::ApplicationModal);
  dialogo.show();
  while (dialogo.isVisible() && !desatendida_) {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
}

QWidget* plataforma_qt::de_quien() const {
  if (QWidget* abierto = QApplication::activeModalWidget()) return abierto;
  auto* activa = qobject_cast<QMainWindow*>(QApplication::activeWindow());
  return activa != nullptr ? activa : duena;
}

respuesta_caja plataforma_qt::mostrar(const caja& mensaje, const std::string& explicacion) {
  if (sincronizar) sincronizar();
  if (desatendida_) {
    decir_por_errores(mensaje.titulo + ": " + mensaje.texto);
    return vbNinguna;
  }
  ventana_caja ventana(mensaje, explicacion, de_quien());
  teclado_.llega_caja();
  esperar_a(ventana);
  teclado_.se_va_caja();
  return ventana.respuesta();
}

std::string plataforma_qt::ShowOpen(const CommonDialog& dialogo) {
  if (sincronizar) sincronizar();
  if (desatendida_) return {};
  dialogo_abrir ventana(dialogo, de_quien(), [this](const caja& mensaje) { MsgBox(mensaje); });
  esperar_a(ventana);
  return ventana.ruta();
}

}  // namespace morvane
