#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "job/desenlace.h"
#include "job/intercambio.h"

namespace morvane::job {

/// The status byte.
struct estado_chip {
  std::uint8_t valor = 0;
  bool ocupado() const { return (valor & 0x01) != 0; }
  bool permiso() const { return (valor & 0x02) != 0; }
  bool configurado() const { return (valor & 0x20) != 0; }
  bool borrado_fallido() const { return (valor & 0x40) != 0; }
  bool protegido() const { return (valor & 0x80) != 0; }
};

/// A talk with the chip that says nothing that it does not know. A command in doubt makes the line doubtful: it is left
/// until it is quiet, the chip closed and opened, and its status looked at. Then reading commands go out again, three
/// times at most; a word to write is read first.
///
/// Each routine that gives False, or nothing, has noted why in `por_que`; then nothing but `cerrar` may follow.
class conversacion {
 public:
  explicit conversacion(const puesto& p) : hilo_(p) {}

  /// Opens the chip and looks at its status; waits for the end of an erase that still runs. Expects nothing of the
  /// line.
  bool abrir();
  /// Closes the chip, as far as that can be done. True if the chip has confirmed it.
  bool cerrar();

  /// The status, asked for now.
  std::optional<estado_chip> mirar();
  /// What the last look at the status gave.
  estado_chip estado() const { return estado_; }

  /// Brings the chip to where a flash command works: configuration and write enable, both confirmed by the status
  /// unless it is only the write enable that was used up.
  bool preparar();

  /// The sum of a range in a shape that the protocol fixes: a whole block, or 1,025 bytes from 0. The chip is prepared
  /// before.
  std::optional<examen> examinar(std::int32_t dir, std::int32_t cuantos);
  /// The same from any address, asked once. Nothing if the board does not take that shape, too: then `forma_libre` is
  /// False from now on, and `por_que` still says done. If the line is in doubt, `dudas` has gone up.
  std::optional<examen> examinar_donde_sea(std::int32_t dir, std::int32_t cuantos);
  bool forma_libre() const { return forma_libre_; }
  void abandonar_forma();

  /// Reads `destino.size()` bytes from `dir`, in as few commands as the board takes. No two in a row have replies of
  /// the same length, so that a reply out of its turn shows.
  bool leer(std::int32_t dir, std::span<std::uint8_t> destino);
  std::optional<std::uint32_t> leer_palabra(std::int32_t dir);

  /// Writes one word, by the rule above.
  bool grabar_palabra(std::int32_t dir, std::uint32_t palabra);
  /// Erases. True when the chip has reported the end of it without an error, or when that is not known: then `dudas`
  /// has gone up, and what the flash holds has to be looked at in any case.
  bool borrar();
  /// Sends the reset of the processor. A RESET signal is as good an answer.
  bool reiniciar();

  /// How often the line was in doubt so far. Replies of one length that came out of their turn show only when one of
  /// another length is asked for. So what a stretch of work has read counts only if this has not moved from its first
  /// command to a good `mirar` behind its last one.
  int dudas() const { return dudas_; }
  /// Runs `trabajo` until it went through without a doubt, four times at most. False if it gives False, too.
  bool en_lote(const std::function<bool()>& trabajo);

  /// False when a stop is wanted, which it notes.
  bool puede_seguir();
  /// Notes an end and gives False. The first one stays.
  bool fallar(desenlace que, motivo por, std::optional<std::int32_t> dir = {});
  const fin& por_que() const { return fin_; }
  const cuenta& gastos() const { return hilo_.gastos; }
  const puesto& lugar() const { return hilo_.lugar(); }
  void contar(suceso que, std::string_view comando = {}, std::int32_t dir = -1, char codigo = '\0');
  void empezar(fase cual, std::int64_t total = 0);
  void avanzar(std::int64_t hechos);

 private:
  contestacion pedir(const mandato& m);
  bool dudar(const mandato& m, const contestacion& c);
  bool restablecer();
  contestacion reabrir();
  bool fallar_por(const mandato& m, const contestacion& c, int veces);
  std::optional<std::string_view> pedir_lectura(const mandato& m, bool preparada, std::int32_t dir);
  bool reposar();
  bool sondear();
  bool dar_permiso();
  bool comprobar_preparado(int veces);
  std::optional<std::int32_t> leer_trozo(std::int32_t dir, std::span<std::uint8_t> destino);
  void poner_estado(std::string_view datos);

  intercambio hilo_;
  fin fin_;
  estado_chip estado_{};
  bool permiso_ = false, configurado_ = false, comprobado_ = false;
  bool forma_libre_ = true, lectura_larga_ = true, impar_ = false;
  int dudas_ = 0;
};

}  // namespace morvane::job
