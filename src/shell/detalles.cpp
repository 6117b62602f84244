#include "shell/detalles.h"

#include <array>

#include "files/texto.h"
#include "frases/frases.h"
#include "frases/numeros.h"

namespace morvane {

namespace {

constexpr const char *mal = "✗ Falla: ", *ojo = "⚠ Atención: ", *bien = "✓ Correcto: ";

std::string direccion(std::int32_t dir) {
  return hex(static_cast<std::uint32_t>(dir), 6);
}

tramo donde_de(const hechos& h) {
  return {h.desde, h.hasta};
}

/// What a command does, by its first character.
std::string nombre_de_comando(char cual) {
  switch (cual) {
    case 'A':
      return "abrir el chip";
    case 'D':
      return "cerrar el chip";
    case 'a':
      return "permitir la escritura";
    case 'c':
      return "leer el estado";
    case 'd':
      return "configurar el reloj de la flash";
    case 'i':
      return "borrar la flash";
    case 'j':
      return "reiniciar el procesador";
    case 'g':
      return "escribir una palabra";
    case 'e':
      return "leer";
    case 'C':
      return "examinar un bloque";
    default:
      return "ninguno";
  }
}

std::string comando(const enlace& e) {
  return std::string("«") + e.ultimo_comando + "» (" + nombre_de_comando(e.ultimo_comando) + ")";
}

/// Port, what is at it, and speed.
std::string puerto(const frm_principal& f) {
  const std::string que = f.describir_puerto ? f.describir_puerto() : f.link.valores.puerto;
  return que + ", a " + f.link.valores.velocidad + " baudios";
}

std::string sin_respuesta(const frm_principal& f) {
  const enlace& e = f.link;
  const std::uint64_t llegados = e.control_serie.recibidos() - e.envio.recibidos_antes;
  std::string texto = mal + ("no hay respuesta a " + comando(e)) + "\n" + puerto(f) + "\n";
  if (llegados > 0) {
    return texto + "Han llegado " + cuantos(static_cast<std::int64_t>(llegados), "carácter", "caracteres") +
           " y ninguna respuesta entera: compruebe que la velocidad es la de la placa";
  }
  texto += "No ha llegado ningún carácter: compruebe el cable, la alimentación y que este es el puerto de la placa";
  if (e.control_serie.recibidos() > 0) return texto;
  return texto + "\nSin placa, la simulada se pone en Opciones, Puerto serial";
}

std::string puerto_cerrado(const frm_principal& f) {
  return f.link.fallo_de_puerto ? mal + frase(*f.link.fallo_de_puerto) : std::string();
}

std::string llegado(const enlace& e) {
  constexpr std::size_t maximo = 40;
  std::string texto;
  for (const char c : e.respuesta.substr(0, maximo)) texto += c < ' ' || c > '~' ? '?' : c;
  return "«" + texto + (e.respuesta.size() > maximo ? "…»" : "»");
}

std::string rechazo(const frm_principal& f, char codigo) {
  std::string texto = mal + ("rechazado con el código " + std::string(1, codigo)) + " el comando " + comando(f.link);
  const tramo cabeza = f.avance.mapa.cabeza();
  if (!cabeza.vacio()) texto += ", en " + direcciones(cabeza);
  return texto;
}

std::string por_que(const operacion_en_curso& o) {
  if (!o.interrumpida) return "no llegó la respuesta a un comando";
  switch (o.por) {
    case rotura::abandonada:
      return "se ha dejado de esperar";
    case rotura::reanudada:
      return "la placa no contestó y se ha vuelto a abrir el chip";
    case rotura::perdida:
      return "el dispositivo ha desaparecido";
    case rotura::suma:
      return "una respuesta llegó dañada";
    case rotura::ajena:
      return "lo que ha llegado no contesta a lo que se envió";
    case rotura::reset:
      return "la placa o el chip se han reiniciado";
    case rotura::rechazos:
      return "un rechazo tras otro";
    case rotura::cierre:
      return "se ha pedido cerrar el programa";
    case rotura::ninguna:
      break;
  }
  return "la línea ha fallado";
}

/// Of an operation that was broken off: where, and what the chip holds now.
std::string lo_que_queda(const labor& m) {
  switch (m.cual) {
    case labor::clase::borrar:
      if (m.donde.vacio()) return "No se había empezado a borrar: la flash no se ha tocado";
      return "Se estaba borrando: no se sabe qué hay en la flash, y hay que borrarla otra vez";
    case labor::clase::grabar:
      if (m.donde.vacio()) return "Se iba a grabar: no se sabe si se ha escrito algo";
      return "Se estaba grabando, en " + direccion(m.donde.hasta) + ": la flash está a medio grabar";
    case labor::clase::leer:
      return "Se estaba leyendo, en " + direccion(m.donde.hasta) + ": la flash no se ha tocado";
    case labor::clase::verificar:
    case labor::clase::examinar:
      return "Se estaba verificando, en " + direccion(m.donde.hasta) + ": la flash no se ha tocado, y de ella no se " +
             "dice nada";
    case labor::clase::reiniciar:
      return "No se sabe si el procesador se ha reiniciado";
  }
  return {};
}

std::string interrumpida(const frm_principal& f) {
  const labor& m = f.avance.labor;
  const std::string texto = mal + por_que(f.link.operacion) + "\n" + puerto(f);
  if (f.labores_antes != m.cuantas) return texto + "\n" + lo_que_queda(m);
  return texto + "\nNo se había empezado: la flash no se ha tocado";
}

std::string con_avisos(const frm_principal& f, std::string texto) {
  for (const std::string& uno : avisos_de(f.v.carga)) texto += "\n⚠ Del archivo: " + uno;
  return texto;
}

std::string grabada(const frm_principal& f, const hechos& h) {
  if (h.hay > 0) {
    return con_avisos(f, ojo + cuantos(h.hay, "palabra", "palabras") +
                             " sin confirmar, marcadas en el mapa: puede que no estén escritas. "
                             "Compruébelo con «Chequear lo Programado»");
  }
  const tramo donde = donde_de(h);
  if (donde.vacio()) return con_avisos(f, ojo + std::string("el archivo no tenía nada que escribir"));
  return con_avisos(f, bien + ("enviado " + direcciones(donde)) + "; falta comprobarlo con «Chequear lo Programado»");
}

std::string detenido(const hechos& h, const char* que) {
  return ojo + ("detenido en " + direccion(h.hasta)) + ": " + que;
}

std::string sumas_iguales(const frm_principal& f, const hechos& h) {
  std::string texto = bien + ("las sumas son iguales en " + direcciones(donde_de(h)));
  if (h.hasta < total_flash) texto += "; más arriba no se ha mirado";
  return con_avisos(f, texto + "\nUna suma no ve bytes cambiados de sitio, ni diferencias que se compensan");
}

std::string suma_distinta(const frm_principal& f, const hechos& h) {
  return con_avisos(f, mal + ("difiere " + direcciones(donde_de(h))) + ": la suma del archivo es " + hex(h.debe, 8) +
                           " y la del chip " + hex(h.hay, 8) +
                           "\nMás arriba no se ha mirado; qué bytes son, se ve "
                           "leyendo la memoria y comparando los buffer");
}

std::string lectura(const hechos& h) {
  const tramo donde = donde_de(h);
  return donde.vacio() ? std::string() : bien + ("leído " + direcciones(donde));
}

}  // namespace

std::string detalles(const frm_principal& f, const hechos& de_que) {
  const enlace& e = f.link;
  switch (de_que.que) {
    case asunto::ninguno:
      return {};
    case asunto::puerto_sin_numero:
      return mal + ("el puerto escrito es «" + e.valores.puerto + "»; ha de ser de COM0 a COM9");
    case asunto::puerto_propio:
      return mal + std::string("lo usa una orden de este mismo programa que no ha terminado");
    case asunto::puerto_cerrado:
      return puerto_cerrado(f);
    case asunto::parametros:
      return mal + ("los valores son «" + e.valores.velocidad + "», «" + e.valores.paridad) + "», «" +
             e.valores.bits_datos + "» y «" + e.valores.bits_parada + "»";
    case asunto::sin_respuesta:
      return sin_respuesta(f);
    case asunto::suma_mala:
      return mal + ("a " + comando(e)) + " ha llegado " + llegado(e) + "\n" + puerto(f);
    case asunto::sin_chip:
      return mal + std::string("la placa contesta y el chip no: su estado se lee como FF\n") + puerto(f);
    case asunto::reset:
      return ojo + std::string("la placa o el chip se han reiniciado tras ") + comando(e);
    case asunto::rechazo:
      return rechazo(f, de_que.codigo);
    case asunto::interrumpida:
      return interrumpida(f);
    case asunto::sin_permiso_de_escritura:
      return mal + ("tras «a» el estado es " + hex(e.registro_estado, 2)) + ": falta el bit 02, y no se escribe nada";
    case asunto::sin_configuracion:
      return mal + ("tras «d» el estado es " + hex(e.registro_estado, 2)) + ": falta el bit 20, y no se escribe nada";
    case asunto::borrado_fallido:
      return mal + ("el estado es " + hex(e.registro_estado, 2)) +
             ": el chip no ha podido borrar. No se sabe qué hay en la flash";
    case asunto::borrado_largo:
      return mal + std::string("tras 55 miradas el chip sigue borrando. No se sabe qué hay en la flash");
    case asunto::borrada_entera:
      return f.avance.labor.como == labor::final::hecha
                 ? bien + std::string("el chip dice que ha borrado; lo comprueba «Verificar Borrado»")
                 : ojo + std::string("hubo un rechazo o una señal entretanto: compruebe que está borrada");
    case asunto::grabada:
      return grabada(f, de_que);
    case asunto::grabado_detenido:
      return detenido(de_que, "la flash está a medio grabar");
    case asunto::sin_diario:
      return ojo + std::string("es la copia de lo enviado; la grabación no depende de ella");
    case asunto::leida:
      return lectura(de_que);
    case asunto::lectura_detenida:
      return detenido(de_que, "más arriba no se ha leído");
    case asunto::en_blanco:
      return bien + ("el chip da por borrado todo " + direcciones(donde_de(de_que)));
    case asunto::con_datos:
      return mal + ("hay datos en " + direcciones(donde_de(de_que))) + "; más arriba no se ha mirado";
    case asunto::sumas_iguales:
      return sumas_iguales(f, de_que);
    case asunto::suma_distinta:
      return suma_distinta(f, de_que);
    case asunto::bytes_iguales:
      return con_avisos(f, bien + ("byte a byte, " + direcciones(donde_de(de_que))));
    case asunto::byte_distinto:
      return con_avisos(f, mal + ("en " + direccion(de_que.desde)) + " el archivo tiene " + hex(de_que.debe, 2) +
                               " y el chip " + hex(de_que.hay, 2) + "; más arriba no se ha mirado");
    case asunto::sin_proteger:
      return mal + ("el estado es " + hex(e.registro_estado, 2)) + ": falta el bit 80";
  }
  return {};
}

std::string detalles_de_carga(const frm_principal& f) {
  const informe_carga& i = f.v.carga;
  const auto avisos = avisos_de(i);
  const bool vacia = i.tramos.empty();
  std::string texto = (vacia ? mal : avisos.empty() ? bien : ojo) + frase(i);
  for (const std::string& uno : avisos) texto += "\n⚠ " + uno;
  return texto;
}

}  // namespace morvane
