#include "desktop/programa.h"

#include <gtest/gtest.h>

#include <QtWidgets>
#include <fstream>

#include "aplicacion.h"
#include "apoyo/hijos.h"
#include "desktop/directorio.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

/// The whole program in an empty directory, which holds no port: its load event ends in a box.
struct programa_test : testing::Test {
  QApplication& app = aplicacion();
  QTemporaryDir carpeta;
  fs::path raiz = carpeta.path().toStdString();
  programa p{raiz};

  void SetUp() override { QGuiApplication::setQuitOnLastWindowClosed(false); }

  /// Runs the load event, and `accion` in the box that comes up in it.
  void empezar(std::function<void()> accion) {
    int cajas = 0;
    QTimer espera;
    QObject::connect(&espera, &QTimer::timeout, [&] {
      if (QApplication::activeModalWidget() == nullptr) return;
      EXPECT_FALSE(p.ventana().isVisible());
      ++cajas;
      accion();
    });
    espera.start(1);
    p.empezar();
    EXPECT_EQ(cajas, 1);
  }
  static void cerrar_caja() { QApplication::activeModalWidget()->close(); }
  /// Presses a button whose command is `orden`, and lets the program run to its end.
  void hasta_el_fin(std::function<void()> orden) {
    empezar(cerrar_caja);
    EXPECT_TRUE(p.ventana().isVisible());
    bool regreso = false;
    p.principal().barra.ButtonClick = [&](int) {
      orden();
      EXPECT_TRUE(p.ventana().isVisible()) << "the window stays until the command has returned";
      regreso = true;
    };
    QTimer::singleShot(0, &p.ventana(), [this] { p.ventana().findChild<QToolButton*>("Toolbar_5")->click(); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(regreso && !p.ventana().isVisible());
  }
};

TEST_F(programa_test, closing_the_window_ends_the_program) {
  empezar(cerrar_caja);
  QTimer::singleShot(0, &p.ventana(), [this] { p.ventana().close(); });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_FALSE(p.ventana().isVisible());
}

TEST_F(programa_test, asked_to_end_while_a_box_of_the_load_event_is_open_it_ends_without_a_window) {
  empezar([this] { p.pedir_fin(); });
  EXPECT_FALSE(p.ventana().isVisible());
  EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(programa_test, asked_to_end_under_a_command_it_ends_when_the_command_has_returned) {
  hasta_el_fin([this] {
    QTimer::singleShot(10, &p.ventana(), [this] { p.pedir_fin(); });
    p.plat().MsgBox({"t", "x", botones::SiNo});
  });
}

TEST_F(programa_test, closed_under_a_command_the_window_stays_until_it_has_returned) {
  hasta_el_fin([this] {
    const orden_en_curso orden(p.principal());
    p.ventana().close();
  });
}

TEST(directorio_test, a_user_gets_a_writable_copy_once) {
  const QTemporaryDir carpeta;
  const fs::path raiz = carpeta.path().toStdString(), origen = raiz / "programa", destino = raiz / "a" / "usuario";
  fs::create_directories(origen / "puertos");
  fs::create_directories(origen / "unidades/c/Datos");
  std::ofstream(origen / "SETTINGS.TXT") << "1";
  std::ofstream(origen / "morvane") << "programa";
  fs::create_symlink("/dev/ttyUSB0", origen / "puertos/COM1");
  fs::permissions(origen / "SETTINGS.TXT", fs::perms::owner_read);
  fs::permissions(origen / "unidades/c/Datos", fs::perms::owner_read | fs::perms::owner_exec);
  sembrar(origen, destino);
  EXPECT_EQ(fs::read_symlink(destino / "puertos/COM1"), "/dev/ttyUSB0");
  EXPECT_FALSE(fs::exists(destino / "morvane"));
  for (const char* parte : {"SETTINGS.TXT", "unidades/c/Datos"}) {
    EXPECT_NE(fs::status(destino / parte).permissions() & fs::perms::owner_write, fs::perms::none) << parte;
  }
  fs::remove(destino / "SETTINGS.TXT");
  sembrar(origen, destino);
  EXPECT_FALSE(fs::exists(destino / "SETTINGS.TXT"));
}

TEST(directorio_test, programs_that_start_for_the_first_time_together_all_find_the_whole_copy) {
  const QTemporaryDir carpeta;
  const fs::path raiz = carpeta.path().toStdString(), origen = raiz / "programa", destino = raiz / "a" / "usuario";
  fs::create_directories(origen / "muestras");
  for (int i = 0; i < 50; ++i) std::ofstream(origen / "muestras" / std::to_string(i)) << i;
  std::vector<pid_t> hijos;
  for (int i = 0; i < 4; ++i) {
    hijos.push_back(apoyo::en_un_hijo([&] {
      sembrar(origen, destino);
      ::_exit(fs::exists(destino / "muestras/49") ? 0 : 1);
    }));
  }
  for (const pid_t hijo : hijos) {
    int estado = 0;
    EXPECT_EQ(::waitpid(hijo, &estado, 0), hijo);
    EXPECT_EQ(estado, 0);
  }
}

}  // namespace
}  // namespace morvane
