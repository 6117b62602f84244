#include "console/certificado.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "apoyo/carpeta.h"
#include "bridge/traza.h"
#include "console/traza.h"

namespace morvane::console {
namespace {

namespace fs = std::filesystem;

const clave una{{1, 2, 3}};

std::string uno() {
  return certificado_firmado({{"orden", "grabar"}, {"archivo", "señal \"x\".s19"}, {"sumas", {1, 2, 261'375}}}, una);
}

TEST(certificado, each_changed_added_and_missing_byte_is_found) {
  const std::string bueno = uno();
  const auto leido = comprobar_contenido(bueno);
  ASSERT_TRUE(std::holds_alternative<certificado_leido>(leido));
  EXPECT_EQ(std::get<certificado_leido>(leido).hechos["orden"], "grabar");
  EXPECT_EQ(std::get<certificado_leido>(leido).clave, una.publica());
  const auto vale = [](const std::string& c) {
    return std::holds_alternative<certificado_leido>(comprobar_contenido(c));
  };
  for (std::size_t i = 0; i < bueno.size(); ++i) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string otro = bueno;
      otro[i] = static_cast<char>(otro[i] ^ 1 << bit);
      EXPECT_FALSE(vale(otro)) << i << " " << bit;
    }
    EXPECT_FALSE(vale(std::string(bueno).erase(i, 1))) << i;
    for (const char c : {' ', '0', '\n', '\0'}) EXPECT_FALSE(vale(std::string(bueno).insert(i, 1, c))) << i;
  }
  EXPECT_FALSE(vale(bueno + "\n"));
  EXPECT_FALSE(vale(""));
  // A key of one's own signs what one likes, but is another key.
  const clave otra{{9}};
  const auto ajeno = comprobar_contenido(certificado_firmado({{"orden", "grabar"}}, otra));
  EXPECT_NE(std::get<certificado_leido>(ajeno).clave, una.publica());
}

struct claves : testing::Test {
  std::string dice(const fs::path& en) {
    const auto c = clave_guardada(en);
    if (const auto* buena = std::get_if<clave>(&c)) return buena->publica();
    return frase(std::get<fallo_clave>(c));
  }
  apoyo::carpeta dir;
  fs::path carpeta = dir.ruta() / "config/morvane", ruta = carpeta / "firma.clave";
};

TEST_F(claves, the_key_is_made_once_and_is_nobody_else_s) {
  const std::string primera = dice(carpeta);
  EXPECT_EQ(primera.size(), 64U) << primera;
  EXPECT_EQ(dice(carpeta), primera);
  EXPECT_EQ(fs::status(ruta).permissions(), fs::perms(0600));
  EXPECT_EQ(fs::status(carpeta).permissions(), fs::perms(0700));
  EXPECT_EQ(std::distance(fs::directory_iterator(carpeta), fs::directory_iterator()), 1);
  fs::permissions(ruta, fs::perms(0640));
  EXPECT_NE(dice(carpeta).find("la pueden leer otros"), std::string::npos);
  fs::permissions(ruta, fs::perms(0600));
  const std::string entera = dir.leer("config/morvane/firma.clave");
  for (const std::string& danada :
       {entera.substr(0, entera.size() - 1), std::string(), entera + "x", entera.substr(30)}) {
    dir.escribir("config/morvane/firma.clave", danada);
    EXPECT_NE(dice(carpeta).find("está dañada"), std::string::npos);
    EXPECT_EQ(dir.leer("config/morvane/firma.clave"), danada) << "what may still be saved is not replaced";
  }
  fs::remove(ruta);
  fs::create_directory(ruta);
  EXPECT_NE(dice(carpeta).find("no es un archivo normal"), std::string::npos);
  EXPECT_NE(dice("").find("no hay dónde guardar"), std::string::npos);
  dir.escribir("fichero", "");
  EXPECT_NE(dice(dir.ruta() / "fichero/morvane").find("no se puede"), std::string::npos);
}

TEST_F(claves, programs_that_make_it_at_the_same_moment_have_the_same) {
  for (int vez = 0; vez < 20; ++vez) {
    fs::remove_all(carpeta);
    std::array<std::string, 4> dichas;
    {
      std::vector<std::jthread> todos;
      todos.reserve(dichas.size());
      for (std::string& una_de : dichas) {
        todos.emplace_back([&] {
          // The name beside the key's is a process's own, as in programs of their own.
          std::array<int, 2> tubo{};
          ASSERT_EQ(::pipe(tubo.data()), 0);
          const pid_t hijo = ::fork();
          if (hijo == 0) {
            const std::string mia = dice(carpeta);
            ::_exit(::write(tubo[1], mia.data(), mia.size()) == 64 ? 0 : 1);
          }
          std::array<char, 64> texto{};
          EXPECT_EQ(::read(tubo[0], texto.data(), texto.size()), 64);
          una_de.assign(texto.data(), texto.size());
          ::waitpid(hijo, nullptr, 0);
          ::close(tubo[0]);
          ::close(tubo[1]);
        });
      }
    }
    for (const std::string& d : dichas) EXPECT_EQ(d, dichas[0]);
  }
}

TEST(traza, has_the_form_of_the_board_s_and_says_when_it_cannot_be_written) {
  std::string todos;
  for (int i = 0; i < 256; ++i) todos += static_cast<char>(i);
  for (const long us : {0L, 999'999L, 12'345'678L}) {
    EXPECT_EQ(renglon_de_traza('<', todos, job::tiempo{us}),
              puente::renglon_de_traza('<', todos, puente::instante{us}));
  }
  const apoyo::carpeta dir;
  traza buena(dir.ruta() / "t");
  buena.anotar('>',
               "\x02"
               "A41\x03",
               job::tiempo{5'000'000});
  buena.anotar('<', "<", job::tiempo{5'000'250});
  EXPECT_FALSE(buena.fallo());
  EXPECT_EQ(dir.leer("t"), "     0.000000 > <STX>A41<ETX>\n     0.000250 < <3C>\n");
  EXPECT_EQ(traza(dir.ruta() / "no/hay").fallo()->cual, causa_archivo::clase::no_existe);
  traza llena("/dev/full");
  llena.anotar('>', "A", {});
  ASSERT_TRUE(llena.fallo());
  EXPECT_EQ(llena.fallo()->cual, causa_archivo::clase::lleno);
}

}  // namespace
}  // namespace morvane::console
