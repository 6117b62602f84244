// The chapters on the chip.

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <QToolTip>

#include "desktop/mapa_qt.h"
#include "viaje.h"

namespace morvane {
namespace {

int barra(const viaje& v) {
  return v.hijo<QProgressBar>("Progress").value();
}

std::string en_la_barra(const viaje& v) {
  return "«" + v.hijo<QProgressBar>("Progress").text().toStdString() + "»";
}

mapa_qt& mapa(const viaje& v) {
  auto* encontrado = dynamic_cast<mapa_qt*>(&v.hijo<QWidget>("mapa_flash"));
  if (encontrado == nullptr) throw std::runtime_error("no hay mapa");
  return *encontrado;
}

void exigir(viaje& v, int celda, saber cual, const char* reproche) {
  if (!v.p.principal().avance.mapa.sabe(celda, cual)) v.t.faltar(reproche);
}

}  // namespace

void borrar(viaje& v) {
  v.t.decir("El menú Memoria Flash ofrece todo lo que se puede hacer con el chip. Se elige Borrar.");
  v.t.foto_de_menu(v.hijo<QMenu>("men_memoria_f"), "menu");
  v.t.esperar_caja("¡Ha terminado de borrar!", "Aceptar", "");
  v.hijo<QAction>("men_borrar_t").trigger();
  exigir(v, 511, saber::borrada, "el mapa no muestra el chip borrado");
  v.t.decir("Verificar Borrado recorre los ocho bloques y da fe:");
  v.t.esperar_caja("La Flash ha sido verificada, está borrada", "Aceptar", "caja-informacion");
  v.hijo<QAction>("men_verific_t").trigger();
  v.t.foto("borrada");
}

void programar(viaje& v) {
  v.t.decir("Se pulsa el botón 3. El programa borra y escribe cuatro bytes en cada trama.");
  v.t.cuando([&v] { return barra(v) >= 8; },
             [&v] {
               v.t.decir("A un tercio del camino la barra dice " + en_la_barra(v) + ".");
               if (v.hijo<QToolButton>("Toolbar_3").isEnabled()) v.t.faltar("el botón 3 sigue activo");
               v.t.foto("grabando");
             });
  v.t.esperar_caja("¡Ha terminado de grabar!", "Aceptar", "");
  v.hijo<QToolButton>("Toolbar_3").click();
  exigir(v, 0, saber::escrita, "el mapa no muestra lo escrito");
  v.t.decir("La barra vuelve a " + std::to_string(barra(v)) + " y dice " + en_la_barra(v) + ".");
  v.t.foto("grabada");
}

void verificar(viaje& v) {
  v.t.decir("El botón 4 pide a la placa las sumas de los bloques y las compara con las de la imagen.");
  v.t.esperar_caja("El programa de la Flash ha sido verificado, está correcto", "Aceptar", "");
  v.hijo<QToolButton>("Toolbar_4").click();
  exigir(v, 0, saber::igual, "el mapa no muestra lo verificado");
  v.t.foto("verificada");
}

void leer_lo_programado(viaje& v) {
  v.t.decir("Upload, Leer de la flash: lo programado vuelve al PC.");
  v.t.esperar_caja("¡Ha terminado de Leer!", "Aceptar", "");
  v.hijo<QAction>("men_leer_ft").trigger();
  v.t.foto("leida");
  v.t.decir("El menú Ver muestra los dos buffer, lo que fue y lo que vino:");
  v.hijo<QAction>("men_ver_B_S").trigger();
  v.t.foto_de("Buffer de Salida", "buffer-de-salida");
  v.hijo<QAction>("men_ver_B_E").trigger();
  v.t.foto_de("Buffer de Entrada", "buffer-de-entrada");
  v.t.decir("El menú contextual los compara byte a byte.");
  v.t.esperar_caja("Ha finalizado la comparación de los buffer de entrada y salida", "Aceptar", "");
  v.hijo<QAction>("men_comparar").trigger();
  v.t.foto_de("Resultado Comparación de buffer", "comparacion");
}

void mirar_en_el_mapa(viaje& v) {
  mapa_qt& m = mapa(v);
  m.mover_cursor(8);
  m.setFocus();
  v.t.decir("El cursor del mapa se posa en una celda, que cuenta lo suyo: " +
            en_una_linea(m.texto_del_cursor().replace(QLatin1Char('\n'), QLatin1String("; "))) + ".");
  QKeyEvent flecha(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
  QApplication::sendEvent(&m, &flecha);
  v.t.foto("celda");
  v.t.decir("Con Intro, o con un doble clic, se abre el buffer de salida por esa dirección.");
  QKeyEvent intro(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(&m, &intro);
  v.t.foto_de("Buffer de Salida", "volcado-en-la-celda");
}

void leer_un_rango(viaje& v) {
  v.t.decir("Leer de la flash (Rango) cambia el mapa por un panel con dos direcciones. Se teclean 1000 y 13FF.");
  v.hijo<QAction>("men_leer_fr").trigger();
  testigo::teclear(v.hijo<QLineEdit>("txt_desde"), "1000");
  testigo::teclear(v.hijo<QLineEdit>("txt_hasta"), "13FF");
  v.t.foto("rango");
  v.t.esperar_caja("¡Ha terminado de Leer!", "Aceptar", "");
  v.hijo<QPushButton>("btn_leer").click();
  exigir(v, 8, saber::leida, "el mapa no muestra lo leído");
  v.t.decir("El panel se va, el mapa vuelve y marca lo leído.");
}

void detener(viaje& v) {
  const mapa_flash& m = v.p.principal().avance.mapa;
  v.t.decir("Se programa el archivo grande. A medias alguien pide un borrado, que no puede ser:");
  v.t.cuando([&m] { return m.cabeza().desde >= 0x800; }, [&v] { v.hijo<QToolButton>("Toolbar_2").click(); });
  v.t.esperar_caja("El puerto ya está siendo utilizado por otra aplicación", "Aceptar", "caja-exclamacion");
  v.t.cuando([&m] { return m.cabeza().desde >= 0x1000; },
             [&v] {
               v.t.decir("La grabación ha seguido. Ahora se pulsa el botón 6.");
               v.t.foto("a-medio-camino");
               v.hijo<QToolButton>("Toolbar_6").click();
             });
  v.t.esperar_caja("El proceso de grabación ha sido detenido por el usuario", "Aceptar", "");
  v.hijo<QToolButton>("Toolbar_3").click();
  v.t.decir("Lo escrito queda a la vista, y lo que falta sigue en blanco.");
  v.t.foto("detenida");
}

void placa_muda(viaje& v) {
  v.t.decir("En Opciones, Puerto Serial, se elige COM2, donde hay una placa que nunca contesta.");
  v.hijo<QAction>("men_pto_s").trigger();
  QWidget& opciones = v.t.ventana("Opciones del puerto serial");
  auto& puertos = *opciones.findChild<QComboBox*>("cmb_s_puerto");
  puertos.setCurrentIndex(puertos.findText(QStringLiteral("COM2")));
  emit puertos.activated(puertos.currentIndex());
  v.t.foto_de("Opciones del puerto serial", "puerto");
  v.t.decir("Se pide un borrado. Al cabo de un segundo sin respuesta el programa pregunta qué hacer; se cancela.");
  v.t.esperar_caja("No hay respuesta del Dispositivo", "Cancelar", "caja-critica");
  v.hijo<QToolButton>("Toolbar_2").click();
  v.t.decir("En otro puerto hay otro chip: el mapa ha olvidado lo que sabía.");
  if (!v.p.principal().avance.mapa.ignora(0)) v.t.faltar("el mapa cree conocer otro chip");
  v.t.foto("otro-chip");
  puertos.setCurrentIndex(0);
  emit puertos.activated(0);
  opciones.close();
}

}  // namespace morvane
