#include "desktop/otras_ventanas.h"

#include <algorithm>

namespace morvane {

otras_ventanas::otras_ventanas(const std::vector<Form*>& formas, std::function<void()> despues,
                               std::function<void(const std::string&)> al_fallar)
    : despues_(std::move(despues)), al_fallar_(std::move(al_fallar)) {
  for (Form* forma : formas) todas_.push_back({forma, nullptr, {}});
}

otras_ventanas::~otras_ventanas() = default;

void otras_ventanas::sincronizar() {
  for (una& cual : todas_) {
    if (cual.vistos == cual.forma->cambios.valor()) continue;
    cual.vistos = cual.forma->cambios.valor();
    poner_al_dia(cual);
  }
}

void otras_ventanas::poner_al_dia(una& cual) {
  Form* forma = cual.forma;
  if (!cual.ventana) {
    if (!forma->Visible) return;
    cual.ventana = std::make_unique<ventana_qt>(*forma, despues_);
    cual.inicial = cual.ventana->size();
    cual.ventana->al_fallar = al_fallar_;
    cual.ventana->puede_cerrarse = [forma] {
      forma->Unload();
      return true;
    };
    if (al_hacer) al_hacer(*forma, *cual.ventana);
  }
  cual.ventana->sincronizar();
  if (forma->Visible && cual.ventana->isHidden() && !forma->fija) cual.ventana->resize(cual.inicial);
  cual.ventana->setVisible(forma->Visible);
  if (forma->Visible && cual.llamadas != forma->llamadas) {
    cual.ventana->setWindowState(cual.ventana->windowState() & ~Qt::WindowMinimized);
    cual.ventana->raise();
    cual.ventana->activateWindow();
  }
  cual.llamadas = forma->llamadas;
}

ventana_qt* otras_ventanas::ventana_de(const Form& forma) {
  const auto cual = std::ranges::find(todas_, &forma, &una::forma);
  return cual == todas_.end() ? nullptr : cual->ventana.get();
}

bool otras_ventanas::ocupadas() const {
  return std::ranges::any_of(todas_, [](const una& cual) { return cual.ventana && cual.ventana->ocupada(); });
}

void otras_ventanas::ocultar() {
  for (una& cual : todas_) {
    if (cual.ventana) cual.ventana->hide();
  }
}

}  // namespace morvane
