// kest log: a debug log file as plain text.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tools/commands.h"
#include "tools/output.h"
#include "tools/text_view.h"

namespace {

struct log_options {
  std::string path;
  bool follow = false;
  bool json = false;
};

// plain_text undoes the complement of one record, and drops the line feed that the library's own
// lines end in.
std::string plain_text(std::string record) {
  for (char &c : record) {
    c = static_cast<char>(~c);
  }
  if (record.ends_with('\n')) {
    record.pop_back();
  }
  return record;
}

void print_as_json(const std::string &record) {
  char time[20] = "", pid[11] = "";
  int prefix_size = 0;
  sscanf(record.c_str(), "%19[0-9/: ], pid: %10[0-9],%n", time, pid, &prefix_size);
  const auto text_at = static_cast<size_t>(prefix_size) + 1; // behind a blank
  if (prefix_size > 0 && text_at <= record.size()) {
    const std::string text = record.substr(text_at);
    print_json({{"time", time}, {"pid", strtol(pid, nullptr, 10)}, {"text", text}});
  } else { // no record of this library's
    print_json({{"time", nullptr}, {"pid", nullptr}, {"text", record}});
  }
}

// record_reader prints the records of a file that may still be written.
class record_reader {
public:
  explicit record_reader(const log_options &options) : options_(options) {}

  // read_rest prints the records of `file` from where it stands. One whose line feed has not been
  // written yet is held.
  void read_rest(int file) {
    char block[16384];
    ssize_t size = 0;
    while ((size = read(file, block, sizeof block)) > 0) {
      std::string_view rest(block, static_cast<size_t>(size));
      for (size_t end = 0; (end = rest.find('\n')) != std::string_view::npos;
           rest.remove_prefix(end + 1)) {
        held_ += rest.substr(0, end);
        print_held();
      }
      held_ += rest;
    }
    if (size < 0) {
      throw command_failure("can't read '" + options_.path + "'");
    }
  }

  // end_file prints what is held: nothing comes after it any more.
  void end_file() {
    if (!held_.empty()) {
      print_held();
    }
  }

private:
  void print_held() {
    const std::string record = plain_text(std::exchange(held_, {}));
    if (options_.json) {
      print_as_json(record);
    } else {
      print_line(printable(record));
    }
  }

  const log_options &options_;
  std::string held_;
};

void show(const log_options &options) {
  const int file =
      options.path == "-" ? STDIN_FILENO : open(options.path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) {
    throw command_failure("can't open '" + options.path + "'");
  }
  record_reader reader(options);
  reader.read_rest(file);
  reader.end_file();
}

// open_followed opens the file that has the name now. The result is -1 if there is none.
int open_followed(const std::string &path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat status = {};
  if (file < 0 && errno == ENOENT) {
    return -1;
  }
  if (file < 0 || fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
    throw command_failure("can't open '" + path + "', or it is no regular file");
  }
  return file;
}

bool is_same_file(int a, int b) {
  struct stat status_a = {}, status_b = {};
  return fstat(a, &status_a) == 0 && fstat(b, &status_b) == 0 &&
         status_a.st_dev == status_b.st_dev && status_a.st_ino == status_b.st_ino;
}

// read_on prints what a file got since the last look; if it was truncated, all that it has.
void read_on(int file, record_reader &reader) {
  struct stat status = {};
  if (fstat(file, &status) == 0 && status.st_size < lseek(file, 0, SEEK_CUR)) {
    reader.end_file();
    lseek(file, 0, SEEK_SET);
  }
  reader.read_rest(file);
}

// follow prints the records that there are and those that come. The library renames a file that has
// grown enough, and opens another with its next line. The name is looked up before the open file is
// read, so that a file that has lost its name is read to its end. While it is open, its inode
// number is not given to another.
[[noreturn]] void follow(const log_options &options) {
  constexpr int LOOK_EVERY = 100; // milliseconds
  record_reader reader(options);
  bool is_waiting = false;
  for (int file = -1;; wait_beside_output(LOOK_EVERY)) {
    const int found = open_followed(options.path);
    if (found < 0 && !is_waiting) {
      std::cerr << "kest: waiting for '" << options.path << "'\n";
    }
    is_waiting = found < 0;
    if (file >= 0) {
      read_on(file, reader);
    }
    if (file >= 0 && found >= 0 && is_same_file(file, found)) {
      close(found);
    } else if (found >= 0) {
      reader.end_file();
      if (file >= 0) {
        close(file);
      }
      file = found;
      reader.read_rest(file);
    }
  }
}

void run(const log_options &options) {
  if (!options.follow) {
    show(options);
  } else if (options.path != "-") {
    follow(options);
  } else {
    throw CLI::ValidationError("--follow", "standard input has no name to look for");
  }
}

} // namespace

void add_log_command(CLI::App &app) {
  const auto options = std::make_shared<log_options>();
  CLI::App *command = app.add_subcommand("log", "Show a debug log file as plain text");
  command->add_option("file", options->path, "The log file, or - for standard input")
      ->required()
      ->type_name("FILE");
  command->add_flag("-f,--follow", options->follow,
                    "Go on with what is appended, also to a new file of that name");
  command->add_flag("--json", options->json, "Write a JSON object for each record");
  command->callback([options] { run(*options); });
}
