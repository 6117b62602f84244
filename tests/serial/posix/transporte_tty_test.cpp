#include "serial/transporte_tty.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <array>
#include <chrono>

#include "apoyo/carpeta.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using std::chrono::floor, std::chrono::milliseconds, std::chrono::nanoseconds, std::chrono::seconds;
using std::chrono::steady_clock;

/// COM1 is a pseudo-terminal whose far end is `placa`; `testigo` is somebody who holds the near end open too.
struct linea_de_prueba {
  linea_de_prueba() {
    EXPECT_EQ(::openpty(&placa, &testigo, nullptr, nullptr, nullptr), 0);
    ::fcntl(placa, F_SETFL, O_NONBLOCK);
    fs::create_directory(carpeta.ruta() / "puertos");
    enlazar(1, ::ttyname(testigo));
  }
  ~linea_de_prueba() {
    ::close(placa);
    ::close(testigo);
  }
  void enlazar(int puerto, const fs::path& destino) const {
    fs::create_symlink(destino, carpeta.ruta() / "puertos" / ("COM" + std::to_string(puerto)));
  }
  void fechar(int puerto, nanoseconds cuando) const {
    const timespec fecha{floor<seconds>(cuando).count(), (cuando - floor<seconds>(cuando)).count()};
    const timespec fechas[] = {fecha, fecha};
    const fs::path enlace = carpeta.ruta() / "puertos" / ("COM" + std::to_string(puerto));
    EXPECT_EQ(::utimensat(AT_FDCWD, enlace.c_str(), fechas, AT_SYMLINK_NOFOLLOW), 0);
  }
  termios ajustada() const {
    termios t{};
    EXPECT_EQ(::tcgetattr(testigo, &t), 0);
    return t;
  }
  void ajustar(tcflag_t local, tcflag_t control) const {
    termios t = ajustada();
    t.c_lflag |= local;
    t.c_cflag |= control;
    EXPECT_EQ(::tcsetattr(testigo, TCSANOW, &t), 0);
  }
  std::string ajustes() const {
    const termios t = ajustada();
    std::string todos(std::begin(t.c_cc), std::end(t.c_cc));
    for (const tcflag_t uno : {t.c_iflag, t.c_oflag, t.c_cflag, t.c_lflag}) {
      todos += " " + std::to_string(uno);
    }
    return todos + " " + std::to_string(::cfgetospeed(&t));
  }
  /// What comes to the board within a second, up to `cuantos` characters.
  std::string oye_la_placa(std::size_t cuantos) {
    std::string oido;
    for (const auto limite = steady_clock::now() + 1s; oido.size() < cuantos && steady_clock::now() < limite;) {
      const ssize_t n = ::read(placa, trozo.data(), trozo.size());
      oido.append(trozo.data(), static_cast<std::size_t>(std::max<ssize_t>(n, 0)));
    }
    return oido;
  }
  auto cuanto_tarda_en_cerrar() {
    const auto inicio = steady_clock::now();
    linea.cerrar();
    return steady_clock::now() - inicio;
  }

  apoyo::carpeta carpeta;
  int placa = -1, testigo = -1;
  transporte_tty linea{carpeta.ruta()};
  std::array<char, 256> trozo{};
};

struct TransporteTty : testing::Test, linea_de_prueba {};

