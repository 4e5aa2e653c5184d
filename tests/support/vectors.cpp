#include "tests/support/vectors.h"

#include <fstream>

template class nlohmann::basic_json<>;

json vectors(const std::string &test) {
  std::ifstream file(KEST_TESTS "/" + test + "_test.json");
  return json::parse(file);
}
