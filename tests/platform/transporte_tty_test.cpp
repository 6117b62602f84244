#include "platform/transporte_tty.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <functional>
#include <thread>

#include "platform/carpeta_temporal.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// The far end of a line: the master of a pseudo-terminal.
class pareja {
 public:
  pareja() : fd_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    if (::grantpt(fd_) != 0 || ::unlockpt(fd_) != 0) throw std::runtime_error("no pseudo-terminal");
  }
  pareja(const pareja&) = delete;
  pareja& operator=(const pareja&) = delete;
  ~pareja() { colgar(); }

  std::string esclavo() const { return ::ptsname(fd_); }
  int abrir_esclavo() const { return ::open(esclavo().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC); }
  void decir(std::string_view texto) const {
    ASSERT_EQ(::write(fd_, texto.data(), texto.size()), static_cast<ssize_t>(texto.size()));
  }
  /// All that comes in until `cuantos` characters are there or a second has passed.
  std::string oir(std::size_t cuantos) const {
    std::string oido;
    const auto limite = steady_clock::now() + 1s;
    while (oido.size() < cuantos && steady_clock::now() < limite) {
      std::array<char, 4096> trozo;
      const ssize_t hechos = ::read(fd_, trozo.data(), trozo.size());
      if (hechos > 0) oido.append(trozo.data(), static_cast<std::size_t>(hechos));
      if (hechos <= 0) std::this_thread::sleep_for(1ms);
    }
    return oido;
  }
  void colgar() {
    if (fd_ >= 0) ::close(std::exchange(fd_, -1));
  }

 private:
  int fd_;
};

std::string leer_hasta(transporte_tty& linea, std::size_t cuantos) {
  std::string leido;
  const auto limite = steady_clock::now() + 1s;
  while (leido.size() < cuantos && !linea.perdido() && steady_clock::now() < limite) {
    std::array<char, 256> trozo;
    leido.append(trozo.data(), linea.leer(trozo));
  }
  return leido;
}

std::chrono::milliseconds cuanto_tarda(const std::function<void()>& que) {
  const auto inicio = steady_clock::now();
  que();
  return std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - inicio);
}

/// Number of descriptors that this process holds open.
std::ptrdiff_t descriptores() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

class TransporteTty : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directory(carpeta.ruta() / "puertos");
    enlazar(1, placa.esclavo());
  }
  void enlazar(int puerto, const fs::path& destino) const {
    fs::create_symlink(destino, carpeta.ruta() / "puertos" / ("COM" + std::to_string(puerto)));
  }

  prueba::carpeta_temporal carpeta;
  pareja placa;
  transporte_tty linea{carpeta.ruta()};
};

TEST_F(TransporteTty, LosBytesPasanTalCual) {
  ASSERT_TRUE(linea.abrir(1, {})) << linea.motivo();
  std::string todos;
  for (int i = 0; i < 256; ++i) todos += static_cast<char>(i);
  linea.escribir(todos);
  EXPECT_EQ(placa.oir(256), todos);
  placa.decir(todos);
  EXPECT_EQ(leer_hasta(linea, 256), todos);
  std::array<char, 4> nada;
  EXPECT_EQ(linea.leer(nada), 0U);
  EXPECT_EQ(linea.leer({}), 0U);
  EXPECT_FALSE(linea.perdido());
}

TEST_F(TransporteTty, CualquierVelocidadYSinBajarDtr) {
  const int testigo = placa.abrir_esclavo();
  for (const int velocidad : {50, 110, 28800, 57600, 250000, 4000000}) {
    ASSERT_TRUE(linea.abrir(1, {velocidad, 'e', 7, 4})) << linea.motivo();
    termios t{};
    EXPECT_EQ(::tcgetattr(testigo, &t), 0);
    EXPECT_EQ(t.c_cflag & (HUPCL | CRTSCTS | CLOCAL | CREAD), static_cast<tcflag_t>(CLOCAL | CREAD));
    EXPECT_EQ(t.c_lflag | t.c_oflag | (t.c_iflag & (IXON | IXOFF | ICRNL | ISTRIP)), 0U);
  }
  ::close(testigo);
}

TEST_F(TransporteTty, SoloUnoTieneLaLinea) {
  enlazar(2, placa.esclavo());
  enlazar(3, "COM2");
  transporte_tty segunda(carpeta.ruta());
  ASSERT_TRUE(linea.abrir(1, {}));
  for (const int puerto : {1, 2, 3}) {
    const auto abiertos = descriptores();
    EXPECT_FALSE(segunda.abrir(puerto, {})) << puerto;
    EXPECT_EQ(descriptores(), abiertos);
    EXPECT_NE(segunda.motivo().find("busy"), std::string::npos) << segunda.motivo();
  }
  linea.escribir("sigue");
  EXPECT_EQ(placa.oir(5), "sigue");
  linea.cerrar();
  EXPECT_TRUE(segunda.abrir(3, {})) << segunda.motivo();
  EXPECT_EQ(segunda.motivo(), "");
  EXPECT_FALSE(linea.abrir(1, {}));
}

TEST_F(TransporteTty, SalirSinCerrarNoDejaLaLineaTomada) {
  const int testigo = placa.abrir_esclavo();
  ASSERT_TRUE(linea.abrir(1, {}));
  int exclusiva = -1;
  EXPECT_EQ(::ioctl(testigo, TIOCGEXCL, &exclusiva), 0);
  EXPECT_EQ(exclusiva, 1);
  linea.descartar_salida();
  EXPECT_EQ(::ioctl(testigo, TIOCGEXCL, &exclusiva), 0);
  EXPECT_EQ(exclusiva, 0);
  EXPECT_FALSE(transporte_tty(carpeta.ruta()).abrir(1, {}));
  ::close(testigo);
}