TEST_F(TransporteTty, LosBytesPasanTalCualYEnOrdenYLoDeAntesSePierde) {
  std::string todos, mucho, oido;
  for (int i = 0; i < 256; ++i) todos += static_cast<char>(i);
  for (int i = 0; mucho.size() < 40'000; ++i) mucho += todos + std::to_string(i);
  ASSERT_EQ(::write(placa, "viejo\rmedia", 11), 11);
  ASSERT_TRUE(linea.abrir(1, {28800, 'e', 7, 4}));
  oye_la_placa(12);  // the echo of a line that nobody had set
  ASSERT_EQ(::write(placa, todos.data(), todos.size()), 256);
  EXPECT_EQ(std::string(trozo.data(), linea.leer(trozo)), todos);
  for (std::size_t i = 0; i < mucho.size(); i += 37) linea.escribir(std::string_view(mucho).substr(i, 37));
  for (std::string mas = "?"; oido.size() < mucho.size() && !mas.empty(); oido += mas) {
    mas = oye_la_placa(1);
    EXPECT_EQ(linea.leer(trozo), 0U) << "what did not fit goes out with the reads";
  }
  EXPECT_EQ(oido, mucho);
  EXPECT_EQ(ajustada().c_cflag & (HUPCL | CRTSCTS | CLOCAL), static_cast<tcflag_t>(CLOCAL)) << "DTR stays up";
}

TEST_F(TransporteTty, SoloUnoTieneLaLineaHastaQueLaCierra) {
  enlazar(2, "COM1");
  transporte_tty segunda(carpeta.ruta());
  ASSERT_TRUE(linea.abrir(1, {}));
  EXPECT_FALSE(segunda.abrir(2, {}));
  int exclusiva = 0;
  EXPECT_EQ(::ioctl(testigo, TIOCGEXCL, &exclusiva), 0);
  EXPECT_EQ(exclusiva, 1);
  linea.descartar_salida();
  EXPECT_EQ(::ioctl(testigo, TIOCGEXCL, &exclusiva), 0) << "the program may end now";
  EXPECT_EQ(exclusiva, 0) << "the program may end now";
  EXPECT_FALSE(segunda.abrir(2, {})) << "the lock keeps the line until then";
  linea.escribir("D");
  linea.cerrar();
  EXPECT_EQ(oye_la_placa(1), "D");
  EXPECT_TRUE(segunda.abrir(2, {}));
}

TEST(LineaTty, UnaLineaColgadaSeDaPorPerdidaAlEscribirYAlLeerYNoRetieneElCierre) {
  for (const bool al_leer : {false, true}) {
    linea_de_prueba p;
    ASSERT_TRUE(p.linea.abrir(1, {}));
    EXPECT_EQ(p.linea.leer(p.trozo), 0) << "a quiet line is not lost";
    EXPECT_FALSE(p.linea.perdido()) << "a quiet line is not lost";
    if (al_leer) p.linea.escribir(std::string(40'000, 'x'));
    ::close(std::exchange(p.placa, -1));
    al_leer ? static_cast<void>(p.linea.leer(p.trozo)) : p.linea.escribir("x");
    EXPECT_TRUE(p.linea.perdido());
    EXPECT_LT(p.cuanto_tarda_en_cerrar(), 50ms);
  }
}

TEST_F(TransporteTty, AlCerrarLaLineaQuedaComoEstabaOComoOtroLaHayaPuesto) {
  const std::string antes = ajustes();
  const std::pair<parametros_linea, std::function<void()>> maneras[] = {{{28800}, [&] { linea.cerrar(); }},
                                                                        {{}, [&] { linea.descartar_salida(); }}};
  for (const auto& [parametros, acabar] : maneras) {
    ajustar(0, HUPCL);
    ASSERT_TRUE(linea.abrir(1, parametros));
    EXPECT_NE(ajustes(), antes);
    acabar();
    EXPECT_EQ(ajustes(), antes) << "but for the drop of DTR";
  }
  ASSERT_TRUE(linea.abrir(1, {}));
  ajustar(ISIG, 0);
  const std::string ajeno = ajustes();
  linea.cerrar();
  EXPECT_EQ(ajustes(), ajeno);
}

TEST_F(TransporteTty, UnEnlaceMasViejoQueSuTerminalEsDeOtroYNoLleva) {
  struct stat terminal {};
  ASSERT_EQ(::fstat(testigo, &terminal), 0);
  const nanoseconds nacido = seconds(terminal.st_ctim.tv_sec) + nanoseconds(terminal.st_ctim.tv_nsec);
  enlazar(2, "COM1");
  enlazar(3, "/dev/null");
  fechar(2, 1h);
  fechar(3, 1h);
  // A file system may keep whole seconds or thousandths only.
  const std::pair<nanoseconds, bool> casos[] = {{nacido, true},
                                                {floor<milliseconds>(nacido), true},
                                                {floor<seconds>(nacido), true},
                                                {floor<seconds>(nacido) - 1s, false},
                                                {nacido - 20ms, floor<seconds>(nacido) == nacido - 20ms},
                                                {nacido + 1h, true}};
  for (const auto& [fecha, lleva] : casos) {
    fechar(1, fecha);
    for (const int puerto : {1, 2}) {
      EXPECT_EQ(linea.abrir(puerto, {}), lleva) << fecha - nacido;
      linea.cerrar();
    }
  }
  // What the terminal is used for, and a new mode, do not make it younger.
  fechar(1, nacido);
  ASSERT_EQ(::fchmod(testigo, 0622), 0);
  EXPECT_TRUE(linea.existe(1));
  fechar(1, 1h);
  EXPECT_FALSE(linea.existe(2));
  ASSERT_TRUE(linea.causa());
  EXPECT_TRUE(*linea.causa() == (causa_puerto{.cual = causa_puerto::clase::enlace_pasado,
                                              .puerto = 2,
                                              .ruta = ::ttyname(testigo),
                                              .enlace = carpeta.ruta() / "puertos/COM1"}));
  EXPECT_TRUE(linea.existe(3)) << "the age counts where numbers are used again";
  transporte_tty movida(carpeta.ruta() / "movida");
  EXPECT_FALSE(movida.existe(1)) << "without the folder nobody knows its links";
  ASSERT_TRUE(movida.causa());
  EXPECT_EQ(movida.causa()->cual, causa_puerto::clase::carpeta_movida);
}

TEST_F(TransporteTty, QuienNoLeeNoRetieneElCierre) {
  for (const bool descartada : {false, true}) {
    ASSERT_TRUE(linea.abrir(1, {}));
    for (int i = 0; i < 1000; ++i) linea.escribir(std::string(1000, 'x'));
    if (descartada) linea.descartar_salida();
    const auto tardanza = cuanto_tarda_en_cerrar();
    EXPECT_TRUE(descartada ? tardanza < 50ms : tardanza >= 90ms) << tardanza.count();
    EXPECT_TRUE(tardanza < 300ms) << tardanza.count();
  }
}

}  // namespace
}  // namespace morvane
