#include "pasos.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>
#include <chrono>
#include <stdexcept>

namespace morvane {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

template <class W>
W& hijo(programa& p, const char* nombre) {
  auto* encontrado = p.ventana().findChild<W*>(QString::fromUtf8(nombre));
  if (encontrado == nullptr) throw std::runtime_error(std::string("no existe ") + nombre);
  return *encontrado;
}

int avance(programa& p) {
  return hijo<QProgressBar>(p, "Progress").value();
}

fs::path muestra(const fs::path& directorio) {
  const fs::path carpeta = directorio / "muestras";
  if (fs::exists(carpeta / "demo-s1.s19")) return carpeta / "demo-s1.s19";
  for (const auto& una : fs::directory_iterator(carpeta)) {
    if (una.path().extension() == ".s19") return una.path();
  }
  throw std::runtime_error("no hay ninguna muestra en " + carpeta.string());
}

void arranque(programa& p, testigo& t) {
  t.paso("Arranque", 20s);
  p.empezar();
  if (!p.ventana().isVisible()) t.faltar("la ventana no está a la vista");
  const QSize cliente = p.ventana().centralWidget()->size();
  t.decir("Ventana «" + p.ventana().windowTitle().toStdString() + "», " + std::to_string(cliente.width()) + " por " +
          std::to_string(cliente.height()) + " puntos sin el menú");
  t.foto(p.ventana(), "ventana");
}

void abrir(programa& p, testigo& t, const fs::path& fichero) {
  t.paso("Abrir una muestra: menú Archivo, Abrir", 20s);
  t.elegir(fichero.string());
  t.esperar_caja("Ha terminado de cargar el archivo", "Aceptar");
  hijo<QAction>(p, "men_abrir").trigger();
  t.comprobar();
  t.decir("Primer panel: " + hijo<QLabel>(p, "StatusBar_1").text().toStdString());
  t.decir("Última dirección cargada: " + std::to_string(p.principal().v.dir_max));
  if (p.principal().v.dir_max < 1) t.faltar("no se ha cargado nada");
  t.foto(p.ventana(), "abierta");
}

void borrar(programa& p, testigo& t) {
  t.paso("Borrar: menú Memoria Flash, Borrar", 60s);
  t.esperar_caja("¡Ha terminado de borrar!", "Aceptar");
  hijo<QAction>(p, "men_borrar_t").trigger();
  t.comprobar();
}

void programar(programa& p, testigo& t) {
  t.paso("Programar: botón 3", 300s);
  t.cuando([&p] { return avance(p) >= 8; },
           [&p, &t] {
             t.decir("La barra va por " + std::to_string(avance(p)) + " de 24");
             if (hijo<QToolButton>(p, "Toolbar_3").isEnabled()) t.faltar("el botón 3 sigue activo");
             t.foto(p.ventana(), "grabando");
           });
  t.esperar_caja("¡Ha terminado de grabar!", "Aceptar");
  hijo<QToolButton>(p, "Toolbar_3").click();
  t.comprobar();
  t.decir("La barra queda en " + std::to_string(avance(p)));
}

void detener(programa& p, testigo& t) {
  t.paso("Programar otra vez y detener con el botón 6", 300s);
  t.cuando([&p] { return avance(p) >= 4; },
           [&p, &t] {
             t.decir("La barra va por " + std::to_string(avance(p)) + " de 24; se pulsa el botón 6");
             hijo<QToolButton>(p, "Toolbar_6").click();
           });
  t.esperar_caja("El proceso de grabación ha sido detenido por el usuario", "Aceptar");
  hijo<QToolButton>(p, "Toolbar_3").click();
  t.comprobar();
  t.foto(p.ventana(), "detenida");
}

void cerrar(programa& p, testigo& t) {
  t.paso("Cerrar la ventana", 10s);
  p.ventana().close();
  if (p.ventana().isVisible()) t.faltar("la ventana sigue a la vista");
  const int codigo = QApplication::exec();
  t.decir("El programa ha terminado con el código " + std::to_string(codigo));
  if (codigo != 0) t.faltar("el código no es 0");
}

}  // namespace

void recorrer(programa& p, testigo& t, const fs::path& directorio) {
  arranque(p, t);
  abrir(p, t, muestra(directorio));
  borrar(p, t);
  programar(p, t);
  detener(p, t);
  cerrar(p, t);
}

}  // namespace morvane
