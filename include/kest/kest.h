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

/// @defgroup kest_host Threads, processes and names of a host
/// Cancelled threads (pthread_cancel)
/// - A request to cancel a thread waits for the end of the function that it is in. The thread
///   ends at its next cancellation point, for which a loop may need `pthread_testcancel`.
/// - orba_queue_pop alone can be cancelled where it waits. Its queue is unlocked then.
/// - All others that wait do so to their end: orba_queue_push with a value, writen, usock and
///   connect_socket_server.
/// - A thread whose cancellation is asynchronous (PTHREAD_CANCEL_ASYNCHRONOUS) calls none of them.
///
/// Processes that fork
/// - A child may log at once, although other threads of its parent were logging. For that, `fork`
///   waits until the lines that these are writing are out.
/// - The C library has locks of its own: of the time zone (localtime), the system log, and with
/// musl
///   standard output. A child may find them taken if threads of the host use them.
/// - Neither a signal handler nor a handler of `pthread_atfork` calls the library, and no signal
///   handler calls `fork`: it may have interrupted a line.
/// - A host that loads the library at run time (dlopen) registers its handlers of `pthread_atfork`
///   after that.
///
/// Names
/// - Functions of the shared library call each other, and none of the host's of the same name.
/// - A host's variable of the same name takes the place of the library's, such as `verbose`.
/// - A program that loads the library at run time (dlopen) defines the symbols of log.h as well. It
///   exports them, as with the linker's `-rdynamic`.

#endif
