#pragma once

#include <QSize>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/ventana_qt.h"

namespace morvane {

/// The windows beside the main one. Each is made when it is shown for the first time, and follows its description.
class otras_ventanas {
 public:
  /// `formas` must outlive it. The functions are those of `ventana_qt`.
  otras_ventanas(const std::vector<Form*>& formas, std::function<void()> despues,
                 std::function<void(const std::string&)> al_fallar);
  ~otras_ventanas();
  otras_ventanas(const otras_ventanas&) = delete;
  otras_ventanas& operator=(const otras_ventanas&) = delete;

  /// Shows, hides and updates them as their descriptions say; cheap when nothing has changed.
  void sincronizar();
  /// The window of `forma`; null before it was shown for the first time.
  ventana_qt* ventana_de(const Form& forma);
  /// True while a handler of any of them is running.
  bool ocupadas() const;
  /// Takes all of them off the screen.
  void ocultar();

  /// Called with each window that was made, before it is shown for the first time.
  std::function<void(const Form& forma, ventana_qt& ventana)> al_hacer;

 private:
  struct una {
    Form* forma;
    std::unique_ptr<ventana_qt> ventana;
    /// The size that it was made with, in which it appears each time that it is loaded.
    QSize inicial;
    unsigned long vistos = 0;
    int llamadas = 0;
  };
  void poner_al_dia(una& cual);

  std::vector<una> todas_;
  std::function<void()> despues_;
  std::function<void(const std::string&)> al_fallar_;
};

}  // namespace morvane
