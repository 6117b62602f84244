#include "console/firmware.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "apoyo/carpeta.h"
#include "console/guardar_firmware.h"
#include "image/cargar_s19.h"
#include "job/objetivo.h"
#include "platform/gemelo.h"

namespace morvane::console {
namespace {

using clase = fallo_firmware::clase;
using leido = std::variant<firmware, fallo_firmware>;

struct firmware_test : testing::Test {
  leido leer(const std::string& nombre, const std::string& contenido, std::optional<std::int32_t> en = {}) {
    return leer_firmware(dir.escribir(nombre, contenido), en);
  }
  firmware bueno(const std::string& nombre, const std::string& contenido, std::optional<std::int32_t> en = {}) {
    leido l = leer(nombre, contenido, en);
    if (const auto* fallo = std::get_if<fallo_firmware>(&l)) {
      ADD_FAILURE() << contenido.substr(0, 200) << ": " << frase(*fallo);
      return {};
    }
    return std::get<firmware>(std::move(l));
  }
  std::string por_que(const std::string& nombre, const std::string& contenido, std::optional<std::int32_t> en = {}) {
    const leido l = leer(nombre, contenido, en);
    const auto* fallo = std::get_if<fallo_firmware>(&l);
    return fallo == nullptr ? "cargado" : frase(*fallo);
  }
  static std::string dudas(const firmware& f) {
    std::string todas;
    for (const aviso& a : f.avisos) {
      todas.append(nombre_de(a.cual)).append(" ").append(std::to_string(a.cuantos)).append(";");
      EXPECT_FALSE(frase(a).empty());
    }
    return todas;
  }

