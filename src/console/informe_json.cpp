#include <optional>

#include "files/texto.h"
#include "frases.h"
#include "informe.h"
#include "platform/rutas.h"

namespace morvane::console {

namespace {

constexpr job::tiempo entre_avances = std::chrono::milliseconds{100};

json rutas(const std::vector<std::filesystem::path>& todas) {
  json lista = json::array();
  for (const auto& r : todas) lista.push_back(texto_de(r));
  return lista;
}

class en_json final : public informe {
 public:
  explicit en_json(exterior& fuera) : fuera_(fuera) {}

  void inicio(const argumentos& a) override {
    inicio_ = fuera_.mundo().ahora();
    json j = {{"tipo", "inicio"}, {"programa", "morvane-cli"}, {"version", MORVANE_VERSION}};
    j["orden"] = console::nombre_de(a.que);
    j["archivos"] = rutas(a.archivos);
    renglon(j);
  }

  void linea(const json& donde) override {
    json j = {{"tipo", "suceso"}, {"suceso", "linea_abierta"}};
    j.update(donde);
    renglon(j);
  }

  void empieza(job::fase cual, std::int64_t total) override {
    fase_ = cual;
    total_ = total;
    avance(0);
  }

  void avanza(std::int64_t hechos) override {
    const bool entero = hechos == total_;
    if (entero || fuera_.mundo().ahora() - ultimo_ >= entre_avances) avance(hechos);
  }

  void ocurre(job::suceso que, std::string_view comando, std::int32_t direccion, char codigo) override {
    json j = {{"tipo", "suceso"}, {"suceso", console::nombre_de(que)}, {"texto", frase(que, codigo)}};
    if (!comando.empty()) j["comando"] = comando;
    if (direccion >= 0) j["direccion"] = direccion;
    if (codigo != '\0') j["codigo"] = std::string(1, codigo);
    renglon(j);
  }

  void duda(std::string_view clase, const std::string& texto, const json& hechos) override {
    json j = {{"tipo", "suceso"}, {"suceso", "duda"}, {"clase", clase}, {"texto", texto}};
    j.update(hechos);
    renglon(j);
  }

  void fin(std::string_view orden, int codigo, const cierre& fin) override {
    json j = {{"tipo", "resultado"},
              {"orden", orden},
              {"codigo", codigo},
              {"desenlace", console::nombre_de(fin.que)},
              {"texto", fin.texto}};
    if (!fin.remedio.empty()) j["remedio"] = fin.remedio;
    j.update(fin.datos);
    renglon(j);
  }

 private:
  void avance(std::int64_t hechos) {
    ultimo_ = fuera_.mundo().ahora();
    // What tells how far it is may be missing; the job does not wait for a reader.
    if (!fuera_.normal().lista()) return;
    const auto segundos = std::chrono::duration<double>(ultimo_ - inicio_).count();
    renglon({{"tipo", "avance"},
             {"fase", console::nombre_de(fase_)},
             {"hechos", hechos},
             {"total", total_},
             {"segundos", segundos}});
  }

  /// Names of files may hold bytes that are no UTF-8.
  void renglon(const json& j) {
    fuera_.normal().escribir(j.dump(-1, ' ', false, json::error_handler_t::replace) + "\n");
  }

  exterior& fuera_;
  job::tiempo inicio_{0}, ultimo_{0};
  job::fase fase_ = job::fase::abrir;
  std::int64_t total_ = 0;
};

}  // namespace

std::unique_ptr<informe> informe_json(exterior& fuera) {
  return std::make_unique<en_json>(fuera);
}

}  // namespace morvane::console
