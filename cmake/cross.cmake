# cross.cmake: a build for Debian on another processor, with the compiler of the GNU triplet TARGET.
# The tests run under QEMU. Packages of headers alone (JSON, the command line) come from the build
# machine's /usr/include. Debian's cross compilers search that last, so CMake must not name it again.
# Libraries there are not found.
string(REGEX MATCH "^[a-z]+" CMAKE_SYSTEM_PROCESSOR ${TARGET})
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${TARGET}-gcc)
set(CMAKE_CXX_COMPILER ${TARGET}-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${CMAKE_SYSTEM_PROCESSOR} -L /usr/${TARGET})
set(CMAKE_FIND_ROOT_PATH /usr/${TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
