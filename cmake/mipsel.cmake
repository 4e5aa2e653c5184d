set(TARGET mipsel-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
