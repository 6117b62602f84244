// The chapters on what the port dialog says and does about the ports.

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

#include "viaje.h"

namespace morvane {
namespace {

constexpr const char* titulo_opciones = "Opciones del puerto serial";

/// The port dialog with this port chosen.
ventana_qt& elegir_puerto(viaje& v, const char* puerto) {
  v.hijo<QAction>("men_pto_s").trigger();
  auto& opciones = dynamic_cast<ventana_qt&>(v.t.ventana(titulo_opciones));
  opciones.activateWindow();
  auto& puertos = *opciones.findChild<QComboBox*>(QStringLiteral("cmb_s_puerto"));
  puertos.setCurrentIndex(puertos.findText(QString::fromUtf8(puerto)));
  emit puertos.activated(puertos.currentIndex());
  return opciones;
}

QPushButton& guardar(const ventana_qt& opciones) {
  return *opciones.findChild<QPushButton*>(QStringLiteral("btn_guardar"));
}

QAction& entrada_de_la_placa(ventana_qt& opciones) {
  for (QAction* una : opciones.contextual().actions()) {
    if (una->isCheckable()) return *una;
  }
  throw std::runtime_error("el menú contextual no ofrece la placa simulada");
}

}  // namespace

void puerto_sin_nada(viaje& v) {
  // Where ports cannot be linked it is one that the system names, and that does not open.
  std::error_code sin_enlaces;
  std::filesystem::create_symlink("/dev/serial/by-id/usb-adaptador", v.directorio / "puertos" / "COM3", sin_enlaces);
  v.t.decir(std::string(sin_enlaces ? "COM3 es un número sin aparato."
                                    : "COM3 es un enlace a un adaptador que nadie ha enchufado.") +
            " Guardar lo prueba, y la caja explica por qué no.");
  ventana_qt& opciones = elegir_puerto(v, "COM3");
  v.t.esperar_caja(
      sin_enlaces ? "El puerto ya ha sido utilizado por otra aplicación" : "Es probable que el puerto no exista",
      "Aceptar", "caja-con-detalles");
  guardar(opciones).click();
  opciones.close();
}

void enchufar_placa_simulada(viaje& v) {
  v.t.decir("El menú contextual del diálogo pone ahí una placa simulada.");
  ventana_qt& opciones = elegir_puerto(v, "COM3");
  v.t.foto_de_menu(opciones.contextual(), "puerto-menu");
  entrada_de_la_placa(opciones).trigger();
  guardar(opciones).click();
  v.t.decir("Ahora Guardar calla: el puerto se ha abierto. Y la placa contesta.");
  v.t.esperar_caja("¡Ha terminado de borrar!", "Aceptar", "");
  v.hijo<QToolButton>("Toolbar_2").click();
  entrada_de_la_placa(opciones).trigger();
  opciones.close();
}

}  // namespace morvane
