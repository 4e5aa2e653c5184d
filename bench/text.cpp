#include "kest/text.h"

#include "bench/inputs.h"
#include "bench/job.h"
#include "text/septets.h"
#include "text/unicode.h"

namespace {

using work = std::function<void()>;

work to_hex(size_t count) {
  return [octets = some_octets(count), text = std::string(2 * count + 1, ' ')]() mutable {
    kest_binary_to_hexstring(octets.data(), static_cast<uint16_t>(octets.size()), text.data(),
                             static_cast<uint16_t>(text.size()));
  };
}

work from_hex(size_t count) {
  std::string text(2 * count + 1, ' ');
  kest_binary_to_hexstring_uppercase(some_octets(count).data(), static_cast<uint16_t>(count),
                                     text.data(), static_cast<uint16_t>(text.size()));
  return [text, octets = std::vector<uint8_t>(count)]() mutable {
    kest_hexstring_to_binary(text.c_str(), octets.data(), static_cast<uint16_t>(octets.size()));
  };
}

work pack(size_t count) {
  return [septets = some_septets(count), octets = std::vector<uint8_t>(count + 1)]() mutable {
    kest_pack_septets(septets.data(), static_cast<uint16_t>(septets.size()),
                      static_cast<uint16_t>(octets.size()), octets.data());
  };
}

work unpack(size_t count, uint16_t fill_bits) {
  const auto shift = static_cast<uint16_t>(fill_bits == 0 ? 0 : 8 - fill_bits);
  return [octets = some_octets(count), septets = std::vector<uint8_t>(count + 1), shift]() mutable {
    kest_unpack_septets(octets.data(), static_cast<uint16_t>(octets.size()),
                        static_cast<uint16_t>(septets.size()), shift, septets.data());
  };
}

work to_utf16(const std::string &text) {
  return [&of = buffers_of(text)] {
    const auto *source = reinterpret_cast<const uint8_t *>(of.utf8.data());
    uint16_t *target = of.to_utf16.data();
    kest_utf8_to_utf16(source, source + of.utf8.size(), target, target + of.to_utf16.size());
  };
}

work to_utf8(const std::string &text) {
  return [&of = buffers_of(text)] {
    const uint16_t *source = of.utf16.data();
    auto *target = reinterpret_cast<uint8_t *>(of.to_utf8.data());
    kest_utf16_to_utf8(source, source + of.utf16.size(), target, target + of.to_utf8.size());
  };
}

work ussd(size_t size) {
  return [octets = packed_text(size), text = std::string(3 * size + 4, ' ')]() mutable {
    kest_decode_packed_7bit_gsm_string(text.data(), octets.data(),
                                       static_cast<uint16_t>(octets.size()));
  };
}

void add_jobs(std::vector<job> &jobs) {
  jobs.push_back({"octets to hexadecimal text, 255", to_hex(255)});
  jobs.push_back({"hexadecimal text to octets, 255", from_hex(255)});
  jobs.push_back({"pack 160 septets", pack(160)});
  jobs.push_back({"unpack 160 septets", unpack(160, 0)});
  jobs.push_back({"unpack 152 septets after a fill bit", unpack(152, 1)});
  unicode_buffers &kilobyte = buffers_of(mixed_text(1024));
  jobs.push_back({"UTF-8 to UTF-16, 1 KB", [&kilobyte] {
                    kest_convert_utf8_to_ucs2(kilobyte.utf8.c_str(),
                                              static_cast<uint16_t>(2 * kilobyte.to_utf16.size()),
                                              kilobyte.to_utf16.data());
                  }});
  jobs.push_back({"UTF-16 to UTF-8, 1 KB", [&kilobyte] {
                    kest_convert_ucs2_to_utf8(kilobyte.utf16.data(),
                                              static_cast<uint16_t>(2 * kilobyte.utf16.size()),
                                              kilobyte.to_utf8.data());
                  }});
  jobs.push_back({"UTF-8 to UTF-16, 64 KB", to_utf16(mixed_text(65536))});
  jobs.push_back({"UTF-16 to UTF-8, 64 KB", to_utf8(mixed_text(65536))});
  jobs.push_back({"8 bit characters to UTF-8, 140",
                  [octets = some_octets(140), text = std::string(281, ' ')]() mutable {
                    kest_convert_ascii_to_utf8(octets.data(), static_cast<uint8_t>(octets.size()),
                                               text.data(), static_cast<uint16_t>(text.size()));
                  }});
  jobs.push_back({"characters of 1 KB of UTF-8", [&kilobyte] {
                    strlen_utf8(kilobyte.utf8.c_str());
                  }});
  jobs.push_back({"USSD string of 182 septets",
                  [octets = packed_text(160), text = std::string(583, ' ')]() mutable {
                    kest_convert_ussd_string_to_utf8(0x0F, static_cast<uint8_t>(octets.size()),
                                                     octets.data(), text.data());
                  }});
}

void add_curves(std::vector<curve> &curves) {
  curves.push_back({"octets to hexadecimal text", "octets", steps(255, 1), to_hex});
  curves.push_back({"hexadecimal text to octets", "octets", steps(255, 1), from_hex});
  curves.push_back({"pack", "septets", steps(255, 1), [](size_t count) {
                      return pack(count);
                    }});
  curves.push_back({"unpack, one fill bit", "septets", steps(255, 1), [](size_t count) {
                      return unpack(count, 1);
                    }});
  curves.push_back({"USSD, packed septets", "octets", doubled(65535), ussd});
  curves.push_back({"UTF-8 to UTF-16, mixed", "bytes", doubled(65536), [](size_t size) {
                      return to_utf16(mixed_text(size));
                    }});
  curves.push_back({"UTF-8 to UTF-16, ASCII", "bytes", doubled(65536), [](size_t size) {
                      return to_utf16(repeated(ENGLISH, size));
                    }});
  curves.push_back({"UTF-16 to UTF-8, mixed", "bytes", doubled(65536), [](size_t size) {
                      return to_utf8(mixed_text(size));
                    }});
  curves.push_back({"UTF-16 to UTF-8, ASCII", "bytes", doubled(65536), [](size_t size) {
                      return to_utf8(repeated(ENGLISH, size));
                    }});
  curves.push_back({"count UTF-8 characters", "bytes", doubled(65536), [](size_t size) -> work {
                      return [text = mixed_text(size)] {
                        strlen_utf8(text.c_str());
                      };
                    }});
}

} // namespace

void measure_text(measured &out) {
  add_jobs(out.jobs);
  add_curves(out.curves);
}
