#include "console/huella.h"

#include <gtest/gtest.h>

#include <vector>

namespace morvane::console {
namespace {

/// The published values of two short messages.
TEST(huella, is_the_digest_that_other_programs_give) {
  EXPECT_EQ(sha256({}), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  const std::vector<std::uint8_t> abc{'a', 'b', 'c'};
  EXPECT_EQ(sha256(abc), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

}  // namespace
}  // namespace morvane::console
