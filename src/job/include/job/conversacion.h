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

  /// Opens the chip and looks at its status; with `sin_prisa` waits for the end of an erase that still runs. Expects
  /// nothing of the line.
  bool abrir(bool sin_prisa = true);
  /// Closes the chip and opens it, which a protection needs to begin or to end, and looks at its status.
  bool abrir_de_nuevo();
  /// Closes the chip, as far as that can be done. True if the chip has confirmed it.
  bool cerrar();

  /// The status, asked for now.
  std::optional<estado_chip> mirar();
  /// What the last look at the status gave.
  estado_chip estado() const { return estado_; }

  /// Brings the chip to where a flash command works: configuration and write enable, both confirmed by the status
  /// unless it is only the write enable that was used up.
  bool preparar();
  /// The same, with the write enable sent once more in any case, as in front of each word.
  bool permitir();

  /// The sum of a range in a shape that the protocol fixes: a whole block, or 1,025 bytes from 0. The chip is prepared
  /// before.
  std::optional<examen> examinar(std::int32_t dir, std::int32_t cuantos);
  /// The same from any address, asked once. Nothing if the board does not take that shape, too: then `forma_libre` is
  /// False from now on, and `por_que` still says done. If the line is in doubt, `dudas` has gone up.
  std::optional<examen> examinar_donde_sea(std::int32_t dir, std::int32_t cuantos);
  bool forma_libre() const { return forma_libre_; }
  void abandonar_forma();

  /// Reads `destino.size()` bytes of the flash from `dir`, in as few commands as the board takes. No two in a row have
  /// replies of the same length, so that a reply out of its turn shows.
  bool leer(std::int32_t dir, std::span<std::uint8_t> destino);
  std::optional<std::uint32_t> leer_palabra(std::int32_t dir);

  /// Writes one word, by the rule above.
  bool grabar_palabra(std::int32_t dir, std::uint32_t palabra);
  /// Erases, for the `veces`-th time. True when the chip has reported the end of it without an error, or when that is
  /// not known: then `dudas` has gone up, and what the flash holds has to be looked at in any case.
  bool borrar(int veces);
  /// Sends the reset of the processor. A RESET signal is as good an answer.
  bool reiniciar();

  /// How often the line was in doubt so far. Replies of one length that came out of their turn show only when one of
  /// another length is asked for. So what a stretch of work has read counts only if this has not moved from its first
  /// command to a good `mirar` behind its last one.
  int dudas() const { return dudas_; }
  /// Runs `trabajo`, and looks at the status behind it, until that went through without a doubt; four times at most.
  /// Gives what `trabajo` gave then; False if the talk has failed.
  bool en_lote(const std::function<bool()>& trabajo);

  /// False when a stop is wanted, which it notes.
  bool puede_seguir();
  /// Notes an end and gives False. The first one stays.
  bool fallar(desenlace que, motivo por, std::optional<std::int32_t> dir = {});
  /// Takes back the end that has been noted if it is `que`. The talk may go on then.
  bool perdonar(desenlace que);
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
  bool reposar();
  bool fallar_por(const mandato& m, const contestacion& c, int veces);
  void poner_estado(std::string_view datos);
  bool dar(const mandato& m, int veces);
  bool dar_pasos(int veces);
  bool puede_repetir(const mandato& m, const contestacion& c, int veces, std::int32_t dir);
  static std::optional<examen> leer_examen(const contestacion& c, std::int32_t cuantos);
  tramo proxima_lectura(std::int32_t dir, std::size_t quedan);
  std::optional<std::size_t> leer_trozo(std::int32_t dir, std::span<std::uint8_t> destino);
  bool sondear();

  intercambio hilo_;
  fin fin_;
  estado_chip estado_{};
  /// What the chip is known to have of what a flash command needs.
  bool permiso_ = false, configurado_ = false;
  bool forma_libre_ = true, lectura_larga_ = true;
  /// How often a reading was not taken whose length is not fixed.
  int lecturas_rehusadas_ = 0;
  /// A word in hand is looked at to the end, stop or no stop.
  bool termina_palabra_ = false;
  std::int32_t ultima_lectura_ = 0;
  int dudas_ = 0;
};

}  // namespace morvane::job
