#include "desktop/programa.h"

#include "aplicacion.h"
#include "apoyo/hijos.h"
#include "desktop/directorio.h"

namespace {

using namespace apoyo;
namespace fs = std::filesystem;

/// The whole program in an empty directory, which holds no port: its load event ends in a box.
struct banco_programa {
  QApplication& app = aplicacion();
  carpeta dir;
  programa p{dir.ruta()};

  /// Runs the load event, and `accion` in the box that comes up in it.
  explicit banco_programa(const std::function<void(programa&)>& accion) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QTimer::singleShot(0, &app, [&] { accion(p); });
    p.empezar();
  }
};

TEST(programa_test, asked_to_end_while_a_box_of_the_load_event_is_open_it_ends_without_a_window) {
  banco_programa b([](programa& p) { p.pedir_fin(); });
  EXPECT_FALSE(b.p.ventana().isVisible());
  EXPECT_EQ(QApplication::exec(), 0);
}

TEST(programa_test, closed_under_a_command_or_another_handler_the_window_stays_until_it_has_returned) {
  for (const bool es_orden : {true, false}) {
    banco_programa b([](programa&) { QApplication::activeModalWidget()->close(); });
    bool regreso = false;
    b.p.principal().barra.ButtonClick = [&](int) {
      std::optional<orden_en_curso> orden;
      if (es_orden) orden.emplace(b.p.principal());
      b.p.ventana().close();
      regreso = b.p.ventana().isVisible();
    };
    QTimer::singleShot(0, &b.p.ventana(), [&] { b.p.ventana().findChild<QToolButton*>("Toolbar_5")->click(); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(regreso);
    EXPECT_FALSE(b.p.ventana().isVisible());
  }
}

TEST(directorio_test, programs_that_start_for_the_first_time_together_all_find_one_writable_copy) {
  const carpeta dir;
  const fs::path origen = dir.ruta() / "programa", destino = dir.ruta() / "a" / "usuario";
  for (int i = 0; i < 50; ++i) dir.escribir("programa/muestras/" + std::to_string(i), "");
  fs::permissions(dir.escribir("programa/SETTINGS.TXT", "1"), fs::perms::owner_read);
  for (int i = 0; i < 4; ++i) {
    en_un_hijo([&] { sembrar(origen, destino), ::_exit(fs::exists(destino / "muestras/49") ? 0 : 1); });
  }
  for (int estado = 0; ::wait(&estado) > 0;) EXPECT_EQ(estado, 0);
  EXPECT_NE(fs::status(destino / "SETTINGS.TXT").permissions() & fs::perms::owner_write, fs::perms::none);
  fs::remove(destino / "SETTINGS.TXT");
  sembrar(origen, destino);
  EXPECT_FALSE(fs::exists(destino / "SETTINGS.TXT")) << "what the user has removed does not come back";
}

}  // namespace
