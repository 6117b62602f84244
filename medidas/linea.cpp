// The program in its window, and a loop that does the least for the same frames, in turns over the same line.
//
// Usage: linea DIRECTORY grabar|leer BLOCKS FRAMES [pasadas]. DIRECTORY is a program directory whose COM1 is a board.
// Each block programs FRAMES words, or reads FRAMES times 32 bytes. Prints a line for each block, "p" or "d" and its
// time in nanoseconds; with `pasadas` the bare loop is left out, and a line for each stretch between two passes of the
// pump above 100 µs is followed by one with the number of all.

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "desktop/programa.h"
#include "desnudo.h"
#include "files/texto.h"
#include "flash/bloque.h"
#include "flash/grabar.h"
#include "flash/habilitar.h"
#include "flash/leer.h"
#include "link/envio.h"
#include "link/esperas.h"
#include "link/puerto.h"
#include "serial/tramas.h"

using namespace morvane;

namespace {

constexpr std::int32_t bytes_palabra = 4, bytes_bloque = 32;

std::int64_t nanosegundos() {
  return std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds{1};
}

std::string trama(const std::string& comando) {
  return STX + comando + suma_comprobacion(comando) + ETX;
}

std::uint8_t muestra(std::int32_t dir) {
  return static_cast<std::uint8_t>(dir * 37 + (dir >> 8));
}

struct encargo {
  bool grabar;
  int bloques, tramas;
};

/// The frames of a block as the program sends them.
std::vector<std::string> tramas_de(const encargo& que) {
  std::vector<std::string> todas;
  for (std::int32_t i = 0; i < que.tramas; ++i) {
    if (!que.grabar) {
      todas.push_back(trama(comando_de_lectura(std::int64_t{i} * bytes_bloque, "20")));
      continue;
    }
    std::string palabra = "g" + hex(static_cast<std::uint32_t>(i * bytes_palabra), 6);
    for (int k = 0; k < bytes_palabra; ++k) anadir_hex(palabra, muestra(i * bytes_palabra + k), 2);
    todas.push_back(trama("a"));
    todas.push_back(trama(palabra));
  }
  return todas;
}

/// Programs or reads a block with the program's own routines; gives the time that took.
std::int64_t con_el_programa(frm_principal& f, const encargo& que) {
  enlace& e = f.link;
  if (!abrir_puerto(e)) throw std::runtime_error("COM1 could not be opened");
  paso(e, "A");
  habilitar_flash_reset(e);
  const std::int64_t inicio = nanosegundos();
  if (que.grabar) {
    grabar_flash(e, f.v, f.avance);
  } else {
    // One block more is asked for than the range has.
    leer_flash(e, f.v, f.avance, 0, (que.tramas - 1) * bytes_bloque);
  }
  const std::int64_t tiempo = nanosegundos() - inicio;
  paso(e, "D");
  const bool bien = puede_seguir(e) && e.codigo_respuesta == '0';
  cerrar_puerto(e);
  if (!bien) throw std::runtime_error("a block of the program has failed");
  return tiempo;
}

std::int64_t desnudo(const std::string& puerto, const std::vector<std::string>& tramas) {
  medidas::desnudo d(puerto);
  d.enviar({trama("A"), trama("a"), trama("c"), trama("d2E"), trama("c")});
  const std::int64_t inicio = nanosegundos();
  const bool bien = d.enviar(tramas)[1] == '0';
  const std::int64_t tiempo = nanosegundos() - inicio;
  d.enviar({trama("D")});
  if (!bien) throw std::runtime_error("a block of the bare loop has failed");
  return tiempo;
}

void preparar(frm_principal& f, const encargo& que) {
  const std::int32_t bytes = que.tramas * bytes_palabra;
  for (std::int32_t i = 0; que.grabar && i < bytes; ++i) poner_byte(f.v, i, muestra(i));
}

/// First one, then the other, the next time the other way round.
void por_turnos(frm_principal& f, const std::string& puerto, const encargo& que) {
  const std::vector<std::string> tramas = tramas_de(que);
  for (int i = 0; i < que.bloques; ++i) {
    const bool programa = (i + 1) / 2 % 2 == 0;
    const std::int64_t tiempo = programa ? con_el_programa(f, que) : desnudo(puerto, tramas);
    std::printf("%c %lld\n", programa ? 'p' : 'd', static_cast<long long>(tiempo));
  }
}

/// What the program runs on.
plataforma_qt& escritorio_de(programa& p) {
  return dynamic_cast<plataforma_qt&>(p.principal().plat);
}

void mirar_pasadas(programa& p, const encargo& que) {
  constexpr std::int64_t digno_de_mencion = 100'000;
  std::vector<std::int64_t> largas;
  std::int64_t antes = 0, todas = 0;
  auto& pasada = escritorio_de(p).sincronizar;
  pasada = [&, propia = pasada] {
    const std::int64_t ahora = nanosegundos();
    if (antes != 0 && ahora - antes > digno_de_mencion) largas.push_back(ahora - antes);
    antes = ahora;
    ++todas;
    propia();
  };
  for (int i = 0; i < que.bloques; ++i) {
    antes = 0;
    con_el_programa(p.principal(), que);
  }
  for (const std::int64_t una : largas) std::printf("l %lld\n", static_cast<long long>(una));
  std::printf("n %lld\n", static_cast<long long>(todas));
}

int correr(int cuantos, char** argumentos) {
  QApplication aplicacion(cuantos, argumentos);
  if (cuantos < 5) throw std::runtime_error("linea DIRECTORY grabar|leer BLOCKS FRAMES [pasadas]");
  const encargo que{std::string(argumentos[2]) == "grabar", std::atoi(argumentos[3]), std::atoi(argumentos[4])};
  preparar_aplicacion();
  const std::filesystem::path directorio = std::filesystem::canonical(argumentos[1]);
  programa p(directorio);
  p.empezar();
  QCoreApplication::processEvents();
  // From now on boxes end at once.
  escritorio_de(p).abandonar_cajas();
  preparar(p.principal(), que);
  if (cuantos > 5) {
    mirar_pasadas(p, que);
  } else {
    por_turnos(p.principal(), directorio / "puertos/COM1", que);
  }
  return 0;
}

}  // namespace

int main(int cuantos, char** argumentos) {
  try {
    return correr(cuantos, argumentos);
  } catch (const std::exception& fallo) {
    std::fprintf(stderr, "linea: %s\n", fallo.what());
    return 1;
  }
}
