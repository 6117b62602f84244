#include "console/argumentos.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <map>

#include "console/firmware.h"
#include "files/texto.h"
#include "platform/rutas.h"
#include "tabla_ordenes.h"

namespace morvane::console {

namespace {

/// What is wrong with the call, in one sentence.
struct error_de_uso {
  std::string frase;
};

std::string entre_comillas(std::string_view que) {
  return "«" + std::string(que) + "»";
}

/// CLI11 names a flag without what stands in front of it.
std::string con_guiones(const std::string& nombre) {
  if (nombre.starts_with('-')) return nombre;
  return (nombre.size() == 1 ? "-" : "--") + nombre;
}

/// All options of all orders, as texts: which of them an order takes is asked afterwards, so that the answer can name
/// it.
class lector {
 public:
  lector() {
    app_.set_help_flag("");
    app_.allow_extras();
    app_.add_option("palabras", palabras)->allow_extra_args();
    for (const char* nombre : {"--puerto", "--velocidad", "--directorio", "--traza", "--prueba", "--certificado",
                               "--desde", "--hasta", "--en"}) {
      app_.add_option(nombre, valores_[nombre]);
    }
    for (const char* nombre : {"--json", "-q", "-h,--ayuda,--help", "--version", "--todo", "--si"}) {
      app_.add_flag(nombre)->disable_flag_override();
    }
  }

  void leer(std::span<const std::string> entrada) {
    // CLI11 takes the last word first.
    std::vector<std::string> al_reves(entrada.rbegin(), entrada.rend());
    try {
      app_.parse(std::move(al_reves));
    } catch (const CLI::ArgumentMismatch& e) {
      const std::string que = e.what();
      const std::string nombre = con_guiones(que.substr(0, que.find_first_of(": ")));
      if (que.find("missing") != std::string::npos) throw error_de_uso{"falta el valor de " + nombre};
      if (que.find("override") != std::string::npos) throw error_de_uso{nombre + " no lleva ningún valor"};
      throw error_de_uso{nombre + " se da una sola vez"};
    } catch (const CLI::ParseError&) {
      throw error_de_uso{"no se entiende la llamada"};
    }
    for (const auto& [nombre, v] : valores_) {
      if (dada(nombre) && (v.empty() || v.starts_with("--"))) throw error_de_uso{"falta el valor de " + nombre};
    }
  }

  /// The first option that there is not; empty if there is none such.
  std::string desconocida() const {
    // What ends the options is left over too.
    for (const std::string& resto : app_.remaining()) {
      if (resto != "--") return resto;
    }
    return {};
  }
  bool dada(const std::string& nombre) const { return app_.count(nombre) > 0; }
  /// Its value; empty if it was not given.
  std::string valor(const std::string& nombre) const { return valores_.at(nombre); }

  std::vector<std::string> palabras;

