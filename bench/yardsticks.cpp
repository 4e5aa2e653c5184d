#include "bench/yardsticks.h"

#include <cstdlib>
#include <memory>

#include <openssl/crypto.h>
#include <pthread.h>
#include <unicode/ustring.h>

#include "bench/inputs.h"

namespace {

// Packing step by step, an octet of 3GPP TS 23.038, clause 6.1.2.1, in each.
[[gnu::noinline]] size_t plain_pack(const uint8_t *septets, size_t count, uint8_t *out) {
  size_t written = 0;
  unsigned placed = 0;
  for (size_t i = 0; i < count; ++i) {
    unsigned octet = septets[i] >> placed;
    if (i + 1 < count) {
      octet |= static_cast<unsigned>(septets[i + 1]) << (7 - placed);
      if (++placed == 7) {
        placed = 0;
        ++i;
      }
    }
    out[written++] = static_cast<uint8_t>(octet);
  }
  return written;
}

[[gnu::noinline]] size_t plain_unpack(const uint8_t *octets, size_t count, uint8_t *out) {
  size_t written = 0;
  unsigned carried = 0;
  for (size_t i = 0; written < count; ++i) {
    unsigned septet = static_cast<unsigned>(octets[i]) << carried;
    if (i != 0) {
      septet |= static_cast<unsigned>(octets[i - 1]) >> (8 - carried);
    }
    out[written++] = septet & 0x7F;
    if (++carried == 7) {
      out[written++] = octets[i] >> 1;
      carried = 0;
    }
  }
  return written;
}

void add_openssl(std::vector<job> &out) {
  out.push_back({UNIT, [octets = some_octets(255), text = std::string(511, ' ')]() mutable {
                   size_t length = 0;
                   OPENSSL_buf2hexstr_ex(text.data(), text.size(), &length, octets.data(),
                                         octets.size(), '\0');
                 }});
  std::string text(511, ' ');
  size_t length = 0;
  OPENSSL_buf2hexstr_ex(text.data(), text.size(), &length, some_octets(255).data(), 255, '\0');
  out.push_back({"OpenSSL: hexadecimal text to octets, 255",
                 [text, octets = std::vector<uint8_t>(255)]() mutable {
                   size_t count = 0;
                   OPENSSL_hexstr2buf_ex(octets.data(), octets.size(), &count, text.c_str(), '\0');
                 }});
}

void add_icu(std::vector<job> &out, const std::string &size, unicode_buffers &of) {
  out.push_back({"ICU: UTF-8 to UTF-16, " + size, [&of] {
                   UErrorCode status = U_ZERO_ERROR;
                   u_strFromUTF8(reinterpret_cast<UChar *>(of.to_utf16.data()),
                                 static_cast<int32_t>(of.to_utf16.size()), nullptr, of.utf8.data(),
                                 static_cast<int32_t>(of.utf8.size()), &status);
                 }});
  out.push_back({"ICU: UTF-16 to UTF-8, " + size, [&of] {
                   UErrorCode status = U_ZERO_ERROR;
                   u_strToUTF8(of.to_utf8.data(), static_cast<int32_t>(of.to_utf8.size()), nullptr,
                               reinterpret_cast<const UChar *>(of.utf16.data()),
                               static_cast<int32_t>(of.utf16.size()), &status);
                 }});
}

void add_plain(std::vector<job> &out) {
  out.push_back({"plain: pack 160 septets",
                 [septets = some_septets(160), octets = std::vector<uint8_t>(160)]() mutable {
                   plain_pack(septets.data(), septets.size(), octets.data());
                 }});
  out.push_back({"plain: unpack 160 septets",
                 [octets = some_octets(160), septets = std::vector<uint8_t>(161)]() mutable {
                   plain_unpack(octets.data(), 160, septets.data());
                 }});
}

void lock_and_unlock(pthread_mutex_t &mutex) {
  pthread_mutex_lock(&mutex);
  pthread_mutex_unlock(&mutex);
}

void add_system(std::vector<job> &out) {
  out.push_back({"system: two locks, one malloc", [mutex = pthread_mutex_t()]() mutable {
                   void *volatile block = malloc(3 * sizeof(void *));
                   lock_and_unlock(mutex);
                   lock_and_unlock(mutex);
                   free(block);
                 }});
}

} // namespace

std::vector<job> yardsticks() {
  std::vector<job> out;
  add_openssl(out);
  add_icu(out, "1 KB", buffers_of(mixed_text(1024)));
  add_icu(out, "64 KB", buffers_of(mixed_text(65536)));
  add_plain(out);
  add_system(out);
  return out;
}
