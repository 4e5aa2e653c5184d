// tests/support/rows.h: calls as the rows of a table. "@" is a folder of the row, without its first
// slash: 16 characters.
// - "calls": lists of a name and its arguments; "gives": their results
// - "prints": what standard output has then
// - "asks": what the library asks of the system (see system_calls.h)
// - "failing", "writing", "mallocs": make that fail
// - "given": calls before these, which are not checked
#pragma once
#include <functional>
#include <map>
#include <tuple>

#include "tests/support/failing_malloc.h"
#include "tests/support/printed.h"
#include "tests/support/system_calls.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/vectors.h"

using row_calls = std::map<std::string, std::function<json(const json &call)>>;

// argument gives a value of a row as a function takes it, also a number in a text, as "0x8100";
// shown gives a result as a value.
template <class type>
type argument(const json &value) {
  if constexpr (std::is_same_v<type, const char *>) {
    return value.is_null() ? nullptr : value.get_ref<const std::string &>().c_str();
  } else {
    return value.is_string() ? static_cast<type>(std::stoll(value.get<std::string>(), nullptr, 0))
                             : value.get<type>();
  }
}

template <class type>
json shown(type result) {
  return result;
}

// call_of makes a function of the library one that rows can call.
template <class result, class... arguments>
auto call_of(result (*function)(arguments...)) {
  return [function](const json &call) {
    auto value = call.begin(); // the name
    const std::tuple<arguments...> values{argument<arguments>(*++value)...};
    if constexpr (std::is_void_v<result>) {
      std::apply(function, values);
      return json();
    } else {
      return shown(std::apply(function, values));
    }
  };
}

#define KEST_CALL(function)                                                                        \
  { #function, call_of(function) }

// variable_of is a call that sets a variable, if it has an argument, and gives its value.
template <class type>
auto variable_of(type &variable) {
  return [&variable](const json &call) {
    variable = call.size() > 1 ? call[1].get<type>() : variable;
    return json(variable);
  };
}

inline void run_rows(
    const std::string &table, const row_calls &functions,
    const std::function<void()> &between = [] {}) {
  for (const json &original : vectors(table)) {
    SCOPED_TRACE(original["what"]);
    const temporary_folder folder;
    std::string text = original.dump();
    for (size_t at; (at = text.find('@')) != std::string::npos;) {
      text.replace(at, 1, folder.path.substr(1));
    }
    const json row = json::parse(text);
    json results = json::array(), asked;
    for (const json &call : row.value("given", json::array())) {
      functions.at(call[0])(call);
    }
    const std::string prints = printed([&] {
      system_calls calls;
      calls.failing = row.value("failing", calls.failing);
      calls.writing = row.value("writing", calls.writing);
      mallocs_left = row.value("mallocs", -1);
      for (const json &call : row["calls"]) {
        results.push_back(functions.at(call[0])(call));
      }
      mallocs_left = -1;
      asked = calls.lines;
    });
    EXPECT_EQ(results, row["gives"]);
    EXPECT_EQ(prints, row.value("prints", ""));
    EXPECT_EQ(asked, row.value("asks", json::array()));
    between();
  }
}
