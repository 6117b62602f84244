#include "files/texto.h"
#include "frases.h"

namespace morvane::console {

namespace {

using job::desenlace;
using job::motivo;

std::string comando(const job::fin& f) {
  return f.comando.empty() ? "un comando" : "el comando «" + f.comando + "»";
}

std::string sitio(const job::fin& f) {
  return f.direccion ? " en " + direccion(*f.direccion) : std::string();
}

std::string frase_de_linea(const job::fin& f) {
  switch (f.por) {
    case motivo::respuesta_incompleta:
      return "la línea está mal: las respuestas empiezan y no terminan";
    case motivo::suma_mala:
      return "la línea está mal: la suma de las respuestas no cuadra";
    case motivo::respuesta_doble:
      return "la línea está mal: a " + comando(f) + " llegan varias respuestas";
    case motivo::respuesta_extrana:
      return "la línea está mal: lo que llega no es respuesta a " + comando(f);
    case motivo::resets:
      return "la placa se reinicia una y otra vez";
    case motivo::sin_sosiego:
      return "la línea falla tantas veces que no se puede terminar";
    case motivo::dispositivo_perdido:
      return "el dispositivo ha desaparecido";
    default:
      return "la línea está mal: llegan caracteres que no son respuesta a nada";
  }
}

std::string frase_de_chip(const job::fin& f) {
  switch (f.por) {
    case motivo::sin_permiso:
      return "el chip no da permiso de escritura";
    case motivo::sin_configuracion:
      return "el chip no toma su configuración";
    case motivo::borrado_fallido:
      return "el chip dice que el borrado ha fallado";
    case motivo::borrado_largo:
      return "el borrado no termina";
    case motivo::borrado_incompleto:
      return "el chip dice que ha borrado, y no está borrado" + sitio(f);
    case motivo::palabra_no_grabada:
      return "el chip acepta una palabra" + sitio(f) + " y no la graba";
    case motivo::sin_proteccion:
      return "la palabra de protección está grabada, y el chip no se da por protegido";
    default:
      return "el chip no tiene lo que se ha grabado" + sitio(f);
  }
}

}  // namespace

std::string en_frase(std::string texto) {
  if (!texto.empty() && texto.front() >= 'a' && texto.front() <= 'z') {
    texto.front() = static_cast<char>(texto.front() - 'a' + 'A');
  }
  return con_punto(std::move(texto));
}

std::string con_punto(std::string texto) {
  if (!texto.ends_with('.') && !texto.ends_with('?')) texto += '.';
  return texto;
}

std::string direccion(std::int32_t dir) {
  constexpr std::size_t cifras = 6;
  return hex(static_cast<std::uint32_t>(dir), cifras);
}

std::string rango(tramo t) {
  if (t.largo() <= 1) return direccion(t.desde);
  return direccion(t.desde) + " a " + direccion(t.hasta - 1);
}

std::string_view significado_de(char codigo) {
  constexpr std::array<std::string_view, 9> significados = {"rechazado",
                                                            "comando demasiado largo",
                                                            "suma mala",
                                                            "comando demasiado corto",
                                                            "comando mal formado",
                                                            "el chip no toma este comando",
                                                            "el EzPort no está activo",
                                                            "no implementado",
                                                            "parámetro fuera de rango"};
  if (codigo < '1' || codigo > '9') return "código desconocido";
  return significados[static_cast<std::size_t>(codigo - '1')];
}

std::string frase(const job::fin& f) {
  switch (f.que) {
    case desenlace::silencio:
      if (f.por == motivo::comando_sin_respuesta) {
        return en_frase("la placa responde, pero no a " + comando(f) + sitio(f));
      }
      return "La placa no responde: no llega nada.";
    case desenlace::linea:
      return en_frase(frase_de_linea(f) + (f.direccion ? "; iba por " + direccion(*f.direccion) : ""));
    case desenlace::rechazada:
      if (f.por == motivo::chip_mudo) return "El chip no contesta a la placa: su estado se lee FF.";
      return en_frase("la placa rechaza " + comando(f) + sitio(f) + " con el código " + std::string(1, f.codigo) +
                      ": " + std::string(significado_de(f.codigo)));
    case desenlace::protegida:
      return "El chip está protegido contra la lectura.";
    case desenlace::distinta:
      return en_frase("el chip tiene otra cosa" + sitio(f));
    case desenlace::chip:
      return en_frase(frase_de_chip(f));
    case desenlace::archivo:
      return "En el archivo no hay nada que grabar.";
    case desenlace::detenido:
      return "Detenido.";
    default:
      return "Hecho.";
  }
}

std::string remedio(const job::fin& f) {
  switch (f.que) {
    case desenlace::silencio:
      if (f.por == motivo::comando_sin_respuesta) return "Apague y encienda la placa y repita la orden.";
      return "Compruebe la alimentación, el cable y la velocidad, y que el puerto sea el suyo: «morvane-cli puertos».";
    case desenlace::linea:
      if (f.por == motivo::dispositivo_perdido) return "Conecte el adaptador y repita la orden.";
      if (f.por == motivo::resets) return "Compruebe la alimentación de la placa.";
      return "Compruebe la velocidad, el cable y su masa, y que nadie más escriba en la línea.";
    case desenlace::rechazada:
      if (f.por == motivo::chip_mudo) return "Compruebe la conexión entre la placa y el chip, y que esté alimentado.";
      return "Apague y encienda la placa y repita la orden.";
    case desenlace::protegida:
      return "«morvane-cli borrar» quita la protección, y con ella todo lo grabado.";
    case desenlace::chip:
      return "Repita la orden; si vuelve a pasar, el chip no sirve.";
    default:
      return {};
  }
}

}  // namespace morvane::console
