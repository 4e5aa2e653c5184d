#include <gtest/gtest.h>

#include "tests/support/records.h"
#include "tests/support/sim.h"

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
    const json expected = changed(info, row, "info");
    EXPECT_EQ(decode_answer(octets_value(row, "answer"), info), row.value("result", 1));
    EXPECT_EQ(json(info), expected);
  }
}

// "ends" are the sizes of an answer that ends between two objects, "from" the size from which on
// nothing more is read.
TEST(GetResponse, TruncatedAnswers) {
  for (const json &row : vectors("sim/get_response")) {
    const std::vector<uint8_t> answer = octets_value(row, "answer");
    const json ends = row.value("ends", json::array());
    for (size_t size = 0; size < answer.size(); ++size) {
      kest_sim_file_info info = untouched_file();
      const bool whole = size >= row.value("from", answer.size()) ||
                         std::find(ends.begin(), ends.end(), size) != ends.end();
      EXPECT_EQ(decode_answer(std::span(answer).first(size), info), whole) << row << ' ' << size;
    }
  }
}

TEST(GetResponse, HostileInputEndsInAResult) {
  const kest_sim_file_info untouched = untouched_file();
  for (const json &row : vectors("sim/get_response")) {
    hostile_inputs(octets_value(row, "answer"), 1, [&](std::span<const uint8_t> answer) {
      kest_sim_file_info info = untouched_file();
      const int32_t result = decode_answer(answer, info);
      EXPECT_TRUE(result == 1 || same_octets(info, untouched));
    });
  }
}

TEST(GetResponse, NullIsRefused) {
  kest_sim_file_info info = untouched_file();
  const uint8_t octets[16] = {};
  EXPECT_EQ(kest_decode_sim_get_response_data(nullptr, 16, &info), 0);
  EXPECT_EQ(kest_decode_sim_get_response_data(octets, 0, &info), 0);
  EXPECT_EQ(kest_decode_sim_get_response_data(octets, 16, nullptr), 0);
  EXPECT_EQ(json(info), json(untouched_file()));
}

} // namespace
