#include "controles.h"

#include <array>

#include "files/texto.h"

namespace campana {

namespace {

using namespace morvane;

constexpr std::array<const char*, 14> textos{"",      "0",     "10",       "20", "5",    "1F4",  "3FFF8",
                                             "3FFFF", "40001", "FFFFFFF0", "ZZ", "  7 ", "COM5", "8000000000"};

class caminante {
 public:
  caminante(puente::azar& a, std::vector<gesto>& g) : a_(a), gestos_(g) {}

  void menu(const Menu& m) {
    if (m.Click) gestos_.push_back({m.Name, m.Click});
    for (const Menu* entrada : m.lista) menu(*entrada);
  }
  void controles(const std::vector<cualquier_control>& lista) {
    for (const auto& control : lista) std::visit(*this, control);
  }

  void operator()(CommandButton* b) {
    if (b->Click && b->Visible && b->Enabled) gestos_.push_back({b->Name, b->Click});
  }
  void operator()(TextBox* t) {
    gestos_.push_back({t->Name, [t, texto = std::string(a_.uno<const char*>(textos))] { t->Text = texto; }});
  }
  void operator()(ComboBox* c) {
    if (a_.una_de(4)) {
      gestos_.push_back({c->Name, [c, texto = std::string(a_.uno<const char*>(textos))] { c->Text = texto; }});
    } else {
      gestos_.push_back({c->Name, [c, texto = a_.uno<std::string>(c->List)] {
                           c->Text = texto;
                           if (c->Click) c->Click();
                         }});
    }
  }
  void operator()(Toolbar* barra) {
    for (int i = 1; i <= static_cast<int>(barra->Buttons.size()); ++i) {
      if (!barra->boton(i).Enabled) continue;
      gestos_.push_back({barra->Name + std::to_string(i), [barra, i] { barra->ButtonClick(i); }});
    }
  }
  void operator()(ListBox* lista) {
    gestos_.push_back({lista->Name, [lista, lote = a_.hasta(1'000'000)] {
                         const auto filas = lista->List.valor();
                         if (filas && filas->cuantas() > 0)
                           (void)filas->texto(lote % filas->cuantas()), (void)filas->realces(lote % filas->cuantas());
                       }});
  }
  void operator()(Frame* marco) {
    if (marco->Visible) controles(marco->Controls);
  }
  // Nothing can be done with these.
  void operator()(Label*) {}
  void operator()(PictureBox*) {}
  void operator()(Line*) {}
  void operator()(ProgressBar*) {}
  void operator()(StatusBar*) {}

 private:
  puente::azar& a_;
  std::vector<gesto>& gestos_;
};

}  // namespace

std::vector<gesto> gestos(frm_principal& f, puente::azar& a) {
  std::vector<gesto> todos;
  caminante c(a, todos);
  std::vector<Form*> ventanas = f.otras_ventanas();
  std::erase_if(ventanas, [](const Form* v) { return !v->Visible; });
  for (Form* v : ventanas) {
    todos.push_back({v->Name + ".Unload", [v] { v->Unload(); }});
    if (!v->Resize) continue;
    const int ancho = static_cast<int>(a.hasta(30'000)), alto = static_cast<int>(a.hasta(20'000));
    todos.push_back({v->Name + ".Resize", [v, ancho, alto] { v->Resize(ancho, alto); }});
  }
  // What stands beside the controls.
  if (f.cfg_pto_serial.ventana.Visible) {
    todos.push_back({"crear_fichero", [&f] { f.cfg_pto_serial.crear_fichero(); }});
    todos.push_back({"en_vigor", [&f] { (void)f.cfg_pto_serial.describir(); }});
  }
  todos.push_back({"letrero", [&f] { (void)letrero_de(f, f.link.valores.puerto); }});
  if (f.buffer_comp.ventana.Visible && f.buffer_comp.filas->cuantas() > 0) {
    const std::size_t fila = a.hasta(1'000'000) % f.buffer_comp.filas->cuantas();
    todos.push_back({"diferencia", [&f, dir = f.buffer_comp.filas->direccion(fila)] {
                       for (frm_buffer* b : {&f.buffer_out, &f.buffer_in}) b->ventana.Show(), b->busca.ir(hex(dir, 6));
                     }});
  }
  ventanas.push_back(&f.ventana);
  for (Form* v : ventanas) {
    for (const Menu* m : v->menus) c.menu(*m);
    for (const Menu* m : v->contextual) c.menu(*m);
    c.controles(v->Controls);
  }
  return todos;
}

}  // namespace campana
