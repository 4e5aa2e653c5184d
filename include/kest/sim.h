/// @file
/// kest/sim.h: what a SIM tells of a file in its answer to GET RESPONSE or SELECT.

/// @defgroup kest_sim What a SIM tells of a file
///
/// Both generations of cards give the same record: the answer of a 2G SIM (ETSI TS 51.011, clause
/// 9.2.1) and the FCP template of a 3G UICC (ETSI TS 102 221, clause 11.1.1.3). Nothing here
/// allocates, logs or keeps a state; any thread may call these functions.
/// @{
#ifndef KEST_SIM_H
#define KEST_SIM_H

#include "kest/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// kest_sim_access_method is how the keys of an access rule stand to each other (ETSI TS 102 221,
/// clause 11.1.1.4.7).
typedef uint32_t kest_sim_access_method;
/// Values of kest_sim_access_method.
enum {
  KEST_SIM_ACCESS_ALWAYS = 0, ///< no condition
  KEST_SIM_ACCESS_NEVER = 1,  ///< not allowed; also whatever is not understood
  KEST_SIM_ACCESS_AND = 2,    ///< all keys are needed
  KEST_SIM_ACCESS_OR = 3,     ///< any of the keys is enough; also one key of the compact format
  KEST_SIM_ACCESS_SINGLE = 4  ///< one key is needed
};

/// The keys of an access rule, as bits of its mask (ETSI TS 102 221, clause 9.5.1; 2G: ETSI TS
/// 51.011, clause 9.3). All application PINs share one bit, and so do all second application PINs.
enum {
  KEST_SIM_KEY_PIN = 0x0001,           ///< application PIN 1 to 8; 2G: CHV1
  KEST_SIM_KEY_PIN2 = 0x0002,          ///< second application PIN 1 to 8; 2G: CHV2
  KEST_SIM_KEY_UNIVERSAL_PIN = 0x0004, ///< the universal PIN of a UICC
  KEST_SIM_KEY_ADM1 = 0x0010,          ///< the administrative keys ADM1 to ADM10 follow each other
  KEST_SIM_KEY_ADM10 = 0x2000,         ///< the last of 3G
  KEST_SIM_KEY_ADM11 = 0x4000          ///< 2G: access condition 14
};

/// kest_sim_access_condition is the access rule of one operation.
typedef struct kest_sim_access_condition {
  kest_sim_access_method method; ///< KEST_SIM_ACCESS_ALWAYS to KEST_SIM_ACCESS_SINGLE
  uint64_t mask; ///< bits KEST_SIM_KEY_PIN and so on; meaningful only with AND, OR and SINGLE
} kest_sim_access_condition;

/// kest_sim_file_type is the structure of an elementary file (EF), or says that the file is a DF or
/// the MF.
typedef uint32_t kest_sim_file_type;
/// Values of kest_sim_file_type.
enum {
  KEST_SIM_FILE_TRANSPARENT = 0,  ///< octets
  KEST_SIM_FILE_CYCLIC = 1,       ///< records, the newest first
  KEST_SIM_FILE_LINEAR_FIXED = 2, ///< records by number
  KEST_SIM_FILE_DF = 3,           ///< dedicated file: a folder, also an application
  KEST_SIM_FILE_MF = 4            ///< master file: the root
};

/// kest_sim_file_info describes a file. Clear it before each call: fields that the answer does not
/// contain are left unchanged.
typedef struct kest_sim_file_info {
  uint16_t file_size;                   ///< octets; of a 2G MF or DF its free memory
  uint16_t file_id;                     ///< 0x3F00 is the MF
  kest_sim_file_type file_type;         ///< KEST_SIM_FILE_TRANSPARENT to KEST_SIM_FILE_MF
  uint16_t record_length;               ///< octets, of a cyclic or linear fixed file
  uint16_t record_count;                ///< of a cyclic or linear fixed file
  kest_sim_access_condition read;       ///< rule of READ, and of SEARCH
  kest_sim_access_condition update;     ///< rule of UPDATE
  kest_sim_access_condition increase;   ///< rule of INCREASE
  kest_sim_access_condition deactivate; ///< rule of DEACTIVATE FILE; 2G: INVALIDATE
  kest_sim_access_condition activate;   ///< rule of ACTIVATE FILE; 2G: REHABILITATE
  uint16_t ref_file_id; ///< if the rules stand in another file: its identifier; 3G alone
  uint8_t ref_record;   ///< and the record there
} kest_sim_file_info;

/// kest_decode_sim_get_response_data reads the `length` octets of an answer into `info`. A first
/// octet 0x62 makes it an FCP template. Its objects are read in the standard's order for an EF, an
/// MF or a DF.
///
/// Returns 1, also if the answer is understood in part or ends between two objects after the file
/// identifier. Returns 0, with `info` unchanged, for
/// - an answer that is cut off elsewhere;
/// - a template that does not begin with a file descriptor;
/// - a null pointer or a `length` of 0.
///
/// `data` must not lie in `info`.
///
/// NOTE: the five rules of a cleared record read KEST_SIM_ACCESS_ALWAYS. Set another method before
/// the call, such as KEST_SIM_ACCESS_NEVER: not every answer has rules. An application (ADF) has
/// its name after its file identifier, and its rules are not found then. Without an identifier they
/// are found, and `file_id` is unchanged.
///
/// NOTE: a file descriptor that names no type leaves `file_type` unchanged. The record fields, and
/// whether the file becomes the MF, then depend on the caller's value. Only the first two octets of
/// a 3G file size are read.
KEST_API int32_t kest_decode_sim_get_response_data(const uint8_t *data, uint16_t length,
                                                   kest_sim_file_info *info);

/// kest_decode_exp_sec_attr reads security attributes in the expanded format (ETSI TS 102 221,
/// clause 11.1.1.4.7; ISO/IEC 7816-4): the `length` octets of the object 0xAB, without its tag and
/// length. It replaces the five rules of `info`, which must not be null. An operation without a
/// rule is KEST_SIM_ACCESS_NEVER. A rule that is cut off by the end is not stored. `data` may be
/// null if `length` is 0.
///
/// NOTE: a command header (tag 0x84) is read as an access mode octet, so it can set the rules of
/// other operations. A long template loses its last keys: from ten on with a usage qualifier each,
/// or from seven on without.
KEST_API void kest_decode_exp_sec_attr(const uint8_t *data, uint16_t length,
                                       kest_sim_file_info *info);

#ifdef __cplusplus
}
#endif

/// @}

#endif
