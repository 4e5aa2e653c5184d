set(TARGET mips-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
