// same.cpp: calls two builds of the library with the same inputs and compares results and outputs.
// scripts/same says how to run it.
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "kest/kest.h"

uint32_t log_level = 0;
char LOG_FILE[256] = "";
uint32_t LOG_FILE_MAX_SIZE = UINT32_MAX;
char LOG_FILE_COMPRESSED[1] = "";

namespace {

struct library {
  explicit library(const char *path) : handle(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
    if (handle == nullptr) {
      fprintf(stderr, "%s\n", dlerror());
      exit(2);
    }
  }
  void *handle;
};

// Everything that a call may write. It is filled alike before the call in both builds.
struct outputs {
  int64_t result;
  union {
    uint8_t octets[4096];
    uint16_t units[2048];
    char text[4096];
  };
  char smsc[32], sender[32], timestamp[32], userdata[KEST_SMS_USERDATA_TEXT_SIZE + 1];
  kest_sms_udh_info udh;
  kest_sms_cb_info cb;
  kest_sim_file_info file;
  kest_sms_msg_class msg_class;
  uint32_t flag;
  uint16_t segment_len;
};

#define CALL(name, ...)                                                                            \
  out.result = static_cast<int64_t>(                                                               \
      reinterpret_cast<decltype(&name)>(dlsym(lib.handle, #name))(__VA_ARGS__))

// The four octets of a number, the first in the low bits.
struct four {
  explicit four(uint64_t n) {
    for (int i = 0; i < 4; ++i) {
      octets[i] = static_cast<uint8_t>(n >> 8 * i);
      text[i] = static_cast<char>(octets[i]);
    }
  }
  uint8_t octets[4];
  char text[5] = {};
};

std::string deliver(unsigned first_octet, unsigned dcs, unsigned udl, std::vector<unsigned> data) {
  data.insert(data.begin(), {0, first_octet, 4, 0x81, 0x21, 0x43, 0, dcs, 0x11, 0x21, 0x31, 0x41,
                             0x51, 0x61, 0x80, udl});
  std::string hex;
  char digits[3];
  for (const unsigned octet : data) {
    snprintf(digits, sizeof digits, "%02X", octet & 0xFF);
    hex += digits;
  }
  return hex;
}

void decode_deliver(const library &lib, const std::string &pdu, outputs &out) {
  CALL(kest_sms_decode_gw_deliver_pdu_v2, pdu.c_str(), out.smsc, out.sender, out.timestamp,
       out.userdata, &out.udh, &out.msg_class, &out.flag);
}

struct domain {
  const char *name;
  unsigned bits; // of the inputs
  void (*call)(const library &lib, uint64_t n, outputs &out);
};

const domain DOMAINS[] = {
    {"UTF-8 to UCS-2", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       CALL(kest_convert_utf8_to_ucs2, four(n).text, 16, out.units);
     }},
    {"UCS-2 to UTF-8", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       const uint16_t units[] = {static_cast<uint16_t>(n), static_cast<uint16_t>(n >> 16)};
       CALL(kest_convert_ucs2_to_utf8, units, 4, out.text);
     }},
    {"packed 7 bit string", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       CALL(kest_decode_packed_7bit_gsm_string, out.text, four(n).octets, 4);
     }},
    {"expanded access rules", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       reinterpret_cast<decltype(&kest_decode_exp_sec_attr)>(
           dlsym(lib.handle, "kest_decode_exp_sec_attr"))(four(n).octets, 4, &out.file);
     }},
    {"FCP", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       const four f(n);
       const uint8_t answer[] = {
           0x62, 19, 0x82,        2, f.octets[0], 0x21,        0x83, 2, 0x6F, 7, 0x8A,
           1,    5,  f.octets[1], 2, f.octets[2], f.octets[3], 0x80, 2, 0,    40};
       CALL(kest_decode_sim_get_response_data, answer, sizeof answer, &out.file);
     }},
    {"2G answer", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       const four f(n);
       const uint8_t answer[] = {0,    0, f.octets[0], f.octets[1], 0x6F,       7, 4, 0, 0x12, 0x3F,
                                 0x45, 0, 2,           f.octets[2], f.octets[3]};
       CALL(kest_decode_sim_get_response_data, answer, sizeof answer, &out.file);
     }},
    {"USSD", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       const four f(n);
       CALL(kest_convert_ussd_string_to_utf8, f.octets[0], 3, f.octets + 1, out.text);
     }},
    {"DELIVER, header", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       const four f(n);
       decode_deliver(lib,
                      deliver(0x44, 4, 20,
                              {f.octets[0], f.octets[1], f.octets[2], f.octets[3], 2, 1, 0x41, 0x42,
                               0x43, 0x44, 0x45, 0x46}),
                      out);
     }},
    {"DELIVER, concatenation", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       const four f(n);
       decode_deliver(lib,
                      deliver(0x44, 4, 20,
                              {f.octets[0], 0, 3, f.octets[1], f.octets[2], f.octets[3], 0x41, 0x42,
                               0x43, 0x44, 0x45, 0x46}),
                      out);
     }},
    {"DELIVER, first octet, TP-DCS and TP-UDL", 24,
     [](const library &lib, uint64_t n, outputs &out) {
       const four f(n);
       decode_deliver(lib,
                      deliver(f.octets[0], f.octets[1], f.octets[2],
                              {5, 0, 3, 7, 2, 1, 0xC8, 0x32, 0x9B, 0xFD, 0x06, 0xDB, 0x1B}),
                      out);
     }},
    {"cell broadcast page", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       const four f(n);
       const uint8_t page[] = {f.octets[0], f.octets[1], f.octets[2], f.octets[3], 1,
                               0x11,        0xC8,        0x32,        0x9B,        0xFD,
                               0x06,        0x11,        0x22,        0x33};
       CALL(kest_sms_decode_gw_cb_pdu_v2, page, sizeof page, out.text, &out.cb, &out.msg_class);
     }},
    {"cell broadcast, scheme and text", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       const four f(n);
       const uint8_t page[] = {1,    2,           3,           4,          f.octets[0],
                               0x11, f.octets[1], f.octets[2], f.octets[3]};
       CALL(kest_sms_decode_gw_cb_pdu_v2, page, sizeof page, out.text, &out.cb, &out.msg_class);
     }},
    {"does a text fit", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       CALL(kest_sms_is_long_message, four(n).text, 0);
     }},
    {"segment of a text", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       CALL(kest_sms_get_long_message_segment, four(n).text, 0, &out.segment_len);
     }},
    {"SUBMIT of a text", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       CALL(kest_sms_encode_gw_submit_pdu, "+1555123", four(n).text, 0, 0, out.octets, 165);
     }},
    {"SUBMIT to a number", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       CALL(kest_sms_encode_gw_submit_pdu, four(n).text, "hello", 0, 0, out.octets, 165);
     }},
    {"CDMA of a text", 32,
     [](const library &lib, uint64_t n, outputs &out) {
       CALL(kest_sms_encode_cdma_submit_pdu, "1555123", four(n).text, 1, 0, out.octets);
     }},
};

