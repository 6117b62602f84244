#pragma once

#include <QObject>
#include <functional>

#include "platform/reloj.h"

class QKeyEvent;

namespace morvane {

/// Keeps keys from doing what nobody meant. A key that is held down starts nothing again, whatever it is called by
/// those who deliver it: behind a box a repeat comes like a fresh press. A box takes no key for its first half second
/// and none that is held; and one that came while text was being typed takes no bare letter at all, and no key before
/// the typing has paused for as long. Looks at the keys of the whole application, before any shortcut, for as long as
/// it lives.
class teclado final : public QObject {
 public:
  /// `ahora` is a clock that does not go back. There must be an application.
  explicit teclado(std::function<instante()> ahora);

  /// A box is about to be shown, and has gone. No other one is shown in between.
  void llega_caja();
  void se_va_caja() { caja_ = {}; }

  bool eventFilter(QObject* quien, QEvent* suceso) override;

 private:
  struct caja_en_vista {
    bool abierta = false, entre_letras = false;
    /// Before this nothing is taken.
    instante hasta{0};
  };
  bool repetida(const QKeyEvent& tecla) const;
  bool detiene_la_caja(const QKeyEvent& tecla);
  void soltada(const QKeyEvent& tecla);

  std::function<instante()> ahora_;
  /// The key that was released last, and when.
  quint32 suelta_ = 0;
  quint64 suelta_desde_ = 0;
  caja_en_vista caja_;
};

}  // namespace morvane