TEST_F(TransporteTty, LoQueHabiaAntesSePierdeAlAbrir) {
  const int abierta = placa.abrir_esclavo();
  placa.decir("viejo\rmedia");
  std::this_thread::sleep_for(20ms);
  ASSERT_TRUE(linea.abrir(1, {})) << linea.motivo();
  ::close(abierta);
  placa.decir("nuevo");
  EXPECT_EQ(leer_hasta(linea, 5), "nuevo");
}

TEST_F(TransporteTty, LaLineaQueDesapareceSeNotaUnaVez) {
  ASSERT_TRUE(linea.abrir(1, {}));
  std::array<char, 16> trozo;
  EXPECT_EQ(linea.leer(trozo), 0U);
  EXPECT_FALSE(linea.perdido());
  placa.colgar();
  EXPECT_EQ(leer_hasta(linea, 1), "");
  EXPECT_TRUE(linea.perdido());
  EXPECT_LT(cuanto_tarda([&] {
              for (int i = 0; i < 1'000'000; ++i) linea.leer(trozo);
              linea.escribir("x");
              linea.cerrar();
            }),
            500ms);
  EXPECT_FALSE(linea.perdido());
}

TEST_F(TransporteTty, EscribirEnUnaLineaColgadaLaDaPorPerdida) {
  ASSERT_TRUE(linea.abrir(1, {}));
  placa.colgar();
  linea.escribir("x");
  EXPECT_TRUE(linea.perdido());
}

TEST_F(TransporteTty, LoQueNoCabeSaleMasTardeYEnOrden) {
  ASSERT_TRUE(linea.abrir(1, {}));
  std::string mucho;
  for (int i = 0; mucho.size() < 40'000; ++i) mucho += std::to_string(i) + ",";
  for (std::size_t i = 0; i < mucho.size(); i += 37) linea.escribir(std::string_view(mucho).substr(i, 37));
  std::string oido;
  std::array<char, 16> trozo;
  for (int i = 0; i < 1000 && oido.size() < mucho.size(); ++i) {
    oido += placa.oir(1);
    linea.leer(trozo);
  }
  EXPECT_EQ(oido, mucho);
}

TEST_F(TransporteTty, QuienNoLeeNoRetieneElCierre) {
  ASSERT_TRUE(linea.abrir(1, {}));
  const std::string trama(1000, 'x');
  EXPECT_LT(cuanto_tarda([&] {
              for (int i = 0; i < 1000; ++i) linea.escribir(trama);
            }),
            500ms);
  const auto cierre = cuanto_tarda([&] { linea.cerrar(); });
  EXPECT_GE(cierre, 90ms);
  EXPECT_LT(cierre, 300ms);
  EXPECT_TRUE(linea.abrir(1, {}));
  linea.escribir(trama);
  EXPECT_LT(cuanto_tarda([&] { linea.descartar_salida(); }), 50ms);
}

TEST_F(TransporteTty, LaUltimaTramaLlegaAunqueSeCierreEnSeguida) {
  ASSERT_TRUE(linea.abrir(1, {}));
  linea.escribir("D");
  linea.cerrar();
  EXPECT_EQ(placa.oir(1), "D");
}

TEST_F(TransporteTty, SinPermisoDiceQueGrupoFalta) {
  fs::permissions(carpeta.ruta(), fs::perms(0755));
  fs::permissions(placa.esclavo(), fs::perms::none);
  prueba::sin_privilegios guarda;
  EXPECT_FALSE(linea.abrir(1, {}));
  EXPECT_NE(linea.motivo().find("no permission: join the group \""), std::string::npos) << linea.motivo();
}

TEST_F(TransporteTty, UnEnlaceColgadoNoCedeElPuertoAlAnfitrion) {
  fs::remove(carpeta.ruta() / "puertos/COM1");
  enlazar(1, "no-hay");
  EXPECT_FALSE(linea.existe(1));
}

TEST_F(TransporteTty, SoloDispositivosDeSerie) {
  carpeta.escribir("archivo", "contenido");
  ASSERT_EQ(::mkfifo((carpeta.ruta() / "tubo").c_str(), 0600), 0);
  enlazar(2, "no-hay");
  enlazar(3, "..");
  enlazar(4, "../tubo");
  enlazar(5, "../archivo");
  enlazar(6, "COM6");
  enlazar(7, "/dev/null");
  EXPECT_TRUE(linea.existe(1));
  EXPECT_EQ(linea.dispositivo(1), placa.esclavo());
  for (const int puerto : {-1, 0, 2, 3, 4, 5, 6, 10}) {
    EXPECT_FALSE(linea.existe(puerto)) << puerto;
    EXPECT_TRUE(linea.dispositivo(puerto).empty());
    EXPECT_FALSE(linea.abrir(puerto, {})) << puerto;
    EXPECT_NE(linea.motivo(), "");
  }
  EXPECT_FALSE(linea.abrir(7, {}));
  EXPECT_EQ(linea.motivo(), "COM7 (/dev/null): not a serial device");
  EXPECT_EQ(prueba::contenido_de(carpeta.ruta() / "archivo"), "contenido");
  EXPECT_TRUE(linea.abrir(1, {})) << linea.motivo();
}

}  // namespace
}  // namespace morvane
