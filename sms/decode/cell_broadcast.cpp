// Cell broadcast messages (3GPP TS 23.041, clauses 9.4.1 and 9.4.2).
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "kest/sms_decode.h"
#include "kest/text.h"
#include "log/debug_log.h"
#include "sms/decode/cell_broadcast_header.h"
#include "sms/decode/user_data_text.h"
#include "text/septets.h"
#include "util/heap.h"

namespace {

constexpr size_t PAGE_OCTETS = 82; // of content; a UMTS message has a length octet after them
constexpr size_t MAX_UNITS = 1252;
constexpr size_t MAX_UTF8_SIZE = 3 * MAX_UNITS;
static_assert(KEST_SMS_CB_TEXT_SIZE == 2 * MAX_UNITS + 1);

// What a language code takes of the text: septets with its carriage return, or octets.
constexpr size_t LANGUAGE_SEPTETS = 3;
constexpr size_t LANGUAGE_OCTETS = 2;

struct page {
  std::span<const uint8_t> content;
  size_t useful; // octets of it
};

// The text of a message, as kest_convert_userdata_to_utf8 takes it. What exceeds the room is lost.
struct text_units {
  std::array<uint8_t, MAX_UNITS> units = {};
  size_t placed = 0;
  size_t count = 0; // of those placed, what is text
};

void unpack_page(const page &from, text_units &text) {
  const size_t room = MAX_UNITS - text.placed;
  const size_t septets = std::min(size_t{kest_seventh(from.useful * 8)}, room);
  kest_unpack_septets(from.content.data(), static_cast<uint16_t>(septets),
                      static_cast<uint16_t>(room), 0, text.units.data() + text.placed);
  text.placed += septets;
  text.count = text.placed;
}

// append_page places the filling of the page as well. NOTE: the lengths of the pages only say how
// much of all that is text, so the filling of a page that others follow counts as text.
void append_page(const page &from, text_units &text) {
  const size_t room = MAX_UNITS - text.placed;
  const size_t octets = std::min(from.content.size(), room);
  std::copy_n(from.content.begin(), octets, text.units.begin() + text.placed);
  text.placed += octets;
  text.count = std::min(text.count + from.useful, text.placed);
}

void add_page(const page &from, const kest_sms_cb_info &info, text_units &text) {
  if (info.alphabet == KEST_GW_ALPHABET_7BIT) {
    unpack_page(from, text);
  } else {
    append_page(from, text);
  }
}

// read_umts_pages returns false, with a line in the log, if the message has no room for its pages.
bool read_umts_pages(const char *log_name, octet_reader &in, kest_sms_cb_info &info,
                     text_units &text) {
  info.total_pages = in.u8();
  if (info.total_pages * (PAGE_OCTETS + 1) > in.left()) {
    kest_log_error("%s user data length not correct !!!\n", log_name);
    return false;
  }
  for (unsigned i = 0; i < info.total_pages; ++i) {
    const std::span<const uint8_t> content = in.take(PAGE_OCTETS);
    add_page({content, std::min<size_t>(in.u8(), PAGE_OCTETS)}, info, text);
  }
  return true;
}

// without_language_code returns the text after its language code, if there is one.
std::span<const uint8_t> without_language_code(const kest_sms_cb_info &info,
                                               const text_units &text) {
  size_t code = 0;
  if (info.language == KEST_CB_LANGUAGE_IN_TEXT) {
    code = info.alphabet == KEST_GW_ALPHABET_7BIT ? LANGUAGE_SEPTETS : LANGUAGE_OCTETS;
  }
  return std::span(text.units).first(text.count).subspan(std::min(code, text.count));
}

// write_text returns false without memory for the UTF-8 form, which is large for a stack.
bool write_text(kest_gw_alphabet alphabet, std::span<const uint8_t> units, char *text) {
  const heap<uint8_t> utf8(static_cast<uint8_t *>(malloc(MAX_UTF8_SIZE)));
  if (utf8 == nullptr) {
    return false;
  }
  const uint32_t utf8_size =
      kest_convert_userdata_to_utf8(alphabet, units, {utf8.get(), MAX_UTF8_SIZE});
  kest_binary_to_hexstring(utf8.get(), static_cast<uint16_t>(utf8_size), text,
                           KEST_SMS_CB_TEXT_SIZE);
  return true;
}

uint32_t decode_cell_broadcast(const char *log_name, std::span<const uint8_t> data, char *text,
                               kest_sms_cb_info &info, kest_sms_msg_class &msg_class) {
  octet_reader in{data};
  memset(&info, 0, sizeof info); // what is between the fields as well
  if (!kest_sms_decode_gw_cb_header(in, info, msg_class)) {
    return 0;
  }
  if (in.overrun) {
    kest_log_debug("%s no user data done!!\n", log_name);
    return 1;
  }
  if (info.format == KEST_CB_FORMAT_ETWS_PRIMARY) {
    kest_log_debug("%s KEST_CB_FORMAT_ETWS_PRIMARY no user data done!!\n", log_name);
    return 1;
  }
  text_units units;
  if (info.format == KEST_CB_FORMAT_GSM) {
    const std::span<const uint8_t> content = in.take(in.left());
    add_page({content, content.size()}, info, units);
  } else if (!read_umts_pages(log_name, in, info, units)) {
    return 0;
  }
  return write_text(info.alphabet, without_language_code(info, units), text) ? 1 : 0;
}

} // namespace

uint32_t kest_sms_decode_gw_cb_pdu(const uint8_t *cb_data, uint16_t length, char *text,
                                   kest_sms_cb_info *info) {
  kest_sms_msg_class msg_class = KEST_SMS_CLASS_NONE;
  return decode_cell_broadcast("kest_sms_decode_gw_cb_pdu", {cb_data, length}, text, *info,
                               msg_class);
}

uint32_t kest_sms_decode_gw_cb_pdu_v2(const uint8_t *cb_data, uint16_t length, char *text,
                                      kest_sms_cb_info *info, kest_sms_msg_class *msg_class) {
  return decode_cell_broadcast("kest_sms_decode_gw_cb_pdu_v2", {cb_data, length}, text, *info,
                               *msg_class);
}
