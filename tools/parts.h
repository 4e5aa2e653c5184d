// tools/parts.h: messages that come in parts, one a line.
#pragma once
#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/commands.h"
#include "tools/input.h"
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

// is_modem_talk tells a modem's commands and answers from the PDUs between them.
inline bool is_modem_talk(const std::string &line) {
  return line.starts_with("AT") || line.starts_with('+');
}

// read_parts reads one message or part a line from standard input, and prints a message when it is
// whole; what is not whole comes at the end. A modem's commands and answers are passed over.
template <class part>
void read_parts(const part_commands<part> &commands) {
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
  const auto take_line = [&](const std::string &line) {
    if (is_modem_talk(line)) {
      return;
    }
    if (const std::string fault = hex_fault(line); !fault.empty()) {
      throw command_failure(fault);
    }
    take(commands.decode(line));
  };
  read_lines(take_line, [&] {
    for (const open_message &open : messages) {
      commands.print(joined(open.first, open.texts));
    }
  });
}

// read_messages does so if `argument`, the positional argument `name`, is "-". Any other is one
// message.
template <class part>
void read_messages(const char *name, const std::string &argument,
                   const part_commands<part> &commands) {
  if (argument == "-") {
    read_parts(commands);
    return;
  }
  read_argument(name, argument, hex_fault,
                [&](const std::string &text) { commands.print(commands.decode(text)); });
}
