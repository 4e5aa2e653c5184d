#include <gtest/gtest.h>

#include "tests/support/sim.h"
#include "tests/support/vectors.h"

namespace {

kest_sim_file_info record_before(const json &row) {
  kest_sim_file_info info = untouched_file();
  info.file_type = row.value("file_type_before", info.file_type);
  return info;
}

// Answers of real cards, and both sides of each step. What a row does not name is left alone.
TEST(GetResponse, GivesWhatTheAnswerHolds) {
  for (const json &row : vectors("sim/get_response")) {
    SCOPED_TRACE(row.dump());
    kest_sim_file_info info = record_before(row);
    json expected = to_json(info);
    expected.update(row.value("info", json::object()));
    EXPECT_EQ(decode_answer(octets_value(row, "answer"), info), row.value("result", 1));
    EXPECT_EQ(to_json(info), expected);
  }
}

// All truncations: "ends" are the sizes that end between two objects, "from" the size from which on
// nothing more is read. All changes of an octet. A refused answer leaves no traces.
TEST(GetResponse, HostileInputEndsInAResult) {
  const json untouched = to_json(untouched_file());
  for (const json &row : vectors("sim/get_response")) {
    std::vector<uint8_t> answer = octets_value(row, "answer");
    for (size_t size = 0; size < answer.size(); ++size) {
      kest_sim_file_info info = untouched_file();
      const int32_t result = decode_answer(std::span(answer).first(size), info);
      const json ends = row.value("ends", json::array());
      const bool whole = size >= row.value("from", answer.size()) ||
                         std::find(ends.begin(), ends.end(), size) != ends.end();
      EXPECT_EQ(result, whole) << row << " cut to " << size;
      EXPECT_TRUE(result == 1 || to_json(info) == untouched);
    }
    for (uint8_t &octet : answer) {
      for (unsigned change = 1; change < 256; ++change) {
        octet = static_cast<uint8_t>(octet ^ change);
        kest_sim_file_info info = untouched_file();
        const int32_t result = decode_answer(answer, info);
        EXPECT_TRUE(result == 1 || (result == 0 && info.file_id == untouched["file_id"]));
        octet = static_cast<uint8_t>(octet ^ change);
      }
    }
  }
}

TEST(GetResponse, NullIsRefused) {
  kest_sim_file_info info = untouched_file();
  const uint8_t octets[16] = {};
  EXPECT_EQ(kest_decode_sim_get_response_data(nullptr, 16, &info), 0);
  EXPECT_EQ(kest_decode_sim_get_response_data(octets, 0, &info), 0);
  EXPECT_EQ(kest_decode_sim_get_response_data(octets, 16, nullptr), 0);
  EXPECT_EQ(to_json(info), to_json(untouched_file()));
}

} // namespace
