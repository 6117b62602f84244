#include "sesion.h"

#include <utility>

#include "frases.h"
#include "frases/frases.h"
#include "frases/numeros.h"
#include "oyente.h"
#include "platform/rutas.h"

namespace morvane::console {

namespace {

using job::desenlace;

/// The line is closed whatever happens to the job.
class linea_abierta {
 public:
  linea_abierta(exterior& fuera, const puerto_elegido& p) : fuera_(fuera) {
    if (const auto causa = fuera.abrir(p.adonde, p.como)) negar(p, *causa);
  }
  ~linea_abierta() { fuera_.linea().cerrar(); }
  linea_abierta(const linea_abierta&) = delete;
  linea_abierta& operator=(const linea_abierta&) = delete;

 private:
  [[noreturn]] static void negar(const puerto_elegido& p, const causa_puerto& causa) {
    fracaso f{{.que = desenlace::puerto,
               .texto = en_frase("no se puede abrir " + p.nombre + ": " + frase_sin_puerto(causa)),
               .remedio = "Vea los puertos que hay: «morvane-cli puertos»."}};
    f.fin.datos["puerto"] = p.nombre;
    f.fin.datos["velocidad"] = p.como.velocidad;
    throw f;
  }

  exterior& fuera_;
};

std::string quien_ha_parado(const exterior& fuera) {
  constexpr int sighup = 1, sigint = 2;
  const int n = fuera.senal();
  return std::string("Detenido por ") + (n == sigint ? "SIGINT" : n == sighup ? "SIGHUP" : "SIGTERM");
}

std::string texto_de_fin(const llamada& ll, const job::resultado& r) {
  if (r.fin.que != desenlace::detenido) return frase(r.fin);
  return quien_ha_parado(ll.fuera) +
         (r.cerrado ? "; el chip ha quedado cerrado." : "; no se sabe si el chip ha quedado cerrado.");
}

std::string renglon_de_puerto(const trabajo_hecho& t) {
  std::string r = "Puerto: " + t.puerto.nombre;
  const std::string dispositivo = texto_de(t.dispositivo);
  if (!dispositivo.empty() && dispositivo != t.puerto.nombre) r += " (" + dispositivo + ")";
  return r + ", " + std::to_string(t.puerto.como.velocidad) + " baudios";
}

json lista_de(const std::vector<job::diferencia>& todas) {
  json lista = json::array();
  for (const job::diferencia& d : todas) {
    json una = {{"desde", d.donde.desde}, {"hasta", d.donde.hasta - 1}, {"clase", nombre_de(d.clase)}};
    if (d.clase == job::aspecto::movido) una["corrimiento"] = d.corrimiento;
    lista.push_back(std::move(una));
  }
  return lista;
}

void poner_hallazgos(json& j, const job::resultado& r) {
  if (r.borrado) j["borrado"] = *r.borrado;
  if (r.prueba) j["prueba"] = *r.prueba == job::prueba::sumas ? "sumas" : "lectura";
  if (r.fin.direccion) j["direccion"] = *r.fin.direccion;
  if (r.fin.codigo != '\0') j["codigo_placa"] = std::string(1, r.fin.codigo);
  if (r.prueba || !r.diferencias.empty()) j["diferencias"] = lista_de(r.diferencias);
}

std::string traza_negada(const std::filesystem::path& ruta, const causa_archivo& causa) {
  return "no se puede escribir " + texto_de(ruta) + ": " + frase_de_escritura(causa);
}

/// Null if none is wanted.
std::unique_ptr<traza> abrir_traza(const std::filesystem::path& ruta) {
  if (ruta.empty()) return nullptr;
  auto t = std::make_unique<traza>(ruta);
  if (t->fallo()) fracasar(desenlace::archivo, en_frase(traza_negada(ruta, *t->fallo())));
  return t;
}

}  // namespace

trabajo_hecho con_placa(const llamada& ll, const std::function<job::resultado(const job::puesto&)>& trabajo) {
  trabajo_hecho t;
  t.puerto = elegir_puerto(ll);
  auto traza = abrir_traza(ll.a.traza);
  const linea_abierta abierta(ll.fuera, t.puerto);
  t.dispositivo = ll.fuera.dispositivo();
  ll.cara.linea(
      {{"puerto", t.puerto.nombre}, {"dispositivo", texto_de(t.dispositivo)}, {"velocidad", t.puerto.como.velocidad}});
  oyente oye(ll.cara, traza.get());
  t.r = trabajo({ll.fuera.linea(), ll.fuera.mundo(), &oye, t.puerto.como.velocidad});
  if (traza) t.sin_traza = traza->fallo();
  t.comando = t.r.fin.comando.empty() ? oye.comando() : t.r.fin.comando;
  return t;
}

cierre cierre_de(const llamada& ll, const trabajo_hecho& t, std::string texto) {
  const job::resultado& r = t.r;
  cierre c{.que = r.fin.que, .texto = std::move(texto)};
  json& j = c.datos;
  j["puerto"] = t.puerto.nombre;
  j["dispositivo"] = texto_de(t.dispositivo);
  j["velocidad"] = t.puerto.como.velocidad;
  j["caracteres"] = r.gastos.caracteres();
  j["enviados"] = r.gastos.enviados;
  j["recibidos"] = r.gastos.recibidos;
  j["repetidas"] = r.gastos.repetidas;
  j["chip_cerrado"] = r.cerrado;
  poner_hallazgos(j, r);
  if (c.bien() && t.sin_traza) {
    c.que = desenlace::archivo;
    c.texto = en_frase("hecho, pero falta traza: " + traza_negada(ll.a.traza, *t.sin_traza));
    return c;
  }
  if (c.bien()) return c;
  if (c.texto.empty()) c.texto = texto_de_fin(ll, r);
  c.remedio = remedio(r.fin);
  c.detalle.push_back(renglon_de_puerto(t));
  const bool de_la_linea = r.fin.que != desenlace::distinta && r.fin.que != desenlace::detenido && !t.comando.empty();
  if (de_la_linea) {
    c.detalle.push_back("Comando: " + t.comando);
    j["comando"] = t.comando;
  }
  constexpr std::size_t bastantes = 20;
  for (std::size_t i = 0; i < r.diferencias.size() && i < bastantes; ++i) c.detalle.push_back(frase(r.diferencias[i]));
  if (r.diferencias.size() > bastantes) {
    c.detalle.push_back("y " + entero(static_cast<std::int64_t>(r.diferencias.size() - bastantes)) + " más");
  }
  return c;
}

}  // namespace morvane::console
