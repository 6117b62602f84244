#include "barra.h"
#include "frases/numeros.h"
#include "ordenes.h"
#include "serial/parametros_linea.h"

namespace morvane::console {

namespace {

/// In microseconds where that says more.
std::string milisegundos(job::tiempo t) {
  constexpr job::tiempo un_milisegundo{1000};
  if (t < un_milisegundo) return std::to_string(t.count()) + " µs";
  return decimal(static_cast<double>(t.count()) / static_cast<double>(un_milisegundo.count())) + " ms";
}

/// A reply that comes so much later than its last character is being held back.
constexpr job::tiempo retencion{4000};

/// What holds the replies back, and what can be done about it; nothing where nothing does.
std::string consejo(job::tiempo de_mas, const std::string& dispositivo) {
  if (de_mas < retencion) return {};
  const std::string nombre = dispositivo.substr(dispositivo.rfind('/') + 1);
  const std::string cual = nombre.starts_with("ttyUSB") ? nombre : "ttyUSB0";
  return "Cada respuesta llega " + milisegundos(de_mas) +
         " después de su último carácter: el adaptador la retiene, o la placa tarda. Un adaptador FTDI lo hace hasta "
         "16 ms; se "
         "le baja a 1 con: echo 1 | sudo tee /sys/bus/usb-serial/devices/" +
         cual + "/latency_timer";
}

void poner(cierre& c, const job::medida& m, const trabajo_hecho& t) {
  const int velocidad = t.puerto.como.velocidad;
  c.datos["medida"] = {
      {"muestras", m.muestras},          {"minimo_us", m.minimo.count()},
      {"medio_us", m.medio.count()},     {"maximo_us", m.maximo.count()},
      {"lectura_us", m.lectura.count()}, {"por_caracter_us", m.por_caracter.count()},
      {"palabra_us", m.palabra.count()}, {"flash_entera_s", std::chrono::duration<double>(m.flash_entera).count()}};
  c.detalle.push_back("Mirar el estado (12 caracteres): de " + milisegundos(m.minimo) + " a " + milisegundos(m.maximo));
  c.detalle.push_back("Leer 32 bytes (82 caracteres): " + milisegundos(m.lectura));
  c.detalle.push_back("Grabar una palabra (34 caracteres): " + milisegundos(m.palabra));
  const double en_la_linea = velocidad > 0 ? bits_por_caracter * 1e6 / velocidad : 0;
  c.detalle.push_back("Por carácter: " + std::to_string(m.por_caracter.count()) + " µs; a " +
                      std::to_string(velocidad) + " baudios son " + decimal(en_la_linea) + " µs en la línea");
  const job::tiempo de_mas = m.medio - job::tiempo{static_cast<std::int64_t>(12 * en_la_linea)};
  c.datos["medida"]["retencion_us"] = de_mas.count();
  const std::string dicho = consejo(de_mas, t.dispositivo.string());
  if (!dicho.empty()) c.detalle.push_back(dicho);
}

}  // namespace

cierre hacer_medir(const llamada& ll) {
  const trabajo_hecho t = con_placa(ll, [](const job::puesto& p) { return job::medir(p); });
  if (!t.r.medida) return cierre_de(ll, t, {});
  const job::medida& m = *t.r.medida;
  cierre c = cierre_de(ll, t,
                       "Un intercambio cuesta " + milisegundos(m.medio) + ", y grabar una memoria entera llevaría " +
                           duracion(m.flash_entera) + ".");
  if (c.bien()) poner(c, m, t);
  return c;
}

}  // namespace morvane::console
