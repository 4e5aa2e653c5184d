# The tests in C++, each in the file that mirrors its source.
if(CMAKE_CROSSCOMPILING) # Debian has it for the build machine alone, and its source
  set(BUILD_GMOCK OFF)
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
else()
  find_package(GTest REQUIRED)
endif()
find_package(nlohmann_json REQUIRED)
include(GoogleTest)

add_executable(kest_tests
  ipc/named_socket_test.cpp
  ipc/usock_test.cpp
  ipc/work_queue_test.cpp
  log/debug_log_test.cpp
  log/hex_dump_test.cpp
  log/system_log_test.cpp
  sim/access_test.cpp
  sim/get_response_test.cpp
  sms/cdma/submit_test.cpp
  sms/decode/cell_broadcast_test.cpp
  sms/decode/message_test.cpp
  sms/encode/message_test.cpp
  sms/encode/sizing_test.cpp
  sms/round_trip_test.cpp
  support/debug_log.cpp
  support/failing_malloc.cpp
  support/host_symbols.cpp
  support/system_calls.cpp
  support/vectors.cpp
  text/gsm_alphabet_test.cpp
  text/hex_test.cpp
  text/septets_test.cpp
  text/unicode_test.cpp
  text/ussd_test.cpp
  util/linked_list_test.cpp
  util/process_test.cpp
  util/strings_test.cpp)
target_compile_definitions(kest_tests PRIVATE
  KEST_TESTS="${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(kest_tests PRIVATE
  kest_utils_objects GTest::gtest_main nlohmann_json::nlohmann_json)
foreach(name access bind chmod chown close closelog connect freeaddrinfo getaddrinfo listen malloc
             opendir openlog pthread_cond_signal setsockopt socket unlink vsyslog __vsyslog_chk
             write)
  target_link_options(kest_tests PRIVATE -Wl,--wrap=${name})
endforeach()
if(CMAKE_SIZEOF_VOID_P EQUAL 4) # glibc's name for the call where a time has more bits than a long
  target_link_options(kest_tests PRIVATE -Wl,--defsym=__setsockopt64=__wrap_setsockopt)
endif()
gtest_discover_tests(kest_tests DISCOVERY_TIMEOUT 60 # of an emulator on a busy machine
                     PROPERTIES TIMEOUT 300)         # a queue that wakes nobody hangs
