#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "job/mandato.h"
#include "job/puesto.h"

namespace morvane::job {

/// What became of a command.
enum class clase {
  /// The one frame that came since the command, with a good sum, code 0 and the length that the command has.
  buena,
  /// The same with a digit from 1 to 9 and nothing behind it.
  rechazada,
  /// A RESET signal instead.
  reset,
  /// Nothing came.
  silencio,
  /// A frame did not end; its sum is wrong; there is more than one; characters stand outside of it; it is no reply to
  /// this command.
  incompleta,
  suma_mala,
  doble,
  ruido,
  extrana,
  /// The status is FF, which is none. (Given by `conversacion` alone.)
  mudo,
  /// The device is gone.
  perdida,
  /// A stop of level 2 came.
  detenida,
};

struct contestacion {
  clase que = clase::silencio;
  /// The digit of a refusal.
  char codigo = '\0';
  /// What stands between code and checksum of a good reply. Holds until the next command.
  std::string_view datos{};
  bool buena() const { return que == clase::buena; }
};

/// Commands and replies by the letter: nothing is repeated and nothing forgiven.
class intercambio {
 public:
  explicit intercambio(const puesto& p) : p_(p), ultimo_(p.mundo.ahora()) {}

  /// Sends `m` and waits for its reply. If characters are waiting that nobody asked for, nothing is sent and the line
  /// is in doubt.
  contestacion pedir(const mandato& m);
  /// Takes and drops what comes until nothing has come for a while. False if that does not happen in time, if the
  /// device is gone, or at a stop of level 2.
  bool aquietar();

  const puesto& lugar() const { return p_; }
  cuenta gastos;
  /// When the last character came, or when all this began.
  tiempo ultimo() const { return ultimo_; }
  tiempo ahora() const { return p_.mundo.ahora(); }

 private:
  std::size_t tomar();
  /// The device is gone, which is told once.
  bool perdida();
  contestacion esperar(const mandato& m, tiempo limite);
  contestacion juzgar(const mandato& m) const;
  contestacion sin_final() const;
  tiempo en_la_linea(std::int64_t caracteres) const;
  void anotar_entrada();

  puesto p_;
  tiempo ultimo_;
  std::string entrada_;
  std::array<char, 1024> trozo_{};
  bool contada_ = false;
};

}  // namespace morvane::job
