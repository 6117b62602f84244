#include "platform/transporte_tty.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>

#include <array>
#include <chrono>
#include <csignal>

#include "apoyo/carpeta.h"
#include "platform/sin_privilegios.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// This process, as the messages name it.
std::string este(pid_t pid = ::getpid()) {
  std::string nombre = fs::read_symlink("/proc/self/exe").filename();
  return nombre.substr(0, 15) + " (pid " + std::to_string(pid) + ")";
}

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
  void decir(std::string_view texto) const {
    ASSERT_EQ(::write(fd_, texto.data(), texto.size()), static_cast<ssize_t>(texto.size()));
  }
  std::size_t leer(std::span<char> destino) const {
    const ssize_t hechos = ::read(fd_, destino.data(), destino.size());
    return hechos > 0 ? static_cast<std::size_t>(hechos) : 0;
  }
  void colgar() {
    if (fd_ >= 0) ::close(std::exchange(fd_, -1));
  }

 private:
  int fd_;
};

/// All that comes in at one end until `cuantos` characters are there or a second has passed.
template <class extremo>
std::string oir(extremo& e, std::size_t cuantos) {
  std::string oido;
  std::array<char, 256> trozo;
  for (const auto limite = steady_clock::now() + 1s; oido.size() < cuantos && steady_clock::now() < limite;) {
    oido.append(trozo.data(), e.leer(trozo));
  }
  return oido;
}

class TransporteTty : public testing::Test {
 protected:
  TransporteTty() {
    fs::create_directory(carpeta.ruta() / "puertos");
    enlazar(1, placa.esclavo());
  }
  void TearDown() override { ::close(testigo); }
  void enlazar(int puerto, const fs::path& destino) const {
    fs::create_symlink(destino, carpeta.ruta() / "puertos" / ("COM" + std::to_string(puerto)));
  }

