// How long windows take from the click to the painted window, and what the largest one holds.
//
// Usage: ventanas DIRECTORY TIMES. DIRECTORY is a program directory without a port. Each time the program is made anew.
// Prints lines of a name and nanoseconds: `principal` for the main window, `volcado` for the dump of a full image,
// `comparacion` for the comparison of two buffers that differ everywhere; and `memoria`, the KiB by which the last one
// made the process grow.

#include <QAction>
#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include "desktop/programa.h"
#include "desktop/ventana_qt.h"

using namespace morvane;

namespace {

std::int64_t nanosegundos() {
  return std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds{1};
}

long memoria() {
  std::ifstream estado("/proc/self/status");
  for (std::string linea; std::getline(estado, linea);) {
    if (linea.starts_with("VmRSS:")) return std::atol(linea.c_str() + 6);
  }
  return 0;
}

/// Sees paint events of what stands in windows of a certain title.
class pintado final : public QObject {
 public:
  explicit pintado(QString titulo) : titulo_(std::move(titulo)) { qApp->installEventFilter(this); }
  bool visto() const { return visto_; }

 protected:
  bool eventFilter(QObject* quien, QEvent* suceso) override {
    auto* widget = suceso->type() == QEvent::Paint ? qobject_cast<QWidget*>(quien) : nullptr;
    if (widget != nullptr && widget->window()->windowTitle() == titulo_) visto_ = true;
    return false;
  }

 private:
  const QString titulo_;
  bool visto_ = false;
};

/// Time until a window of that title has been painted, after `hacer`.
std::int64_t hasta_pintar(const QString& titulo, const std::function<void()>& hacer) {
  QCoreApplication::processEvents();
  const pintado testigo(titulo);
  const std::int64_t inicio = nanosegundos();
  hacer();
  while (!testigo.visto()) {
    QCoreApplication::processEvents();
    if (nanosegundos() - inicio > 10'000'000'000) throw std::runtime_error("never painted: " + titulo.toStdString());
  }
  return nanosegundos() - inicio;
}

void anotar(const char* que, std::int64_t cuanto) {
  std::printf("%s %lld\n", que, static_cast<long long>(cuanto));
}

void llenar(Variables_grab& v) {
  for (std::int32_t dir = 0; dir < total_flash; ++dir) poner_byte(v, dir, static_cast<std::uint8_t>(dir * 37));
  for (std::size_t i = 0; i < v.buffer_entrada.size(); ++i) {
    v.buffer_entrada[i] = static_cast<std::uint8_t>(~v.buffer_salida[i]);
  }
}

void una_vez(const std::filesystem::path& directorio) {
  programa p(directorio);
  // Boxes end at once.
  dynamic_cast<plataforma_qt&>(p.principal().plat).abandonar_cajas();
  Form& principal = p.principal().ventana;
  std::unique_ptr<ventana_qt> otra;
  anotar("principal", hasta_pintar(QString::fromStdString(principal.Caption), [&] {
           otra = std::make_unique<ventana_qt>(principal, nullptr);
           otra->show();
         }));
  otra.reset();
  p.ventana().show();
  llenar(p.principal().v);
  const auto pulsar = [&](const char* entrada) { p.ventana().findChild<QAction*>(entrada)->trigger(); };
  anotar("volcado", hasta_pintar("Buffer de Salida", [&] { pulsar("men_ver_B_S"); }));
  const long antes = memoria();
  anotar("comparacion", hasta_pintar("Resultado Comparación de buffer", [&] { pulsar("men_comparar"); }));
  anotar("memoria", memoria() - antes);
}

int correr(int cuantos, char** argumentos) {
  QApplication aplicacion(cuantos, argumentos);
  if (cuantos < 3) throw std::runtime_error("ventanas DIRECTORY TIMES");
  preparar_aplicacion();
  const std::filesystem::path directorio = std::filesystem::canonical(argumentos[1]);
  for (int i = 0; i < std::atoi(argumentos[2]); ++i) una_vez(directorio);
  return 0;
}

}  // namespace

int main(int cuantos, char** argumentos) {
  try {
    return correr(cuantos, argumentos);
  } catch (const std::exception& fallo) {
    std::fprintf(stderr, "ventanas: %s\n", fallo.what());
    return 1;
  }
}