  apoyo::carpeta dir;
};

TEST_F(firmware_test, what_is_wrong_with_a_file_is_told_with_its_line) {
  const std::string bueno_s = "S1051000AABB85\n", bueno_h = ":02100000AABB89\n";
  const std::tuple<const char*, std::string, const char*> casos[] = {
      {"a.s19", bueno_s, "cargado"},
      {"a.s19", bueno_s + "S1051000AABB86\n", "línea 2: la suma del registro es 86 y debería ser 85"},
      {"a.s19", bueno_s + "S1061000AABB84\r", "línea 2: el registro dice que tiene 6 bytes y tiene 5"},
      {"a.s19", bueno_s + "S1051000AABB8", "línea 2: el registro está cortado"},
      {"a.s19", "S10210ED", "línea 1: el registro está cortado"},
      {"a.s19", "S1051000AABG85", "línea 1: el carácter 12 no es una cifra hexadecimal"},
      {"a.s19", "S1051000AABB85 ", "línea 1: el carácter 15 es un blanco, y un registro no lleva ninguno"},
      {"a.S28", bueno_s + "S5030002FA", "línea 2: el registro de cuenta dice que hay 2 registros de datos, y hay 1"},
      {"a.mot", bueno_s + "S5030001FB\nS9030000FC", "cargado"},
      {"a.s37", "S30704000200AABB8D", "línea 1: la dirección 0x4000200 está fuera de la memoria"},
      {"a.srec", "s1051000AABB85\nnada\n", "no tiene ningún dato: 2 líneas no son registros"},
      {"a.s19", "S1031000EC\nS9030000FC", "no tiene ningún dato"},
      {"a.hex", bueno_h + ":00000001FF", "cargado"},
      {"a.hex", ":02100000AABB8A", "línea 1: la suma del registro es 8A y debería ser 89"},
      {"a.hex", ":03100000AABB88", "línea 1: el registro dice que tiene 3 bytes y tiene 2"},
      {"a.hex", bueno_h + "\n:0210000", "línea 3: el registro está cortado"},
      {"a.hex", ":02100006AABB83", "línea 1: el tipo de registro 06 no existe"},
      {"a.hex", ":03000004000000F9", "línea 1: un registro de su tipo tiene 2 bytes de datos, y este 3"},
      {"a.hex", ":020000040004F6\n:0100000000FF", "línea 2: la dirección 0x040000 está fuera de la memoria"},
      {"a.hex", ":020000040003F7\n:02FFFF000102FD", "línea 2: la dirección 0x040000 está fuera de la memoria"},
      {"a.hex", ":00000001FF", "no tiene ningún dato"},
      {"a.elf", "nada", "no es un archivo ELF"},
      {"a.elf",
       "\x7F"
       "ELF\2\1\1",
       "el archivo ELF está cortado o dañado"},
      {"a.bin", "", "no tiene ningún dato"},
      {"a.bin", std::string(0x40001, 'x'), "la dirección 0x040000 está fuera de la memoria"},
      {"a.txt", "x",
       "su extensión no es de un formato conocido: .s19 .s28 .s37 .srec .mot, .hex, .elf .axf .out o .bin"},
  };
  for (const auto& [nombre, contenido, esperado] : casos) {
    EXPECT_EQ(por_que(nombre, contenido), esperado) << nombre << " " << contenido.substr(0, 60);
  }
  EXPECT_EQ(por_que("a.bin", "abc", 0x3FFFE), "la dirección 0x040000 está fuera de la memoria");
  const std::string larga = "S1FF1000" + std::string(250, '0') + "F0";
  EXPECT_EQ(por_que("a.s19", larga), "línea 1: el registro dice que tiene 255 bytes y tiene 128");
  EXPECT_EQ(frase(std::get<fallo_firmware>(leer_firmware(dir.ruta() / "falta.hex"))), "el archivo no existe");
  // Where there are links, and devices that are files.
  std::error_code sin_enlaces;
  std::filesystem::create_symlink("/dev/zero", dir.ruta() / "cero.bin", sin_enlaces);
  if (sin_enlaces) return;
  EXPECT_EQ(frase(std::get<fallo_firmware>(leer_firmware(dir.ruta() / "cero.bin"))), "no es un archivo normal");
}

TEST_F(firmware_test, what_an_engineer_wants_to_hear_is_told_and_does_not_keep_a_file_from_being_loaded) {
  const std::tuple<const char*, const char*, const char*> casos[] = {
      {"a.s19", "\xEF\xBB\xBFS1051000AABB85\r\rS9030000FC\x0D\x1A", ""},
      {"a.s19", "S1051000AABB85\n", "sin_final 0;"},
      {"a.s19", "; nada\n S1051000AABB85\nS1051000AABB85\nS9030000FC\n", "lineas_ajenas 2;"},
      {"a.s19", "S9030000FC\nS1051000AABB85\n", "tras_el_final 1;"},
      {"a.s19", "S1051000AABB85\nS1051000AACC74\nS9030000FC", "solapado 1;"},
      {"a.s19", "S1041002AA3F\nS1051000AABB85\nS9030000FC", "pisado_por_relleno 1;"},
      {"a.s19", "S1070400FF00FF00F6\nS9030000FC", "configuracion_a_cero 2;"},
      {"a.s19", "S107041C00000000D8\nS9030000FC", ""},
      {"a.hex", ":02100000AABB89\n:00000001FF\n:02100200AABB87\n", "tras_el_final 1;"},
      {"a.hex", "x\n:02100000AABB89\n:0110010000EE\n", "lineas_ajenas 1;sin_final 0;solapado 1;"},
  };
  for (const auto& [nombre, contenido, esperadas] : casos) EXPECT_EQ(dudas(bueno(nombre, contenido)), esperadas);
}

TEST_F(firmware_test, an_s_record_file_gives_the_image_of_the_window) {
  for (const char* muestra : {"demo-s1.s19", "demo-s2.s19", "demo-s3.s19", "completa-256k.s19"}) {
    const std::string ruta = std::string(MUESTRAS "/") + muestra;
    gemelo plat;
    contador_cambios cambios;
    avance a{cambios};
    Variables_grab v;
    limpiar_buffer_salida(v);
    v.ruta_archivo = ruta;
    plat.paciencia = 1'000'000;
    ASSERT_FALSE(cargar_s19(plat, v, a));
    leido l = leer_firmware(ruta);
    ASSERT_TRUE(std::holds_alternative<firmware>(l)) << muestra << frase(std::get<fallo_firmware>(l));
    const Variables_grab& mia = std::get<firmware>(l).v;
    EXPECT_TRUE(mia.buffer_salida == v.buffer_salida) << muestra;
    EXPECT_TRUE(mia.mascara_salida == v.mascara_salida) << muestra;
    EXPECT_EQ(mia.dir_max, v.dir_max) << muestra;
  }
}

TEST_F(firmware_test, addresses_of_intel_hex_follow_segments_and_pages) {
  const firmware f = bueno("a.hex",
                           ":020000021000EC\n:02FFFF000102FD\n:020000040003F7\n:021000000304E7\n"
                           ":04000005000000F700\n:00000001FF\n");
  EXPECT_EQ(f.v.buffer_salida[0x1FFFF], 1);
  EXPECT_EQ(f.v.buffer_salida[0x10000], 2) << "a segment begins again at its start";
  EXPECT_EQ(f.v.buffer_salida[0x31001], 4);
  EXPECT_EQ(f.v.dir_max, 0x31001);
}

/// A file of 32 bits for this kind of processor, highest byte first, with two segments: in the flash and in the RAM.
std::string un_elf() {
  const auto be16 = [](int n) { return std::string{static_cast<char>(n >> 8), static_cast<char>(n)}; };
  const auto be32 = [&](unsigned n) { return be16(static_cast<int>(n >> 16)) + be16(static_cast<int>(n & 0xFFFF)); };
  std::string e = std::string(
                      "\x7F"
                      "ELF\1\2\1",
                      7) +
                  std::string(9, '\0');
  e += be16(2) + be16(4) + be32(1) + be32(0) + be32(52) + be32(0) + be32(0);
  e += be16(52) + be16(32) + be16(2) + be16(0) + be16(0) + be16(0);
  e += be32(1) + be32(116) + be32(0x20000000) + be32(0x3F000) + be32(4) + be32(8) + be32(5) + be32(4);
  e += be32(1) + be32(120) + be32(0x20000000) + be32(0x20000000) + be32(0) + be32(64) + be32(6) + be32(4);
  return e + "DATO";
}

TEST_F(firmware_test, an_elf_file_gives_what_its_segments_load) {
  const std::string elf = un_elf();
  const firmware f = bueno("a.elf", elf);
  EXPECT_TRUE(f.avisos.empty());
  EXPECT_EQ(std::string(f.v.buffer_salida.begin() + 0x3F000, f.v.buffer_salida.begin() + 0x3F004), "DATO");
  EXPECT_EQ(f.v.dir_max, 0x3F003);
  std::string otro = elf;
  otro[19] = 40;
  EXPECT_EQ(dudas(bueno("a.elf", otro)), "otro_procesador 40;");
  for (std::size_t corte = 0; corte < elf.size(); ++corte) EXPECT_NE(por_que("a.elf", elf.substr(0, corte)), "cargado");
  std::string fuera = elf;
  fuera[52 + 12] = 1;
  EXPECT_EQ(por_que("a.elf", fuera), "la dirección 0x103F000 está fuera de la memoria");
  std::string con_cabecera = elf;
  con_cabecera[52 + 7] = 0;
  EXPECT_EQ(dudas(bueno("a.elf", con_cabecera)), "cabecera_de_elf 0;");
  std::string sin_nada = elf;
  sin_nada[52 + 19] = 0;
  EXPECT_EQ(por_que("a.elf", sin_nada), "el archivo ELF no tiene segmentos que cargar: ¿está sin enlazar?");
}

/// Random pieces with gaps of every small size, up to the end of the flash in every other case, clear of the
/// configuration field.
std::vector<std::pair<std::int32_t, std::vector<std::uint8_t>>> al_azar(std::mt19937& a) {
  std::vector<std::pair<std::int32_t, std::vector<std::uint8_t>>> todas;
  const std::int32_t primera = a() % 2 == 0 ? 0x420 : chip.flash - 60;
  const auto sitios = static_cast<std::uint32_t>(chip.flash - primera);
  for (std::int32_t dir = primera + static_cast<std::int32_t>(a() % sitios); todas.size() < 8 && dir < chip.flash;) {
    std::vector<std::uint8_t> bytes(std::min<std::size_t>(1 + a() % (a() % 2 == 0 ? 3 : 90), chip.flash - dir));
    for (auto& b : bytes) b = static_cast<std::uint8_t>(a());
    todas.emplace_back(dir, bytes);
    dir += static_cast<std::int32_t>(bytes.size() + 1 + a() % (a() % 2 == 0 ? 5 : 9'000));
  }
  return todas;
}

std::vector<pieza> piezas_de(const Variables_grab& v, std::span<const std::uint8_t> flash) {
  std::vector<pieza> todas;
  for (const tramo t : tramos_con_datos(v, flash)) {
    todas.push_back({t.desde, flash.subspan(static_cast<std::size_t>(t.desde), static_cast<std::size_t>(t.largo()))});
  }
  return todas;
}

TEST_F(firmware_test, what_is_written_in_each_format_reads_back_as_the_same_flash) {
  std::mt19937 azar(7);
  for (int vez = 0; vez < 60; ++vez) {
    const auto partes = al_azar(azar);
    std::vector<pieza> piezas;
    std::vector<std::uint8_t> flash(static_cast<std::size_t>(chip.flash), 0xFF);
    for (const auto& [dir, bytes] : partes) {
      piezas.push_back({dir, bytes});
      std::ranges::copy(bytes, flash.begin() + dir);
    }
    for (const auto& [nombre, de] :
         {std::pair{"a.s19", formato::s19}, {"a.hex", formato::hex}, {"a.bin", formato::bin}}) {
      const firmware f = bueno(nombre, contenido_de(de, piezas, true));
      EXPECT_TRUE(f.avisos.empty()) << nombre << vez << dudas(f);
      EXPECT_TRUE(job::objetivo(f.v).bytes == flash) << nombre << vez;
      if (de != formato::hex) continue;
      EXPECT_EQ(contenido_de(de, piezas_de(f.v, flash), true), contenido_de(de, piezas, true));
    }
    const std::string bin = contenido_de(formato::bin, piezas, false);
    EXPECT_TRUE(job::objetivo(bueno("a.bin", bin, partes.front().first).v).bytes == flash) << vez;
  }
}

TEST_F(firmware_test, what_s_records_cannot_say_of_the_configuration_field_is_told) {
  const std::vector<std::uint8_t> unos(0x30, 1), ceros(0x30, 0);
  const std::tuple<std::vector<pieza>, std::uint64_t, std::int32_t> casos[] = {
      {{{0x3F0, unos}}, 0x20, 0x400},
      {{{0x3F0, ceros}}, 0, 0},
      {{{0x3D1, unos}}, 4, 0x400},
      {{{0x3D0, unos}}, 0, 0},
      {{{0x3D0, unos}, {0x420, unos}}, 0x20, 0x400},
      {{{0x3D0, unos}, {0x400, ceros}, {0x430, unos}}, 0, 0},
      {{{0x41F, unos}}, 4, 0x41C},
      {{{0x1000, unos}}, 0, 0},
  };
  for (const auto& [piezas, cuantos, direccion] : casos) {
    const auto duda = duda_al_escribir(formato::s19, piezas);
    EXPECT_EQ(duda.value_or(aviso{}).cuantos, cuantos) << piezas.front().desde;
    EXPECT_EQ(duda.value_or(aviso{}).direccion, direccion) << piezas.front().desde;
    const auto cargado = job::objetivo(bueno("a.s19", contenido_de(formato::s19, piezas, true)).v).bytes;
    const auto exacto = job::objetivo(bueno("a.hex", contenido_de(formato::hex, piezas, true)).v).bytes;
    std::uint64_t distintos = 0;
    for (std::size_t i = 0; i < exacto.size(); ++i) distintos += cargado[i] != exacto[i] ? 1 : 0;
    EXPECT_EQ(distintos, cuantos) << piezas.front().desde << ": what the chip then differs in";
    EXPECT_FALSE(duda_al_escribir(formato::hex, piezas));
  }
}

TEST_F(firmware_test, each_changed_character_of_a_record_is_found) {
  const std::vector<std::uint8_t> datos{0x12, 0x34, 0x56, 0x78};
  const pieza una[] = {{0x1000, datos}};
  for (const auto& [nombre, de, marca] : {std::tuple{"a.s19", formato::s19, 'S'}, {"a.hex", formato::hex, ':'}}) {
    const std::string entero = contenido_de(de, una, false);
    const auto flash = job::objetivo(bueno(nombre, entero).v).bytes;
    for (std::size_t i = 0; i < entero.size(); ++i) {
      if (entero[i] == '\r' || entero[i] == '\n' || entero[i] == marca) continue;
      std::string danado = entero;
      danado[i] = danado[i] == '0' ? '1' : '0';
      leido l = leer(nombre, danado);
      if (const auto* f = std::get_if<firmware>(&l)) {
        const bool era_el_tipo = i > 0 && entero[i - 1] == marca;
        EXPECT_TRUE(era_el_tipo || !f->avisos.empty()) << danado;
        EXPECT_TRUE(job::objetivo(f->v).bytes == flash) << danado;
      }
    }
  }
}

}  // namespace
}  // namespace morvane::console
