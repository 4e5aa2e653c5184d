#include "kest/sms_cdma.h"

#include "bench/inputs.h"
#include "bench/job.h"

void measure_sms_cdma(measured &out) {
  out.jobs.push_back({"encode CDMA submit, 160 septets", [text = repeated(ENGLISH, 160)] {
                        uint8_t pdu[KEST_SMS_CDMA_SUBMIT_PDU_SIZE];
                        kest_sms_encode_cdma_submit_pdu("+4915112345678", text.c_str(), 0, 0, pdu);
                      }});
}
