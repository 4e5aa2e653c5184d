#include "kest/log.h"

#include "tests/support/debug_log.h"
#include "tests/support/rows.h"

namespace {

std::unique_ptr<uint8_t[]> dumped; // the octets of the last call

} // namespace

template <>
const uint8_t *argument(const json &value) {
  const std::vector<uint8_t> data = octets(value);
  dumped = exact_octets(data);
  return dumped.get();
}

namespace {

TEST(HexDump, ToTheByte) {
  EXPECT_EQ(log_level, 0u); // it has no say in a dump
  run_rows("log/hex_dump", {KEST_CALL(kest_print_hex),
                            KEST_CALL(orba_kest_print_hex),
                            {"fnPrintHex", [](const json &call) {
                               const debug_log log(0);
                               call_of(fnPrintHex)(call);
                               return json(log.lines());
                             }}});
}

} // namespace