// lines_of makes a call and returns the lines of the log that it writes, without their times. The
// file holds the complement of each octet.
std::string lines_of(const domain &of, const library &lib, uint64_t n, outputs &out) {
  constexpr size_t TIME = sizeof "2011/01/02 03:04:05" - 1;
  remove(LOG_FILE);
  log_level = UINT32_MAX;
  of.call(lib, n, out);
  log_level = 0;
  std::string lines;
  std::ifstream file(LOG_FILE, std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    std::for_each(line.begin(), line.end(), [](char &c) { c = static_cast<char>(~c); });
    lines += line.substr(std::min(TIME, line.size()));
  }
  return lines;
}

// mixed returns each number of `bits` bits once, so that a sample meets all values of each octet.
uint64_t mixed(uint64_t i, unsigned bits) {
  const uint64_t number = i * 0x9E3779B1 & ((uint64_t{1} << bits) - 1);
  return number ^ number >> bits / 2;
}

// compare returns how many of a worker's share of the calls differ.
int compare(const domain &of, const library &old_lib, const library &new_lib, uint64_t first,
            uint64_t step) {
  static outputs before, after;
  int differences = 0;
  uint64_t calls = 0;
  for (uint64_t i = first; i >> of.bits == 0; i += step, ++calls) {
    const uint64_t n = mixed(i, of.bits);
    const bool logged = calls % 4096 == 0;
    const int fill = static_cast<int>(n * 37 & 0xFF);
    memset(&before, fill, sizeof before);
    memset(&after, fill, sizeof after);
    std::string old_lines, new_lines;
    if (logged) {
      old_lines = lines_of(of, old_lib, n, before);
      new_lines = lines_of(of, new_lib, n, after);
    } else {
      of.call(old_lib, n, before);
      of.call(new_lib, n, after);
    }
    if (memcmp(&before, &after, sizeof before) != 0 || old_lines != new_lines) {
      if (++differences <= 3) {
        printf("%s: 0x%llX differs: %lld and %lld\n%s%s", of.name,
               static_cast<unsigned long long>(n), static_cast<long long>(before.result),
               static_cast<long long>(after.result), old_lines.c_str(), new_lines.c_str());
      }
    }
  }
  return differences;
}

} // namespace

int main(int argc, char **argv) {
  const library old_lib(argv[1]), new_lib(argv[2]);
  const uint64_t sample = argc > 3 ? strtoull(argv[3], nullptr, 10) : 1;
  const uint64_t workers = std::max(1u, std::thread::hardware_concurrency());
  bool same = true;
  for (const domain &of : DOMAINS) {
    for (uint64_t worker = 0; worker < workers; ++worker) {
      if (fork() == 0) {
        snprintf(LOG_FILE, sizeof LOG_FILE, "/tmp/same.%d", static_cast<int>(getpid()));
        const int differences = compare(of, old_lib, new_lib, worker * sample, workers * sample);
        remove(LOG_FILE);
        fflush(stdout);
        _exit(differences != 0 ? 1 : 0);
      }
    }
    bool equal = true;
    for (int status; wait(&status) > 0;) {
      equal = equal && status == 0;
    }
    printf("%-44s %11llu calls: %s\n", of.name,
           static_cast<unsigned long long>((uint64_t{1} << of.bits) / sample),
           equal ? "same" : "DIFFERENT");
    fflush(stdout);
    same = same && equal;
  }
  return same ? 0 : 1;
}