  apoyo::carpeta carpeta;
  pareja placa;
  /// Somebody else who holds the device open.
  int testigo = ::open(placa.esclavo().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  transporte_tty linea{carpeta.ruta()};
  std::array<char, 16> trozo{};
};

TEST_F(TransporteTty, LosBytesPasanTalCualYLoDeAntesSePierde) {
  std::string todos;
  for (int i = 0; i < 256; ++i) todos += static_cast<char>(i);
  placa.decir("viejo\rmedia");
  EXPECT_EQ(oir(placa, 12), "viejo\r\nmedia") << "the echo of a line that nobody has set";
  ASSERT_TRUE(linea.abrir(1, {})) << linea.motivo();
  placa.decir(todos);
  EXPECT_EQ(oir(linea, 256), todos);
  linea.escribir(todos);
  EXPECT_EQ(oir(placa, 256), todos);
  EXPECT_EQ(linea.leer(trozo), 0U);
  EXPECT_EQ(linea.leer({}), 0U);
  EXPECT_FALSE(linea.perdido());
}

TEST_F(TransporteTty, CualquierVelocidadYSinBajarDtr) {
  for (const int velocidad : {50, 110, 28800, 57600, 250000, 4000000}) {
    ASSERT_TRUE(linea.abrir(1, {velocidad, 'e', 7, 4})) << linea.motivo();
    termios t{};
    EXPECT_EQ(::tcgetattr(testigo, &t), 0);
    EXPECT_EQ(t.c_cflag & (HUPCL | CRTSCTS | CLOCAL | CREAD), static_cast<tcflag_t>(CLOCAL | CREAD));
    EXPECT_EQ(t.c_lflag | t.c_oflag | (t.c_iflag & (IXON | IXOFF | ICRNL | ISTRIP)), 0U);
  }
}

TEST_F(TransporteTty, SoloUnoTieneLaLinea) {
  const auto descriptores = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
  enlazar(2, placa.esclavo());
  enlazar(3, "COM2");
  transporte_tty segunda(carpeta.ruta());
  ASSERT_TRUE(linea.abrir(1, {}));
  const auto abiertos = descriptores();
  for (const int puerto : {1, 2, 3}) {
    EXPECT_FALSE(segunda.abrir(puerto, {}));
    EXPECT_EQ(segunda.motivo(), "COM" + std::to_string(puerto) + ": " + placa.esclavo() + ": ocupado por " + este());
  }
  EXPECT_EQ(descriptores(), abiertos);
  int exclusiva = 0;
  EXPECT_TRUE(::ioctl(testigo, TIOCGEXCL, &exclusiva) == 0 && exclusiva == 1);
  linea.descartar_salida();
  EXPECT_TRUE(::ioctl(testigo, TIOCGEXCL, &exclusiva) == 0 && exclusiva == 0) << "the program may end now";
  EXPECT_FALSE(segunda.abrir(1, {})) << "the lock keeps the line until then";
  linea.escribir("D");
  linea.cerrar();
  EXPECT_EQ(oir(placa, 1), "D");
  EXPECT_TRUE(segunda.abrir(3, {})) << segunda.motivo();
  EXPECT_EQ(segunda.motivo(), "");
}

TEST_F(TransporteTty, UnaLineaColgadaSeDaPorPerdidaAlLeerYAlEscribir) {
  ASSERT_TRUE(linea.abrir(1, {}));
  placa.colgar();
  linea.escribir("x");
  EXPECT_TRUE(linea.perdido());
  linea.cerrar();
  EXPECT_FALSE(linea.perdido());
  pareja otra;
  enlazar(2, otra.esclavo());
  ASSERT_TRUE(linea.abrir(2, {}));
  EXPECT_EQ(linea.leer(trozo), 0U);
  EXPECT_FALSE(linea.perdido());
  linea.escribir(std::string(40'000, 'x'));
  otra.colgar();
  EXPECT_EQ(linea.leer(trozo), 0U);
  EXPECT_TRUE(linea.perdido()) << "in mid-write";
  const auto inicio = steady_clock::now();
  linea.cerrar();
  EXPECT_LT(steady_clock::now() - inicio, 50ms) << "nobody is left to wait for";
}

TEST_F(TransporteTty, LoQueNoCabeSaleMasTardeYEnOrden) {
  ASSERT_TRUE(linea.abrir(1, {}));
  std::string mucho;
  for (int i = 0; mucho.size() < 40'000; ++i) mucho += std::to_string(i) + ",";
  for (std::size_t i = 0; i < mucho.size(); i += 37) linea.escribir(std::string_view(mucho).substr(i, 37));
  std::string oido;
  while (oido.size() < mucho.size()) {
    const std::string mas = oir(placa, 1);
    ASSERT_NE(mas, "") << oido.size();
    oido += mas;
    linea.leer(trozo);
  }
  EXPECT_EQ(oido, mucho);
}

TEST_F(TransporteTty, QuienNoLeeNoRetieneElCierre) {
  ASSERT_TRUE(linea.abrir(1, {}));
  const std::string trama(1000, 'x');
  for (int i = 0; i < 1000; ++i) linea.escribir(trama);
  auto inicio = steady_clock::now();
  linea.cerrar();
  EXPECT_GE(steady_clock::now() - inicio, 90ms);
  EXPECT_LT(steady_clock::now() - inicio, 300ms);
  ASSERT_TRUE(linea.abrir(1, {}));
  linea.escribir(trama);
  linea.descartar_salida();
  inicio = steady_clock::now();
  linea.cerrar();
  EXPECT_LT(steady_clock::now() - inicio, 50ms);
}

TEST_F(TransporteTty, LoQueNoSePuedeAbrirDiceElMotivoUnaVez) {
  carpeta.escribir("archivo", "contenido");
  ASSERT_EQ(::mkfifo((carpeta.ruta() / "tubo").c_str(), 0600), 0);
  const std::string raiz = carpeta.ruta(), puertos = raiz + "/puertos/";
  const struct {
    int puerto;
    const char* destino;
    std::string motivo;
  } casos[] = {
      {-1, nullptr, "no existe el enlace " + puertos + "COM-1"},
      {0, nullptr, "no existe el enlace " + puertos + "COM0"},
      {2, "no\nhay", "el enlace " + puertos + "COM2 lleva a no?hay, que no existe"},
      {3, "..", raiz + " no es un dispositivo serie"},
      {4, "../tubo", raiz + "/tubo no es un dispositivo serie"},
      {5, "../archivo", raiz + "/archivo no es un dispositivo serie"},
      {6, "COM6", "el enlace " + puertos + "COM6 lleva a COM6, que no existe"},
      {7, "/dev/null", "/dev/null: no es un dispositivo serie"},
      {8, nullptr, "no existen ni /dev/ttyUSB3 ni el enlace " + puertos + "COM8"},
      {10, nullptr, "no existe el enlace " + puertos + "COM10"},
  };
  std::vector<std::string> dichos;
  linea.al_fallar = [&](const std::string& motivo) { dichos.push_back(motivo); };
  for (const auto& c : casos) {
    if (c.destino != nullptr) enlazar(c.puerto, c.destino);
    EXPECT_EQ(linea.existe(c.puerto), c.puerto == 7) << "opens nothing";
    dichos.clear();
    EXPECT_FALSE(linea.abrir(c.puerto, {}));
    EXPECT_EQ(linea.motivo(), "COM" + std::to_string(c.puerto) + ": " + c.motivo);
    EXPECT_EQ(dichos, std::vector{linea.motivo()});
  }
  EXPECT_TRUE(linea.existe(1));
  EXPECT_EQ(linea.dispositivo(1), placa.esclavo());
  EXPECT_EQ(linea.motivo(), "");
}

TEST_F(TransporteTty, SinPermisoDiceAQueGrupoHayQueUnirse) {
  fs::permissions(carpeta.ruta(), fs::perms(0755));
  const bool root = ::geteuid() == 0;
  const group* dialout = ::getgrnam("dialout");
  const struct {
    unsigned modo;
    std::string motivo;
    bool solo_root;
  } casos[] = {
      {0, std::string("es solo del usuario ") + ::getpwuid(::geteuid())->pw_name, false},
      {0660, "ejecute «sudo usermod -aG dialout $USER» y vuelva a iniciar la sesión", true},
  };
  for (const auto& c : casos) {
    if (c.solo_root && (!root || dialout == nullptr)) continue;
    ASSERT_TRUE(!c.solo_root || ::chown(placa.esclavo().c_str(), 0, dialout->gr_gid) == 0);
    fs::permissions(placa.esclavo(), fs::perms(c.modo));
    const sin_privilegios guarda;
    EXPECT_FALSE(linea.abrir(1, {}));
    EXPECT_EQ(linea.motivo(), "COM1: " + placa.esclavo() + ": sin permiso: " + c.motivo);
  }
}

TEST_F(TransporteTty, UnUsuarioCualquieraSabeQuienOcupaLaLinea) {
  fs::permissions(carpeta.ruta(), fs::perms(0755));
  fs::permissions(placa.esclavo(), fs::perms(0666));
  enlazar(2, placa.esclavo());
  transporte_tty segunda(carpeta.ruta());
  ASSERT_TRUE(linea.abrir(1, {}));
  {
    const sin_privilegios guarda;
    EXPECT_FALSE(segunda.abrir(2, {}));
    EXPECT_EQ(segunda.motivo(), "COM2: " + placa.esclavo() + ": ocupado por " + este()) << "by its lock";
  }
  linea.cerrar();
  // Another program of the same user, which has the line for itself and asks for no lock.
  ASSERT_EQ(::ioctl(testigo, TIOCEXCL), 0);
  const pid_t otro = ::fork();
  if (otro == 0) {
    if (::setuid(::geteuid() == 0 ? 65534 : ::geteuid()) != 0 || ::prctl(PR_SET_DUMPABLE, 1) != 0) ::_exit(1);
    ::pause();
  }
  {
    const sin_privilegios guarda;
    const auto limite = steady_clock::now() + 5s;
    do EXPECT_FALSE(segunda.abrir(2, {}));
    while (segunda.motivo().ends_with("otro programa") && steady_clock::now() < limite);
    EXPECT_EQ(segunda.motivo(), "COM2: " + placa.esclavo() + ": ocupado por " + este(otro)) << "by its descriptors";
  }
  ::kill(otro, SIGKILL);
  ::waitpid(otro, nullptr, 0);
}

}  // namespace
}  // namespace morvane
