/* sim_file ANSWER: tells what a card says of a file: its type and size, and who may read and change
 * it. ANSWER is what came back from GET RESPONSE or SELECT, in hexadecimal text without the status
 * words. */
#include "lines.h"
#include <kest/kest.h>
#include <stdio.h>

uint32_t log_level = 0; /* the four symbols that a host defines: no debug log here */
char LOG_FILE[] = "";
uint32_t LOG_FILE_MAX_SIZE = 0;
char LOG_FILE_COMPRESSED[] = "";

enum { ANSWER_SIZE = 256 /* what a card gives at once */, KEYS = 15, FIRST_ADM = 4 /* bits */ };

static void print_rule(const char *operation, const kest_sim_access_condition *rule) {
  static const char *const NAMES[FIRST_ADM] = {"PIN", "PIN2", "universal PIN", "unknown key"};
  const char *between = "";
  printf("%s: ", operation);
  if (rule->method == KEST_SIM_ACCESS_ALWAYS || rule->method == KEST_SIM_ACCESS_NEVER) {
    printf(rule->method == KEST_SIM_ACCESS_ALWAYS ? "always\n" : "never\n");
    return;
  }
  for (unsigned bit = 0; bit < KEYS; bit++) {
    if ((rule->mask >> bit & 1) == 0) {
      continue;
    }
    if (bit < FIRST_ADM) {
      printf("%s%s", between, NAMES[bit]);
    } else {
      printf("%sADM%u", between, bit - FIRST_ADM + 1);
    }
    between = rule->method == KEST_SIM_ACCESS_AND ? " and " : " or ";
  }
  printf("\n");
}

int main(int argc, char **argv) {
  static const char *const TYPES[] = {"transparent", "cyclic", "linear fixed", "folder", "root"};
  uint8_t answer[ANSWER_SIZE];
  uint16_t length = argc == 2 ? octets_of(argv[1], answer, sizeof answer) : 0;
  /* Of what the answer does not say, the record keeps what it had: nobody may do anything then. */
  const kest_sim_access_condition never = {KEST_SIM_ACCESS_NEVER, 0};
  kest_sim_file_info info = {0};
  info.file_type = UINT32_MAX;
  info.read = info.update = info.increase = info.deactivate = info.activate = never;
  if (length == 0) {
    fprintf(stderr, "usage: sim_file ANSWER, at most %d octets\n", ANSWER_SIZE);
    return 2;
  }
  if (kest_decode_sim_get_response_data(answer, length, &info) != 1) {
    fprintf(stderr, "sim_file: the answer is cut off, or is none\n");
    return 1;
  }
  int is_folder = info.file_type == KEST_SIM_FILE_DF || info.file_type == KEST_SIM_FILE_MF;
  printf("file %04X: %s", info.file_id,
         info.file_type < sizeof TYPES / sizeof TYPES[0] ? TYPES[info.file_type] : "unknown type");
  if (info.file_size != 0) {
    printf(", %u octets%s", info.file_size, is_folder ? " free" : "");
  }
  if (info.record_length != 0) {
    printf(", %u records of %u octets", info.record_count, info.record_length);
  }
  printf("\n");
  if (info.ref_file_id != 0) { /* a host reads that record next: kest_decode_exp_sec_attr */
    printf("rules: record %u of file %04X\n", info.ref_record, info.ref_file_id);
    return 0;
  }
  print_rule("read", &info.read);
  print_rule("update", &info.update);
  return 0;
}