 private:
  CLI::App app_;
  std::map<std::string, std::string> valores_;
};

std::optional<std::int32_t> direccion_dada(const lector& l, const std::string& nombre) {
  if (!l.dada(nombre)) return std::nullopt;
  const std::string v = l.valor(nombre);
  const auto dir = leer_direccion(v);
  if (!dir) throw error_de_uso{entre_comillas(v) + " no es una dirección hexadecimal (" + nombre + ")"};
  if (*dir >= chip.flash) {
    throw error_de_uso{"la dirección " + v + " (" + nombre + ") está fuera de la memoria, que termina en 3FFFF"};
  }
  return static_cast<std::int32_t>(*dir);
}

std::optional<int> velocidad(const lector& l) {
  constexpr int minima = 50, maxima = 4'000'000;
  if (!l.dada("--velocidad")) return std::nullopt;
  const std::string v = l.valor("--velocidad");
  int n = 0;
  const auto [fin, error] = std::from_chars(v.data(), v.data() + v.size(), n);
  if (error != std::errc{} || fin != v.data() + v.size() || n < minima || n > maxima) {
    throw error_de_uso{entre_comillas(v) + " no es una velocidad: va de 50 a 4000000 baudios"};
  }
  return n;
}

std::string puerto(const lector& l) {
  std::string v = l.valor("--puerto"), alto = mayusculas(v);
  const bool numerado =
      alto.starts_with("COM") && alto.size() > 3 && alto.find_first_not_of("0123456789", 3) == std::string::npos;
  if (!numerado) return v;
  if (alto.size() != 4) throw error_de_uso{"no hay puerto " + entre_comillas(v) + ": van de COM0 a COM9"};
  return alto;
}

job::prueba prueba(const lector& l) {
  const std::string v = l.valor("--prueba");
  if (v.empty() || v == "sumas") return job::prueba::sumas;
  if (v == "lectura") return job::prueba::lectura;
  throw error_de_uso{entre_comillas(v) + " no es una prueba: es sumas o lectura"};
}

void comprobar_opciones(const lector& l, const fila_orden& f) {
  for (const fila_opcion& o : opciones_propias()) {
    if ((o.cual & f.opciones) == 0 && l.dada(std::string(o.nombre))) {
      throw error_de_uso{std::string(o.nombre) + " no es una opción de " + entre_comillas(f.nombre)};
    }
  }
}

void comprobar_archivos(const argumentos& a, const fila_orden& f) {
  const std::size_t n = a.archivos.size();
  const std::string orden = entre_comillas(f.nombre);
  if (n < f.archivos_minimo) {
    throw error_de_uso{f.archivos_minimo == 1 ? orden + " necesita un archivo" : orden + " necesita dos archivos"};
  }
  if (n > f.archivos_maximo) {
    const std::string sobra = entre_comillas(texto_de(a.archivos[f.archivos_maximo]));
    if (f.archivos_maximo == 0) throw error_de_uso{orden + " no lleva archivos, y sobra " + sobra};
    throw error_de_uso{orden + " lleva " + (f.archivos_maximo == 1 ? "un solo archivo" : "dos archivos") +
                       ", y sobra " + sobra};
  }
  if (std::ranges::any_of(a.archivos, [](const auto& r) { return r.empty(); })) {
    throw error_de_uso{"un archivo no tiene nombre"};
  }
}

/// What is written goes by the ending of its name, and `--en` is of one kind alone.
void comprobar_formatos(const argumentos& a) {
  if (a.que == orden::leer || a.que == orden::convertir) {
    const auto& salida = a.archivos.back();
    const auto cual = formato_de(salida);
    if (!cual || *cual == formato::elf) {
      throw error_de_uso{"no se sabe en qué formato escribir " + entre_comillas(texto_de(salida)) +
                         ": ha de terminar en .s19, .hex o .bin"};
    }
  }
  if (!a.en) return;
  const auto entradas = a.que == orden::convertir ? std::span(a.archivos).first(1) : std::span(a.archivos);
  const auto es_bin = [](const auto& r) { return formato_de(r) == formato::bin; };
  if (std::ranges::none_of(entradas, es_bin)) throw error_de_uso{"--en es solo para archivos .bin"};
}

argumentos componer(const lector& l, const fila_orden& f) {
  argumentos a;
  a.que = f.que;
  for (std::size_t i = 1; i < l.palabras.size(); ++i) a.archivos.push_back(ruta_de(l.palabras[i]));
  comprobar_opciones(l, f);
  comprobar_archivos(a, f);
  a.puerto = puerto(l);
  a.velocidad = velocidad(l);
  a.directorio = ruta_de(l.valor("--directorio"));
  a.traza = ruta_de(l.valor("--traza"));
  a.certificado = ruta_de(l.valor("--certificado"));
  a.json = l.dada("--json");
  a.callada = l.dada("-q");
  a.todo = l.dada("--todo");
  a.prueba = prueba(l);
  a.desde = direccion_dada(l, "--desde");
  a.hasta = direccion_dada(l, "--hasta");
  a.en = direccion_dada(l, "--en");
  comprobar_formatos(a);
  if (a.desde.value_or(0) > a.hasta.value_or(chip.flash - 1)) {
    throw error_de_uso{"el rango está al revés: --desde " + hex(static_cast<std::uint32_t>(*a.desde)) +
                       " va detrás de --hasta " + hex(static_cast<std::uint32_t>(*a.hasta))};
  }
  if (a.que == orden::proteger && !l.dada("--si")) {
    throw error_de_uso{"«proteger» pide --si: el chip ya no se podrá leer"};
  }
  return a;
}

/// Whether `--json` is among the words, however wrong the others are.
bool quiere_json(std::span<const std::string> palabras) {
  const auto fin = std::ranges::find(palabras, "--");
  return std::find(palabras.begin(), fin, "--json") != fin;
}

/// The order among the words of a call that is not understood as a whole.
std::optional<orden> orden_entre(const lector& l, std::span<const std::string> entrada) {
  if (!l.palabras.empty()) return orden_de(l.palabras.front());
  for (const std::string& p : entrada) {
    if (const auto que = orden_de(p)) return que;
  }
  return std::nullopt;
}

const fila_orden& fila_con(const std::string& nombre) {
  const auto fila = std::ranges::find(ordenes(), nombre, &fila_orden::nombre);
  if (fila == ordenes().end()) throw error_de_uso{"no hay orden " + entre_comillas(nombre)};
  return *fila;
}

std::variant<argumentos, a_mostrar, mal_uso> entender(lector& l, std::span<const std::string> entrada) {
  l.leer(entrada);
  if (const std::string d = l.desconocida(); !d.empty()) throw error_de_uso{"no hay opción " + entre_comillas(d)};
  const fila_orden* fila = l.palabras.empty() ? nullptr : &fila_con(l.palabras.front());
  using clase = a_mostrar::clase;
  if (l.dada("--ayuda")) {
    return a_mostrar{clase::ayuda, fila != nullptr ? texto_de_ayuda(fila->que) : texto_de_ayuda(), l.dada("--json")};
  }
  if (l.dada("--version")) return a_mostrar{clase::version, "morvane-cli " MORVANE_VERSION "\n", l.dada("--json")};
  if (fila == nullptr) throw error_de_uso{"falta la orden"};
  return componer(l, *fila);
}

}  // namespace

std::variant<argumentos, a_mostrar, mal_uso> leer_argumentos(std::span<const std::string> palabras) {
  lector l;
  try {
    return entender(l, palabras);
  } catch (const error_de_uso& e) {
    const auto que = orden_entre(l, palabras);
    return mal_uso{que, e.frase, que ? forma_de(*que) : "morvane-cli [OPCIONES] ORDEN [ARGUMENTOS]",
                   quiere_json(palabras)};
  }
}

}  // namespace morvane::console
