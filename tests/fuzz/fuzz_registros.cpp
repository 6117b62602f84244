// A file of S-records of any content that is read strictly gives the image of the window, or none at all; what the
// window refuses is refused.

#include "fuzz/registros.h"
#include "image/cargar_s19.h"

using namespace morvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static Variables_grab v;
  static const Variables_grab vacia = [] {
    Variables_grab nueva;
    limpiar_buffer_salida(nueva);
    return nueva;
  }();
  apoyo::mesa m;
  contador_cambios cambios;
  avance a(cambios);
  v = vacia;
  v.ruta_archivo = m.dir.escribir("f.s19", apoyo::registros_de(datos, largo, 2, 1, 0xFF));
  const bool en_la_ventana = !cargar_s19(m.plat, v, a);
  const auto leido = console::leer_firmware(v.ruta_archivo);
  const auto* f = std::get_if<console::firmware>(&leido);
  if (f == nullptr) {
    const auto& fallo = std::get<console::fallo_firmware>(leido);
    apoyo::exigir(!console::frase(fallo).empty(), "a reason");
    const bool sin_datos = fallo.cual == console::fallo_firmware::clase::sin_datos;
    apoyo::exigir(!sin_datos || v.mascara_salida == vacia.mascara_salida, "no data");
    return 0;
  }
  for (const auto& duda : f->avisos) apoyo::exigir(!console::frase(duda).empty(), "a doubt");
  apoyo::exigir(en_la_ventana, "the window loads it too");
  apoyo::exigir(f->v.mascara_salida == v.mascara_salida, "marks");
  apoyo::exigir(f->v.buffer_salida == v.buffer_salida && f->v.dir_max == v.dir_max, "image");
  return 0;
}
