set(TARGET arm-linux-gnueabihf)
set(DEBIAN_ARCHITECTURE armhf)
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi) # notes of what GCC 7 changed, at each map in C++
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
