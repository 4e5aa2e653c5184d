// tools/parts.h: messages that come in parts, one a line.
#pragma once
#include <algorithm>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/commands.h"
#include "tools/text_view.h"

// What a line holds: a message, or one part of it.
struct message_part {
  unsigned part = 0;     // its number, from 1; 0 if the message is no part of another
  unsigned parts = 0;    // of the whole message
  std::string text = {}; // UTF-8 as hexadecimal text
  std::optional<std::vector<unsigned>> missing = {}; // of a message joined from its parts
};

// What a command does with its messages. `part` is its own structure on top of message_part.
template <class part>
struct part_commands {
  std::function<part(const std::string &hex)> decode;
  std::function<bool(const part &a, const part &b)> same_message;
  std::function<void(const part &whole)> print;
};

// joined returns a message with the texts of the parts that came in, and a mark for the others.
template <class part>
part joined(part message, const std::map<unsigned, std::string> &texts) {
  constexpr const char *MARK = "5B2E2E2E5D"; // "[...]"
  message.text.clear();
  message.missing.emplace();
  for (unsigned number = 1; number <= message.parts; ++number) {
    const auto text = texts.find(number);
    if (text != texts.end()) {
      message.text += text->second;
    } else {
      message.text += MARK;
      message.missing->push_back(number);
    }
  }
  return message;
}

// read_lines reads one message or part a line from standard input, and prints a message when it is
// whole; what is not whole comes at the end. Blank lines, and a modem's commands and answers
// between the others, are passed over; a line that fails is named, and does not stop the others.
template <class part>
void read_lines(const part_commands<part> &commands) {
  struct open_message {
    part first;
    std::map<unsigned, std::string> texts; // of the parts so far
  };
  std::vector<open_message> messages;
  const auto take = [&](const part &next) {
    if (next.part == 0) {
      commands.print(next);
      return;
    }
    auto message = std::find_if(messages.begin(), messages.end(), [&](const open_message &open) {
      return commands.same_message(open.first, next);
    });
    if (message == messages.end()) {
      message = messages.insert(message, {next, {}});
    }
    message->texts[next.part] = next.text;
    if (message->texts.size() == next.parts) {
      commands.print(joined(message->first, message->texts));
      messages.erase(message);
    }
  };
  size_t number = 0;
  size_t failed = 0;
  for (std::string line; std::getline(std::cin, line);) {
    ++number;
    line.erase(line.find_last_not_of(" \t\r") + 1);
    if (line.empty() || line.starts_with("AT") || line.starts_with('+')) {
      continue;
    }
    try {
      if (const std::string fault = hex_fault(line); !fault.empty()) {
        throw command_failure(fault);
      }
      take(commands.decode(line));
    } catch (const command_failure &failure) {
      std::cerr << "kest: line " << number << ": " << failure.what() << '\n';
      ++failed;
    }
  }
  for (const open_message &open : messages) {
    commands.print(joined(open.first, open.texts));
  }
  if (failed > 0) {
    throw command_failure(std::to_string(failed) + " of the lines failed");
  }
}

// read_argument does what read_lines does with one message, from the command line: the positional
// argument `name`. A "-" makes it read lines.
template <class part>
void read_argument(const char *name, const std::string &argument,
                   const part_commands<part> &commands) {
  if (argument == "-") {
    read_lines(commands);
    return;
  }
  if (const std::string fault = hex_fault(argument); !fault.empty()) {
    throw CLI::ValidationError(name, fault);
  }
  commands.print(commands.decode(argument));
}
