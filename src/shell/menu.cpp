#include "shell/frm_principal.h"

namespace morvane {

namespace {

std::string nombre_dir(int n) {
  return "men_dir_" + std::to_string(n);
}

}  // namespace

menu_principal::menu_principal(contador_cambios& c)
    : men_archivo(c, "men_archivo", "&Archivo"),
      men_abrir(c, "men_abrir", "&Abrir"),
      separa_1(c, "separa_1", "-"),
      men_dir{Menu(c, nombre_dir(1), ""), Menu(c, nombre_dir(2), ""), Menu(c, nombre_dir(3), ""),
              Menu(c, nombre_dir(4), ""), Menu(c, nombre_dir(5), ""), Menu(c, nombre_dir(6), ""),
              Menu(c, nombre_dir(7), ""), Menu(c, nombre_dir(8), ""), Menu(c, nombre_dir(9), ""),
              Menu(c, nombre_dir(10), "")},
      separa_2(c, "separa_2", "-"),
      men_salir(c, "men_salir", "&Salir"),
      men_ver(c, "men_ver", "&Ver"),
      men_ver_B_E(c, "men_ver_B_E", "Buffer de Entrada"),
      men_ver_B_S(c, "men_ver_B_S", "Buffer de Salida"),
      men_dispositivo(c, "men_dispositivo", "&Dispositivo"),
      men_seleccion(c, "men_seleccion", "Seleccionar procesador"),
      men_reset(c, "men_reset", "Reset procesador"),
      men_memoria_f(c, "men_memoria_f", "&Memoria Flash"),
      men_borrar_t(c, "men_borrar_t", "Borrar"),
      men_verific_t(c, "men_verific_t", "Verificar Borrado"),
      separa_3(c, "separa_3", "-"),
      men_prog_t(c, "men_prog_t", "Programar"),
      men_verifi_t(c, "men_verifi_t", "Verificar programa"),
      mn_verifi_t_f(c, "mn_verifi_t_f", "Verificar programa"),
      men_upload(c, "men_upload", "Upload"),
      men_leer_ft(c, "men_leer_ft", "Leer de la flash"),
      men_leer_fr(c, "men_leer_fr", "Leer de la flash (Rango)"),
      men_opciones(c, "men_opciones", "Opciones"),
      men_pto_s(c, "men_pto_s", "Puerto Serial"),
      men_proteger_f(c, "men_proteger_f", "Proteger la flash"),
      men_ayuda(c, "men_ayuda", "Ay&uda"),
      men_contenido(c, "men_contenido", "&Contenido"),
      men_acerca(c, "men_acerca", "&Acerca de...") {
  men_archivo.lista = {&men_abrir, &separa_1};
  for (Menu& entrada : men_dir) {
    entrada.Visible = false;
    men_archivo.lista.push_back(&entrada);
  }
  men_archivo.lista.push_back(&separa_2);
  men_archivo.lista.push_back(&men_salir);
  men_ver.lista = {&men_ver_B_E, &men_ver_B_S};
  men_dispositivo.lista = {&men_seleccion, &men_reset};
  men_memoria_f.lista = {&men_borrar_t, &men_verific_t, &separa_3, &men_prog_t, &men_verifi_t, &mn_verifi_t_f};
  men_upload.lista = {&men_leer_ft, &men_leer_fr};
  men_opciones.lista = {&men_pto_s, &men_proteger_f};
  men_ayuda.lista = {&men_contenido, &men_acerca};
  for (Menu* entrada : {&separa_1, &separa_2, &men_verifi_t, &men_proteger_f, &men_ayuda}) entrada->Visible = false;
  men_verifi_t.Enabled = false;
  men_seleccion.Enabled = false;
}

std::vector<Menu*> menu_principal::barra() {
  return {&men_archivo, &men_ver, &men_dispositivo, &men_memoria_f, &men_upload, &men_opciones, &men_ayuda};
}

}  // namespace morvane
