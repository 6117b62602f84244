#include "job/plan.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "job/banco_job.h"

namespace {

using namespace morvane;
using namespace morvane::job;

bool duda_de(const plan& p, duda d) {
  return std::ranges::find(p.dudas, d) != p.dudas.end();
}

TEST(plan, an_image_is_told_and_doubted_before_anything_happens) {
  Variables_grab v = apoyo::imagen_vacia();
  EXPECT_TRUE(duda_de(planear(v), duda::vacia));
  EXPECT_TRUE(planear(v).escrito.vacio());
  apoyo::poner(v, 0x102, {1, 2, 3});
  apoyo::poner(v, 0x10C, {0xFF, 0xFF, 0xFF, 0xFF, 5});
  // What a loader of S-records leaves there.
  std::fill_n(v.buffer_salida.begin() + chip.configuracion.desde, chip.configuracion.largo(), std::uint8_t{0});
  const plan p = planear(v);
  EXPECT_EQ(p.escrito, (tramo{0x100, 0x114}));
  EXPECT_EQ(p.palabras, 3);
  EXPECT_EQ(p.palabras_ff, 2);
  EXPECT_EQ(p.datos, (std::vector<tramo>{{0x102, 0x105}, {0x10C, 0x111}}));
  EXPECT_EQ(p.huecos, (std::vector<tramo>{{0x100, 0x102}, {0x105, 0x10C}, {0x111, 0x114}}));
  EXPECT_TRUE(duda_de(p, duda::ventana_dira_distinta));
  EXPECT_FALSE(duda_de(p, duda::escribe_configuracion));
  EXPECT_TRUE(duda_de(p, duda::sin_arranque));
  EXPECT_EQ(p.sin_mirar, (tramo{0x8000, chip.flash}));
  apoyo::poner(v, 4, {0});
  apoyo::poner(v, 0x414, {0xFF, 0xFF, 0x4A, 0xC8, 0});
  const plan q = planear(v);
  EXPECT_TRUE(duda_de(q, duda::protegera));
  EXPECT_FALSE(duda_de(q, duda::sin_arranque));
  EXPECT_TRUE(duda_de(q, duda::datos_en_configuracion));
  EXPECT_TRUE(duda_de(q, duda::escribe_configuracion));
  apoyo::poner(v, 0x40001, {7});
  EXPECT_TRUE(duda_de(planear(v), duda::fuera_de_flash));
  EXPECT_EQ(planear(v).escrito.hasta, chip.flash);
}

}  // namespace
