#include <gtest/gtest.h>

#include "job/plan.h"
#include "job/banco_job.h"

namespace {

using namespace morvane;
using namespace morvane::job;
using apoyo::banco_job;
using apoyo::imagen_vacia;
using apoyo::ruidosos;

/// 4 KiB at the start and 1 KiB at 3F000.
Variables_grab programa() {
  Variables_grab v = imagen_vacia();
  apoyo::poner(v, 0, ruidosos(0x1000));
  apoyo::poner(v, 0x3F000, ruidosos(0x400, 9));
  return v;
}

TEST(job, costs) {
  const objetivo que(programa());
  const plan pl = planear(programa());
  for (const bool sucio : {false, true}) {
    banco_job b;
    if (sucio) b.flash()[0x3FFFF] = 0;
    const auto r = grabar(b.p, que);
    const std::int64_t sondeos = sucio ? 12 * 5 : 0;
    std::printf("grabar sucio=%d: %lld (plan %lld / %lld)\n", sucio, (long long)r.gastos.caracteres() , (long long)pl.caracteres, (long long)pl.caracteres_en_blanco);
    EXPECT_TRUE(r.fin.bien()) << int(r.fin.que) << " " << int(r.fin.por);
    EXPECT_TRUE(b.tiene(que));
    EXPECT_LE(r.gastos.caracteres() - sondeos, 34 * pl.palabras + 1500);
    EXPECT_EQ(r.borrado, sucio);
    const auto v = verificar(b.p, que);
    std::printf("verificar: %lld\n", (long long)v.gastos.caracteres());
    const firma f[]{firma::en_blanco(), que.sumas()};
    const auto i = identificar(b.p, f);
    std::printf("identificar: %lld\n", (long long)i.gastos.caracteres());
    EXPECT_TRUE(i.fin.bien() && i.identificados == std::vector<std::size_t>{1});
    std::int64_t peor = 0;
    for (std::int32_t dir : {0, 1, 0x400, 0x401, 0x7FFF, 0x8000, 0xFFFF, 0x12345, 0x20000, 0x38000, 0x3F010, 0x3FFFF}) {
      b.llenar(que);
      b.flash()[dir] ^= 0x10;
      const auto d = verificar(b.p, que);
      peor = std::max(peor, d.gastos.caracteres());
      EXPECT_TRUE(d.fin.que == desenlace::distinta && d.diferencias.size() == 1 && d.diferencias[0].donde == tramo(dir, dir + 1)) << dir;
    }
    std::printf("un byte: %lld\n", (long long)peor);
  }
}

}  // namespace
