/// @file
/// kest/kest.h: everything that the library offers.
#ifndef KEST_KEST_H
#define KEST_KEST_H

#include "kest/export.h"
#include "kest/ipc.h"
#include "kest/log.h"
#include "kest/sim.h"
#include "kest/sms_cdma.h"
#include "kest/sms_decode.h"
#include "kest/sms_encode.h"
#include "kest/text.h"
#include "kest/types.h"
#include "kest/util.h"

#endif
