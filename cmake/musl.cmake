# musl.cmake: a build against musl on this machine's processor, with Debian's packages. C is compiled and
# all is linked by musl-gcc. It has no C++, so the library is compiled by clang with the headers of
# libc++, of which nothing is needed at run time. Programs in C++ can't be linked.
execute_process(COMMAND clang++ -print-resource-dir OUTPUT_VARIABLE CLANG OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND uname -m OUTPUT_VARIABLE CMAKE_SYSTEM_PROCESSOR OUTPUT_STRIP_TRAILING_WHITESPACE)
set(TARGET ${CMAKE_SYSTEM_PROCESSOR}-linux-musl)
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_C_COMPILER musl-gcc)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_FLAGS_INIT "--target=${TARGET} -D_LIBCPP_HAS_MUSL_LIBC -nostdinc -isystem ${CLANG}/../../../include/c++/v1 -isystem ${CLANG}/include -isystem /usr/include/${TARGET}")
set(LIBC_FILE /usr/lib/${TARGET}/libc.so) # its names have no versions
