#include <algorithm>

#include "barra.h"
#include "files/texto.h"
#include "frases.h"
#include "informe.h"

namespace morvane::console {

namespace {

constexpr job::tiempo entre_dibujos = std::chrono::milliseconds{100};

constexpr std::string_view rojo = "\x1b[31m", verde = "\x1b[32m", amarillo = "\x1b[33m", normal = "\x1b[0m";

/// What comes out of a file's name or off the wire may not command the terminal.
std::string visible(std::string texto) {
  for (char& c : texto) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = '?';
  }
  return texto;
}

class para_persona final : public informe {
 public:
  para_persona(exterior& fuera, bool callado)
      : fuera_(fuera), callado_(callado), dibuja_(!callado && fuera.normal().terminal) {}

  void empieza(job::fase cual, std::int64_t total) override {
    fase_ = cual;
    total_ = total;
    empezo_ = fuera_.mundo().ahora();
    dibujar(0);
  }

  void avanza(std::int64_t hechos) override {
    if (fuera_.mundo().ahora() - ultimo_ >= entre_dibujos) dibujar(hechos);
  }

  /// Only what makes a person wait is worth a word.
  void ocurre(job::suceso que, std::string_view /*comando*/, std::int32_t direccion, char codigo) override {
    if (!dibuja_) return;
    quitar_barra();
    std::string t = frase(que, codigo);
    if (direccion >= 0) t += " (" + hex(static_cast<std::uint32_t>(direccion), 6) + ")";
    fuera_.normal().escribir("  " + visible(std::move(t)) + "\n");
    dibujar(hechos_);
  }

  void duda(std::string_view /*clase*/, const std::string& texto, const json& /*hechos*/) override {
    if (callado_) return;
    quitar_barra();
    salida& s = fuera_.errores();
    s.escribir(pintado(s, amarillo, "Duda:") + " " + visible(texto) + "\n");
  }

  void fin(std::string_view orden, int /*codigo*/, const cierre& fin) override {
    quitar_barra();
    if (fin.bien()) return bueno(fin);
    salida& s = fuera_.errores();
    std::string t = "morvane-cli" + (orden.empty() ? "" : " " + std::string(orden)) + ": ";
    t = pintado(s, rojo, t) + visible(fin.texto) + "\n";
    for (const std::string& d : fin.detalle) t += "  " + visible(d) + "\n";
    if (!fin.remedio.empty()) t += "  " + visible(fin.remedio) + "\n";
    s.escribir(t);
  }

 private:
  void bueno(const cierre& fin) {
    if (callado_) return;
    salida& s = fuera_.normal();
    std::string t = s.terminal ? pintado(s, verde, visible(fin.texto)) : visible(fin.texto);
    t += "\n";
    for (const std::string& d : fin.detalle) t += visible(d) + "\n";
    s.escribir(t);
  }

  static std::string pintado(const salida& s, std::string_view color, const std::string& t) {
    return s.color ? std::string(color).append(t).append(normal) : t;
  }

  void dibujar(std::int64_t hechos) {
    ultimo_ = fuera_.mundo().ahora();
    hechos_ = hechos;
    if (!dibuja_ || !fuera_.normal().lista()) return;
    const int ancho = fuera_.normal().ancho - 1;
    poner(texto_de_barra(nombre_para_persona(fase_), hechos, total_, ultimo_ - empezo_, ancho));
  }

  /// A shorter line goes over a longer one.
  void poner(const std::string& texto) {
    const std::size_t largo = longitud(texto);
    fuera_.normal().escribir("\r" + texto + std::string(dibujado_ - std::min(dibujado_, largo), ' '));
    dibujado_ = largo;
  }

  void quitar_barra() {
    if (dibujado_ == 0) return;
    poner("");
    fuera_.normal().escribir("\r");
  }

  exterior& fuera_;
  const bool callado_, dibuja_;
  job::fase fase_ = job::fase::abrir;
  job::tiempo empezo_{0}, ultimo_{0};
  std::int64_t total_ = 0, hechos_ = 0;
  std::size_t dibujado_ = 0;
};

}  // namespace

std::unique_ptr<informe> informe_persona(exterior& fuera, bool callado) {
  return std::make_unique<para_persona>(fuera, callado);
}

}  // namespace morvane::console
