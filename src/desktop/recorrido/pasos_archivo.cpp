// The chapters of start, files and end.

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QWindow>

#include "viaje.h"

namespace morvane {

void arrancar(viaje& v) {
  v.t.decir("El programa lee SETTINGS.TXT, abre COM1 y saluda a la placa. La placa contesta y sale la ventana.");
  v.p.empezar();
  if (!v.p.ventana().isVisible()) v.t.faltar("la ventana no está a la vista");
  const QSize cliente = v.p.ventana().centralWidget()->size();
  v.t.decir("Se titula «" + v.p.ventana().windowTitle().toStdString() + "» y mide " + std::to_string(cliente.width()) +
            " por " + std::to_string(cliente.height()) + " puntos sin el menú. Del chip no se sabe nada todavía.");
  v.t.foto("ventana");
}

void programar_sin_archivo(viaje& v) {
  v.t.decir("Alguien con prisa pulsa el botón 3 sin haber abierto nada.");
  v.t.esperar_caja("Debe cargar un programa antes de grabar", "Aceptar", "caja-sin-icono");
  v.hijo<QToolButton>("Toolbar_3").click();
}

void abrir_muestra(viaje& v) {
  v.t.decir("En el menú Archivo, Abrir. El diálogo pide un archivo y se teclea uno de las muestras.");
  v.t.elegir(v.muestra("demo-s1.s19").string());
  v.t.esperar_caja("Ha terminado de cargar el archivo", "Aceptar", "");
  v.hijo<QAction>("men_abrir").trigger();
  v.t.decir("El primer panel muestra «" + v.hijo<QLabel>("StatusBar_1").text().toStdString() +
            "», y en el mapa se ve qué celdas tienen datos.");
  if (v.p.principal().v.dir_max < 1) v.t.faltar("no se ha cargado nada");
  v.t.foto("abierta");
}

void abrir_otro_archivo(viaje& v) {
  v.t.decir("Se abre otro archivo. El programa pregunta si se quiere el mismo; no.");
  v.t.esperar_caja("Desea cargar el mismo proyecto?", "No", "caja-pregunta");
  v.t.elegir(v.muestra("completa-256k.s19").string());
  v.t.esperar_caja("Ha terminado de cargar el archivo", "Aceptar", "");
  v.hijo<QToolButton>("Toolbar_1").click();
  v.t.decir("Lo verificado ya no vale, y lo escrito es de otro archivo: el mapa lo sabe.");
  v.t.foto("otro-archivo");
  v.t.decir("Verificar lo confirma: la primera suma ya no coincide.");
  v.t.esperar_caja("El programa contenido en la Flash difiere del cargado en el buffer", "Aceptar", "");
  v.hijo<QToolButton>("Toolbar_4").click();
  v.t.foto("distinta");
  v.t.decir("La comparación de los buffer enseña en qué: lo leído, del otro programa, frente a esta imagen.");
  v.t.esperar_caja("Ha finalizado la comparación de los buffer de entrada y salida", "Aceptar", "");
  v.hijo<QAction>("men_comparar").trigger();
  v.t.foto_de("Resultado Comparación de buffer", "diferencias");
}

void acerca_de(viaje& v) {
  v.t.decir("En el menú contextual de la ventana, Acerca de.");
  v.hijo<QAction>("men_acerca_contextual").trigger();
  v.t.foto_de("Acerca de Morvane", "acerca-de");
}

void ayuda(viaje& v) {
  v.t.decir("F1 abre el manual por lo que se tiene delante: el mapa, en este caso.");
  v.hijo<QWidget>("mapa_flash").setFocus();
  QKeyEvent f1(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
  QApplication::sendEvent(v.p.ventana().windowHandle(), &f1);
  v.t.foto_de("Manual de Morvane", "manual");
}

void cerrar(viaje& v) {
  v.t.decir("Se cierra la ventana principal, y con ella el programa.");
  v.p.ventana().close();
  if (v.p.ventana().isVisible()) v.t.faltar("la ventana sigue a la vista");
  const int codigo = QApplication::exec();
  v.t.decir("Termina con el código " + std::to_string(codigo) + ".");
  if (codigo != 0) v.t.faltar("el código no es 0");
}

}  // namespace morvane
